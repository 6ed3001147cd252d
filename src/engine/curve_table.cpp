#include "engine/curve_table.h"

#include "shared/distinct_names.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

OutputCurve depthCurve(const PassContext& context) {
    const std::string& wanted = context.session.tables.setting(PrdRow::DepthUnits);
    const SlotChannels& channels = context.session.channels[0];
    const std::string& input = context.session.loaded(0) && !channels.empty() ? channels.front().field.unit : wanted;
    return {"DEPT", input, wanted, "00 001 00 00", "Depth Index"};
}

/// " (Input; file-MNEM,From to To ...)" of the slots that feed a column.
std::string inputDetails(const PassContext& context, int column) {
    const Table& outputs = context.session.tables.outputs();
    std::string text;
    for (int slot = 0; slot < slotCount; ++slot) {
        const std::string& mnem = outputs.text(linkRow(slot, Link::Mnem), column);
        if (!context.session.loaded(slot) || mnem.empty()) continue;
        text += fileNameOf(context.session.slots[slot].path) + "-" + mnem + "," +
                outputs.text(linkRow(slot, Link::From), column) + " to " +
                outputs.text(linkRow(slot, Link::To), column) + " ";
    }
    return " (Input; " + text + ")";
}

bool severalInputs(const Session& session) {
    for (int slot = 1; slot < slotCount; ++slot)
        if (session.loaded(slot)) return true;
    return false;
}

}  // namespace

void renameDuplicates(OutputCurveTable& table, FigureRules rules) {
    std::vector<std::string> names;
    for (OutputCurve& curve : table) names.push_back(std::move(curve.mnem));
    makeDistinct(names, rules);
    for (std::size_t i = 0; i < table.size(); ++i) table[i].mnem = std::move(names[i]);
}

void buildCurveTable(PassContext& context) {
    context.curveTable.clear();
    context.titleLine.clear();
    if (!context.headerSource || !context.headerSource->text().seekSection('C')) return;

    SessionTables& tables = context.tables();
    const Table& outputs = tables.outputs();
    const bool keepDetails = tables.checked(PrdRow::KeepInputDetails) && severalInputs(context.session);
    context.curveTable.push_back(depthCurve(context));
    for (int column = 1; column < outputs.columns(); ++column) {
        const std::string& mnem = tables.output(SrdRow::Mnem, column);
        if (mnem.empty() || !outputs.checked(SrdRow::Use, column)) continue;
        OutputCurve curve{mnem, tables.output(SrdRow::InputUnit, column), tables.output(SrdRow::Unit, column),
                          tables.output(SrdRow::Value, column), tables.output(SrdRow::Description, column)};
        if (keepDetails) curve.description += inputDetails(context, column);
        const auto width = static_cast<std::size_t>(std::max<int>(0, context.format().dataWidth));
        context.titleLine += rightAligned(std::string_view(mnem).substr(0, width), width);
        context.curveTable.push_back(std::move(curve));
    }
    if (tables.checked(PrdRow::RenameDuplicates)) renameDuplicates(context.curveTable, context.options.rules);
}

}  // namespace welvane
