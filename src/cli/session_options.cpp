#include "cli/session_options.h"

#include <algorithm>
#include <optional>

#include "cli/option_text.h"
#include "cli/verbs.h"
#include "session/edit_rules.h"
#include "session/matching.h"
#include "session/session_setup.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// A channel of a slot by its mnemonic or, for names that come more than once, its number.
int needChannel(std::string_view option, std::string_view text, const Session& session, int slot) {
    if (const int channel = findSlotChannel(session, slot, trim(text)); channel > 0) return channel;
    if (isNumeric(text)) {
        const double number = val(text);
        if (number >= 1 && number <= session.channelCount(slot)) return static_cast<int>(number);
    }
    throw Refusal(std::string(option),
                  "input " + std::to_string(slot + 1) + " has no channel \"" + std::string(text) + "\"");
}

int needColumn(Session& session, std::string_view text) {
    const Table& outputs = session.tables.outputs();
    if (sameText(text, "new")) return appendChannels(session, 1);
    for (int column = 1; column < outputs.columns(); ++column) {
        if (sameText(outputs.text(static_cast<int>(SrdRow::Mnem), column), text)) return column;
    }
    if (isNumeric(text)) {
        const double number = val(text);
        if (number >= 1 && number < outputs.columns()) return static_cast<int>(number);
    }
    throw Refusal("--link", "there is no output column \"" + std::string(text) + "\"");
}

void applyLink(Session& session, const std::string& text) {
    constexpr std::string_view form = "SLOT:CHANNEL>COLUMN[:FROM:TO]";
    const std::vector<std::string> pieces = needPieces("--link", text, ':', 2, 4, form);
    const std::vector<std::string> ends = needPieces("--link", pieces[1], '>', 2, 2, form);
    if (pieces.size() == 3) throw UsageFault("--link: '" + text + "' names one depth only");
    const int slot = needSlot("--link", pieces[0], session);
    const int channel = needChannel("--link", ends[0], session, slot);
    if (pieces.size() == 4) {
        for (const std::size_t piece : {2U, 3U}) needNumber("--link", pieces[piece]);
    }
    const int column = needColumn(session, trim(ends[1]));
    if (!linkChannel(session, slot, channel, column)) throw Refusal("--link", "'" + text + "' cannot be linked");
    recalculateUse(session, true);
    if (pieces.size() < 4) return;
    Table& outputs = session.tables.outputs();
    outputs.text(linkRow(slot, Link::From), column) = pieces[2];
    outputs.text(linkRow(slot, Link::To), column) = pieces[3];
}

/// Column of ord whose section has this letter; nothing when there is none.
std::optional<int> sectionColumn(const Table& order, char letter) {
    for (int column = 1; column < order.columns() - 1; ++column) {
        const std::string& name = order.text(static_cast<int>(OrdRow::Name), column);
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
        std::string& name = order.text(static_cast<int>(OrdRow::Name), column);
        if (name.size() > 1 && wanted.find(upperChar(name[1])) != std::string::npos) continue;
        for (const auto& [known, text] : names) {
            if (known == letter) name = text;
        }
        return column;
    }
    throw UsageFault("--sections: too many sections");
}

}  // namespace

void applyLinks(Session& session, const std::vector<std::string>& links) {
    for (const std::string& link : links) applyLink(session, link);
}

void applyDepthIntervals(Session& session, const std::vector<std::string>& intervals) {
    for (const std::string& interval : intervals) {
        const std::vector<std::string> pieces = needPieces("--apply-depths", interval, ':', 3, 3, "SLOT:FROM:TO");
        const int slot = needSlot("--apply-depths", pieces[0], session);
        for (const std::size_t piece : {1U, 2U}) {
            needNumber("--apply-depths", pieces[piece]);
            session.tables.fsL[static_cast<std::size_t>(2 * slot) + piece - 1] = pieces[piece];
        }
        applySpliceDepths(session, slot);
    }
}

void applyShifts(Session& session, const std::vector<std::string>& shifts) {
    for (const std::string& shift : shifts) {
        const std::vector<std::string> pieces = needPieces("--shift", shift, ':', 3, 3, "SLOT:CHANNEL:OFFSET");
        const int slot = needSlot("--shift", pieces[0], session);
        const double offset = needNumber("--shift", pieces[2]);
        setChannelShift(session, slot, needChannel("--shift", pieces[1], session, slot), offset);
    }
}

void applyClips(Session& session, const std::vector<std::string>& clips) {
    for (const std::string& clip : clips) {
        const std::vector<std::string> pieces = needPieces("--clip", clip, ':', 4, 4, "SLOT:CHANNEL:TOP:BOTTOM");
        const int slot = needSlot("--clip", pieces[0], session);
        const double top = needNumber("--clip", pieces[2]), bottom = needNumber("--clip", pieces[3]);
        if (top > bottom) throw UsageFault("--clip: " + pieces[2] + " lies below " + pieces[3]);
        setChannelClip(session, slot, needChannel("--clip", pieces[1], session, slot), top, bottom);
    }
}

void selectColumns(Session& session, const std::string& names) {
    std::vector<std::string> wanted;
    for (const std::string& name : split(names, ',')) {
        if (!trim(name).empty()) wanted.emplace_back(trim(name));
    }
    if (wanted.empty()) throw UsageFault("--select names no channel");
    const std::vector<std::string> missing = selectChannels(session, wanted);
    if (!missing.empty()) throw Refusal("--select", "there is no output channel " + join(missing, ", "));
}

void arrangeSections(Session& session, const std::string& letters) {
    Table& order = session.tables.ord;
    std::string wanted;
    for (const std::string& piece : split(letters, ',')) {
        const std::string name = upper(trim(piece));
        const char letter = name.empty() ? ' ' : name[name.size() > 1 && name[0] == '~' ? 1 : 0];
        if (std::string_view("VWCPOA").find(letter) == npos || wanted.find(letter) != std::string::npos)
            throw UsageFault("--sections: '" + letters + "' is not a list of the letters V, W, C, P, O, each once");
        wanted += letter;
    }
    // The data section stays at the end, whether it is named or not.
    wanted.erase(std::remove(wanted.begin(), wanted.end(), 'A'), wanted.end());
    for (const char letter : wanted) {
        if (!sectionColumn(order, letter)) placeFor(order, letter, wanted);
    }
    int place = 1;
    for (const char letter : wanted) moveSection(session, *sectionColumn(order, letter), place++);
    for (int column = 1; column < order.columns() - 1; ++column) {
        order.setCheck(static_cast<int>(OrdRow::Include), column, column < place ? Check::Checked : Check::Unchecked);
    }
}

}  // namespace welvane
