#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>

#include "cli/las_check.h"
#include "cli/shown_text.h"
#include "cli/verbs.h"
#include "las/classify.h"
#include "las/data_access.h"
#include "las/header_line.h"
#include "las/limits.h"
#include "las/rebuild.h"
#include "las/repair.h"
#include "platform/mapped_file.h"
#include "platform/output_file.h"
#include "reference/reference_tables.h"
#include "shared/any_line_reader.h"
#include "shared/files.h"
#include "shared/line_reader.h"
#include "shared/text.h"

namespace welvane {

namespace {

struct RepairChoices {
    std::string file, output;
    bool inPlace = false;
    bool lineEnds = false, curveTitle = false, rebuild = false;
    bool none() const { return !lineEnds && !curveTitle && !rebuild; }
};

/// What is to be done, in this order.
struct RepairPlan {
    bool lineEnds = false, curveTitle = false, rebuild = false;
    RebuildKind kind = RebuildKind::Other;
    bool nothing() const { return !lineEnds && !curveTitle && !rebuild; }
};

/// Lines of one kind that are told one by one.
constexpr std::size_t linesTold = 100;

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

RepairPlan planRepair(const RepairChoices& choices, const std::string& path) {
    RepairPlan plan;
    const std::optional<MappedFile> file = MappedFile::open(path);
    if (!file) throw Refusal(choices.file, whyUnreadable(path));
    const PlexmoreKind kind = plexmoreKindOf(file->bytes());
    if (kind == PlexmoreKind::Version2) plan.kind = RebuildKind::Plexmore2;
    if (choices.none()) {
        plan.lineEnds = lineEndKind(path) != LineEnds::Good && hasLoneLineFeed(path);
        plan.curveTitle = curveTitleFaultIn(plan.lineEnds ? headerWithLineEnds(file->bytes()) : file->bytes());
        plan.rebuild = kind == PlexmoreKind::Version2;
        return plan;
    }
    plan.lineEnds = choices.lineEnds && hasLoneLineFeed(path);
    plan.curveTitle =
        choices.curveTitle && curveTitleFaultIn(plan.lineEnds ? headerWithLineEnds(file->bytes()) : file->bytes());
    plan.rebuild = choices.rebuild;
    return plan;
}

/// The steps one after another, each from one file to the next, the last one onto the target. Whatever goes wrong,
/// neither source nor target has changed.
class Repair {
  public:
    Repair(Workbench& bench, const RepairChoices& choices)
        : bench_(bench), choices_(choices), source_(resolvePath(choices.file)) {}

    ExitCode perform() {
        if (const std::string why = whyUnreadable(source_); !why.empty()) throw Refusal(choices_.file, why);
        if (!choices_.inPlace) bench_.checkOutput(choices_.output, {{choices_.file, source_}});
        plan_ = planRepair(choices_, source_);
        refuseWhatCannotBe();
        tellPlan();
        if (plan_.nothing() && choices_.inPlace) return ExitCode::Done;
        if (choices_.inPlace) keepCopy();
        try {
            performSteps();
        } catch (...) {
            if (!copy_.empty()) removeFile(copy_);
            throw;
        }
        if (bench_.stopped()) {
            if (!copy_.empty()) removeFile(copy_);
            return ExitCode::Interrupted;
        }
        bench_.user().note(target() + ": written" + (copy_.empty() ? "" : "; the file as it was is kept as " + copy_));
        return ExitCode::Done;
    }

  private:
    const std::string& target() const { return choices_.inPlace ? source_ : choices_.output; }

    void refuseWhatCannotBe() const {
        if (!plan_.lineEnds && (choices_.curveTitle || choices_.rebuild) && lineEndKind(source_) == LineEnds::Unix &&
            hasLoneLineFeed(source_))
            throw Refusal(choices_.file, "its lines end in LF without CR; add --line-ends");
        if (!plan_.nothing() || !choices_.none()) return;
        // Line ends of CR alone are read as they stand.
        const FileVerdict verdict = judgeFile(source_);
        if (verdict == FileVerdict::NotBasicLas || verdict == FileVerdict::Unusable)
            throw Refusal(choices_.file, std::string(statusLine(verdict).text) +
                                             " There is no repair for it (--rebuild writes a new header all the same)");
    }

    void tellPlan() const {
        const auto tell = [this](std::string_view text) {
            bench_.user().note(choices_.file + ": " + std::string(text));
        };
        if (plan_.lineEnds)
            tell("each LF without CR before it becomes CR LF");
        else if (choices_.lineEnds)
            tell("no line ends in LF without CR");
        if (plan_.curveTitle)
            tell("the curve title gets a line of its own");
        else if (choices_.curveTitle)
            tell("its curve title is in order");
        if (plan_.rebuild) tell("a clean LAS 2.0 is written from what it holds");
        if (plan_.nothing()) tell(choices_.inPlace ? "nothing to repair" : "nothing to repair; copied as it stands");
    }

    /// "a.unixterm.las" for the line ends, "a.original.las" for the rest; a number is added where that name is taken.
    void keepCopy() {
        const std::string mark = plan_.lineEnds ? "unixterm" : "original";
        std::string name = changeExtension(source_, mark + ".las");
        for (int number = 2; fileExists(name) || folderExists(name); ++number)
            name = changeExtension(source_, mark + "-" + std::to_string(number) + ".las");
        copyWhole(source_, name);
        copy_ = name;
    }

    void copyWhole(const std::string& from, const std::string& to) {
        constexpr std::size_t block = std::size_t{1} << 20;
        std::string why;
        const std::optional<MappedFile> file = MappedFile::open(from, &why);
        if (!file) throw Refusal(from, why);
        OutputFile output(to, OutputFile::Mode::Beside);
        for (std::size_t done = 0; done < file->bytes().size(); done += block) {
            if (bench_.stopped()) return;
            output.write(file->bytes().substr(done, block));
        }
        if (file->damaged()) throw Refusal(from, "could not be read to its end");
        if (!bench_.stopped()) output.commit();
    }

    /// A file of the source's name in a folder of its own: the rebuilt header tells its name.
    std::string scratchName(std::string_view name) {
        const std::string folder = bench_.platform().scratchFolder() + "repair" + std::to_string(++scratches_) + "/";
        std::filesystem::create_directory(folder);
        return folder + fileNameOf(name);
    }

    void performSteps() {
        std::string current = source_;
        bench_.user().bar().setTotal(fileSize(source_).value_or(0));
        const auto next = [&](bool last) { return last ? target() : scratchName(source_); };
        if (plan_.nothing()) return copyWhole(source_, target());
        if (plan_.lineEnds) {
            const std::string to = next(!plan_.curveTitle && !plan_.rebuild);
            bench_.app().run.statusText = "Repairing line ends";
            const StepResult result = repairLineEnds(current, to, bench_.app().run, bench_.user());
            bench_.user().bar().clear();
            if (result == StepResult::Failed) throw Refusal(to, "the line ends could not be written");
            if (result == StepResult::Cancelled) return;
            current = to;
        }
        if (plan_.curveTitle) {
            // Looked at before the step, which may write onto the file that it reads.
            const std::vector<std::string> dropped = sharedTitles(current);
            const std::string to = next(!plan_.rebuild);
            if (!fixCurveTitle(current, to)) throw Refusal(to, "the curve title could not be written");
            tellLines("dropped from the line of the curve title", dropped, dropped.size());
            current = to;
        }
        if (plan_.rebuild && !bench_.stopped()) rebuild(current);
    }

    /// Goes through a scratch file in any case: a result without data is not put over anything.
    void rebuild(const std::string& from) {
        const DataShape shape = detectDataLayout(from);
        if (shape.layout == DataLayout::Wrapped)
            throw Refusal(choices_.file, "its data are wrapped; unwrap it first (welvane wrap)");
        const std::string to = scratchName(target());
        App& app = bench_.app();
        app.run.statusText = "Rebuilding";
        RebuildSettings settings{app.settings.format, app.settings.country,
                                 [&app](std::string_view mnem) { return descriptionForMnem(app.reference, mnem); }};
        // Its box counts the lines that it dropped; here they are told one by one.
        const RebuildResult result = rewriteLas(from, to, plan_.kind, settings, app.run, bench_.user());
        bench_.user().bar().clear();
        if (result.result == StepResult::Cancelled) {
            if (!bench_.stopped()) throw Refusal(choices_.file, "not rebuilt");
            return;
        }
        if (result.result == StepResult::Failed)
            throw Refusal(choices_.file, "cannot be rebuilt: it needs a ~Curve section with lines and a ~A section");
        if (result.linesWritten == 0)
            throw Refusal(choices_.file,
                          "cannot be rebuilt: none of its data lines has as many values as it has curves");
        copyWhole(to, target());
        tellLines("dropped header line", droppedHeaderLines(from, to), 0);
        tellLines("dropped data line", linesByNumber(from, result.firstBadLines), result.badLines);
    }

    /// One line each, as "FILE: WHAT, line N: TEXT"; `count` is how many there are in all, 0 for those given.
    void tellLines(const std::string& what, const std::vector<std::string>& lines, std::size_t count) {
        count = std::max(count, lines.size());
        const std::size_t shown = std::min(lines.size(), linesTold);
        for (std::size_t index = 0; index < shown; ++index)
            bench_.user().note(choices_.file + ": " + what + ", " + lines[index]);
        if (count > shown) bench_.user().note(choices_.file + ": " + what + ": " + std::to_string(count) + " in all");
    }

    static std::string numbered(std::size_t number, std::string_view line) {
        constexpr std::size_t longest = 120;
        const std::string_view text = trimBreaks(line);
        return "line " + std::to_string(number) + ": " + std::string(text.substr(0, longest)) +
               (text.size() > longest ? "..." : "");
    }

    /// Lines in front of ~A, each with its number from 1.
    static void eachHeaderLine(std::string_view bytes, const std::function<void(std::size_t, std::string_view)>& take) {
        LineReader lines(bytes.substr(0, headerLimit));
        std::size_t number = 0;
        for (std::string_view line; lines.next(line) && !holdsText(line, "~A");) take(++number, line);
    }

    static std::vector<std::string> sharedTitles(const std::string& path) {
        std::vector<std::string> found;
        const std::optional<MappedFile> file = MappedFile::open(path);
        if (!file) return found;
        eachHeaderLine(file->bytes(), [&](std::size_t number, std::string_view line) {
            const std::string faulty = std::string(line) + "\r\n";
            if (curveTitleFaultIn(faulty)) found.push_back(numbered(number, line.substr(0, findText(line, "~C"))));
        });
        return found;
    }

    static std::vector<std::string> linesByNumber(const std::string& path, const std::vector<std::size_t>& numbers) {
        std::vector<std::string> found;
        const std::optional<MappedFile> file = MappedFile::open(path);
        if (!file) return found;
        LineReader lines(file->bytes());
        std::size_t number = 0;
        for (std::string_view line; found.size() < numbers.size() && lines.next(line);)
            if (++number == numbers[found.size()]) found.push_back(numbered(number, line));
        return found;
    }

    /// Header lines of the source of which the new header holds neither the mnemonic nor the value.
    static std::vector<std::string> droppedHeaderLines(const std::string& from, const std::string& to) {
        std::vector<std::string> kept, dropped;
        const std::optional<MappedFile> source = MappedFile::open(from), written = MappedFile::open(to);
        if (!source || !written) return dropped;
        eachHeaderLine(written->bytes(), [&kept](std::size_t, std::string_view line) {
            HeaderField field;
            if (!parseHeaderLine(line, field)) return;
            kept.push_back(upper(field.mnem));
            if (!field.value.empty()) kept.push_back("=" + upper(field.value));
        });
        std::sort(kept.begin(), kept.end());
        const auto holds = [&kept](const std::string& text) {
            return std::binary_search(kept.begin(), kept.end(), text);
        };
        bool first = true, inCurves = false;
        eachHeaderLine(source->bytes(), [&](std::size_t number, std::string_view line) {
            const std::string_view text = trimBreaks(line);
            if (text.empty()) return;
            if (text.front() == '~') {
                inCurves = text.size() > 1 && upperChar(text[1]) == 'C';
                return;
            }
            HeaderField field;
            const bool data = parseHeaderLine(text, field);
            const bool index = data && inCurves && first;  // renamed, not dropped
            first = first && !index;
            if (index ||
                (data && (holds(upper(field.mnem)) || (!field.value.empty() && holds("=" + upper(field.value))))))
                return;
            dropped.push_back(numbered(number, line));
        });
        return dropped;
    }

    Workbench& bench_;
    const RepairChoices& choices_;
    std::string source_;
    RepairPlan plan_;
    std::string copy_;
    int scratches_ = 0;
};

ExitCode performRepair(Workbench& bench, const RepairChoices& choices) {
    if (choices.output.empty() == !choices.inPlace) throw UsageFault("either -o OUT or --in-place is needed");
    return Repair(bench, choices).perform();
}

}  // namespace

VerbRun declareRepair(CLI::App& command) {
    const auto choices = std::make_shared<RepairChoices>();
    command.add_option("FILE", choices->file, "A LAS file")->required()->type_name("");
    CLI::Option* const output =
        command.add_option("-o,--output", choices->output, "The file to write")->type_name("OUT");
    command.add_flag("--in-place", choices->inPlace, "Repair the file itself; a copy of it is kept beside it")
        ->excludes(output);
    command.add_flag("--line-ends", choices->lineEnds, "Turn each LF without CR before it into CR LF");
    command.add_flag("--curve-title", choices->curveTitle,
                     "Give a ~Curve title that stands on a ~Well line a line of its own");
    command.add_flag("--rebuild", choices->rebuild,
                     "Write a clean LAS 2.0 from a file whose header breaks the standard");
    command.footer("Without any of the three: what 'welvane check' finds wrong.");
    return [choices](Workbench& bench) { return performRepair(bench, *choices); };
}

}  // namespace welvane
