#include <pybind11/stl.h>
#include <string>

#include "jobs/check.h"
#include "jobs/conform.h"
#include "jobs/stats.h"
#include "python/functions.h"
#include "python/texts.h"

namespace welvane {

namespace py = pybind11;

namespace {

py::dict stats(const std::string& file, const std::string& top, const py::dict& how) {
    Call call(callChoicesOf(how));
    const StatsRequest request{.top = top, .choices = readingChoicesOf(how)};
    struct Read {
        TrueStatistics statistics;
        std::vector<Note> notes;
    };
    const Read read = call.work([&] {
        Read made{readStatistics(call.bench(), file, request), {}};
        made.notes = call.bench().takeNotes();
        return made;
    });
    py::list channels;
    for (const ChannelStatistics& channel : read.statistics.channels) {
        py::list intervals;
        for (const DepthInterval& interval : channel.intervals)
            intervals.append(py::make_tuple(interval.top, interval.bottom));
        channels.append(py::make_tuple(pythonText(channel.field.mnem), pythonText(channel.field.unit), channel.count,
                                       channel.minimum, channel.maximum, channel.mean, channel.standardDeviation,
                                       channel.minimumDepth, channel.maximumDepth, channel.footage, intervals));
    }
    py::dict made;
    made["depth_unit"] = pythonText(read.statistics.depthUnit);
    made["top"] = read.statistics.top;
    made["bottom"] = read.statistics.bottom;
    made["records"] = read.statistics.records;
    made["channels"] = channels;
    made["notes"] = notesOf(read.notes);
    return made;
}

py::dict check(const std::string& file, const py::dict& how) {
    Call call(callChoicesOf(how));
    const ReadingChoices reading = readingChoicesOf(how);
    struct Judged {
        FileCheck check;
        std::vector<Note> notes;
    };
    const Judged judged = call.work([&] {
        Judged made{checkFile(call.bench(), file, reading), {}};
        made.notes = call.bench().takeNotes();
        return made;
    });
    const FileCheck& found = judged.check;
    py::dict made;
    made["status"] = pythonText(found.status.text);
    made["usable"] = found.usable();
    made["why"] = pythonText(found.refused.none() ? found.why : found.refused.text);
    made["records"] = found.records;
    made["version"] = pythonText(found.header.version);
    made["channels"] = found.header.channels();
    made["notes"] = notesOf(judged.notes);
    return made;
}

py::dict conform(const std::string& file, bool fix, const std::string& output, std::size_t most, const py::dict& how) {
    Call call(callChoicesOf(how));
    const ConformRequest request{.file = file, .most = most, .output = output};
    const ConformReport report =
        call.work([&] { return fix ? mendFile(call.bench(), request) : conformFile(call.bench(), request); });
    py::list findings;
    for (const Finding& finding : report.findings.sorted())
        findings.append(py::make_tuple(
            std::string(ruleOf(finding.rule).id), std::string(severityText(finding.severity)), finding.place.line,
            finding.place.column, pythonText(finding.text), pythonText(finding.what), finding.count, finding.mendable));
    py::list mended;
    for (const auto& [rule, count] : report.mended) mended.append(py::make_tuple(std::string(ruleOf(rule).id), count));
    py::dict made;
    made["version"] = report.version ? py::object(pythonText(versionText(*report.version))) : py::none();
    made["findings"] = findings;
    made["errors"] = report.findings.count(Severity::Error);
    made["warnings"] = report.findings.count(Severity::Warning);
    made["hints"] = report.findings.count(Severity::Hint);
    made["remark"] = pythonText(report.remark);
    made["mended"] = mended;
    made["kept"] = pythonText(report.kept);
    made["notes"] = notesOf(report.notes);
    return made;
}

}  // namespace

void defineVerdicts(py::module_& module) {
    module.def("stats", &stats);
    module.def("check", &check);
    module.def("conform", &conform);
}

}  // namespace welvane
