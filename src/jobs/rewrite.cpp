#include "jobs/rewrite.h"

#include "jobs/true_input.h"
#include "las/wrap_whole.h"
#include "platform/mapped_file.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

WrapReport wrapFile(Workbench& bench, const std::string& file, const std::string& output) {
    const LasFilePointer opened = openTrue(file);
    bench.checkOutput(output, {{file, file}});
    RunState& run = bench.app().run;
    run.statusText = "Converting";
    WrapReport report;
    {
        const WorkInHand work(bench.user(), {.bytes = opened->bytes().size()});
        const WholeWrap made =
            readingOf(file, [&] { return wrapWhole(*opened, output, run, bench.user(), bench.outputMode()); });
        if (made.result == StepResult::Cancelled) throw Refusal(file, "stopped");
        if (made.result != StepResult::Done) throw Refusal(file, made.why);
        for (Note note : made.notes) {
            note.file = file;
            bench.note(std::move(note));
        }
        report.wrapped = made.wrapped;
    }
    report.notes = bench.takeNotes();
    return report;
}

ReplaceBytesReport replaceBytes(Workbench& bench, const SearchRequest& request, const std::string& output) {
    std::string why;
    if (!MappedFile::open(request.sourcePath, &why)) throw Refusal(request.sourcePath, why);
    bench.checkOutput(output, {{request.sourcePath, request.sourcePath}});
    const WorkInHand work(bench.user(), {});
    // The box says why a field is refused, and so does the result.
    const HeldBoxes held(bench.user());
    const SearchReplaceResult result = searchReplaceTo(bench.app(), request, output, bench.outputMode());
    if (result.cancelled) throw Refusal(request.sourcePath, "stopped");
    if (!result.done) throw Refusal(output, result.why.empty() ? "not written" : result.why);
    ReplaceBytesReport report;
    report.replacements = result.replacements;
    report.notes = bench.takeNotes();
    return report;
}

}  // namespace welvane
