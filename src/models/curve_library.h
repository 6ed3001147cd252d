#pragma once

#include <string>
#include <string_view>

#include "jobs/library.h"
#include "models/table_model.h"
#include "session/session.h"

/// The window of the command ID_CurveLibrary: groups of curves and of units, their rows, and the channels of a LAS file
/// that may join them. An edit goes to the reference tables of the process at once, and to the files when it is saved.
namespace welvane {

/// Columns of ard: a channel of the opened LAS file.
enum class ArdColumn { Number = 0, Name, Units, Value, Desc, Group };
/// Columns of lrd: a group of curves.
enum class LrdColumn { Name = 0, UniqueValue, CanadianUnit, OtherUnit };
/// Columns of ugd: a group of units.
enum class UgdColumn { Name = 0, InternalUnit };
/// Columns of crd: a curve of the group that is shown.
enum class LibraryCrdColumn { Name = 0, Desc, Group };
/// Columns of urd: a unit of the group that is shown.
enum class UrdColumn { Unit = 0, Factor, Offset, Group };

/// Row 0 of each table holds the heads, a row per entry follows. Lives as long as its window.
class CurveLibrary {
  public:
    explicit CurveLibrary(App& app);
    CurveLibrary(const CurveLibrary&) = delete;
    CurveLibrary& operator=(const CurveLibrary&) = delete;

    /// To be looked at; edits go through the models.
    const Table& ard() const { return ard_; }
    const Table& lrd() const { return lrd_; }
    const Table& ugd() const { return ugd_; }
    const Table& crd() const { return crd_; }
    const Table& urd() const { return urd_; }
    /// Something differs from the files.
    bool changed() const { return changed_; }

    /// The rows of a group of lrd or ugd by its row; any other row shows none.
    void showCurvesOfGroup(int row);
    void showUnitsOfGroup(int row);
    /// The group that is shown; "" for none.
    const std::string& shownGroup(LibraryPart part) const { return part == LibraryPart::Curves ? curves_ : units_; }
    /// What pointing at a row of crd tells.
    std::string curveHelp(int row) const;

    /// Asks for a LAS file and shows its channels; saves the changes so far first. False when there is none to show.
    bool openLASLibAdd();
    /// The channels of ard go into their groups; those with "<none>" stay. A box lists what could not be added.
    LibraryAdditions addToLibrary();

    /// The grids. An edit of a name goes to all that depends on it; a group column moves its row to that group. An edit
    /// that cannot be says why in its outcome.
    CellTableModel ardModel();
    CellTableModel lrdModel();
    CellTableModel ugdModel();
    CellTableModel crdModel();
    CellTableModel urdModel();

    /// Rows are added, moved and deleted: in lrd and ugd, and in what is shown of a group. A group that has members is
    /// deleted with them after a question. `steps` is negative for up.
    EditOutcome addGroup(LibraryPart part, const std::string& name);
    EditOutcome deleteGroup(LibraryPart part, int row);
    EditOutcome moveGroup(LibraryPart part, int row, int steps);
    EditOutcome addRow(LibraryPart part, const std::string& name);
    EditOutcome deleteRow(LibraryPart part, int row);
    EditOutcome moveRow(LibraryPart part, int row, int steps);

    /// Writes both files; a box tells which could not be.
    bool save();
    /// On leaving with changes: "Save Changes?". Yes writes both files, No reads both. False when the window has to
    /// stay, as the changes could not be saved.
    bool leave();

  private:
    template <class Body>
    EditOutcome attemptEdit(const Body& body);
    void showGroups();
    void showRows();
    void editArd(const CellEdit& edit);
    void editLrd(const CellEdit& edit);
    void editUgd(const CellEdit& edit);
    void editCrd(const CellEdit& edit);
    void editUrd(const CellEdit& edit);
    std::string groupList(LibraryPart part, bool withNone) const;

    App& app_;
    Table ard_, lrd_, ugd_, crd_, urd_;
    std::string curves_, units_;
    bool changed_ = false;
};

}  // namespace welvane
