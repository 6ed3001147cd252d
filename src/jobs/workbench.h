#pragma once

#include <functional>
#include <istream>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "jobs/refusal.h"
#include "las/las_file.h"
#include "platform/output_file.h"
#include "session/session.h"
#include "shared/notes.h"

/// What every job works with: the process, the rules for inputs and outputs, and the notes of the work in hand. A job
/// is a routine that takes a workbench and a request, gives a report or throws a Refusal, and prints nothing.
namespace welvane {

/// How a job treats files.
struct FileRules {
    bool strict = false;  ///< an input whose lines end in LF only is refused
    bool force = false;   ///< an output may replace a file
};

/// What every report begins with.
struct JobReport {
    std::vector<Note> notes{};
};

/// An input as a job was given it, and the file to read in its place.
struct Input {
    std::string given;               ///< for messages and results
    std::string path;                ///< the same, or a scratch copy with repaired line ends
    LasFilePointer file = nullptr;   ///< opened by openInput and openLas
    LineEnds ends = LineEnds::Good;  ///< of the file as it was given
};

class Workbench {
  public:
    /// `stopWanted` tells a person's wish to stop from a pass that ended itself; without it the process's cancel flag
    /// counts.
    Workbench(App& app, const FileRules& rules, std::function<bool()> stopWanted = {});
    Workbench(const Workbench&) = delete;
    Workbench& operator=(const Workbench&) = delete;

    App& app() { return app_; }
    UserInterface& user() { return app_.user; }
    const FileRules& rules() const { return rules_; }
    bool stopWanted() const { return stopWanted_ ? stopWanted_() : app_.run.cancelRequested.load(); }

    /// Keeps a note for the report, and tells it at once.
    void note(Note note);
    void note(NoteKind kind, const std::string& file, const std::string& text) {
        note(Note{.kind = kind, .file = file, .text = text});
    }
    /// The notes since the last time.
    std::vector<Note> takeNotes();

    /// An input that can be read: there, a file, not empty, not binary, its lines ended by CR LF or CR. One whose lines
    /// end in LF only is read through a scratch copy, with a note; Refusal under FileRules::strict and for everything
    /// else. Opened once more, the same copy serves again.
    Input openInput(const std::string& named);
    /// Removes the scratch copy of an input that is done with, if it has one.
    void release(const Input& input);
    /// The same, and what a LAS file needs: ~C with lines, ~A with data, STEP, at most 32767 columns, lines of sane
    /// length, and (unless `loose`) data of a regular shape.
    Input openLas(const std::string& named, bool loose);
    /// Another file that the work reads: a list, a filter, a survey. No output may be one of them.
    void willRead(const std::string& named) { alsoRead_.insert(named); }
    const std::set<std::string>& alsoRead() const { return alsoRead_; }
    /// Refusal for an output that is one of the inputs or of the other files that are read, that exists (without
    /// FileRules::force), or whose folder is not there. `tried` also opens it, so that a folder that cannot be written
    /// is told before any work is done, and sweeps away what killed processes left.
    void checkOutput(const std::string& output, const std::vector<Input>& inputs, bool tried = true) const;
    /// The part of it that tells whether the output is a file that is read, for those that the work itself found.
    void needOwnFile(const std::string& output, const std::vector<Input>& inputs) const;
    /// How an output takes its name: without FileRules::force only where nobody has it by then.
    OutputFile::Mode outputMode() const {
        if (unsynced_) return rules_.force ? OutputFile::Mode::BesideUnsynced : OutputFile::Mode::NewUnsynced;
        return rules_.force ? OutputFile::Mode::Beside : OutputFile::Mode::New;
    }
    /// From now on outputs take their names without being synced, which is left to whoever asked for it.
    void leaveUnsynced(bool unsynced) { unsynced_ = unsynced; }

  private:
    std::string repairedCopy(const std::string& named);

    App& app_;
    FileRules rules_;
    std::function<bool()> stopWanted_;
    std::vector<Note> notes_;
    int copies_ = 0;
    bool unsynced_ = false;
    std::set<std::string> alsoRead_;
    std::map<std::string, Input> copyOf_;  ///< inputs that have one, by the name given
};

/// Files as named, with @LIST (names one a line, or parted by NUL bytes; "@-" is `standardInput`) replaced by what the
/// list holds, and a folder by its *.las files, `recursive` for those below too. Refusal for a list or folder that
/// cannot be read.
std::vector<std::string> expandLists(Workbench& bench, const std::vector<std::string>& named,
                                     std::istream& standardInput, bool recursive);

/// Holds boxes back as long as it lives.
class HeldBoxes {
  public:
    explicit HeldBoxes(UserInterface& user) : user_(user) { user_.holdBoxes(true); }
    ~HeldBoxes() { user_.holdBoxes(false); }
    HeldBoxes(const HeldBoxes&) = delete;
    HeldBoxes& operator=(const HeldBoxes&) = delete;

  private:
    UserInterface& user_;
};

/// A piece of work as long as it lives.
class WorkInHand {
  public:
    WorkInHand(UserInterface& user, const Work& work) : user_(user) { user_.startWork(work); }
    ~WorkInHand() { user_.endWork(); }
    WorkInHand(const WorkInHand&) = delete;
    WorkInHand& operator=(const WorkInHand&) = delete;

  private:
    UserInterface& user_;
};

}  // namespace welvane
