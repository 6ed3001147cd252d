#include <cmath>
#include <limits>
#include <pybind11/stl.h>
#include <string>
#include <vector>

#include "jobs/batch.h"
#include "jobs/plot.h"
#include "jobs/run.h"
#include "python/functions.h"
#include "python/pass_keywords.h"
#include "python/texts.h"
#include "shared/numbers.h"

namespace welvane {

namespace py = pybind11;

namespace {

/// A depth of a report; NaN for a plain table, which tells none.
double depthOf(const std::string& text) {
    return text.empty() ? std::numeric_limits<double>::quiet_NaN() : val(text);
}

py::dict run(const std::vector<std::string>& files, const std::string& output, const py::dict& keywords,
             const py::dict& more, const py::dict& how) {
    RunFilesRequest request{.files = files, .output = output};
    if (more.contains("session")) request.session = more["session"].cast<std::string>();
    if (more.contains("save_session")) request.saveSession = more["save_session"].cast<std::string>();
    if (more.contains("certify")) request.certify = more["certify"].cast<bool>();
    Call call(callChoicesOf(how));
    request.pass = passRequestOf(keywords);
    const RunFilesReport report = call.work([&] { return runFiles(call.bench(), request); });
    const PassReport pass = report.items.empty() ? PassReport{} : report.items.back().pass;
    py::list inputs;
    for (const std::string& input : report.inputs) inputs.append(pythonText(input));
    py::dict made;
    made["inputs"] = inputs;
    made["records"] = pass.records;
    made["channels"] = pass.columns;
    made["start"] = depthOf(pass.firstDepth);
    made["stop"] = depthOf(pass.lastDepth);
    made["depth_unit"] = pythonText(report.depthUnit);
    made["verdict"] = report.check ? py::object(pythonText(verdictText(report.check->verdict))) : py::none();
    made["notes"] = notesOf(report.notes);
    return made;
}

py::list batch(const std::vector<std::string>& files, const std::string& folder, const py::dict& keywords,
               std::size_t workers, const py::dict& how) {
    Call call(callChoicesOf(how));
    const BatchRequest request{.files = files, .folder = folder, .pass = passRequestOf(keywords), .workers = workers};
    const BatchReport report = call.work([&] { return runBatch(call.bench(), request, [](const BatchItem&) {}); });
    py::list items;
    for (const BatchItem& item : report.items) {
        py::dict made;
        made["path"] = pythonText(item.path);
        made["output"] = pythonText(item.output);
        made["written"] = item.verdict == BatchVerdict::Written;
        made["why"] = pythonText(item.verdict == BatchVerdict::Written ? std::string() : pythonFault(item.fault));
        made["channels"] = item.channels;
        made["records"] = item.samples;
        made["seconds"] = item.seconds;
        made["notes"] = notesOf(item.notes);
        items.append(made);
    }
    return items;
}

PlotWishes wishesOf(const py::dict& picture) {
    PlotWishes wishes;
    try {
        if (picture.contains("tracks")) wishes.tracks = readTracks(picture["tracks"].cast<std::string>());
        if (picture.contains("curves"))
            for (const auto& curve : picture["curves"].cast<std::vector<std::string>>())
                wishes.curves.push_back(readCurveChoice(curve));
    } catch (const RunTimeFailure& fault) {
        throw senselessChoice(picture.contains("tracks") ? "tracks" : "curves", fault.what());
    }
    if (picture.contains("over") && picture["over"].cast<bool>()) wishes.layout = PlotLayout::Over;
    return wishes;
}

py::dict plot(const std::vector<std::string>& files, const std::string& output, const py::dict& picture,
              const py::dict& keywords, const py::dict& how) {
    PlotRequest request{.files = files};
    request.picture.output = output;
    if (picture.contains("dark") && picture["dark"].cast<bool>()) request.picture.theme = Theme::Dark;
    if (picture.contains("width")) request.picture.width = picture["width"].cast<double>();
    if (picture.contains("height")) request.picture.height = picture["height"].cast<double>();
    if (picture.contains("session")) request.session = picture["session"].cast<std::string>();
    request.wishes = wishesOf(picture);
    request.pass = passRequestOf(keywords);
    Call call(callChoicesOf(how));
    const PlotReport report = call.work([&] { return plotFiles(call.bench(), request); });
    py::dict made;
    made["svg"] = pythonText(report.svg);
    made["curves"] = report.curves;
    made["notes"] = notesOf(report.notes);
    return made;
}

}  // namespace

void defineReports(py::module_& module) {
    module.def("run", &run);
    module.def("batch", &batch);
    module.def("plot", &plot);
}

}  // namespace welvane
