#include "las/data_access.h"

#include <algorithm>
#include <utility>

#include "las/data_words.h"
#include "las/limits.h"
#include "shared/failure.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// Width and decimals of the first data column by the first non-blank line of ~A; false without one.
bool readFirstColumn(const LasText& text, InputSlot& slot) {
    const auto start = text.seekSection('A');
    if (!start || slot.linesPerStep < 1) return false;
    LineReader data = text.lines(*start, lookLimit);
    for (std::string_view line; data.next(line);) {
        const std::string_view first = firstDataWord(line);
        if (first.empty()) continue;
        const std::size_t dot = first.find('.');
        slot.firstColumnWidth =
            toInt16(static_cast<double>(first.data() - line.data()) + static_cast<double>(first.size()));
        slot.firstColumnDecimals = dot == npos ? std::int16_t{0} : toInt16(static_cast<double>(first.size() - dot - 1));
        return true;
    }
    return false;
}

void fillFromHeader(const LasFile& file, InputSlot& slot) {
    const DepthHeader header = file.depthHeader();
    const auto columnOr = [](std::int16_t found, std::int16_t otherwise) { return found == 0 ? otherwise : found; };
    slot.dotColumn = columnOr(header.layout.dot, 7);
    slot.valueColumn = columnOr(header.layout.value, 15);
    slot.colonColumn = columnOr(header.layout.colon, 50);
    slot.path = file.path();
    slot.indexName = indexMnem;
    slot.start = val(header.strt().value);
    slot.stop = val(header.stop().value);
    slot.step = val(header.step().value);
    slot.topDepth = std::min(slot.start, slot.stop);
    slot.bottomDepth = std::max(slot.start, slot.stop);
    slot.nullText = header.null().value;
    // Of the STOP line on purpose: STRT is the one that other programs rewrite without its unit.
    slot.depthUnit = header.stop().unit;
}

}  // namespace

bool fillInputSlot(const LasFile& file, InputSlot& slot) {
    try {
        fillFromHeader(file, slot);
        const DataShape& shape = file.shape();
        if (shape.layout == DataLayout::OneLine) slot.wrap = "NO";
        if (shape.layout == DataLayout::Wrapped) slot.wrap = "YES";
        slot.linesPerStep = shape.linesPerStep;
        slot.bytesPerStep = shape.bytesPerStep;
        slot.wordsPerStep = shape.wordsPerStep;
        if (!readFirstColumn(file.text(), slot)) return false;

        const DataEnds& ends = file.ends();
        slot.dataStart = ends.firstPosition;
        slot.lastLine = ends.lastPosition;
        slot.firstDepth = ends.firstDepth;
        slot.lastDepth = ends.lastDepth;
        slot.lasVersion = lasVersionOf(file);
        return true;
    } catch (const RunTimeFailure&) {
        return false;
    }
}

std::string lasVersionOf(const LasFile& file) {
    LasValue version = file.value("VERS");
    return version.end == LasValue::End::ReachedData ? " " : std::move(version.text);
}

SlotChannels readSlotChannels(const LasFile& file) {
    SlotChannels channels;
    for (HeaderField& field : file.section('C', lettersAsTheyStand).value_or(SectionTable()))
        channels.emplace_back().field = std::move(field);
    return channels;
}

}  // namespace welvane
