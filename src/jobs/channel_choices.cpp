#include "jobs/channel_choices.h"

#include <algorithm>
#include <optional>

#include "jobs/refusal.h"
#include "session/matching.h"
#include "session/session_setup.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

void needInput(const char* choice, const Session& session, int slot) {
    if (slot < 0 || slot >= slotCount || !session.loaded(slot))
        throw senselessChoice(choice, "there is no input " + std::to_string(slot + 1));
}

/// A channel of a slot by its mnemonic or, for names that come more than once, its number.
int needChannel(const char* choice, const std::string& text, const Session& session, int slot) {
    needInput(choice, session, slot);
    if (const int channel = findSlotChannel(session, slot, trim(text)); channel > 0) return channel;
    if (isNumeric(text)) {
        const double number = val(text);
        if (number >= 1 && number <= session.channelCount(slot)) return static_cast<int>(number);
    }
    throw refusedChoice(choice, "input " + std::to_string(slot + 1) + " has no channel \"" + text + "\"");
}

int needColumn(Session& session, std::string_view text) {
    const Table& outputs = session.tables.outputs();
    if (sameText(text, "new")) return appendChannels(session, 1);
    for (int column = 1; column < outputs.columns(); ++column) {
        if (sameText(outputs.text(SrdRow::Mnem, column), text)) return column;
    }
    if (isNumeric(text)) {
        const double number = val(text);
        if (number >= 1 && number < outputs.columns()) return static_cast<int>(number);
    }
    throw refusedChoice("link", "there is no output column \"" + std::string(text) + "\"");
}

void applyLink(Session& session, const ChannelLink& link) {
    const int channel = needChannel("link", link.channel, session, link.slot);
    const int column = needColumn(session, link.column);
    if (!linkChannel(session, link.slot, channel, column, session.rules))
        throw refusedChoice("link", "channel " + link.channel + " of input " + std::to_string(link.slot + 1) +
                                        " cannot be linked to column " + link.column);
    if (!link.depths) return;
    Table& outputs = session.tables.outputs();
    outputs.text(linkRow(link.slot, Link::From), column) = link.depths->from.text();
    outputs.text(linkRow(link.slot, Link::To), column) = link.depths->to.text();
}

/// Column of ord whose section has this letter; nothing when there is none.
std::optional<int> sectionColumn(const Table& order, char letter) {
    for (int column = 1; column < order.columns() - 1; ++column) {
        const std::string& name = order.text(OrdRow::Name, column);
        if (name.size() > 1 && upperChar(name[1]) == letter) return column;
    }
    return std::nullopt;
}

/// A place for a section that the input does not have: one that holds no name, or the last that was not asked for.
int placeFor(Table& order, char letter, const std::string& wanted) {
    static constexpr std::pair<char, std::string_view> names[] = {{'V', "~Version Information"},
                                                                  {'W', "~Well Information"},
                                                                  {'C', "~Curve Information"},
                                                                  {'P', "~Parameter Information"},
                                                                  {'O', "~Other Information"}};
    for (int column = order.columns() - 2; column >= 1; --column) {
        std::string& name = order.text(OrdRow::Name, column);
        if (name.size() > 1 && wanted.find(upperChar(name[1])) != std::string::npos) continue;
        for (const auto& [known, text] : names) {
            if (known == letter) name = text;
        }
        return column;
    }
    throw senselessChoice("sections", "too many sections");
}

}  // namespace

void applyLinks(Session& session, const std::vector<ChannelLink>& links) {
    for (const ChannelLink& link : links) applyLink(session, link);
}

void applyInputDepths(Session& session, const std::vector<InputDepths>& intervals) {
    for (const InputDepths& interval : intervals) {
        needInput("apply-depths", session, interval.slot);
        const auto box = 2 * static_cast<std::size_t>(interval.slot);
        session.tables.fsL[box] = interval.depths.from.text();
        session.tables.fsL[box + 1] = interval.depths.to.text();
        applySpliceDepths(session, interval.slot);
    }
}

void applyShifts(Session& session, const std::vector<ChannelShift>& shifts) {
    for (const ChannelShift& shift : shifts)
        setChannelShift(session, shift.slot, needChannel("shift", shift.channel, session, shift.slot), shift.offset);
}

void applyClips(Session& session, const std::vector<ChannelClip>& clips) {
    for (const ChannelClip& clip : clips) {
        const int channel = needChannel("clip", clip.channel, session, clip.slot);
        if (clip.top.value() > clip.bottom.value())
            throw senselessChoice("clip", clip.top.text() + " lies below " + clip.bottom.text());
        setChannelClip(session, clip.slot, channel, clip.top.value(), clip.bottom.value());
    }
}

void selectColumns(Session& session, const std::vector<std::string>& wanted) {
    const std::vector<std::string> missing = selectChannels(session, wanted);
    if (!missing.empty()) throw refusedChoice("select", "there is no output channel " + join(missing, ", "));
}

void arrangeSections(Session& session, const std::string& letters) {
    Table& order = session.tables.ord;
    for (const char letter : letters) {
        if (!sectionColumn(order, letter)) placeFor(order, letter, letters);
    }
    int place = 1;
    for (const char letter : letters) moveSection(session, *sectionColumn(order, letter), place++);
    for (int column = 1; column < order.columns() - 1; ++column) {
        order.setCheck(OrdRow::Include, column, column < place ? Check::Checked : Check::Unchecked);
    }
}

}  // namespace welvane
