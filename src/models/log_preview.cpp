#include "models/log_preview.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "jobs/preview.h"
#include "shared/failure.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view nothingYet = "Open a file: its logs are shown here.";
/// The least part of all depths that a picture is blown up to.
constexpr double closest = 1e-5;

SharedLogs planned(App& app, std::shared_ptr<LogSources> logs) {
    for (const PlotInput& input : logs->inputs) logs->sources.push_back(input.source);
    if (logs->sources.empty())
        logs->why = nothingYet;
    else
        logs->plot = planPlot(app.reference, logs->sources, {});
    return logs;
}

/// Runs `read`; a failure becomes the reason why nothing is seen.
template <class Read>
SharedLogs readLogs(App& app, const Read& read) {
    auto logs = std::make_shared<LogSources>();
    try {
        read(*logs);
        return planned(app, logs);
    } catch (const std::exception& error) {
        auto failed = std::make_shared<LogSources>();
        failed->why = error.what();
        return failed;
    }
}

bool anyLoaded(const Session& session) {
    bool loaded = false;
    for (int slot = 0; slot < slotCount; ++slot) loaded = loaded || session.loaded(slot);
    return loaded;
}

}  // namespace

SharedLogs readInputLogs(App& app, const Session& session) {
    return readLogs(app, [&](LogSources& logs) {
        Workbench bench(app, {});
        const ChannelReading how{
            .loose = session.loose, .decimalComma = session.decimalComma, .workers = app.run.workers};
        for (int slot = 0; slot < slotCount; ++slot) {
            if (!session.loaded(slot)) continue;
            const std::string& path = session.slots[slot].path;
            logs.inputs.push_back(readPlotInput(bench, path, fileNameOf(path), how));
            convertIndex(logs.inputs.back(), logs.inputs.front().unit);
        }
    });
}

SharedLogs readOutputLogs(App& app, Session& session) {
    return readLogs(app, [&](LogSources& logs) {
        if (!anyLoaded(session)) return;
        session.tables.setChecked(PrdRow::PlainAscii, false);  // a picture shows channels, however they are written
        Workbench bench(app, {});
        RunRequest run;
        run.wholeInputs = !session.loose;
        run.rules = session.rules;
        run.filterApplied = session.rules == FigureRules::trueFigures && session.filterApplied;
        logs.inputs.push_back(previewOutput(bench, session, run, "New file"));
    });
}

void LogPreview::show(SharedLogs logs) {
    const bool all = empty() || (page_.top == whole_.top && page_.bottom == whole_.bottom);
    logs_ = std::move(logs);
    tracks_.clear();
    if (empty()) return;
    whole_ = wholePage(logs_->sources);
    if (all || page_.bottom <= whole_.top || page_.top >= whole_.bottom)
        page_ = whole_;
    else
        keepInside();
}

std::string LogPreview::message() const {
    if (!logs_) return std::string(nothingYet);
    return logs_->why;
}

Drawing LogPreview::drawing(double width, double height) {
    if (empty()) return {};
    PlotPage page = page_;
    page.width = width;
    page.height = height;
    try {
        Drawing drawing = logDrawing(logs_->plot, logs_->sources, page);
        findTracks(drawing);
        return drawing;
    } catch (const RunTimeFailure&) {
        tracks_.clear();
        return {};
    }
}

void LogPreview::findTracks(const Drawing& drawing) {
    tracks_.clear();
    for (const Shape& shape : drawing.shapes)
        if (const auto* group = std::get_if<GroupStart>(&shape); group != nullptr && group->clip)
            tracks_.push_back({group->title, *group->clip});
}

void LogPreview::keepInside() {
    const double length =
        std::clamp(page_.bottom - page_.top, (whole_.bottom - whole_.top) * closest, whole_.bottom - whole_.top);
    page_.top = std::clamp(page_.top, whole_.top, whole_.bottom - length);
    page_.bottom = page_.top + length;
}

void LogPreview::scroll(double share) {
    const double by = (page_.bottom - page_.top) * share;
    page_.top += by;
    page_.bottom += by;
    keepInside();
}

void LogPreview::zoom(double factor, double y) {
    const double middle = depthAt(y).value_or((page_.top + page_.bottom) / 2);
    page_.top = middle - (middle - page_.top) / factor;
    page_.bottom = middle + (page_.bottom - middle) / factor;
    keepInside();
}

void LogPreview::whole() {
    page_ = whole_;
}

std::optional<double> LogPreview::depthAt(double y) const {
    if (tracks_.empty()) return std::nullopt;
    const Area& area = tracks_.front().area;
    if (y < area.top || y > area.bottom) return std::nullopt;
    return page_.top + (page_.bottom - page_.top) * (y - area.top) / area.height();
}

std::string LogPreview::valueAt(const std::string& channel, double depth) const {
    for (const PlotSource& source : logs_->sources) {
        const auto after = std::lower_bound(source.depths.begin(), source.depths.end(), depth);
        if (after == source.depths.end()) continue;
        auto place = static_cast<std::size_t>(after - source.depths.begin());
        if (place > 0 && depth - source.depths[place - 1] < source.depths[place] - depth) --place;
        for (const CurveValues& curve : source.channels)
            if (std::string(trim(curve.mnem)) == channel && !std::isnan(curve.values[place]))
                return plainNumber(curve.values[place]);
    }
    return "no value";
}

std::string LogPreview::readout(double x, double y) const {
    const auto depth = depthAt(y);
    if (!depth) return {};
    std::string text = formatMask(*depth, 2) + " " + logs_->sources.front().indexUnit;
    for (const Track& track : tracks_)
        if (x >= track.area.left && x <= track.area.right)
            text += "   " + track.channel + " " + valueAt(track.channel, *depth);
    return text;
}

}  // namespace welvane
