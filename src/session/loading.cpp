#include "session/loading.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <exception>
#include <utility>

#include "las/classify.h"
#include "las/data_access.h"
#include "las/input_data.h"
#include "las/las_file.h"
#include "las/repair.h"
#include "session/choices.h"
#include "session/session_setup.h"
#include "session/true_slot.h"
#include "shared/failure.h"
#include "shared/files.h"
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
bool takeLooseShape(const LasFile& file, std::size_t columns, InputSlot& slot) {
    const auto start = file.text().seekSection('A');
    if (!start || columns == 0) return false;
    slot.dataStart = static_cast<std::int64_t>(*start) + 1;
    slot.linesPerStep = 1;
    slot.wordsPerStep = static_cast<std::int32_t>(columns);
    slot.wrap = "NO";
    if (slot.lasVersion.empty()) slot.lasVersion = lasVersionOf(file);
    return true;
}

std::string depthUnitLetter(std::string_view unit) {
    if (unit.empty()) return {};
    const char letter = upperChar(unit.front());
    // Other units keep their letter as it stands.
    return std::string(1, letter == 'M' || letter == 'F' ? letter : unit.front());
}

std::vector<HeaderField> linesOf(const InputSlot& slot, char letter) {
    if (!slot.file) return {};
    return slot.file->section(letter, lettersAsTheyStand).value_or(SectionTable());
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
    const bool isTrue = session.rules == FigureRules::trueFigures;
    const int shown = isTrue ? session.firstSlot() : 0;
    if (shown < 0) fillWellGrid(session, {});
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
        const std::vector<HeaderField> parameters = linesOf(session.slots[slot], 'P');
        fillParaGrid(session, parameters, slot);
        tables.parg[slot].setCaption(std::string(parametersCaption));
        if (slot != shown) continue;
        fillWellGrid(session, linesOf(session.slots[slot], 'W'));
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
    sectionOrder(session, shown >= 0 && session.loaded(shown) ? session.slots[shown].file.get() : nullptr);
    allowStuff(session, range.shallowest <= range.deepest);
}

/// False when the file cannot be read as it is and the user would not have it repaired. A repaired one is opened again.
bool mayReadUnixFile(App& app, const std::string& path, LasFilePointer& file) {
    if (app.run.commandMode || file->rules() == FigureRules::trueFigures) return true;
    if (file->lineEnds() != LineEnds::Unix) return true;
    const Prompt question{"Unix Termination! ", path + "Unix Termination. " + " is not usable as is. Repair Now? ",
                          Buttons::YesNo, Icon::Stop, Answer::No};
    if (app.user.ask(question) != Answer::Yes) return false;
    repairLineEnds(path, path, app.run, app.user);  // where that fails the load goes on with the file as it is
    file = openLasFile(path);
    return true;
}

/// What happens to a slot whose file could not be put in: it shows what it held before, if that is still loaded.
void restorePath(Session& session, int slot) {
    const Table& table = session.tables.outputs();
    const bool known = session.opened[slot] && table.rows() == srdRowCount && table.columns() > 0;
    session.slots[slot].path = known ? table.data(linkRow(slot, Link::Mnem), 0) : std::string();
    if (session.slots[slot].path.empty()) freeSlot(session, slot);
}

/// The file under the slot's path: the one that it holds, unless somebody touched that since.
LasFilePointer currentFile(const Session& session, int number) {
    const InputSlot& slot = session.slots[number];
    const bool held =
        slot.file && slot.file->path() == slot.path && slot.file->rules() == session.rules && slot.file->unchanged();
    return held ? slot.file : openLasFile(slot.path, session.rules);
}

SlotLoadResult freeWithoutFile(Session& session, int slot) {
    const std::string& path = session.slots[slot].path;
    const std::string why = path.empty() ? std::string("no file is named") : path + ": no such file";
    const bool wasOpened = session.opened[slot];
    freeSlot(session, slot);
    if (wasOpened) deriveTables(session);
    return {.status = LoadStatus::NoFile, .why = why};
}

SlotLoadResult loadInto(App& app, Session& session, int slot, const LasFilePointer& file) {
    SlotLoadResult result;
    const std::string path = session.slots[slot].path;
    session.tables.setting(PrdRow::Head) = path;
    InputSlot facts;
    SlotChannels channels;
    const bool read = file->rules() == FigureRules::trueFigures
                          ? readTrueSlot(app, session, slot, *file, facts, channels, result)
                          : readHeader(app, session, *file, facts, channels, result);
    if (!read) {
        result.status = LoadStatus::WithoutChannels;
        channels.clear();
    }
    facts.path = path;
    facts.file = file;
    session.slots[slot] = std::move(facts);
    session.channels[slot] = std::move(channels);
    session.opened[slot] = true;
    showSlot(app, session, slot);
    session.tables.setting(PrdRow::OpenedFile) = path;
    session.tables.otherText = file->sectionText('O');
    deriveTables(session);
    file->needWhole();
    return result;
}

}  // namespace

LasFilePointer fileNamed(const Session& session, const std::string& path) {
    for (const InputSlot& slot : session.slots)
        if (slot.file && slot.path == path && slot.file->path() == path) return slot.file;
    return openLasFile(path);
}

bool readHeader(const App& app, const Session& session, const LasFile& file, InputSlot& slot, SlotChannels& channels,
                SlotLoadResult& result) {
    const bool filled = fillInputSlot(file, slot) && slot.linesPerStep > 0;
    if (!filled && !session.loose) {
        const DataShape& shape = file.shape();
        result.firstLineNumber = shape.firstLineNumber;
        result.differingLineNumber = shape.differingLineNumber;
        result.why = shapeProblem(shape);
        return false;
    }
    channels = readSlotChannels(file);
    if (!filled && !takeLooseShape(file, channels.size(), slot)) {
        result.why = "no ~A section with data and channels was found";
        return false;
    }
    result.unknownUnits = checkUnits(app.reference, unitsOf(channels));
    return true;
}

SlotLoadResult Open4Files(App& app, Session& session, int slot) {
    if (slot < 0 || slot >= slotCount) return {.status = LoadStatus::Failed, .why = "there is no such slot"};
    std::string& path = session.slots[slot].path;
    SlotLoadResult result;
    try {
        if (!app.run.commandMode && path.empty() && fileExists(app.run.lasFile)) path = app.run.lasFile;
        if (!fileExists(path)) return freeWithoutFile(session, slot);
        LasFilePointer file = currentFile(session, slot);
        if (mayReadUnixFile(app, path, file)) {
            // The tables are built in a copy, so that a failure half way leaves none of them torn.
            Session next = session;
            result = loadInto(app, next, slot, file);
            session = std::move(next);
            return result;
        }
        result = {.status = LoadStatus::Declined, .why = "its lines end in LF only"};
    } catch (const FileFailure& failure) {
        result = {.status = LoadStatus::Unreadable, .why = failure.reason()};
    } catch (const std::exception& error) {
        result = {.status = LoadStatus::Failed, .why = error.what()};
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
    deriveTables(session);
}

namespace {

/// The first other slot that is loaded; -1 for none.
int firstOther(const Session& session, int slot) {
    for (int other = 0; other < slotCount; ++other)
        if (other != slot && session.loaded(other)) return other;
    return -1;
}

/// The unit, the null and the step that the slot's file gives the output. By true figures unit and null are the first
/// input's, and the step is the finest, on which every sample has its place.
void showGrid(Session& session, int slot) {
    const InputSlot& facts = session.slots[slot];
    SessionTables& tables = session.tables;
    const bool isTrue = facts.data != nullptr;
    const int other = isTrue ? firstOther(session, slot) : -1;
    const double step = std::abs(facts.step);
    const std::string stepText = isTrue ? stripZeros(formatMask(step, 12)) : formatMask(step, 4);
    if (other >= 0) {
        const double shown = val(tables.setting(PrdRow::SampleRate));
        if (step != 0 && (shown == 0 || step < shown)) tables.setting(PrdRow::SampleRate) = stepText;
    } else {
        tables.setting(PrdRow::SampleRate) = stepText;
    }
    if (other >= 0 && other < slot) return;
    const std::string unit = isTrue ? depthUnitText(facts.data->unit) : depthUnitLetter(facts.depthUnit);
    tables.setting(PrdRow::DepthUnits) = unit;
    tables.prd.data(PrdRow::DepthUnits, PrdColumn::Setting) = unit;
    tables.setting(PrdRow::Null) = facts.nullText;
    const bool down = isTrue ? facts.data->spacing.direction > 0 : facts.start - facts.stop < 0;
    tables.setting(PrdRow::Direction) = textOf(down ? Direction::ShallowToDeep : Direction::DeepToShallow);
}

}  // namespace

void showSlot(App& app, Session& session, int slot) {
    const InputSlot& facts = session.slots[slot];
    SessionTables& tables = session.tables;
    tables.fsL[2 * slot] = facts.data ? depthText(facts.topDepth) : formatMask(facts.topDepth, 4);
    tables.fsL[2 * slot + 1] = facts.data ? depthText(facts.bottomDepth) : formatMask(facts.bottomDepth, 4);
    const DepthRange range = depthRange(session);
    tables.setting(PrdRow::From) = formatMask(range.shallowest, 4);
    tables.setting(PrdRow::To) = formatMask(range.deepest, 4);
    showGrid(session, slot);
    tables.setting(PrdRow::DepthOffset) = "0";
    tables.setting(PrdRow::Wrap) = textOf(sameText(facts.wrap, "NO") ? Wrap::No : Wrap::Yes);
    const auto version = versionOf(val(facts.lasVersion));
    tables.setting(PrdRow::Vers) = version ? textOf(*version) : facts.lasVersion;
    tables.setting(PrdRow::HeaderFile) = facts.path;
    int position = 0;
    for (int before = 0; before < slot; ++before) position += session.loaded(before) ? 1 : 0;
    tables.prd.data(PrdRow::HeaderFile, PrdColumn::Setting) = std::to_string(position);
    showFormat(app, session);
}

void fillSlotTable(Session& session, int slot, int total, int offset) {
    Table& table = session.tables.srd[slot];
    const std::string label = fileLabel(slot);
    table.text(0, 0) = label;
    // All five tables share one column numbering, so a free slot has as many columns as the others.
    table.resize(slotRowCount, 1);
    table.resize(slotRowCount, total + 1);
    table.setRowHidden(SlotRow::Index, true);
    const SlotChannels& channels = session.channels[slot];
    if (channels.size() < 2) return;
    for (int column = 1; column <= total; ++column) table.text(0, column) = std::to_string(column);
    for (std::size_t index = 1; index < channels.size(); ++index) {
        const HeaderField& field = channels[index].field;
        const int column = offset + static_cast<int>(index);
        table.text(SlotRow::Mnem, column) = field.mnem;
        table.text(SlotRow::Unit, column) = field.unit;
        table.text(SlotRow::Value, column) = field.value;
        table.text(SlotRow::Desc, column) = field.desc;
        table.text(SlotRow::Index, column) = std::to_string(index);
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
        table.text(row, FieldColumn::Mnem) = line.mnem;
        table.text(row, FieldColumn::Dot) = ".";
        table.text(row, FieldColumn::Unit) = line.unit;
        table.text(row, FieldColumn::Value) = line.value;
        table.text(row, FieldColumn::Colon) = ":";
        table.text(row, FieldColumn::Desc) = line.desc;
        table.setBackColour(row, FieldColumn::Dot, colours::fixed);
        table.setBackColour(row, FieldColumn::Colon, colours::fixed);
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
        table.setRowHidden(row, isFilterLine(trim(table.text(row, FieldColumn::Mnem))));
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

void sectionOrder(Session& session, const LasFile* file) {
    resetOrd(session);
    Table& table = session.tables.ord;
    const int last = table.columns() - 1;
    // A section that this file does not have may come from another one's header.
    if (session.rules == FigureRules::trueFigures)
        for (int place = 1; place <= last; ++place) table.setCheck(OrdRow::Include, place, Check::Checked);
    if (file == nullptr) return;
    int column = 0;
    for (const std::string_view title : file->text().titles()) {
        if (++column > last) break;
        const char letter = title.size() > 1 ? upperChar(title[1]) : ' ';
        // The last column names the data section, whatever stands sixth in the file.
        if (column == last && letter != 'A') break;
        table.text(OrdRow::Name, column) = title;
        table.setCheck(OrdRow::Include, column, Check::Checked);
        constexpr std::string_view main = "VWCPO";
        if (main.find(letter) != npos) table.setBackColour(OrdRow::Name, column, colours::fixed);
    }
}

}  // namespace welvane
