#include "jobs/repair.h"

#include <algorithm>
#include <filesystem>
#include <optional>

#include "jobs/las_check.h"
#include "jobs/repair_lines.h"
#include "las/classify.h"
#include "las/las_file.h"
#include "las/limits.h"
#include "las/rebuild_whole.h"
#include "las/repair.h"
#include "platform/mapped_file.h"
#include "platform/output_file.h"
#include "shared/any_line_reader.h"
#include "shared/failure.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// What is to be done, in this order.
struct RepairPlan {
    bool lineEnds = false, curveTitle = false, rebuild = false;
    RebuildKind kind = RebuildKind::Other;
    bool nothing() const { return !lineEnds && !curveTitle && !rebuild; }
};

/// The header as it will be once its line ends are repaired, up to the title of ~A.
std::string headerWithLineEnds(std::string_view bytes) {
    std::string header;
    AnyLineReader lines(bytes.substr(0, headerLimit));
    for (std::string_view line; lines.next(line);) {
        header.append(line).append("\r\n");
        if (holdsText(line, "~A")) break;
    }
    return header;
}

RepairPlan planRepair(const RepairRequest& request, const std::string& path) {
    RepairPlan plan;
    std::string why;
    const std::optional<MappedFile> file = MappedFile::open(path, &why);
    if (!file) throw Refusal(request.file, why);
    const PlexmoreKind kind = plexmoreKindOf(file->bytes());
    if (kind == PlexmoreKind::Version2) plan.kind = RebuildKind::Plexmore2;
    // A lone LF anywhere is a fault, also where both ends of the file are in order.
    plan.lineEnds = (request.none() || request.lineEnds) && hasLoneLineFeed(file->bytes());
    plan.curveTitle = (request.none() || request.curveTitle) &&
                      curveTitleFaultIn(plan.lineEnds ? headerWithLineEnds(file->bytes()) : file->bytes());
    plan.rebuild = request.none() ? kind == PlexmoreKind::Version2 : request.rebuild;
    return plan;
}

void refuseWhatCannotBe(const RepairRequest& request, const RepairPlan& plan, const std::string& source) {
    if (!plan.lineEnds && request.curveTitle && lineEndKind(source) == LineEnds::Unix &&
        hasLoneLineFeed(mapFile(source).bytes()))
        throw Refusal(request.file, "its lines end in LF without CR", Remedy::LineEnds);
    if (!plan.nothing() || !request.none()) return;
    // Line ends of CR alone are read as they stand.
    const FileVerdict verdict = judgeFile(source);
    if (verdict == FileVerdict::NotBasicLas || verdict == FileVerdict::Unusable)
        throw Refusal(request.file, std::string(statusLine(verdict).text) + " There is no repair for it",
                      Remedy::Rebuild);
}

void tellPlan(Workbench& bench, const RepairRequest& request, const RepairPlan& plan) {
    const auto tell = [&](const char* text) { bench.note(NoteKind::Repair, request.file, text); };
    if (plan.lineEnds)
        tell("each LF without CR before it becomes CR LF");
    else if (request.lineEnds)
        tell("no line ends in LF without CR");
    if (plan.curveTitle)
        tell("the curve title gets a line of its own");
    else if (request.curveTitle)
        tell("its curve title is in order");
    if (plan.rebuild) tell("a clean LAS 2.0 is written from what it holds");
    if (plan.nothing()) tell(request.inPlace() ? "nothing to repair" : "nothing to repair; copied as it stands");
}

void tellDropped(Workbench& bench, const RepairRequest& request, const std::string& what,
                 const std::vector<NumberedLine>& lines) {
    for (const NumberedLine& line : lines)
        bench.note(
            {.kind = NoteKind::Dropped, .file = request.file, .line = line.number, .text = what + ": " + line.text});
}

/// The steps of one plan. A step that was cancelled leaves the flag set and its target as it was.
class Repair {
  public:
    Repair(Workbench& bench, const RepairRequest& request, const RepairPlan& plan, std::string source,
           std::string target)
        : bench_(bench), request_(request), plan_(plan), source_(std::move(source)), target_(std::move(target)) {}

    void perform() {
        const WorkInHand work(bench_.user(), {.bytes = fileSize(source_).value_or(0)});
        if (plan_.nothing()) return copyWhole(source_, target_, modeFor(target_));
        std::string current = source_;
        if (plan_.lineEnds) current = repairEnds(current);
        if (plan_.curveTitle && !cancelled()) current = repairTitle(current);
        if (plan_.rebuild && !cancelled()) rebuild(current);
    }

    bool cancelled() const { return bench_.app().run.cancelRequested; }
    void copyWhole(const std::string& from, const std::string& to, OutputFile::Mode mode);
    /// Keeps the source beside it, under a name that nobody has; gives the name.
    std::string keepSource();

  private:
    /// A file of the source's name in a folder of its own: the rebuilt header tells its name.
    std::string scratchName(std::string_view name) {
        const std::string folder =
            bench_.app().platform.scratchFolder() + "repair" + std::to_string(++scratches_) + "/";
        std::filesystem::create_directory(folder);
        return folder + fileNameOf(name);
    }
    std::string repairEnds(const std::string& from);
    std::string repairTitle(const std::string& from);
    void rebuild(const std::string& from);
    OutputFile::Mode modeFor(const std::string& to) const;

    Workbench& bench_;
    const RepairRequest& request_;
    RepairPlan plan_;
    std::string source_, target_;
    int scratches_ = 0;
};

/// A file of its own, or the source itself, which only a repair in place is put over.
OutputFile::Mode Repair::modeFor(const std::string& to) const {
    return request_.inPlace() && to == target_ ? OutputFile::Mode::Beside : bench_.outputMode();
}

void Repair::copyWhole(const std::string& from, const std::string& to, OutputFile::Mode mode) {
    constexpr std::size_t block = std::size_t{1} << 20;
    std::string why;
    const std::optional<MappedFile> file = MappedFile::open(from, &why);
    if (!file) throw Refusal(from, why);
    OutputFile output(to, mode);
    for (std::size_t done = 0; done < file->bytes().size(); done += block) {
        if (cancelled()) return;
        output.write(file->bytes().substr(done, block));
    }
    needWhole(*file, from);
    if (!cancelled()) output.commit();
}

std::string Repair::keepSource() {
    while (true) {
        std::string name = safetyCopyName(source_, plan_.lineEnds ? "unixterm" : "original");
        try {
            copyWhole(source_, name, OutputFile::Mode::New);
            return name;
        } catch (const FileFailure&) {
            // Another worker was faster with a name that both found free, as for a.las and a.LAS.
            if (!fileExists(name)) throw;
        }
    }
}

std::string Repair::repairEnds(const std::string& from) {
    std::string to = plan_.curveTitle || plan_.rebuild ? scratchName(source_) : target_;
    bench_.app().run.statusText = "Repairing line ends";
    std::string why;
    if (repairLineEnds(from, to, bench_.app().run, bench_.user(), modeFor(to), &why) == StepResult::Failed)
        throw Refusal(request_.file, "the line ends could not be repaired: " + why);
    return to;
}

std::string Repair::repairTitle(const std::string& from) {
    // Looked at before the step, which may write onto the file that it reads.
    const std::vector<NumberedLine> dropped = linesBeforeCurveTitle(from);
    std::string to = plan_.rebuild ? scratchName(source_) : target_;
    std::string why = "it changed meanwhile";
    if (!fixCurveTitle(from, to, modeFor(to), &why))
        throw Refusal(request_.file, "the curve title could not be repaired: " + why);
    tellDropped(bench_, request_, "dropped from the line of the curve title", dropped);
    return to;
}

void Repair::rebuild(const std::string& from) {
    App& app = bench_.app();
    app.run.statusText = "Rebuilding";
    const LasFile file(from, FigureRules::trueFigures);
    const WholeRebuild result =
        rebuildWhole(file, target_, plan_.kind, app.settings.country, app.run, bench_.user(), modeFor(target_));
    if (result.result == StepResult::Failed) throw Refusal(request_.file, "cannot be rebuilt: " + result.why);
    for (Note note : result.notes) {
        note.file = request_.file;
        bench_.note(std::move(note));
    }
}

}  // namespace

RepairReport repairFile(Workbench& bench, const RepairRequest& request) {
    const std::string source = resolvePath(request.file);
    if (const std::string why = whyUnreadable(source); !why.empty()) throw Refusal(request.file, why);
    if (!request.inPlace()) bench.checkOutput(request.output, {{request.file, source}});
    const RepairPlan plan = planRepair(request, source);
    refuseWhatCannotBe(request, plan, source);
    tellPlan(bench, request, plan);
    RepairReport report;
    report.target = request.inPlace() ? source : request.output;
    if (!plan.nothing() || !request.inPlace()) {
        Repair repair(bench, request, plan, source, report.target);
        try {
            if (request.inPlace()) report.kept = repair.keepSource();
            repair.perform();
            if (repair.cancelled()) throw Refusal(request.file, "stopped");
        } catch (...) {
            if (!report.kept.empty()) removeFile(report.kept);
            throw;
        }
        report.written = true;
    }
    report.notes = bench.takeNotes();
    return report;
}

}  // namespace welvane
