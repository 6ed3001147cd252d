#include "desktop/session_view.h"

#include "desktop/channels_view.h"
#include "desktop/coverage_view.h"
#include "desktop/header_view.h"
#include "desktop/log_view.h"
#include "desktop/make_las_view.h"
#include "desktop/survey_view.h"
#include "models/session_files.h"
#include "models/table_models.h"

namespace welvane {

SessionView::SessionView(Frame& frame, JobWatch& jobs, Platform& previews,
                         const std::function<void(const EditOutcome&)>& changed, QWidget* parent)
    : QTabWidget(parent),
      frame_(frame),
      channels_(new ChannelsView(frame, changed, this)),
      coverage_(new CoverageView(frame, changed, this)),
      properties_(new GridView(
          std::make_unique<UndoableModel>(std::make_unique<CellTableModel>(propertiesModel(frame.app, frame.session)),
                                          SessionGrid::Properties, frame.history, frame.app, frame.session),
          "Properties", changed, this)),
      header_(new HeaderView(frame, changed, this)),
      survey_(new SurveyView(frame, changed, this)),
      makeLas_(new MakeLasView(frame, jobs, changed, this)),
      logs_(new LogView(frame, previews, this)) {
    setAccessibleName("Session");
    properties_->setBrowse([this, changed](int, int) {
        browseFilter(frame_.app, frame_.session);
        changed({});
    });
    addTab(channels_, "Cha&nnels");
    addTab(coverage_, "&Visualization");
    addTab(properties_, "&Properties");
    addTab(header_, "Hea&der");
    addTab(survey_, "Surve&y");
    addTab(makeLas_, "&Make LAS");
    addTab(logs_, "P&review");
    properties_->fitColumns();
    connect(this, &QTabWidget::currentChanged, this, [this](int tab) {
        if (tab < indexOf(logs_)) followed_ = frame_.tab = static_cast<SessionTab>(tab);
    });
    refresh();
}

// Tabs that are taken away one by one would each make the next one current.
SessionView::~SessionView() {
    disconnect(this, nullptr, this, nullptr);
}

void SessionView::showPreview() {
    setCurrentWidget(logs_);
}

void SessionView::refresh() {
    channels_->refresh();
    coverage_->refresh();
    properties_->refresh();
    header_->refresh();
    survey_->refresh();
    makeLas_->refresh();
    logs_->refresh();
    if (followed_ == frame_.tab) return;
    followed_ = frame_.tab;
    setCurrentIndex(static_cast<int>(frame_.tab));
}

}  // namespace welvane
