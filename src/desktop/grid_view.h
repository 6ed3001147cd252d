#pragma once

#include <QTableView>
#include <functional>
#include <memory>

#include "desktop/grid_model.h"

namespace welvane {

/// A grid of a window: shows a TableModel, edits by its rules, offers its pick lists.
class GridView : public QTableView {
  public:
    /// `changed` is called behind each edit.
    GridView(std::unique_ptr<TableModel> table, const QString& name, std::function<void(const EditOutcome&)> changed,
             QWidget* parent);

    void refresh();
    /// Widths by what the columns hold, at most a third of the view.
    void fitColumns();
    GridModel& grid() { return model_; }

  private:
    GridModel model_;
};

}  // namespace welvane
