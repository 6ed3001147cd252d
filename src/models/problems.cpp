#include "models/problems.h"

#include <array>
#include <utility>

#include "shared/failure.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::array<std::string_view, 4> problemHeads = {"File", "Line", "Channel", "Problem"};
constexpr const char* ofTheRun = "";  ///< a run is about no one file

}  // namespace

void ProblemList::forget(ProblemSource source, const std::string& about) {
    std::erase_if(problems_,
                  [&](const Problem& problem) { return problem.source == source && problem.about == about; });
}

void ProblemList::add(ProblemSource source, const std::string& about, Note note) {
    if (note.file.empty()) note.file = about;
    problems_.push_back({source, about, std::move(note)});
}

void ProblemList::addFailures(ProblemSource source, const std::string& about, const FailureList& failures) {
    for (const SkippedStep& step : failures.first)
        add(source, about, {.kind = NoteKind::Skipped, .text = step.what + ": " + step.why});
    if (failures.count <= failures.first.size()) return;
    const std::size_t more = failures.count - failures.first.size();
    add(source, about, {.kind = NoteKind::Skipped, .count = more, .text = std::to_string(more) + " more like these"});
}

void ProblemList::loaded(const std::string& path, const SlotLoadResult& result) {
    forget(ProblemSource::Load, path);
    if (result.status != LoadStatus::Loaded)
        add(ProblemSource::Load, path, {.line = result.differingLineNumber, .text = result.why});
    for (const Note& note : result.notes) add(ProblemSource::Load, path, note);
    for (const std::string& unit : result.unknownUnits)
        add(ProblemSource::Load, path,
            {.kind = NoteKind::Unit, .text = "the unit table does not know \"" + unit + "\""});
}

void ProblemList::filtered(const std::string& path, const FilterReport& report) {
    std::erase_if(problems_, [](const Problem& problem) { return problem.source == ProblemSource::Filter; });
    if (!report.applied && !report.why.empty())
        add(ProblemSource::Filter, path, {.kind = NoteKind::Skipped, .text = report.why});
    addFailures(ProblemSource::Filter, path, report.skipped);
}

void ProblemList::ran(const ProcessOutcome& outcome) {
    forget(ProblemSource::Run, ofTheRun);
    for (const ItemReport& item : outcome.items) {
        for (Note note : item.pass.notes) {
            if (note.file.empty()) note.file = item.target;
            add(ProblemSource::Run, ofTheRun, std::move(note));
        }
        if (item.pass.overflowCount != 0)
            add(ProblemSource::Run, ofTheRun,
                {.kind = NoteKind::TooWide,
                 .file = item.target,
                 .count = item.pass.overflowCount,
                 .text = counted(static_cast<std::int64_t>(item.pass.overflowCount), "value") +
                         " too wide for the data column"});
        addFailures(ProblemSource::Run, ofTheRun, item.pass.failures);
    }
    for (const LeftOutFile& left : outcome.leftOut)
        add(ProblemSource::Run, ofTheRun, {.kind = NoteKind::Dropped, .file = left.path, .text = left.why});
    if (!outcome.refusal.empty() && !outcome.cancelled) add(ProblemSource::Run, ofTheRun, {.text = outcome.refusal});
}

void ProblemList::readTable(const std::string& path, const TableLoadResult& result) {
    std::erase_if(problems_, [](const Problem& problem) { return problem.source == ProblemSource::Table; });
    if (!result.done && !result.cancelled) add(ProblemSource::Table, path, {.text = result.why});
    if (result.skipped > 0)
        add(ProblemSource::Table, path,
            {.kind = NoteKind::Dropped,
             .count = static_cast<std::size_t>(result.skipped),
             .text = counted(result.skipped, "line") + " with another number of columns than the first"});
}

std::string ProblemsModel::text(std::int64_t row, int column) const {
    if (row < 0 || row >= rows() || column < 0 || column >= columns()) throw RunTimeFailure("subscript out of range");
    if (row == 0) return std::string(problemHeads[static_cast<std::size_t>(column)]);
    Note note = list_.note(static_cast<std::size_t>(row - 1));
    if (column == 0) return fileNameOf(note.file);
    if (column == 1) return note.line == 0 ? std::string() : std::to_string(note.line);
    if (column == 2) return note.channel;
    note.line = 0;
    note.channel.clear();
    return textOf(note);
}

ProblemsModel::Place ProblemsModel::placeOf(std::int64_t row) const {
    if (row < 1 || row >= rows()) return {};
    const Note& note = list_.note(static_cast<std::size_t>(row - 1));
    return {note.file, note.line};
}

}  // namespace welvane
