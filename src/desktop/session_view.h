#pragma once

#include <QTabWidget>
#include <array>
#include <functional>

#include "desktop/grid_view.h"
#include "models/frame.h"

namespace welvane {

class CoverageView;

/// The tabs of a session: the channels of its files over those of the output, the coverage, the properties, and the
/// header's sections.
class SessionView : public QTabWidget {
  public:
    /// `changed` is called behind each edit.
    SessionView(Frame& frame, std::function<void(const EditOutcome&)> changed, QWidget* parent);

    ~SessionView() override;

    /// Everything that is shown, anew.
    void refresh();

  private:
    GridView* addGrid(QWidget* parent, std::unique_ptr<TableModel> table, const QString& name);
    void addChannels();
    void addTables();
    std::vector<GridView*> channelGrids() const;
    /// A channel of the output stands under those of the inputs that feed it, also when one of the grids is scrolled.
    void scrollTogether();
    void alignChannels();
    void refreshInput(int slot);
    void markCurrentChannel(const QModelIndex& cell);

    Frame& frame_;
    std::function<void(const EditOutcome&)> changed_;
    std::vector<GridView*> grids_;
    std::array<GridView*, slotCount> inputs_{};
    GridView* output_ = nullptr;
    CoverageView* coverage_ = nullptr;
    int fittedFor_ = -1;  ///< channels when widths were fitted last
};

}  // namespace welvane
