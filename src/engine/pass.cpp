#include "engine/pass.h"

#include <algorithm>
#include <array>
#include <new>
#include <string_view>

#include "engine/composition.h"
#include "engine/data_writer.h"
#include "engine/function_stage.h"
#include "engine/grid.h"
#include "engine/header_writer.h"
#include "engine/inputs.h"
#include "engine/streaming.h"
#include "las/header_edit.h"
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

/// Steps that were dropped leave figures in the file that nobody asked for. A failing sample is told on its own, and a
/// section of the header holds no figures of the log.
void needFigures(const FailureList& failures) {
    constexpr std::array<std::string_view, 8> figureSteps = {"composing a channel", "clip",       "depth offset",
                                                             "output column",       "depth unit", "channel function",
                                                             "null value",          "null fill"};
    for (const SkippedStep& step : failures.first)
        if (std::ranges::find(figureSteps, step.what) != figureSteps.end())
            throw RunTimeFailure(step.what + ": " + step.why);
}

/// A step that was skipped is something to tell too.
void needNothingToTell(const PassReport& report) {
    if (!report.notes.empty()) throw RunTimeFailure(textOf(report.notes.front()));
    if (report.failures.count > 0)
        throw RunTimeFailure(report.failures.first.front().what + ": " + report.failures.first.front().why);
}

/// What stands in front of the data, whole before the first byte is written, and its lines that were too short for it.
struct FileHead {
    std::string header, dataTitle;
    std::vector<std::string> shortLines;
};

FileHead makeHead(PassContext& context) {
    FileHead head{.header = writeHeader(context), .dataTitle = {}, .shortLines = {}};
    applyDovranFilter(context);
    settleColumns(context);
    head.dataTitle = writeDataTitle(context);
    if (!context.tables().checked(PrdRow::PlainAscii)) head.shortLines = correctHeader(context, head.header);
    if (context.options.rules == FigureRules::trueFigures) needFigures(context.report.failures);
    if (context.options.strict) needNothingToTell(context.report);
    // What was read of an input that changed meanwhile may be of two files.
    for (int slot = 0; slot < slotCount; ++slot)
        if (context.session.loaded(slot) && context.session.slots[slot].file)
            context.session.slots[slot].file->needWhole();
    return head;
}

/// Header and data into the output; false when cancelled.
bool writeFile(PassContext& context) {
    const FileHead head = makeHead(context);
    OutputFile file(context.options.outputPath, context.options.outputMode);
    file.write(head.header);
    file.write(head.dataTitle);
    if (!writeData(context, file)) return false;
    file.commit();
    for (const std::string& line : head.shortLines) tellShortLine(line, context.app.user);
    return true;
}

/// All of a pass in front of its file, the samples or their stream. False when it ended; context.report says why.
bool makeSamples(PassContext& context) {
    if (!deriveGrid(context)) {
        stopPath(context);
        return false;
    }
    context.report.applyTvd = context.applyTvd;
    try {
        openHeaderSource(context);
        if (whyInMemory(context).empty()) {
            if (openStream(context)) return true;
            if (!memorySuffices(context)) {
                stopPath(context);
                return false;
            }
        }
        allocateInputs(context);
        readInputs(context);
        if ((context.options.wholeInputs || context.report.inputLost) && !context.report.brokenInput.empty()) {
            refuse(context, context.report.brokenInput);
            return false;
        }
        composeChannels(context);
    } catch (const FileFailure& failure) {
        refuse(context, failure.what());
        return false;
    } catch (const std::bad_alloc&) {
        refuse(context, "the grid's samples do not fit into memory");
        return false;
    }
    applyFunctions(context);
    return true;
}

std::string sourcesOf(const Session& session, int column) {
    const Table& outputs = session.tables.outputs();
    std::string text;
    for (int slot = 0; slot < slotCount; ++slot) {
        const std::string& mnem = outputs.text(linkRow(slot, Link::Mnem), column);
        if (mnem.empty() || sameText(mnem, noneText)) continue;
        if (!text.empty()) text += ", ";
        text += fileNameOf(session.slots[slot].path) + " " + mnem + " " +
                outputs.text(linkRow(slot, Link::From), column) + " to " +
                outputs.text(linkRow(slot, Link::To), column);
    }
    return text;
}

}  // namespace

PassResult doitmastnew(PassContext& context) {
    if (!makeSamples(context)) return context.report.result;
    try {
        if (!writeFile(context)) return refuse(context, "cancelled");
    } catch (const RunTimeFailure& failure) {
        return refuse(context, failure.what());
    }
    context.report.result = PassResult::Done;
    return PassResult::Done;
}

PassResult previewPass(PassContext& context, PassPreview& preview) {
    context.options.streamed = false;
    if (!makeSamples(context)) return context.report.result;
    try {
        const FileHead head = makeHead(context);
        preview.header = head.header + head.dataTitle;
        if (!writtenRecords(context, preview.columns)) return refuse(context, "cancelled");
    } catch (const RunTimeFailure& failure) {
        return refuse(context, failure.what());
    } catch (const std::bad_alloc&) {
        return refuse(context, "the output's samples do not fit into memory");
    }
    context.report.result = PassResult::Done;
    return PassResult::Done;
}

PassPlan planPass(App& app, Session& session, FigureRules rules) {
    PassContext context(app, session, {.rules = rules});
    PassPlan plan;
    if (!deriveGrid(context)) {
        plan.refusal = context.report.refusal;
        return plan;
    }
    plan.grid = context.grid;
    plan.whyInMemory = whyInMemory(context);
    plan.memoryNeeded = matrixBytes(context);
    const SessionTables& tables = session.tables;
    for (int column = 1; column < tables.outputs().columns(); ++column) {
        const std::string& mnem = tables.output(SrdRow::Mnem, column);
        if (mnem.empty() || !tables.outputs().checked(SrdRow::Use, column)) continue;
        const std::string& function = tables.output(SrdRow::Function, column);
        plan.channels.push_back({mnem, tables.output(SrdRow::Unit, column), sourcesOf(session, column),
                                 sameText(function, noneText) ? std::string() : function});
    }
    return plan;
}

}  // namespace welvane
