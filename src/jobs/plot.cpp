#include "jobs/plot.h"

#include <algorithm>

#include "engine/depth_limit.h"
#include "jobs/plot_input.h"
#include "jobs/run.h"
#include "picture/log_drawing.h"
#include "shared/failure.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// True when the files are to go through a pass before they are drawn.
bool wantsPass(const PlotRequest& request) {
    PassRequest rest = request.pass;
    rest.from.reset();
    rest.to.reset();
    rest.loose = false;
    return !request.session.empty() || rest != PassRequest();
}

std::vector<PlotInput> readInputs(Workbench& bench, const PlotRequest& request) {
    std::vector<PlotInput> inputs;
    if (wantsPass(request)) {
        inputs.push_back(sampleRun(bench, {.files = request.files, .session = request.session, .pass = request.pass}));
        return inputs;
    }
    for (const std::string& file : request.files) {
        inputs.push_back(readPlotInput(bench, file, file, {.loose = request.pass.loose}));
        convertIndex(inputs.back(), inputs.front().unit);
    }
    return inputs;
}

/// From and To as a run reads them: a number, or a limit for what there is.
void limitPage(const PassRequest& request, PlotPage& page) {
    if (request.from) page.top = depthLimit(request.from->text(), page.top);
    if (request.to) page.bottom = depthLimit(request.to->text(), page.bottom);
    if (page.top > page.bottom)
        throw refusedChoice("from", plainNumber(page.top) + " lies below " + plainNumber(page.bottom));
}

void noteWhatIsMissing(Workbench& bench, const LogPlot& plot, const std::vector<PlotSource>& sources) {
    if (!plot.leftOut.empty()) {
        const std::size_t shown = std::min<std::size_t>(plot.leftOut.size(), 8);
        const std::vector<std::string> some(plot.leftOut.begin(),
                                            plot.leftOut.begin() + static_cast<std::ptrdiff_t>(shown));
        bench.note({.kind = NoteKind::Skipped,
                    .count = plot.leftOut.size(),
                    .text = counted(plot.leftOut.size(), "channel") + " without room in the plot: " + join(some, ", ") +
                            (shown < plot.leftOut.size() ? " and others" : "")});
    }
    for (const LogPlot::BelowZero& found : plot.belowZero)
        bench.note({.kind = NoteKind::File,
                    .file = sources[found.source].name,
                    .channel = sources[found.source].channels[found.channel].mnem,
                    .count = found.count,
                    .text = counted(found.count, "value") + " of 0 or less at the edge of a logarithmic scale"});
}

std::size_t countCurves(const LogPlot& plot) {
    std::size_t count = 0;
    for (const PlottedPanel& panel : plot.panels)
        for (const PlottedTrack& track : panel.tracks)
            for (const PlottedCurve& curve : track) count += curve.channels.size();
    return count;
}

PlotReport draw(Workbench& bench, const PlotRequest& request, const std::vector<PlotSource>& sources) {
    const LogPlot plot = planPlot(bench.app().reference, sources, request.wishes);
    PlotPage page = wholePage(sources);
    if (!wantsPass(request)) limitPage(request.pass, page);
    page.width = request.picture.width;
    page.height = request.picture.height;
    const Drawing drawing = logDrawing(plot, sources, page);
    noteWhatIsMissing(bench, plot, sources);
    PlotReport report;
    report.svg = writePicture(bench, drawing, request.picture);
    report.sources = sources.size();
    report.curves = countCurves(plot);
    report.top = page.top;
    report.bottom = page.bottom;
    report.indexUnit = sources.front().indexUnit;
    return report;
}

}  // namespace

PlotReport plotFiles(Workbench& bench, const PlotRequest& request) {
    const bool ofSession = request.files.empty() && !request.session.empty();
    if ((request.files.empty() && !ofSession) || request.files.size() > slotCount)
        throw senselessChoice("files", "a plot shows one to four files");
    if (request.pass.plain) throw senselessChoice("ascii", "a plot is drawn of a LAS file");
    if (request.pass.csv) throw senselessChoice("csv", "a plot is drawn of a LAS file");
    std::vector<Input> named;
    for (const std::string& file : request.files) named.push_back({file, file});
    if (!request.session.empty()) named.push_back({request.session, request.session});
    checkPicture(bench, request.picture, named);
    const std::vector<PlotInput> inputs = readInputs(bench, request);
    std::vector<PlotSource> sources;
    for (const PlotInput& input : inputs) sources.push_back(input.source);
    PlotReport report;
    try {
        report = draw(bench, request, sources);
    } catch (const RunTimeFailure& failure) {
        throw Refusal("", failure.what());
    }
    report.notes = bench.takeNotes();
    return report;
}

}  // namespace welvane
