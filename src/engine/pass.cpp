#include "engine/pass.h"

#include <new>

#include "engine/composition.h"
#include "engine/data_writer.h"
#include "engine/grid.h"
#include "engine/header_writer.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// Where every run that ends early goes.
PassResult stopPath(PassContext& context) {
    PassReport& report = context.report;
    // A deliberate exit has no system error to tell of. Where the old file stands whole, the refusal alone says more.
    if (!context.app.run.commandMode && context.options.outputMode == OutputFile::Mode::InPlace)
        context.app.user.ask({"", "Error in doitmastnew was , #=0", Buttons::Ok, Icon::None, Answer::Ok});
    report.result = context.cancelled() ? PassResult::Cancelled : PassResult::Stopped;
    return report.result;
}

PassResult refuse(PassContext& context, std::string why) {
    context.report.refusal = std::move(why);
    return stopPath(context);
}

/// Header and data into an open file; false when cancelled.
bool writeFile(PassContext& context, OutputFile& file) {
    writeHeader(context, file);
    writeDataTitle(context, file);
    applyDovranFilter(context);
    if (!writeData(context, file)) return false;
    file.close();
    if (!context.tables().checked(PrdRow::PlainAscii)) correctHeader(context, file.writtenPath());
    file.commit();
    return true;
}

std::string sourcesOf(const Session& session, int column) {
    const Table& outputs = session.tables.outputs();
    std::string text;
    for (int slot = 0; slot < slotCount; ++slot) {
        const std::string& mnem = outputs.text(linkRow(slot, Link::Mnem), column);
        if (mnem.empty() || sameText(mnem, "<none>")) continue;
        if (!text.empty()) text += ", ";
        text += fileNameOf(session.slots[static_cast<std::size_t>(slot)].path) + " " + mnem + " " +
                outputs.text(linkRow(slot, Link::From), column) + " to " +
                outputs.text(linkRow(slot, Link::To), column);
    }
    return text;
}

}  // namespace

PassResult doitmastnew(PassContext& context) {
    if (!deriveGrid(context)) return stopPath(context);
    context.report.applyTvd = context.applyTvd;
    try {
        allocateInputs(context);
        readInputs(context);
        if (context.options.wholeInputs && !context.report.brokenInput.empty())
            return refuse(context, context.report.brokenInput);
        composeChannels(context);
    } catch (const std::bad_alloc&) {
        return refuse(context, "the grid's samples do not fit into memory");
    }
    applyFunctions(context);
    try {
        OutputFile file(context.options.outputPath, context.options.outputMode);
        if (!writeFile(context, file)) return refuse(context, "cancelled");
    } catch (const RunTimeFailure& failure) {
        return refuse(context, failure.what());
    }
    context.report.result = PassResult::Done;
    return PassResult::Done;
}

PassPlan planPass(App& app, Session& session) {
    PassContext context(app, session, {});
    PassPlan plan;
    if (!deriveGrid(context)) {
        plan.refusal = context.report.refusal;
        return plan;
    }
    plan.grid = context.grid;
    plan.memoryNeeded = matrixBytes(context);
    const SessionTables& tables = session.tables;
    for (int column = 1; column < tables.outputs().columns(); ++column) {
        const std::string& mnem = tables.output(SrdRow::Mnem, column);
        if (mnem.empty() || !tables.outputs().checked(static_cast<int>(SrdRow::Use), column)) continue;
        const std::string& function = tables.output(SrdRow::Function, column);
        plan.channels.push_back({mnem, tables.output(SrdRow::Unit, column), sourcesOf(session, column),
                                 sameText(function, "<none>") ? std::string() : function});
    }
    return plan;
}

}  // namespace welvane
