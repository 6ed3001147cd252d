#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "jobs/plot_input.h"
#include "picture/log_drawing.h"
#include "picture/log_plot.h"
#include "session/session.h"

/// Logs as a person looks at them: the new file before it is written, or the files of a session beside each other.
namespace welvane {

/// What is to be drawn, read once and shared from then on.
struct LogSources {
    std::vector<PlotInput> inputs;
    std::vector<PlotSource> sources;  ///< look into the inputs
    LogPlot plot;
    std::string why;  ///< why there is nothing to see
};
using SharedLogs = std::shared_ptr<const LogSources>;

/// The files of the slots, panel by panel. For a job: it reads them. A failure stands in `why`.
SharedLogs readInputLogs(App& app, const Session& session);
/// What a run of the session would write. For a job: app and session are its copies.
SharedLogs readOutputLogs(App& app, Session& session);

/// A picture of logs with its zoom and what stands under the pointer.
class LogPreview {
  public:
    /// Other logs. The part of the depths that is in view stays where they overlap with what there was.
    void show(SharedLogs logs);
    bool empty() const { return !logs_ || logs_->plot.panels.empty(); }
    /// What to say in place of a picture.
    std::string message() const;

    /// The picture in this size; nothing where there is none, or no room for it.
    Drawing drawing(double width, double height);
    /// Parts of what is in view, 1 for all of it: by how much to move down, and what to make of it around the depth at
    /// `y` of the last picture.
    void scroll(double share);
    void zoom(double factor, double y);
    void whole();
    double top() const { return page_.top; }
    double bottom() const { return page_.bottom; }
    /// Depth at a height of the last picture; nothing beside the tracks.
    std::optional<double> depthAt(double y) const;
    /// That depth, and the values of the curves of the track under the pointer.
    std::string readout(double x, double y) const;

  private:
    struct Track {
        std::string channel;
        Area area;
    };
    void keepInside();
    void findTracks(const Drawing& drawing);
    std::string valueAt(const std::string& channel, double depth) const;

    SharedLogs logs_;
    PlotPage whole_, page_;
    std::vector<Track> tracks_;  ///< of the last picture, one for each curve
};

}  // namespace welvane
