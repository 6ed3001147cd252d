#include "jobs/session_parts.h"

#include <algorithm>
#include <limits>
#include <vector>

#include "shared/failure.h"
#include "shared/numbers.h"

namespace welvane {

namespace {

template <class AnyTable>
struct KnownTable {
    std::string name;
    AnyTable* table;
    TableKey key = TableKey::Place;
    Telling telling = Telling::Changes;
    bool whole = false;  ///< told from an empty one, where it differs at all
};

/// `Tables` is SessionTables, constant or not.
template <class Tables>
auto knownTables(Tables& tables) {
    using AnyTable = std::remove_reference_t<decltype((tables.prd))>;
    std::vector<KnownTable<AnyTable>> known;
    for (int slot = 0; slot < slotCount; ++slot)
        known.push_back({"channels of input " + std::to_string(slot + 1), &tables.srd[slot], TableKey::InputIndex});
    known.push_back({"channels", &tables.srd[newChannels], TableKey::FirstLink});
    known.push_back({"properties", &tables.prd, TableKey::Place, Telling::Settings});
    known.push_back({"sections", &tables.ord});
    known.push_back({"filter", &tables.frd, TableKey::Place, Telling::Settings});
    known.push_back({"survey", &tables.trd, TableKey::Place, Telling::Changes, true});
    known.push_back({"well", &tables.wrd, TableKey::LineMnem});
    for (int slot = 0; slot < slotCount; ++slot)
        known.push_back({"parameters " + std::to_string(slot + 1), &tables.parg[slot], TableKey::LineMnem});
    return known;
}

std::string tableParts(const Session& fresh, const Session& session, const NamedTexts& named) {
    const auto before = knownTables(fresh.tables);
    const auto now = knownTables(session.tables);
    std::string text;
    for (std::size_t place = 0; place < now.size(); ++place) {
        const auto& known = now[place];
        const Table& base = *before[place].table;
        if (known.whole && base == *known.table) continue;
        const std::string changes =
            tableChanges(known.whole ? Table() : base, *known.table, known.key, known.telling, named);
        if (!changes.empty()) text += "\n[table " + known.name + "]\n" + changes;
    }
    return text;
}

std::string yesNo(bool yes) {
    return yes ? "yes" : "no";
}

std::string stationLine(const SurveyRow& row) {
    return "station " + plainNumber(row.md) + " " + plainNumber(row.tvd) + " " + plainNumber(row.deviation) + " " +
           plainNumber(row.azimuth) + "\n";
}

std::string textsPart(const SessionTables& fresh, const SessionTables& tables) {
    std::string text;
    if (tables.otherText != fresh.otherText) text += "other " + quotedText(tables.otherText) + "\n";
    for (std::size_t box = 0; box < tables.fsL.size(); ++box)
        if (tables.fsL[box] != fresh.fsL[box])
            text += "splice " + std::to_string(box) + " " + quotedText(tables.fsL[box]) + "\n";
    for (std::size_t list = 0; list < tables.parLst.size(); ++list) {
        if (tables.parLst[list] == fresh.parLst[list]) continue;
        text += "parameters " + std::to_string(list);
        for (const std::string& mnem : tables.parLst[list]) text += " " + quotedText(mnem);
        text += "\n";
    }
    return text.empty() ? text : "\n[texts]\n" + text;
}

void takeText(SessionTables& tables, const SessionLine& line) {
    if (line.keyword() == "other") {
        tables.otherText = line.text(1);
    } else if (line.keyword() == "splice") {
        tables.fsL[static_cast<std::size_t>(line.number(1, 0, 7))] = line.text(2);
    } else if (line.keyword() == "parameters") {
        std::vector<std::string>& list = tables.parLst[static_cast<std::size_t>(line.number(1, 0, 1))];
        list.clear();
        for (std::size_t place = 2; place < line.size(); ++place) list.push_back(line.text(place));
    } else {
        line.refuse("'" + line.keyword() + "' is no text of a session");
    }
}

void takeState(Session& session, const SessionLine& line) {
    if (line.keyword() == "multiple-connections")
        session.multipleConnections = line.yes(1);
    else if (line.keyword() == "available")
        session.available = line.yes(1);
    else if (line.keyword() == "decimals-asked")
        session.decimalsAsked = line.yes(1);
    else if (line.keyword() == "sections-named")
        session.sectionsNamed = line.yes(1);
    else if (line.keyword() == "filter-applied")
        session.filterApplied = line.yes(1);
    else
        line.refuse("'" + line.keyword() + "' is nothing of a session");
}

void takeStation(Session& session, const SessionLine& line) {
    if (line.keyword() != "station") line.refuse("'" + line.keyword() + "' is no station");
    if (session.inclinometry.rows.size() >= InclinometryTable::capacity) line.refuse("too many stations");
    session.inclinometry.rows.push_back({line.single(1), line.single(2), line.single(3), line.single(4)});
}

void takeSetting(StartupSettings& settings, const SessionLine& line) {
    constexpr std::int64_t least = std::numeric_limits<std::int16_t>::min();
    constexpr std::int64_t most = std::numeric_limits<std::int16_t>::max();
    const std::string& what = line.keyword();
    if (what == "format") {
        const auto value = [&](std::size_t place) {
            return static_cast<std::int16_t>(line.number(place, least, most));
        };
        line.needSize(7);
        settings.format = {value(1), value(2), value(3), value(4), value(5), value(6)};
    } else if (what == "densities") {
        line.needSize(settings.matrix.size() + 1);
        for (std::size_t place = 0; place < settings.matrix.size(); ++place)
            settings.matrix[place] = line.single(place + 1);
    } else if (what == "fill-value") {
        settings.fillCurveValue = line.yes(1);
    } else if (what == "fill-description") {
        settings.fillCurveDescription = line.yes(1);
    } else if (what == "keep-bad-lines") {
        settings.keepBadLines = line.yes(1);
    } else {
        line.refuse("'" + what + "' is no setting of a run");
    }
}

bool takeTable(const SessionPart& part, const NamedTexts& named, SessionTables& tables) {
    for (const auto& known : knownTables(tables)) {
        if (part.title != "table " + known.name) continue;
        *known.table = changedTable(known.whole ? Table() : *known.table, part, known.key, named);
        return true;
    }
    return false;
}

bool sameAdjustment(const SlotChannel& one, const SlotChannel& other) {
    return one.channelOffset == other.channelOffset && one.channelTop == other.channelTop &&
           one.channelBottom == other.channelBottom && one.spliced == other.spliced &&
           one.channelDataColumn == other.channelDataColumn && one.field.mnem == other.field.mnem;
}

bool sameStation(const SurveyRow& one, const SurveyRow& other) {
    return one.md == other.md && one.tvd == other.tvd && one.deviation == other.deviation &&
           one.azimuth == other.azimuth;
}

}  // namespace

NamedTexts namedPaths(const Session& session) {
    NamedTexts named;
    for (int slot = 0; slot < slotCount; ++slot)
        if (session.loaded(slot)) named["input" + std::to_string(slot + 1)] = session.slots[slot].path;
    named["filter"] = session.filterFile;
    named["survey"] = session.tvdFile;
    return named;
}

std::string channelChanges(const SlotChannels& fresh, const SlotChannels& channels) {
    std::string text;
    for (std::size_t channel = 0; channel < std::min(fresh.size(), channels.size()); ++channel) {
        const SlotChannel& now = channels[channel];
        if (sameAdjustment(fresh[channel], now)) continue;
        text += "channel " + std::to_string(channel) + " shift " + plainNumber(now.channelOffset) + " top " +
                plainNumber(now.channelTop) + " bottom " + plainNumber(now.channelBottom) + " joined " +
                yesNo(now.spliced) + "   # " + quotedText(now.field.mnem) + "\n";
    }
    return text;
}

void changeChannel(SlotChannels& channels, const SessionLine& line) {
    const auto last = static_cast<std::int64_t>(channels.size()) - 1;
    SlotChannel& channel = channels[static_cast<std::size_t>(line.number(1, 0, std::max<std::int64_t>(last, 0)))];
    for (std::size_t place = 2; place < line.size(); place += 2) {
        const std::string& what = line.plain(place);
        if (what == "shift")
            channel.channelOffset = line.single(place + 1);
        else if (what == "top")
            channel.channelTop = line.single(place + 1);
        else if (what == "bottom")
            channel.channelBottom = line.single(place + 1);
        else if (what == "joined")
            channel.spliced = line.yes(place + 1);
        else
            line.refuse("a channel has no '" + what + "'");
    }
}

std::string settingsPart(const StartupSettings& settings) {
    const FormatDefaults& format = settings.format;
    std::string text = "\n[settings]\nformat";
    for (const std::int16_t value : {format.dotColumn, format.valueColumn, format.colonColumn, format.wellExtraColon,
                                     format.dataWidth, format.dataDecimals})
        text += " " + std::to_string(value);
    text += "\nfill-value " + yesNo(settings.fillCurveValue);
    text += "\nfill-description " + yesNo(settings.fillCurveDescription);
    text += "\nkeep-bad-lines " + yesNo(settings.keepBadLines) + "\ndensities";
    for (const float density : settings.matrix) text += " " + plainNumber(density);
    return text + "\n";
}

std::string sessionParts(const Session& fresh, const Session& session) {
    std::string text = "\n[session]\nmultiple-connections " + yesNo(session.multipleConnections) + "\navailable " +
                       yesNo(session.available) + "\ndecimals-asked " + yesNo(session.decimalsAsked) +
                       "\nsections-named " + yesNo(session.sectionsNamed) + "\nfilter-applied " +
                       yesNo(session.filterApplied) + "\n";
    if (!session.inclinometry.rows.empty()) text += "\n[stations]\n";
    for (const SurveyRow& row : session.inclinometry.rows) text += stationLine(row);
    return text + textsPart(fresh.tables, session.tables) + tableParts(fresh, session, namedPaths(session));
}

bool takePart(const SessionPart& part, const NamedTexts& named, Session& session, StartupSettings& settings) {
    if (part.title.starts_with("table ")) return takeTable(part, named, session.tables);
    const auto each = [&](auto&& take) {
        for (const SessionLine& line : part.lines) take(line);
        return true;
    };
    if (part.title == "settings") return each([&](const SessionLine& line) { takeSetting(settings, line); });
    if (part.title == "session") return each([&](const SessionLine& line) { takeState(session, line); });
    if (part.title == "stations") return each([&](const SessionLine& line) { takeStation(session, line); });
    if (part.title == "texts") return each([&](const SessionLine& line) { takeText(session.tables, line); });
    return false;
}

void needWholeTables(const Session& fresh, const Session& session) {
    const auto before = knownTables(fresh.tables);
    const auto now = knownTables(session.tables);
    for (std::size_t place = 0; place < now.size(); ++place) {
        const Table& table = *now[place].table;
        const Table& usual = *before[place].table;
        const bool rowsGrow = now[place].key == TableKey::LineMnem || now[place].name == "survey";
        const bool columnsGrow = now[place].key == TableKey::InputIndex || now[place].key == TableKey::FirstLink;
        if ((!rowsGrow && table.rows() != usual.rows()) || (!columnsGrow && table.columns() != usual.columns()))
            throw RunTimeFailure("its table of " + now[place].name + " is not whole");
    }
}

bool sameSession(const Session& one, const Session& other) {
    for (int slot = 0; slot < slotCount; ++slot)
        if (one.loaded(slot) != other.loaded(slot) ||
            !std::ranges::equal(one.channels[slot], other.channels[slot], sameAdjustment))
            return false;
    return one.tables == other.tables && one.filterFile == other.filterFile && one.tvdFile == other.tvdFile &&
           one.multipleConnections == other.multipleConnections && one.available == other.available &&
           one.decimalsAsked == other.decimalsAsked && one.sectionsNamed == other.sectionsNamed &&
           one.filterApplied == other.filterApplied && one.rules == other.rules && one.loose == other.loose &&
           one.decimalComma == other.decimalComma && one.indexUnit == other.indexUnit &&
           std::ranges::equal(one.inclinometry.rows, other.inclinometry.rows, sameStation);
}

bool sameSettings(const StartupSettings& one, const StartupSettings& other) {
    return one.format == other.format && one.matrix == other.matrix && one.fillCurveValue == other.fillCurveValue &&
           one.fillCurveDescription == other.fillCurveDescription && one.keepBadLines == other.keepBadLines;
}

}  // namespace welvane
