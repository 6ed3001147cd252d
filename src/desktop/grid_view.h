#pragma once

#include <QTableView>
#include <functional>
#include <memory>
#include <optional>

#include "desktop/grid_model.h"
#include "models/clipboard.h"

class QMenu;

namespace welvane {

/// A grid of a window: shows a TableModel, edits by its rules, offers its pick lists, exchanges blocks of cells with
/// the clipboard.
class GridView : public QTableView {
  public:
    /// `changed` is called behind each edit.
    GridView(std::unique_ptr<TableModel> table, const QString& name, std::function<void(const EditOutcome&)> changed,
             QWidget* parent);

    void refresh();
    /// Widths by what the columns hold, at most a third of the view.
    void fitColumns();
    /// All columns as wide as this; what they hold counts again for none.
    void useWidth(std::optional<int> pixels);
    /// Another font, with rows and columns to fit; nothing happens for the one it has.
    void useFont(const QFont& font);
    GridModel& grid() { return model_; }

    /// What a double click, F4 or the menu's "Browse..." does on a cell that offers "..."; row and column as in the
    /// table.
    void setBrowse(std::function<void(int row, int column)> browse) { browse_ = std::move(browse); }
    /// Fills the menu of the current cell.
    void setMenu(std::function<void(int row, int column, QMenu& menu)> fill) { fillMenu_ = std::move(fill); }
    /// What the Delete key does in place of emptying the marked cells.
    void setClear(std::function<void(const CellArea& area)> clear) { clear_ = std::move(clear); }
    /// In place of the edit rules: a text that is pasted from the current cell on.
    void setPaste(std::function<void(int row, int column, const std::string& text)> paste) {
        paste_ = std::move(paste);
    }

    /// The commands of the Edit menu on the marked cells.
    void cut();
    void copy();
    void paste();
    void clearMarked();
    /// Goes to the next cell that holds the text, case ignored, behind the current one and round about. False when
    /// there is none.
    bool find(const QString& text);

  protected:
    bool edit(const QModelIndex& cell, EditTrigger trigger, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    std::optional<int> width_;  ///< of each column, where one was chosen
    /// The marked cells as a block of the table; the current cell where none are.
    CellArea marked() const;
    bool browses(const QModelIndex& cell) const;
    void browseCurrent();

    GridModel model_;
    std::function<void(int, int)> browse_;
    std::function<void(int, int, QMenu&)> fillMenu_;
    std::function<void(const CellArea&)> clear_;
    std::function<void(int, int, const std::string&)> paste_;
};

}  // namespace welvane
