#include "session/loading.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <exception>
#include <utility>

#include "las/classify.h"
#include "las/data_access.h"
#include "las/repair.h"
#include "las/sections.h"
#include "las/wrap.h"
#include "platform/mapped_file.h"
#include "session/session_setup.h"
#include "shared/failure.h"
#include "shared/files.h"
#include "shared/line_reader.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::array<std::string_view, 3> filterLines = {"DO_FILTER", "FMT_FILTER", "DVCP_FILTER"};

bool isFilterLine(std::string_view mnem) {
    return std::any_of(filterLines.begin(), filterLines.end(),
                       [&](std::string_view one) { return sameText(one, mnem); });
}

void freeSlot(Session& session, int slot) {
    session.slots[slot] = InputSlot{};
    session.channels[slot].clear();
    session.opened[slot] = false;
}

std::vector<std::string> unitsOf(const SlotChannels& channels) {
    std::vector<std::string> units;
    units.reserve(channels.size());
    for (const SlotChannel& channel : channels) units.push_back(channel.field.unit);
    return units;
}

/// Facts that stay unset when the data has no regular shape, for a reading line by line.
bool takeLooseShape(std::string_view path, std::size_t columns, InputSlot& slot) {
    const auto file = MappedFile::open(path);
    if (!file || columns == 0) return false;
    LineReader lines(file->bytes());
    const std::size_t start = seekSection(lines, 'A');
    if (start == 0) return false;
    slot.dataStart = static_cast<std::int64_t>(start);
    slot.linesPerStep = 1;
    slot.wordsPerStep = static_cast<std::int32_t>(columns);
    slot.wrap = "NO";
    if (slot.lasVersion.empty()) slot.lasVersion = getFileValue(path, "VERS");
    return true;
}

std::string depthUnitLetter(std::string_view unit) {
    if (unit.empty()) return {};
    const char letter = upperChar(unit.front());
    // Other units keep their letter as it stands.
    return std::string(1, letter == 'M' || letter == 'F' ? letter : unit.front());
}

/// The lists that Open4Files derives from the slots: totals are checked before any table grows.
void deriveTables(Session& session) {
    int total = 0;
    for (int slot = 0; slot < slotCount; ++slot) total += session.channelCount(slot);
    if (total + 1 > maxColumns)
        throw RunTimeFailure("the files have " + std::to_string(total) + " channels together, more than " +
                             std::to_string(maxColumns - 1));
    SessionTables& tables = session.tables;
    tables.parLst = {};
    for (int slot = 0; slot < slotCount; ++slot) {
        const bool loaded = session.loaded(slot);
        const int offset = session.columnBase(slot);
        for (std::size_t index = 1; index < session.channels[slot].size(); ++index)
            session.channels[slot][index].channelDataColumn =
                static_cast<std::int16_t>(offset + static_cast<int>(index) - 1);
        fillSlotTable(session, slot, total, offset);
        tables.srd[slot].setVisible(loaded);
        tables.parg[slot].setVisible(loaded);
        if (!loaded) continue;
        const std::string& path = session.slots[slot].path;
        const std::vector<HeaderField> parameters = readSectionLines(path, 'P');
        fillParaGrid(session, parameters, slot);
        tables.parg[slot].setCaption(std::string(parametersCaption));
        if (slot != 0) continue;
        fillWellGrid(session, readSectionLines(path, 'W'));
        fillParaList(session, parameters);
    }
    fillNewGrid(session);
    const DepthRange range = depthRange(session);
    if (range.shallowest <= range.deepest) {
        tables.setting(PrdRow::From) = depthText(range.shallowest);
        tables.setting(PrdRow::To) = depthText(range.deepest);
    }
    tables.setChecked(PrdRow::MergeParameters, session.loaded(1));
    tables.setChecked(PrdRow::ApplyTvd, false);
    sectionOrder(session, session.loaded(0) ? session.slots[0].path : std::string());
    allowStuff(session, range.shallowest <= range.deepest);
}

bool mayReadUnixFile(App& app, const std::string& path) {
    if (app.run.commandMode || lineEndKind(path) != LineEnds::Unix) return true;
    const Prompt question{"Unix Termination! ", path + "Unix Termination. " + " is not usable as is. Repair Now? ",
                          Buttons::YesNo, Icon::Stop, Answer::No};
    if (app.user.ask(question) != Answer::Yes) return false;
    repairLineEnds(path, path, app.run, app.user);  // where that fails the load goes on with the file as it is
    return true;
}

/// What happens to a slot whose file could not be put in: it shows what it held before, if that is still loaded.
void restorePath(Session& session, int slot) {
    const Table& table = session.tables.outputs();
    const bool known = session.opened[slot] && table.rows() == srdRowCount && table.columns() > 0;
    session.slots[slot].path = known ? table.data(linkRow(slot, Link::Mnem), 0) : std::string();
    if (session.slots[slot].path.empty()) freeSlot(session, slot);
}

SlotLoadResult loadInto(App& app, Session& session, int slot) {
    SlotLoadResult result;
    const std::string path = session.slots[slot].path;
    std::string why;
    if (!MappedFile::open(path, &why)) return {LoadStatus::Failed, why.empty() ? "cannot be read" : why, 0, 0, {}};
    session.tables.setting(PrdRow::Head) = path;
    InputSlot facts;
    facts.path = path;
    SlotChannels channels;
    if (!readHeader(app, session, path, facts, channels, result)) {
        result.status = LoadStatus::WithoutChannels;
        channels.clear();
    }
    facts.path = path;
    session.slots[slot] = std::move(facts);
    session.channels[slot] = std::move(channels);
    session.opened[slot] = true;
    showSlot(app, session, slot);
    session.tables.setting(PrdRow::OpenedFile) = path;
    session.tables.otherText = getSectionText(path, 'O');
    deriveTables(session);
    return result;
}

}  // namespace

bool readHeader(const App& app, const Session& session, std::string_view path, InputSlot& slot, SlotChannels& channels,
                SlotLoadResult& result) {
    if (!fileExists(path)) {
        result.why = "no such file";
        return false;
    }
    const bool filled = fillInputSlot(path, slot) && slot.linesPerStep > 0;
    if (!filled && !session.loose) {
        const DataShape shape = detectDataLayout(path);
        result.firstLineNumber = shape.firstLineNumber;
        result.differingLineNumber = shape.differingLineNumber;
        result.why = shapeProblem(shape);
        return false;
    }
    channels = readSlotChannels(path);
    if (!filled && !takeLooseShape(path, channels.size(), slot)) {
        result.why = "no ~A section with data and channels was found";
        return false;
    }
    result.unknownUnits = checkUnits(app.reference, unitsOf(channels));
    return true;
}

SlotLoadResult Open4Files(App& app, Session& session, int slot) {
    if (slot < 0 || slot >= slotCount) return {LoadStatus::Failed, "there is no such slot", 0, 0, {}};
    std::string& path = session.slots[slot].path;
    if (!app.run.commandMode && path.empty() && fileExists(app.run.lasFile)) path = app.run.lasFile;
    if (!fileExists(path)) {
        const std::string why = path.empty() ? std::string("no file is named") : path + ": no such file";
        const bool wasOpened = session.opened[slot];
        freeSlot(session, slot);
        if (wasOpened) rebuildTables(session);
        return {LoadStatus::NoFile, why, 0, 0, {}};
    }
    if (!mayReadUnixFile(app, path)) {
        restorePath(session, slot);
        return {LoadStatus::Declined, "its lines end in LF only", 0, 0, {}};
    }
    // The tables are built in a copy, so that a failure half way leaves none of them torn.
    SlotLoadResult result;
    try {
        Session next = session;
        result = loadInto(app, next, slot);
        if (result.done()) {
            session = std::move(next);
            return result;
        }
    } catch (const std::exception& error) {
        result = {LoadStatus::Failed, error.what(), 0, 0, {}};
    }
    restorePath(session, slot);
    return result;
}

void closeSlot(App& app, Session& session, int slot) {
    freeSlot(session, slot);
    for (int other = 0; other < slotCount; ++other) {
        if (!session.loaded(other)) continue;
        Open4Files(app, session, other);
        return;
    }
    rebuildTables(session);
}

void rebuildTables(Session& session) {
    deriveTables(session);
}

void showSlot(App& app, Session& session, int slot) {
    const InputSlot& facts = session.slots[slot];
    SessionTables& tables = session.tables;
    tables.fsL[2 * slot] = formatMask(facts.topDepth, 4);
    tables.fsL[2 * slot + 1] = formatMask(facts.bottomDepth, 4);
    const DepthRange range = depthRange(session);
    tables.setting(PrdRow::From) = formatMask(range.shallowest, 4);
    tables.setting(PrdRow::To) = formatMask(range.deepest, 4);
    const std::string unit = depthUnitLetter(facts.depthUnit);
    tables.setting(PrdRow::DepthUnits) = unit;
    tables.prd.data(at(PrdRow::DepthUnits), at(PrdColumn::Setting)) = unit;
    tables.setting(PrdRow::DepthOffset) = "0";
    tables.setting(PrdRow::Direction) = facts.start - facts.stop < 0 ? "Shallow to Deep" : "Deep to Shallow";
    tables.setting(PrdRow::SampleRate) = formatMask(std::abs(facts.step), 4);
    tables.setting(PrdRow::Wrap) = sameText(facts.wrap, "NO") ? "No" : "Yes";
    const double version = val(facts.lasVersion);
    tables.setting(PrdRow::Vers) = version == 2.0 ? "2.0" : version == 1.2 ? "1.2" : facts.lasVersion;
    tables.setting(PrdRow::Null) = facts.nullText;
    tables.setting(PrdRow::HeaderFile) = facts.path;
    int position = 0;
    for (int before = 0; before < slot; ++before) position += session.loaded(before) ? 1 : 0;
    tables.prd.data(at(PrdRow::HeaderFile), at(PrdColumn::Setting)) = std::to_string(position);
    showFormat(app, session);
}

void fillSlotTable(Session& session, int slot, int total, int offset) {
    Table& table = session.tables.srd[slot];
    const std::string label = fileLabel(slot);
    table.text(0, 0) = label;
    // All five tables share one column numbering, so a free slot has as many columns as the others.
    table.resize(slotRowCount, 1);
    table.resize(slotRowCount, total + 1);
    table.setRowHidden(at(SlotRow::Index), true);
    const SlotChannels& channels = session.channels[slot];
    if (channels.size() < 2) return;
    for (int column = 1; column <= total; ++column) table.text(0, column) = std::to_string(column);
    for (std::size_t index = 1; index < channels.size(); ++index) {
        const HeaderField& field = channels[index].field;
        const int column = offset + static_cast<int>(index);
        table.text(at(SlotRow::Mnem), column) = field.mnem;
        table.text(at(SlotRow::Unit), column) = field.unit;
        table.text(at(SlotRow::Value), column) = field.value;
        table.text(at(SlotRow::Desc), column) = field.desc;
        table.text(at(SlotRow::Index), column) = std::to_string(index);
    }
}

namespace {
/// Rows of a ~Well or ~Parameter table behind its heads.
void fillFieldTable(Table& table, const std::vector<HeaderField>& lines, int spareRows) {
    const std::size_t used = static_cast<std::size_t>(
        std::count_if(lines.begin(), lines.end(), [](const HeaderField& line) { return !trim(line.mnem).empty(); }));
    setupFieldTable(table);
    table.resize(static_cast<int>(used) + 1 + spareRows, table.columns());
    int row = 0;
    for (const HeaderField& line : lines) {
        if (trim(line.mnem).empty()) continue;
        ++row;
        table.text(row, at(FieldColumn::Mnem)) = line.mnem;
        table.text(row, at(FieldColumn::Dot)) = ".";
        table.text(row, at(FieldColumn::Unit)) = line.unit;
        table.text(row, at(FieldColumn::Value)) = line.value;
        table.text(row, at(FieldColumn::Colon)) = ":";
        table.text(row, at(FieldColumn::Desc)) = line.desc;
        table.setBackColour(row, at(FieldColumn::Dot), colours::fixed);
        table.setBackColour(row, at(FieldColumn::Colon), colours::fixed);
    }
}
}  // namespace

void fillParaGrid(Session& session, const std::vector<HeaderField>& lines, int slot) {
    fillFieldTable(session.tables.parg[slot], lines, 0);
}

void fillWellGrid(Session& session, const std::vector<HeaderField>& lines) {
    Table& table = session.tables.wrd;
    fillFieldTable(table, lines, 1);
    for (int row = 1; row < table.rows(); ++row)
        table.setRowHidden(row, isFilterLine(trim(table.text(row, at(FieldColumn::Mnem)))));
}

void fillParaList(Session& session, const std::vector<HeaderField>& lines) {
    std::vector<std::string> mnems;
    for (const HeaderField& line : lines) mnems.push_back(line.mnem);
    session.tables.parLst = {mnems, mnems};
}

DepthRange depthRange(const Session& session) {
    DepthRange range;
    for (int slot = 0; slot < slotCount; ++slot) {
        if (!session.loaded(slot)) continue;
        range.shallowest = std::min(range.shallowest, session.slots[slot].topDepth);
        range.deepest = std::max(range.deepest, session.slots[slot].bottomDepth);
    }
    return range;
}

void sectionOrder(Session& session, std::string_view path) {
    resetOrd(session);
    if (path.empty()) return;
    Table& table = session.tables.ord;
    const int last = table.columns() - 1;
    int column = 0;
    for (const std::string& title : readSections(path)) {
        if (++column > last) break;
        const char letter = title.size() > 1 ? upperChar(title[1]) : ' ';
        // The last column names the data section, whatever stands sixth in the file.
        if (column == last && letter != 'A') break;
        table.text(at(OrdRow::Name), column) = title;
        table.setCheck(at(OrdRow::Include), column, Check::Checked);
        constexpr std::string_view main = "VWCPO";
        if (main.find(letter) != npos) table.setBackColour(at(OrdRow::Name), column, colours::fixed);
    }
}

}  // namespace welvane
