#pragma once

#include <QAbstractTableModel>
#include <functional>
#include <memory>

#include "models/table_model.h"

namespace welvane {

/// The one bridge from a TableModel to a view of Qt: heads become headers, everything else is passed through.
class GridModel : public QAbstractTableModel {
  public:
    /// `changed` is called behind each edit, with why it was refused ("" when it was not).
    GridModel(std::unique_ptr<TableModel> table, std::function<void(const EditOutcome&)> changed);

    TableModel& table() { return *table_; }
    const TableModel& table() const { return *table_; }
    int tableRow(int row) const { return row + table_->headRows(); }
    int tableColumn(int column) const { return column + table_->headColumns(); }
    /// What every edit leads to; for changes that did not go through this model too.
    void tellChange(const EditOutcome& outcome) { changed_(outcome); }
    /// Anything may have changed, the size too.
    void refresh();
    /// Chooses item `item` of the cell's list.
    void choose(const QModelIndex& cell, int item, const QString& text);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& cell, int role) const override;
    QVariant headerData(int section, Qt::Orientation direction, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& cell) const override;
    bool setData(const QModelIndex& cell, const QVariant& value, int role) override;

  private:
    bool done(const EditOutcome& outcome);

    std::unique_ptr<TableModel> table_;
    std::function<void(const EditOutcome&)> changed_;
    int rows_ = 0, columns_ = 0;
};

}  // namespace welvane
