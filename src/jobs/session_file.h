#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "jobs/pass_request.h"
#include "jobs/session_lines.h"
#include "jobs/workbench.h"

/// A session kept in a file: its inputs, how they are read, and what differs from the tables as these inputs fill them.
/// The file is a text that a person can read; docs/formats.md tells its lines.
namespace welvane {

/// What a run is told beside the tables.
struct RunMarks {
    bool wrapSettled = false;  ///< WRAP was asked for by name
    bool csv = false;          ///< comma-separated values are written in place of a LAS file
};

struct SavedInput {
    int slot = 0;
    std::string path;                 ///< absolute
    std::string relative;             ///< from the folder of the session file
    std::uint64_t bytes = 0;          ///< its size
    std::uint64_t check = 0;          ///< checkOf its text
    std::vector<std::string> curves;  ///< mnemonics of its channels, the index first
};

/// A session file as read.
struct SavedSession {
    std::string file;  ///< as it was named
    std::vector<SavedInput> inputs;
    FigureRules rules = FigureRules::trueFigures;
    bool loose = false, decimalComma = false;
    std::string indexUnit;
    RunMarks marks;
    std::vector<SessionPart> parts;
};

/// Refusal for a file that cannot be read, is no session file, is of another version, was cut or damaged.
SavedSession readSavedSession(const std::string& file);
/// The slots of its inputs, from above.
std::vector<int> slotsOf(const SavedSession& saved);
/// Where its inputs are now: beside the session file as they were when it was saved, else where they were. Refusal,
/// with all that are missing, where one is in neither place.
std::vector<std::string> findSavedInputs(const SavedSession& saved);
/// How the inputs are read becomes a part of the request. Refusal where that asks for something else.
void takeReading(const SavedSession& saved, PassRequest& request);

/// Makes of the session, freshly loaded from these inputs, what it was when it was saved; the process's settings that a
/// run reads come along. Refusal, with nothing changed, for another file than was saved; `named` takes one by a
/// person's word, with a note, as long as it has the same channels.
void restoreSession(Workbench& bench, Session& session, const std::vector<Input>& inputs, const SavedSession& saved,
                    bool named);

/// A session as text, for a file of this name. `fresh` is the same session as it was loaded from these inputs. Refusal
/// where reading it back would not give the same session.
std::string sessionText(const App& app, const Session& session, const Session& fresh, const std::vector<Input>& inputs,
                        const RunMarks& marks, const std::string& file);
/// Writes such a text. Refusal where that fails.
void writeSession(const Workbench& bench, const std::string& file, const std::string& text);

}  // namespace welvane
