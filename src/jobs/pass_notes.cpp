#include "jobs/pass_notes.h"

#include <utility>

#include "shared/text.h"

namespace welvane {

void noteLeftOut(Workbench& bench, const ItemReport& item) {
    const PassReport& pass = item.pass;
    for (Note note : pass.notes) {
        if (note.file.empty()) note.file = item.target;
        bench.note(std::move(note));
    }
    if (pass.overflowCount != 0)
        bench.note({.kind = NoteKind::TooWide,
                    .file = item.target,
                    .count = pass.overflowCount,
                    .text = counted(pass.overflowCount, "value") + " too wide for the data column"});
    for (const SkippedStep& step : pass.failures.first)
        bench.note(NoteKind::Skipped, item.target, "skipped " + step.what + ": " + step.why);
    if (pass.failures.count > pass.failures.first.size())
        bench.note({.kind = NoteKind::Skipped,
                    .file = item.target,
                    .count = pass.failures.count,
                    .text = std::to_string(pass.failures.count) + " steps skipped in all"});
}

}  // namespace welvane
