#pragma once

#include <QSplitter>
#include <array>
#include <functional>

#include "desktop/grid_view.h"
#include "models/channels_tab.h"

namespace welvane {

/// The tab "Channels": the channels of up to four files over those of the new one, all on the same columns.
class ChannelsView : public QSplitter {
  public:
    /// `changed` is called behind each edit.
    ChannelsView(Frame& frame, std::function<void(const EditOutcome&)> changed, QWidget* parent);
    ~ChannelsView() override;

    void refresh();

  protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void addInputs();
    void addOutput();
    std::optional<FunctionDescriptor> chooseFunction(int column, std::string_view old, std::string_view chosen);
    std::vector<GridView*> grids() const;
    /// A channel of the output stands under those of the inputs that feed it, also when one of the grids is scrolled.
    void scrollTogether();
    void alignColumns();
    QString columnNumbers() const;
    void refreshInput(int slot);
    void hideFreeRows();
    void fillMenu(int row, int column, QMenu& menu);
    void browse(int slot);
    void adjust(int row, int column);
    void moveColumn(int from, int to);
    /// Something that undo takes back as one step, then everything anew.
    void asStep(const std::string& text, const std::function<void()>& act);
    /// Row of srd(4) under a point; 0 beside the rows.
    int rowAt(const QPoint& place) const;

    Frame& frame_;
    std::function<void(const EditOutcome&)> changed_;
    std::array<GridView*, slotCount> inputs_{};
    GridView* output_ = nullptr;
    std::array<std::string, slotCount> shownPaths_;
    QString fittedFor_;  ///< columns when widths were fitted last
    bool moving_ = false;
};

}  // namespace welvane
