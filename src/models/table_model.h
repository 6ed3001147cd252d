#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "shared/table.h"

/// One face for every grid that a window shows, whatever holds its cells.
namespace welvane {

/// A finished edit: the new text, and the position of the chosen list item (-1 when none was chosen from the list).
struct CellEdit {
    TableIndex row = 0, column = 0;
    std::string text;
    int comboIndex = -1;
};

/// What became of an edit; `why` is for the user, and empty where a box has told it.
struct EditOutcome {
    bool done = true;
    std::string why{};
};

/// Rows and columns count from 0, heads among them. One edit may change any cell of the table, so a view asks anew.
class TableModel {
  public:
    virtual ~TableModel() = default;

    virtual std::int64_t rows() const = 0;
    virtual int columns() const = 0;
    /// Rows and columns at the begin that are heads.
    virtual int headRows() const { return 1; }
    virtual int headColumns() const { return 1; }
    virtual bool rowHidden(std::int64_t row) const;

    virtual std::string text(std::int64_t row, int column) const = 0;
    virtual Check check(std::int64_t row, int column) const;
    virtual std::uint32_t backColour(std::int64_t row, int column) const;
    /// Items joined by "|"; "" for a plain cell, "..." for one with a browse button.
    virtual std::string pickList(std::int64_t row, int column) const;
    virtual bool mayEdit(std::int64_t row, int column) const;

    /// Edits a cell by its text or by item `item` of its list. Nothing changes in a cell that takes no edit.
    EditOutcome edit(std::int64_t row, int column, const std::string& text, int item = -1);
    /// Sets the check of a cell that has one, or takes it off.
    EditOutcome setCheck(std::int64_t row, int column, bool on);
    /// Runs a body of several edits, which can be taken back as one where edits can be taken back at all.
    virtual void asOneStep(const std::string& text, const std::function<void()>& body);

  protected:
    virtual void applyEdit(std::int64_t row, int column, const std::string& text, int item);
    virtual void applyCheck(std::int64_t row, int column, bool on);

  private:
    EditOutcome attemptEdit(std::int64_t row, int column, const std::function<void()>& body);
};

/// What a table's cells take and offer; an empty rule allows nothing. Row and column as in the table.
struct TableRules {
    int headRows = 1, headColumns = 1;
    std::function<bool(TableIndex row, TableIndex column)> mayEdit{};
    std::function<std::string(TableIndex row, TableIndex column)> pickList{};
    std::function<void(const CellEdit& edit)> edit{};
    std::function<void(TableIndex row, TableIndex column, bool on)> check{};
};

/// A Table with its rules. The table outlives the model and may change its size under it.
class CellTableModel : public TableModel {
  public:
    CellTableModel(Table& table, TableRules rules);

    std::int64_t rows() const override;
    int columns() const override;
    int headRows() const override;
    int headColumns() const override;
    bool rowHidden(std::int64_t row) const override;
    std::string text(std::int64_t row, int column) const override;
    Check check(std::int64_t row, int column) const override;
    std::uint32_t backColour(std::int64_t row, int column) const override;
    std::string pickList(std::int64_t row, int column) const override;
    bool mayEdit(std::int64_t row, int column) const override;

  protected:
    void applyEdit(std::int64_t row, int column, const std::string& text, int item) override;
    void applyCheck(std::int64_t row, int column, bool on) override;

  private:
    Table& table_;
    TableRules rules_;
};

}  // namespace welvane
