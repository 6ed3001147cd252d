#include "picture/log_drawing.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "picture/traces.h"
#include "shared/failure.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr double margin = 14, panelGap = 22, indexWidth = 60, usualTrack = 150, leastTrack = 48, headHeight = 33,
                 lineHeight = 13, footHeight = 24, usualHeight = 1000, leastLogs = 80;
constexpr std::array<Dash, 4> dashes = {Dash::Solid, Dash::Dashed, Dash::DashDot, Dash::Dotted};

class LogPainter {
  public:
    LogPainter(const LogPlot& plot, const std::vector<PlotSource>& sources, const PlotPage& page)
        : plot_(plot), sources_(sources) {
        drawing_.title = plotTitle();
        settleHeights(page);
        settleWidths(page);
        axis_ = {page.top, page.bottom, logsTop_, logsBottom_};
        for (const PlotSource& source : sources) rows_.push_back(pixelRows(source.depths, axis_));
    }

    Drawing drawing() {
        double left = margin;
        for (const PlottedPanel& panel : plot_.panels) left = addPanel(panel, left) + panelGap;
        addFoot();
        return std::move(drawing_);
    }

  private:
    std::string plotTitle() const {
        std::string title = "Log plot";
        for (const PlotSource& source : sources_) title += (title == "Log plot" ? " of " : ", ") + source.name;
        return title;
    }

    void settleHeights(const PlotPage& page) {
        std::size_t heads = 1, lines = 1;
        for (const PlottedPanel& panel : plot_.panels) {
            for (const PlottedTrack& track : panel.tracks) heads = std::max(heads, track.size());
            lines = std::max(lines, titleLines(panel));
        }
        headTop_ = margin + 8 + static_cast<double>(lines) * lineHeight + 6;
        logsTop_ = headTop_ + static_cast<double>(heads) * headHeight + 4;
        const double least = std::ceil(logsTop_ + leastLogs + footHeight);
        drawing_.height = page.height == 0 ? std::max(usualHeight, least + 400) : page.height;
        if (drawing_.height < least) throw RunTimeFailure("the picture needs a height of " + plainNumber(least));
        logsBottom_ = drawing_.height - footHeight;
    }
    std::size_t titleLines(const PlottedPanel& panel) const {
        const std::size_t names = plot_.over ? panel.sources.size() : 1;
        return sources_[panel.sources.front()].title.size() + names;
    }

    void settleWidths(const PlotPage& page) {
        double fixed = 2 * margin - panelGap, tracks = 0;
        for (const PlottedPanel& panel : plot_.panels) {
            fixed += panelGap + indexWidth;
            tracks += static_cast<double>(std::max<std::size_t>(1, panel.tracks.size()));
        }
        trackWidth_ = page.width == 0 ? usualTrack : (page.width - fixed) / tracks;
        if (trackWidth_ < leastTrack)
            throw RunTimeFailure("the picture needs a width of " + plainNumber(std::ceil(fixed + tracks * leastTrack)));
        drawing_.width = fixed + tracks * trackWidth_;
    }

    /// The index track stands behind the first one, where logs have it. Returns the panel's right edge.
    double addPanel(const PlottedPanel& panel, double left) {
        const auto count = static_cast<double>(std::max<std::size_t>(1, panel.tracks.size()));
        const double right = left + count * trackWidth_ + indexWidth;
        drawing_.add(GroupStart{sources_[panel.sources.front()].name});
        addTitle(panel, left, right);
        const bool single = panel.tracks.size() < 2;
        double x = left + (single ? indexWidth : 0);
        for (std::size_t index = 0; index < std::max<std::size_t>(1, panel.tracks.size()); ++index) {
            addTrack(panel.tracks.empty() ? PlottedTrack() : panel.tracks[index], x);
            x += trackWidth_ + (index == 0 && !single ? indexWidth : 0);
        }
        addIndexTrack(panel, single ? left : left + trackWidth_);
        drawing_.add(GroupEnd{});
        return right;
    }

    void addTitle(const PlottedPanel& panel, double left, double right) {
        const double width = right - left;
        const std::vector<std::string>& lines = sources_[panel.sources.front()].title;
        double y = margin + 8;
        for (std::size_t line = 0; line < lines.size(); ++line) {
            const double size = line == 0 ? 15 : 10;
            drawing_.add(Label{{left, y},
                               fittedText(lines[line], width, size, line == 0),
                               size,
                               line == 0 ? Ink::Text : Ink::Faint,
                               Anchor::Left,
                               line == 0});
            y += lineHeight + (line == 0 ? 2 : 0);
        }
        for (const std::size_t source : panel.sources) {
            addSourceLine(panel, source, left, y, width);
            y += lineHeight;
        }
    }
    /// The file's name; in its colour where that is what colours tell.
    void addSourceLine(const PlottedPanel& panel, std::size_t source, double left, double y, double width) {
        const bool several = sources_.size() > 1;
        const Ink ink = several ? slotInk(static_cast<int>(source)) : Ink::Faint;
        double x = left;
        if (plot_.over && panel.sources.size() > 1) {
            drawing_.add(Line{{x, y - 3.5}, {x + 24, y - 3.5}, {ink, 2.5}});
            x += 30;
        }
        const PlotSource& shown = sources_[source];
        drawing_.add(
            Label{{x, y}, fittedText(shown.name, left + width - x, 10, several), 10, ink, Anchor::Left, several});
        x += textWidth(shown.name, 10, several) + 12;
        drawing_.add(Label{{x, y}, fittedText(shown.extent, left + width - x, 10), 10, Ink::Faint});
    }

    void addIndexTrack(const PlottedPanel& panel, double left) {
        const PlotSource& source = sources_[panel.sources.front()];
        const double middle = left + indexWidth / 2;
        drawing_.add(Label{{middle, logsTop_ - 20},
                           fittedText(source.indexName, indexWidth - 6, 11, true),
                           11,
                           Ink::Text,
                           Anchor::Middle,
                           true});
        drawing_.add(Label{
            {middle, logsTop_ - 8}, fittedText(source.indexUnit, indexWidth - 6, 9), 9, Ink::Faint, Anchor::Middle});
        if (!(axis_.bottom > axis_.top)) {
            drawing_.add(
                Label{{middle, axis_.place(axis_.top) + 3.5}, shortNumber(axis_.top), 10, Ink::Text, Anchor::Middle});
            return;
        }
        const double step = axis_.mainStep(52);
        for (const double depth : multiplesOf(step, axis_.top, axis_.bottom)) {
            const double y = axis_.place(depth);
            if (y < logsTop_ + 6 || y > logsBottom_ - 6) continue;
            const std::string text = axisNumber(depth, step);
            const double size = std::min(10.0, 10 * (indexWidth - 4) / textWidth(text, 10));
            drawing_.add(Label{{middle, y + 3.5}, text, size, Ink::Text, Anchor::Middle});
        }
    }

    void addTrack(const PlottedTrack& track, double left) {
        const Area area{left, logsTop_, left + trackWidth_, logsBottom_};
        addGrid(track, area);
        double y = logsTop_ - 4 - static_cast<double>(track.size()) * headHeight;
        for (std::size_t place = 0; place < track.size(); ++place) {
            addHead(track[place], place, area, y);
            y += headHeight;
        }
        for (std::size_t place = 0; place < track.size(); ++place) addCurve(track[place], place, area);
        drawing_.add(Box{area, Ink::None, {Ink::Frame}});
    }

    void addGrid(const PlottedTrack& track, const Area& area) {
        Polyline fine{{}, {Ink::Grid, 0.7}}, main{{}, {Ink::StrongGrid, 0.8}};
        const Scale scale = track.empty() ? Scale() : track.front().scale;
        const GridLines grid = gridOf(scale);
        const auto upright = [&](double value) {
            const double x = area.left + scale.share(value) * area.width();
            return std::vector<Point>{{x, area.top}, {x, area.bottom}};
        };
        for (const double value : grid.fine) fine.pieces.push_back(upright(value));
        for (const double value : grid.main) main.pieces.push_back(upright(value));
        if (axis_.bottom > axis_.top) addDepthLines(area, fine, main);
        drawing_.add(std::move(fine));
        drawing_.add(std::move(main));
    }
    void addDepthLines(const Area& area, Polyline& fine, Polyline& main) const {
        const auto level = [&](double depth) {
            const double y = axis_.place(depth);
            return std::vector<Point>{{area.left, y}, {area.right, y}};
        };
        const double step = axis_.mainStep(52);
        for (const double depth : multiplesOf(roundStep(step / 5), axis_.top, axis_.bottom))
            fine.pieces.push_back(level(depth));
        for (const double depth : multiplesOf(step, axis_.top, axis_.bottom)) main.pieces.push_back(level(depth));
    }

    Stroke strokeOf(const PlottedChannel& at, std::size_t place) const {
        if (plot_.over) return {slotInk(static_cast<int>(at.source)), 1.1, dashes[place % dashes.size()]};
        return {curveInk(static_cast<int>(place)), 1.1};
    }

    /// Name above the curve's line, both ends of the scale and the unit below it.
    void addHead(const PlottedCurve& curve, std::size_t place, const Area& area, double y) {
        const Ink ink = plot_.over ? Ink::Text : strokeOf(curve.channels.front(), place).ink;
        const double room = area.width() - 8;
        const std::string name = isBlank(curve) ? curve.mnem + " (no values)" : curve.mnem;
        drawing_.add(Label{{area.middle(), y + 11}, fittedText(name, room, 11, true), 11, ink, Anchor::Middle, true});
        const double part = (area.width() - 8) / static_cast<double>(curve.channels.size());
        for (std::size_t index = 0; index < curve.channels.size(); ++index) {
            const double from = area.left + 4 + static_cast<double>(index) * part;
            Stroke stroke = strokeOf(curve.channels[index], place);
            stroke.width = 1.6;
            drawing_.add(Line{{from, y + 16}, {from + part, y + 16}, stroke});
        }
        const std::string left = shortNumber(curve.scale.left), right = shortNumber(curve.scale.right);
        drawing_.add(Label{{area.left + 4, y + 26}, left, 9, ink});
        drawing_.add(Label{{area.right - 4, y + 26}, right, 9, ink, Anchor::Right});
        const double between = room - 2 * std::max(textWidth(left, 9), textWidth(right, 9)) - 6;
        drawing_.add(Label{{area.middle(), y + 26}, fittedText(curve.unit, between, 9), 9, ink, Anchor::Middle});
    }
    bool isBlank(const PlottedCurve& curve) const {
        return std::all_of(curve.channels.begin(), curve.channels.end(), [&](const PlottedChannel& at) {
            const auto values = sources_[at.source].channels[at.channel].values;
            return std::all_of(values.begin(), values.end(), [](double value) { return std::isnan(value); });
        });
    }

    void addCurve(const PlottedCurve& curve, std::size_t place, const Area& area) {
        for (const PlottedChannel& at : curve.channels) {
            const PlotSource& source = sources_[at.source];
            const CurveValues& channel = source.channels[at.channel];
            Trace trace = traceOf(source.depths, channel.values, rows_[at.source], axis_, at.scale, area);
            const Stroke stroke = strokeOf(at, place);
            trace.inside.stroke = stroke;
            trace.beyond.stroke = {stroke.ink, 5};
            marked_ = marked_ || !trace.beyond.pieces.empty();
            drawing_.add(GroupStart{std::string(trim(channel.mnem)), area});
            drawing_.add(std::move(trace.inside));
            if (!trace.beyond.pieces.empty()) drawing_.add(std::move(trace.beyond));
            drawing_.add(GroupEnd{});
        }
    }

    void addFoot() {
        if (!marked_) return;
        const std::string text = "A thick mark along the edge of a track: the curve is beyond that end of its scale.";
        drawing_.add(
            Label{{margin, drawing_.height - 8}, fittedText(text, drawing_.width - 2 * margin, 9), 9, Ink::Faint});
    }

    const LogPlot& plot_;
    const std::vector<PlotSource>& sources_;
    Drawing drawing_;
    DepthAxis axis_;
    std::vector<PixelRows> rows_;  ///< of each source
    double headTop_ = 0, logsTop_ = 0, logsBottom_ = 0, trackWidth_ = 0;
    bool marked_ = false;
};

}  // namespace

PlotPage wholePage(const std::vector<PlotSource>& sources) {
    PlotPage page;
    bool any = false;
    for (const PlotSource& source : sources) {
        if (source.depths.empty()) continue;
        page.top = any ? std::min(page.top, source.depths.front()) : source.depths.front();
        page.bottom = any ? std::max(page.bottom, source.depths.back()) : source.depths.back();
        any = true;
    }
    return page;
}

Drawing logDrawing(const LogPlot& plot, const std::vector<PlotSource>& sources, const PlotPage& page) {
    return LogPainter(plot, sources, page).drawing();
}

}  // namespace welvane
