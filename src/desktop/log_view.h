#pragma once

#include <QTimer>
#include <QWidget>
#include <functional>
#include <optional>

#include "jobs/background_job.h"
#include "models/frame.h"
#include "models/log_preview.h"

class QComboBox;
class QLabel;

namespace welvane {

/// The painted logs: wheel and arrows scroll, Ctrl and the wheel or + and - zoom, the pointer reads.
class LogCanvas : public QWidget {
  public:
    LogCanvas(LogPreview& preview, std::function<void(const QString&)> tell, QWidget* parent);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;

  private:
    LogPreview& preview_;
    std::function<void(const QString&)> tell_;
    std::optional<QPointF> pointer_;
};

/// The tab "Preview": the logs of the new file, made anew behind each edit, or those of the inputs.
class LogView : public QWidget {
  public:
    /// `platform` is the preview's own.
    LogView(Frame& frame, Platform& platform, QWidget* parent);
    ~LogView() override;

    /// The session may have changed: what is shown follows, a little later.
    void refresh();
    /// The picture as a file, SVG by its name or PNG.
    void exportPicture();
    /// True when what is shown is what the session gives.
    bool settled() const { return !job_ && !wait_.isActive(); }

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void start();
    void follow();
    void addTools();

    Frame& frame_;
    Platform& platform_;
    LogPreview preview_;
    LogCanvas* canvas_;
    QComboBox* what_ = nullptr;
    QLabel* readout_ = nullptr;
    QTimer wait_, poll_;
    std::optional<BackgroundJob> job_;
    std::shared_ptr<SharedLogs> result_;
    std::unique_ptr<Session> shownFor_;  ///< what the picture was made of
    bool stale_ = true;
};

}  // namespace welvane
