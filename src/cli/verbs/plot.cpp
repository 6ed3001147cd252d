#include "jobs/plot.h"

#include <memory>

#include "cli/pass_options.h"
#include "cli/picture_options.h"
#include "cli/verbs.h"
#include "picture/axis.h"
#include "shared/failure.h"
#include "shared/text.h"

namespace welvane {

namespace {

struct PlotChoices {
    std::vector<std::string> files, curves;
    std::string tracks, layout, session;
    PictureChoices picture;
    PassTexts pass;
};

PlotWishes wishesOf(const PlotChoices& choices) {
    PlotWishes wishes;
    try {
        if (!choices.tracks.empty()) wishes.tracks = readTracks(choices.tracks);
    } catch (const RunTimeFailure& fault) {
        throw UsageFault(std::string("--tracks: ") + fault.what());
    }
    try {
        for (const std::string& curve : choices.curves) wishes.curves.push_back(readCurveChoice(curve));
    } catch (const RunTimeFailure& fault) {
        throw UsageFault(std::string("--curves: ") + fault.what());
    }
    if (sameText(choices.layout, "over")) wishes.layout = PlotLayout::Over;
    return wishes;
}

ExitCode performPlot(Console& console, const PlotChoices& choices) {
    const PlotRequest request{console.expandLists(choices.files), pictureRequest(choices.picture), wishesOf(choices),
                              passRequest(choices.pass), choices.session};
    const std::size_t count = request.files.size();
    if (count == 0 && request.session.empty()) throw UsageFault("no input is named");
    if (count > slotCount) throw UsageFault(std::to_string(count) + " inputs; a plot shows one to four");
    if (request.picture.output.empty()) throw UsageFault("no picture is named (-o PICTURE.svg)");
    const PlotReport report = plotFiles(console.bench(), request);
    if (!request.picture.named()) {
        console.print(report.svg);
        return ExitCode::Done;
    }
    const std::string unit = report.indexUnit.empty() ? "" : " " + report.indexUnit;
    console.user().note(request.picture.output + ": " + counted(report.curves, "curve") + ", " +
                        shortNumber(report.top) + " to " + shortNumber(report.bottom) + unit);
    return ExitCode::Done;
}

}  // namespace

VerbSyntax declarePlot() {
    const auto choices = std::make_shared<PlotChoices>();
    VerbOptions options = {{"FILE", &choices->files, "",
                            "One to four LAS files; folders, @LIST for a list of paths, - for standard input"},
                           {"--session", &choices->session, "FILE",
                            "Draw the output of a saved session, of its own inputs where none are named"}};
    addPictureOptions(options, choices->picture);
    addOptions(options, "Picture",
               {{"--tracks", &choices->tracks, "\"GR,CALI;ILD:log,ILM:log;RHOB,NPHI:0.45:-0.15\"",
                 "Curves of each track, with a kind and ends of a scale where they are not the usual ones"},
                {"--curves",
                 &choices->curves,
                 "A,B,C",
                 "Only these curves, in tracks by custom",
                 {.several = Several::Parted, .excludes = "--tracks"}},
                {"--layout",
                 &choices->layout,
                 "side|over",
                 "Several files side by side, or over each other in their colours (side)",
                 {.words = {"side", "over"}, .anyCase = true}}});
    addPassOptions(options, choices->pass);
    return {options, [choices](Console& console) { return performPlot(console, *choices); },
            "Any option beside those of the picture, --from and --to draws the output of a run with it."};
}

}  // namespace welvane
