#pragma once

#include <string>
#include <vector>

#include "cli/json.h"
#include "jobs/refusal.h"
#include "shared/notes.h"

/// The one shape of what verbs print with --json: {"welvane": VERSION, "files": [...], "notes": [...]}.
namespace welvane {

/// Notes as an array of {"kind", "file", "channel", "line", "count", "text"}, without what a note does not have.
Json notesAsJson(const std::vector<Note>& notes);
/// The entry of a file that was refused.
Json refusedEntry(const std::string& file, const Fault& fault);
/// A document over such entries.
Json jsonDocument(Json files, const std::vector<Note>& notes);
/// The document of a verb that makes one output of its inputs: an entry for each input, the output (null where none was
/// made) under "output", and under "error" why it was refused, which stands in the entry of the input that it is about
/// too.
Json outputDocument(const std::vector<std::string>& inputs, Json output, const std::vector<Note>& notes,
                    const Fault* refused = nullptr);
/// What stands in a document in front of its files, for one that is printed as it grows.
std::string jsonDocumentHead();

}  // namespace welvane
