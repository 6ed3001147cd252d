#pragma once

#include <QTabWidget>
#include <functional>

#include "models/frame.h"
#include "models/table_model.h"

namespace welvane {

class ChannelsView;
class CoverageView;
class GridView;
class HeaderView;
class JobWatch;
class LogView;
class MakeLasView;
class SurveyView;

/// The tabs of a session: channels, coverage, properties, header, survey, a table to make LAS of, and the preview.
class SessionView : public QTabWidget {
  public:
    /// `changed` is called behind each edit; `previews` is the platform of the preview's jobs.
    SessionView(Frame& frame, JobWatch& jobs, Platform& previews,
                const std::function<void(const EditOutcome&)>& changed, QWidget* parent);
    ~SessionView() override;

    /// Everything that is shown, anew.
    void refresh();
    LogView& logs() { return *logs_; }
    /// The tab behind the six that a session is told of.
    void showPreview();

  private:
    Frame& frame_;
    ChannelsView* channels_;
    CoverageView* coverage_;
    GridView* properties_;
    HeaderView* header_;
    SurveyView* survey_;
    MakeLasView* makeLas_;
    LogView* logs_;
    SessionTab followed_ = SessionTab::Channels;  ///< the frame's tab when it was looked at last
};

}  // namespace welvane
