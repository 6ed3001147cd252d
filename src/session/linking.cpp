#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include "las/las_file.h"
#include "session/matching.h"
#include "session/session_setup.h"
#include "shared/failure.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr int linkDecimals = 8;

void emptyLink(Table& table, int slot, int column) {
    for (const Link part : {Link::Mnem, Link::Curve, Link::From, Link::To})
        table.text(linkRow(slot, part), column).clear();
}

bool validSlot(int slot) {
    return slot >= 0 && slot < slotCount;
}

/// With one connection per input channel, the first other column that the channel feeds loses it. That column; 0 for
/// none.
int takeLinkFromOthers(Table& table, int slot, int column, const std::string& mnem, const std::string& index) {
    for (int other = 1; other < table.columns(); ++other) {
        if (other == column || !sameText(table.text(linkRow(slot, Link::Mnem), other), mnem) ||
            table.text(linkRow(slot, Link::Curve), other) != index)
            continue;
        emptyLink(table, slot, other);
        return other;
    }
    return 0;
}

void takeHeaderOfColumn(Table& table, int original, int column) {
    const std::string unit = table.data(SrdRow::InputUnit, original);
    table.data(SrdRow::InputUnit, column) = unit;
    table.data(SrdRow::Unit, column) = unit;
    for (const SrdRow row : {SrdRow::Mnem, SrdRow::Value, SrdRow::Description})
        table.text(row, column) = table.text(row, original);
}

/// What a load gives a column that just this channel feeds. The name and unit of a function's result stay.
void takeHeaderOfChannel(Table& table, const HeaderField& channel, int column) {
    const bool computed = !table.data(SrdRow::Function, column).empty();
    table.text(SrdRow::InputUnit, column) = channel.unit;
    table.data(SrdRow::InputUnit, column) = channel.unit;
    table.data(SrdRow::Unit, column) = computed ? channel.unit : std::string();
    if (computed) return;
    const auto both = [&](SrdRow row, const std::string& text) {
        table.text(row, column) = text;
        table.data(row, column) = text;
    };
    both(SrdRow::Mnem, channel.mnem);
    both(SrdRow::Value, channel.value);
    both(SrdRow::Description, channel.desc);
    table.text(SrdRow::Unit, column) = channel.unit;
}

void recalculateUseOf(Table& table, int column) {
    bool fed = false;
    for (int slot = 0; slot < slotCount; ++slot) fed = fed || !table.text(linkRow(slot, Link::Curve), column).empty();
    table.setCheck(SrdRow::Use, column, fed ? Check::Checked : Check::Unchecked);
}

SlotChannel* channelOf(Session& session, int slot, int channel) {
    if (!validSlot(slot) || channel < 1 || channel > session.channelCount(slot)) return nullptr;
    return &session.channels[slot][channel];
}

}  // namespace

std::string CurveString(const Session& session, int slot, std::string* units) {
    if (units != nullptr) units->clear();
    if (!validSlot(slot)) return {};
    std::string list(noneText);
    const SlotChannels& channels = session.channels[slot];
    for (std::size_t index = 1; index < channels.size(); ++index) {
        list += '|';
        list += channels[index].field.mnem;
        if (units == nullptr) continue;
        if (index > 1) *units += '|';
        *units += channels[index].field.unit;
    }
    return list;
}

bool linkChannel(Session& session, int slot, int comboIndex, int column, FigureRules rules) {
    Table& table = session.tables.outputs();
    if (!validSlot(slot) || column < 1 || column >= table.columns()) return false;
    if (comboIndex < 0) return true;
    if (comboIndex > session.channelCount(slot)) return false;
    int robbed = 0;
    if (comboIndex == 0) {
        emptyLink(table, slot, column);
    } else {
        const HeaderField& channel = session.channels[slot][comboIndex].field;
        const std::string index = std::to_string(comboIndex);
        table.text(linkRow(slot, Link::Mnem), column) = channel.mnem;
        table.text(linkRow(slot, Link::Curve), column) = index;
        table.text(linkRow(slot, Link::From), column) = depthText(session.slots[slot].topDepth, linkDecimals);
        table.text(linkRow(slot, Link::To), column) = depthText(session.slots[slot].bottomDepth, linkDecimals);
        // Kept: as laid down the header is taken from the column where the channel stood before any column was moved.
        // Test: linkTakesHeaderFromOriginalColumn
        const int original = session.columnBase(slot) + comboIndex;
        if (rules == FigureRules::trueFigures)
            takeHeaderOfChannel(table, channel, column);
        else if (original < table.columns() && original != column)
            takeHeaderOfColumn(table, original, column);
        if (!session.multipleConnections) robbed = takeLinkFromOthers(table, slot, column, channel.mnem, index);
    }
    if (rules == FigureRules::asLaidDown) {
        recalculateUse(session, true);
        return true;
    }
    recalculateUseOf(table, column);
    if (robbed != 0) recalculateUseOf(table, robbed);
    return true;
}

double computeNearestDepth(const Session& session, double depth, int slot) {
    const InputSlot& facts = session.slots[slot];
    double nearest = depth;
    if (facts.step != 0) {
        const double place = (depth - facts.start) / facts.step;
        if (place != std::nearbyint(place)) {
            // Kept: the multiples count from zero, not from the start depth.
            const double whole = std::nearbyint(depth / facts.step);
            const double one = whole * facts.step, other = (whole + 1) * facts.step;
            nearest = std::abs(depth - one) <= std::abs(depth - other) ? one : other;
        }
    }
    if (nearest < facts.topDepth) nearest = facts.topDepth;
    if (nearest > facts.bottomDepth) nearest = facts.bottomDepth;
    return nearest;
}

void enterSpliceDepth(Session& session, int box, std::string_view text) {
    auto& boxes = session.tables.fsL;
    if (box < 0 || box >= static_cast<int>(boxes.size())) return;
    const int slot = box / 2;
    const double depth = computeNearestDepth(session, val(text), slot);
    boxes[box] = depthText(depth, linkDecimals);
    const bool isTo = box % 2 == 1;
    if (isTo && slot + 1 < slotCount) boxes[box + 1] = depthText(depth + session.slots[slot].step, linkDecimals);
}

void applySpliceDepths(Session& session, int slot) {
    if (!validSlot(slot)) return;
    const std::string from = depthText(val(session.tables.fsL[2 * slot]), linkDecimals);
    const std::string to = depthText(val(session.tables.fsL[2 * slot + 1]), linkDecimals);
    Table& table = session.tables.outputs();
    for (int column = 1; column < table.columns(); ++column) {
        if (table.text(linkRow(slot, Link::From), column).empty()) continue;
        table.text(linkRow(slot, Link::From), column) = from;
        table.text(linkRow(slot, Link::To), column) = to;
    }
}

void applyParameterDepths(Session& session, std::string_view from, std::string_view to) {
    int first = 0;
    while (first < slotCount && !session.loaded(first)) ++first;
    const auto depthOf = [&](std::string_view text) {
        if (isNumeric(text) || trim(text).empty() || first == slotCount) return std::string(trim(text));
        const LasFilePointer& file = session.slots[first].file;
        return file ? std::string(trim(file->value(trim(text), 'P').text)) : std::string();
    };
    const std::string fromDepth = depthOf(from), toDepth = depthOf(to);
    for (int slot = 0; slot < slotCount; ++slot) {
        if (!fromDepth.empty()) session.tables.fsL[2 * slot] = fromDepth;
        if (!toDepth.empty()) session.tables.fsL[2 * slot + 1] = toDepth;
    }
    for (int slot = 0; slot < slotCount; ++slot) applySpliceDepths(session, slot);
}

int findSlotChannel(const Session& session, int slot, std::string_view mnem) {
    if (!validSlot(slot)) return 0;
    for (int channel = 1; channel <= session.channelCount(slot); ++channel)
        if (sameText(session.channels[slot][channel].field.mnem, trim(mnem))) return channel;
    return 0;
}

bool setChannelShift(Session& session, int slot, int channel, double offset) {
    SlotChannel* const target = channelOf(session, slot, channel);
    if (target == nullptr) return false;
    target->channelOffset = toSingle(offset);
    target->spliced = true;
    return true;
}

bool setChannelClip(Session& session, int slot, int channel, double top, double bottom) {
    SlotChannel* const target = channelOf(session, slot, channel);
    if (target == nullptr) return false;
    target->channelTop = toSingle(top);
    target->channelBottom = toSingle(bottom);
    target->spliced = true;
    return true;
}

void sortByUse(Session& session) {
    Table& table = session.tables.outputs();
    std::vector<std::pair<double, int>> places;
    for (int column = 1; column < table.columns(); ++column)
        places.emplace_back(val(table.data(SrdRow::Use, column)), column);
    std::sort(places.begin(), places.end());
    const Table before = table;
    for (int column = 1; column < table.columns(); ++column) {
        const int source = places[static_cast<std::size_t>(column) - 1].second;
        if (source == column) continue;
        for (int row = 0; row < table.rows(); ++row) table.cell(row, column) = before.cell(row, source);
    }
}

std::vector<std::string> selectChannels(Session& session, const std::vector<std::string>& names) {
    Table& table = session.tables.outputs();
    std::vector<std::string> missing;
    std::vector<int> place(static_cast<std::size_t>(table.columns()), 0);
    int number = 0;
    for (const std::string& name : names) {
        ++number;
        int column = 1;
        while (column < table.columns() && (place[column] != 0 || trim(name).empty() ||
                                            !sameText(trim(table.text(SrdRow::Mnem, column)), trim(name))))
            ++column;
        if (column == table.columns())
            missing.push_back(name);
        else
            place[column] = number;
    }
    for (int column = 1; column < table.columns(); ++column) {
        const bool chosen = place[column] != 0;
        table.setCheck(SrdRow::Use, column, chosen ? Check::Checked : Check::Unchecked);
        table.data(SrdRow::Use, column) = std::to_string(chosen ? place[column] : number + table.columns());
    }
    sortByUse(session);
    return missing;
}

}  // namespace welvane
