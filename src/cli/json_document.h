#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "cli/json.h"
#include "jobs/refusal.h"
#include "shared/notes.h"

/// The one shape of what verbs print with --json: {"welvane": VERSION, "files": [...], "notes": [...]}.
namespace welvane {

/// Notes as an array of {"kind", "file", "channel", "line", "count", "text"}, without what a note does not have.
Json notesAsJson(const std::vector<Note>& notes);
/// The entry of a file, of which more is to be told: "path", and where the path is no UTF-8 "pathBytes", in which
/// each byte but the printable ones of ASCII is "%XX", and "%" too.
Json fileEntry(std::string_view path);
/// The same with more members.
Json fileEntry(std::string_view path, std::initializer_list<Json::Member> members);
/// The entry of a file that was refused.
Json refusedEntry(const std::string& file, const Fault& fault);
/// The document of a verb that has no files: its own members, and the notes.
Json ownDocument(std::initializer_list<Json::Member> members, const std::vector<Note>& notes = {});
/// The document of a verb that makes one output of its inputs: an entry for each input, the output (null where none was
/// made) under "output", and under "error" why it was refused, which stands in the entry of the input that it is about
/// too.
Json outputDocument(const std::vector<std::string>& inputs, Json output, const std::vector<Note>& notes,
                    const Fault* refused = nullptr);

}  // namespace welvane
