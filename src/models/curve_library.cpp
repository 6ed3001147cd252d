#include "models/curve_library.h"

#include <exception>
#include <utility>

#include "las/las_file.h"
#include "session/session_tables.h"
#include "shared/failure.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view openTitle = "Open LAS To Add to Library";
constexpr std::string_view channelsCaption = "LAS Channels from :";
constexpr std::string_view saveTitle = "Save Changes?";
constexpr std::string_view saveText =
    "Changes were made to either Channels or Units that should saved. Do you want to save them before quitting this "
    "window?";

using Texts = std::vector<std::string>;

/// A table with its heads and no rows.
Table headed(const Texts& heads) {
    Table table;
    table.addRow(heads);
    return table;
}

const std::string& nameOfRow(const Table& table, int row) {
    if (row < 1) throw RunTimeFailure("subscript out of range");
    return table.text(row, 0);
}

TableRules editAll(std::function<void(const CellEdit&)> edit) {
    TableRules rules;
    rules.headColumns = 0;
    rules.mayEdit = [](TableIndex row, TableIndex) { return row > 0; };
    rules.edit = std::move(edit);
    return rules;
}

}  // namespace

CurveLibrary::CurveLibrary(App& app)
    : app_(app),
      ard_(headed({"#", "Channel Name", "Channel Units", "Channel Value", "Channel Desc", "Channel Group"})) {
    showGroups();
    showRows();
}

void CurveLibrary::showGroups() {
    lrd_ = headed({"Group Name", "Unique Value", "Canadian Unit", "Other Unit"});
    for (const CurveGroup& group : app_.reference.curveGroups)
        lrd_.addRow({group.group, group.uniqueValue, group.canadianUnit, group.otherUnit});
    ugd_ = headed({"Group Name", "Internal Units"});
    for (const UnitGroup& group : app_.reference.unitGroups) ugd_.addRow({group.group, group.internalUnit});
}

void CurveLibrary::showRows() {
    const ReferenceTables& tables = app_.reference;
    crd_ = headed({"Channel Name", "Channel Desc", "Channel Group"});
    if (!curves_.empty())
        for (const std::size_t row : membersOfGroup(tables, LibraryPart::Curves, curves_))
            crd_.addRow({tables.curves[row].mnem, tables.curves[row].desc, tables.curves[row].group});
    urd_ = headed({"External Unit", "Factor", "Offset", "Unit Group"});
    if (!units_.empty())
        for (const std::size_t row : membersOfGroup(tables, LibraryPart::Units, units_))
            urd_.addRow({tables.units[row].externalUnit, plainNumber(tables.units[row].factor),
                         plainNumber(tables.units[row].offset), tables.units[row].group});
}

void CurveLibrary::showCurvesOfGroup(int row) {
    curves_ = row > 0 && row < lrd_.rows() ? lrd_.text(row, LrdColumn::Name) : std::string();
    showRows();
}

void CurveLibrary::showUnitsOfGroup(int row) {
    units_ = row > 0 && row < ugd_.rows() ? ugd_.text(row, UgdColumn::Name) : std::string();
    showRows();
}

std::string CurveLibrary::curveHelp(int row) const {
    if (row < 1 || row >= crd_.rows()) return "Known Channels";
    return "Known Channels: " + crd_.text(row, LibraryCrdColumn::Name) +
           "\nDescription: " + crd_.text(row, LibraryCrdColumn::Desc) + "\nMember of Channel group " + curves_;
}

bool CurveLibrary::openLASLibAdd() {
    const std::string path = app_.user.askFile({std::string(openTitle), "las", dirOf(app_.run.lasFile), "", false});
    if (path.empty() || (changed_ && !save())) return false;
    std::string why = "it has no ~Curve section with lines";
    SectionTable lines;
    try {
        lines = openLasFile(path)->section('C', lettersAsTheyStand).value_or(SectionTable());
    } catch (const FileFailure& failure) {
        why = failure.reason();
    }
    if (lines.empty()) {
        showWarning(app_.user, "No Channels", path + ": " + why);
        return false;
    }
    ard_.resize(1, ard_.columns());
    for (const HeaderField& line : lines)
        ard_.addRow({std::to_string(ard_.rows()), line.mnem, line.unit, line.value, line.desc, std::string(noneText)});
    ard_.setCaption(std::string(channelsCaption) + path);
    return true;
}

LibraryAdditions CurveLibrary::addToLibrary() {
    std::vector<LibraryCandidate> candidates;
    for (int row = 1; row < ard_.rows(); ++row) {
        const std::string& group = ard_.text(row, ArdColumn::Group);
        if (sameText(group, noneText)) continue;
        HeaderField line;
        line.mnem = ard_.text(row, ArdColumn::Name);
        line.desc = ard_.text(row, ArdColumn::Desc);
        candidates.push_back({std::move(line), group});
    }
    LibraryAdditions additions = welvane::addToLibrary(app_.reference, candidates);
    changed_ = changed_ || !additions.added.empty();
    showRows();
    std::string told;
    for (const LibraryAdditions::LeftOut& left : additions.leftOut) told.append(left.mnem + ": " + left.why + "\n");
    if (!told.empty()) showWarning(app_.user, "Not Added", std::move(told));
    return additions;
}

std::string CurveLibrary::groupList(LibraryPart part, bool withNone) const {
    Texts names = groupNames(app_.reference, part);
    if (withNone) names.insert(names.begin(), std::string(noneText));
    return join(names, "|");
}

void CurveLibrary::editArd(const CellEdit& edit) {
    if (edit.column == ArdColumn::Group && !sameText(edit.text, noneText))
        membersOfGroup(app_.reference, LibraryPart::Curves, edit.text);
    ard_.text(edit.row, edit.column) = edit.text;
}

void CurveLibrary::editLrd(const CellEdit& edit) {
    const std::string before = nameOfRow(lrd_, edit.row);
    Texts fields;
    for (int column = 0; column < lrd_.columns(); ++column)
        fields.push_back(edit.column == column ? edit.text : lrd_.text(edit.row, column));
    changeCurveGroup(app_.reference, before, {fields[0], fields[1], fields[2], fields[3]});
    if (sameText(curves_, before)) curves_ = trim(fields[0]);
}

void CurveLibrary::editUgd(const CellEdit& edit) {
    const std::string before = nameOfRow(ugd_, edit.row);
    const bool name = edit.column == UgdColumn::Name;
    changeUnitGroup(app_.reference, before,
                    {name ? edit.text : before, name ? ugd_.text(edit.row, UgdColumn::InternalUnit) : edit.text});
    if (name && sameText(units_, before)) units_ = trim(edit.text);
}

void CurveLibrary::editCrd(const CellEdit& edit) {
    Texts fields;
    for (int column = 0; column < crd_.columns(); ++column)
        fields.push_back(edit.column == column ? edit.text : crd_.text(edit.row, column));
    changeCurve(app_.reference, curves_, nameOfRow(crd_, edit.row), {fields[2], fields[0], fields[1]});
}

void CurveLibrary::editUrd(const CellEdit& edit) {
    Texts fields;
    for (int column = 0; column < urd_.columns(); ++column)
        fields.push_back(edit.column == column ? edit.text : urd_.text(edit.row, column));
    changeUnit(app_.reference, units_, nameOfRow(urd_, edit.row),
               {fields[3], fields[0], strictDouble(fields[1]), strictDouble(fields[2])});
}

CellTableModel CurveLibrary::ardModel() {
    TableRules rules;
    rules.mayEdit = [](TableIndex row, TableIndex column) {
        return row > 0 && (column == ArdColumn::Name || column == ArdColumn::Desc || column == ArdColumn::Group);
    };
    rules.pickList = [this](TableIndex row, TableIndex column) {
        return row > 0 && column == ArdColumn::Group ? groupList(LibraryPart::Curves, true) : std::string();
    };
    rules.edit = [this](const CellEdit& edit) { editArd(edit); };
    return {ard_, std::move(rules)};
}

// An edit changes the tables of the process; what is shown is made anew of them.

CellTableModel CurveLibrary::lrdModel() {
    return {lrd_, editAll([this](const CellEdit& edit) {
                editLrd(edit);
                changed_ = true;
                showGroups();
                showRows();
            })};
}

CellTableModel CurveLibrary::ugdModel() {
    return {ugd_, editAll([this](const CellEdit& edit) {
                editUgd(edit);
                changed_ = true;
                showGroups();
                showRows();
            })};
}

CellTableModel CurveLibrary::crdModel() {
    TableRules rules = editAll([this](const CellEdit& edit) {
        editCrd(edit);
        changed_ = true;
        showRows();
    });
    rules.pickList = [this](TableIndex row, TableIndex column) {
        return row > 0 && column == LibraryCrdColumn::Group ? groupList(LibraryPart::Curves, false) : std::string();
    };
    return {crd_, std::move(rules)};
}

CellTableModel CurveLibrary::urdModel() {
    TableRules rules = editAll([this](const CellEdit& edit) {
        editUrd(edit);
        changed_ = true;
        showRows();
    });
    rules.pickList = [this](TableIndex row, TableIndex column) {
        return row > 0 && column == UrdColumn::Group ? groupList(LibraryPart::Units, false) : std::string();
    };
    return {urd_, std::move(rules)};
}

template <class Body>
EditOutcome CurveLibrary::attemptEdit(const Body& body) {
    try {
        body();
    } catch (const std::exception& error) {
        return {false, error.what()};
    }
    changed_ = true;
    showGroups();
    showRows();
    return {};
}

EditOutcome CurveLibrary::addGroup(LibraryPart part, const std::string& name) {
    return attemptEdit([&] {
        if (part == LibraryPart::Curves)
            addCurveGroup(app_.reference, {name, "", "", ""});
        else
            addUnitGroup(app_.reference, {name, ""});
    });
}

EditOutcome CurveLibrary::deleteGroup(LibraryPart part, int row) {
    std::string name;
    try {
        name = nameOfRow(part == LibraryPart::Curves ? lrd_ : ugd_, row);
        if (!mayRemoveGroup(app_, part, name)) return {false, ""};
    } catch (const std::exception& error) {
        return {false, error.what()};
    }
    std::string& shown = part == LibraryPart::Curves ? curves_ : units_;
    if (sameText(shown, name)) shown.clear();
    return attemptEdit([&] { removeGroup(app_.reference, part, name); });
}

EditOutcome CurveLibrary::moveGroup(LibraryPart part, int row, int steps) {
    return attemptEdit([&] {
        welvane::moveGroup(app_.reference, part, nameOfRow(part == LibraryPart::Curves ? lrd_ : ugd_, row), steps);
    });
}

EditOutcome CurveLibrary::addRow(LibraryPart part, const std::string& name) {
    return attemptEdit([&] {
        if (part == LibraryPart::Curves)
            addCurve(app_.reference, {curves_, name, ""});
        else
            addUnit(app_.reference, {units_, name, 1, 0});
    });
}

EditOutcome CurveLibrary::deleteRow(LibraryPart part, int row) {
    return attemptEdit([&] {
        removeMember(app_.reference, part, shownGroup(part), nameOfRow(part == LibraryPart::Curves ? crd_ : urd_, row));
    });
}

EditOutcome CurveLibrary::moveRow(LibraryPart part, int row, int steps) {
    return attemptEdit([&] {
        moveMember(app_.reference, part, shownGroup(part), nameOfRow(part == LibraryPart::Curves ? crd_ : urd_, row),
                   steps);
    });
}

bool CurveLibrary::save() {
    bool done = true;
    for (const LibraryPart part : {LibraryPart::Curves, LibraryPart::Units}) {
        // Nothing read and nothing made: no file has to appear.
        if (groupNames(app_.reference, part).empty() && !fileExists(libraryPath(app_, part))) continue;
        const std::string why = saveLibrary(app_, part);
        if (!why.empty()) showWarning(app_.user, "Can't Save Library", libraryPath(app_, part) + ": " + why);
        done = done && why.empty();
    }
    changed_ = changed_ && !done;
    showGroups();
    return done;
}

bool CurveLibrary::leave() {
    if (!changed_) return true;
    if (app_.user.ask({std::string(saveTitle), std::string(saveText), Buttons::YesNo, Icon::Question, Answer::No}) ==
        Answer::Yes)
        return save();
    readCurves(app_.reference, app_.settings.curvesPath);
    readUnits(app_.reference, app_.settings.unitsPath);
    changed_ = false;
    curves_.clear();
    units_.clear();
    showGroups();
    showRows();
    return true;
}

}  // namespace welvane
