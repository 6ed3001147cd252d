#pragma once

#include <QWidget>
#include <array>
#include <functional>

#include "desktop/grid_view.h"
#include "models/frame.h"

class QCheckBox;
class QPlainTextEdit;
class QTabWidget;

namespace welvane {

/// The tab "Header": the sections in their order, the lines of ~Well and ~Parameter, the text of ~Other, the filter.
class HeaderView : public QWidget {
  public:
    /// `changed` is called behind each edit.
    HeaderView(Frame& frame, std::function<void(const EditOutcome&)> changed, QWidget* parent);
    ~HeaderView() override;

    void refresh();

  private:
    GridView* addGrid(QWidget* parent, std::unique_ptr<TableModel> table, SessionGrid kind, const QString& name);
    void addSections();
    GridView* addLines(Table& table, SessionGrid kind, const QString& name);
    void addOther();
    void addFilter();
    void moveColumn(int from, int to);
    void asStep(const std::string& text, const std::function<EditOutcome()>& act);

    Frame& frame_;
    std::function<void(const EditOutcome&)> changed_;
    QTabWidget* parts_;
    std::vector<GridView*> grids_;
    GridView* sections_ = nullptr;
    std::array<GridView*, slotCount> parameters_{};
    QPlainTextEdit* other_ = nullptr;
    QCheckBox* filterOn_ = nullptr;
    bool filling_ = false;
};

}  // namespace welvane
