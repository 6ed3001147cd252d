#include "jobs/coverage.h"

#include <cmath>

#include "jobs/each_file.h"
#include "jobs/info.h"
#include "jobs/plot_input.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// Top and bottom as the header tells them, where the data begin and end there; else as the data do, which was told.
CoverageFile depthsOf(const std::string& file, const InputSlot& slot) {
    const double first = std::min(slot.firstDepth, slot.lastDepth), last = std::max(slot.firstDepth, slot.lastDepth);
    // Ends of the data are known to four decimals.
    const double near = std::max(std::abs(slot.step) / 4, 0.0002);
    const bool asTold = std::abs(first - slot.topDepth) <= near && std::abs(last - slot.bottomDepth) <= near;
    return asTold ? CoverageFile{file, slot.topDepth, slot.bottomDepth} : CoverageFile{file, first, last};
}

void convert(CoverageFile& file, const std::string& unit, const std::string& wanted) {
    const std::optional<double> factor = indexFactor(readIndexUnit(unit), readIndexUnit(wanted));
    if (!factor)
        throw Refusal(file.path, "its index is in \"" + unit + "\", that of the first file in \"" + wanted + "\"");
    file.top *= *factor;
    file.bottom *= *factor;
}

void addFile(Workbench& bench, const CoverageRequest& request, std::size_t place, CoverageReport& report) {
    const std::string& name = request.files[place];
    const FileFacts facts = readFacts(bench, name, {.loose = request.loose});
    CoverageFile file = depthsOf(name, facts.slot);
    if (report.depthUnit.empty())
        report.depthUnit = facts.slot.depthUnit;
    else
        convert(file, facts.slot.depthUnit, report.depthUnit);
    report.files[place] = std::move(file);
}

}  // namespace

CoverageReport showCoverage(Workbench& bench, const CoverageRequest& request) {
    if (request.files.empty() || request.files.size() > slotCount)
        throw senselessChoice("files", "a coverage shows one to four files");
    std::vector<Input> inputs;
    for (const std::string& file : request.files) inputs.push_back({file, file});
    checkPicture(bench, request.picture, inputs);
    CoverageReport report;
    bool whole = true;
    for (std::size_t place = 0; place < request.files.size(); ++place) {
        try {
            addFile(bench, request, place, report);
        } catch (...) {
            report.faults[place] = faultInFlight();
            whole = false;
        }
    }
    if (!whole && !request.picture.output.empty())
        for (const std::optional<Fault>& fault : report.faults)
            if (fault) throw Refusal(*fault);
    report.coverage = drawVisual(report.files);
    constexpr double usualWidth = 720, usualHeight = 520;
    const double width = request.picture.width == 0 ? usualWidth : request.picture.width;
    const double height = request.picture.height == 0 ? usualHeight : request.picture.height;
    if (whole)
        report.svg = writePicture(
            bench, coverageDrawing(report.coverage, report.files, report.depthUnit, width, height), request.picture);
    report.notes = bench.takeNotes();
    return report;
}

}  // namespace welvane
