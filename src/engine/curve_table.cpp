#include "engine/curve_table.h"

#include "las/sections.h"
#include "platform/mapped_file.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

bool hasCurveSection(const std::string& path) {
    const auto file = MappedFile::open(path);
    if (!file) return false;
    LineReader reader(file->bytes());
    return seekSection(reader, 'C') != 0;
}

std::string depthUnitPair(const PassContext& context) {
    const std::string& wanted = context.session.tables.setting(PrdRow::DepthUnits);
    const SlotChannels& channels = context.session.channels[0];
    const std::string& input = context.session.loaded(0) && !channels.empty() ? channels.front().field.unit : wanted;
    return input + "^" + wanted;
}

/// " (Input; file-MNEM,From to To ...)" of the slots that feed a column.
std::string inputDetails(const PassContext& context, int column) {
    const Table& outputs = context.session.tables.outputs();
    std::string text;
    for (int slot = 0; slot < slotCount; ++slot) {
        const std::string& mnem = outputs.text(linkRow(slot, Link::Mnem), column);
        if (!context.session.loaded(slot) || mnem.empty()) continue;
        text += fileNameOf(context.session.slots[static_cast<std::size_t>(slot)].path) + "-" + mnem + "," +
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

void renameDuplicates(OutputCurveTable& table) {
    for (std::size_t i = 0; i < table.size(); ++i) {
        for (std::size_t j = 1; j < table.size(); ++j) {
            if (i == j || !sameText(table[i].mnem, table[j].mnem)) continue;
            std::string& mnem = table[j].mnem;
            const bool numbered = mnem.size() >= 2 && mnem[mnem.size() - 2] == '_';
            if (!numbered) {
                mnem += "_1";
            } else if (isDigit(mnem.back())) {
                const int next = mnem.back() - '0' + 1;
                mnem.pop_back();
                mnem += std::to_string(next);
            }
        }
    }
}

void buildCurveTable(PassContext& context) {
    context.curveTable.clear();
    context.titleLine.clear();
    if (!hasCurveSection(context.headerSource)) return;

    SessionTables& tables = context.tables();
    const Table& outputs = tables.outputs();
    const bool keepDetails = tables.checked(PrdRow::KeepInputDetails) && severalInputs(context.session);
    context.curveTable.push_back({"DEPT", depthUnitPair(context), "00 001 00 00", "Depth Index"});
    for (int column = 1; column < outputs.columns(); ++column) {
        const std::string& mnem = tables.output(SrdRow::Mnem, column);
        if (mnem.empty() || !outputs.checked(static_cast<int>(SrdRow::Use), column)) continue;
        OutputCurve curve{mnem, tables.output(SrdRow::Unit, column), tables.output(SrdRow::Value, column),
                          tables.output(SrdRow::Description, column)};
        if (keepDetails) curve.description += inputDetails(context, column);
        const auto width = static_cast<std::size_t>(std::max<int>(0, context.format().dataWidth));
        context.titleLine += rightAligned(std::string_view(mnem).substr(0, width), width);
        context.curveTable.push_back(std::move(curve));
    }
    if (tables.checked(PrdRow::RenameDuplicates)) renameDuplicates(context.curveTable);
}

}  // namespace welvane
