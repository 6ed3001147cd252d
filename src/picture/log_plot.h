#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "picture/drawing.h"
#include "picture/extremes.h"
#include "picture/scales.h"

/// A log plot as a plan: which curves in which tracks, on which scales. What is drawn of it is told in log_drawing.h.
namespace welvane {

/// Channels to be plotted: those of a file, or of an output that is not written yet. The columns are not copied: they
/// have to outlive the plot.
struct PlotSource {
    std::string name;                   ///< of the file, without its folder
    std::string extent;                 ///< what is said beside it, such as its range; may be empty
    std::vector<std::string> title;     ///< lines of ~Well, the well's name first; may be empty
    std::string indexName, indexUnit;   ///< of the depths
    std::span<const double> depths;     ///< ascending, none of them NaN
    std::vector<CurveValues> channels;  ///< as many values as depths each
};

/// One curve of a track as it was asked for: "GR", "ILD:log", "GR:0:200", "RT:log:0.1:100".
struct CurveChoice {
    std::string name;
    std::optional<bool> logarithmic{};
    std::optional<double> left{}, right{};  ///< both or none
};
using TrackChoices = std::vector<std::vector<CurveChoice>>;
/// Reads "GR,CALI;ILD:log,ILM:log;RHOB,NPHI": tracks between ";", curves between ",". RunTimeFailure tells what cannot
/// be read.
TrackChoices readTracks(std::string_view text);
/// One curve of it. RunTimeFailure.
CurveChoice readCurveChoice(std::string_view text);

enum class PlotLayout {
    Side,  ///< a panel of tracks for each source, side by side over one depth axis
    Over   ///< the sources over each other in the same tracks, each in its slot's colour
};

struct PlotWishes {
    TrackChoices tracks{};              ///< what is drawn where; empty: by custom
    std::vector<CurveChoice> curves{};  ///< only these, in tracks by custom; empty: all
    PlotLayout layout = PlotLayout::Side;
};

/// A channel of a source on its scale.
struct PlottedChannel {
    std::size_t source = 0, channel = 0;
    Scale scale;
};
/// What one head of a track tells of: a channel, or what several sources have under its name or group.
struct PlottedCurve {
    std::string mnem, unit;
    Scale scale;  ///< of the first channel
    TrackKind kind = TrackKind::Other;
    std::vector<PlottedChannel> channels;
};
using PlottedTrack = std::vector<PlottedCurve>;
struct PlottedPanel {
    std::vector<std::size_t> sources;
    std::vector<PlottedTrack> tracks;
};
struct LogPlot {
    std::vector<PlottedPanel> panels;
    bool over = false;  ///< colours tell sources, not curves
    /// Channels that found no room, with their sources' names: "DTS of a.las".
    std::vector<std::string> leftOut;
    /// Channels on a logarithmic scale, and how many of their values are 0 or less.
    struct BelowZero {
        std::size_t source, channel, count;
    };
    std::vector<BelowZero> belowZero;
};

/// Tracks by custom: correlation, resistivity, porosity, sonic, then the others, with at most four curves each (three
/// of one unit for the others) and ten tracks in all. RunTimeFailure for a name that no source has (with those that
/// they have), and for a logarithmic scale that does not lie above 0.
LogPlot planPlot(const ReferenceTables& reference, const std::vector<PlotSource>& sources, const PlotWishes& wishes);

}  // namespace welvane
