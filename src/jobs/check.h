#pragma once

#include <string>

#include "jobs/true_input.h"
#include "las/classify.h"

/// What files are, and whether the verbs read them.
namespace welvane {

/// What the header tells in passing, as it stands there.
struct HeaderGlance {
    std::string version, wrap, start, stop, unit;
    std::size_t curveLines = 0;  ///< the index among them
    /// Channels beside the index.
    std::size_t channels() const { return curveLines == 0 ? 0 : curveLines - 1; }
};

/// Everything that is told of one file.
struct FileCheck {
    std::string path;
    StatusLine status;
    FileVerdict quickCheck = FileVerdict::Unusable;
    LineEnds ends = LineEnds::Undecided;
    LasTest lasTest = LasTest::ReadError;
    PlexmoreKind plexmore = PlexmoreKind::ReadError;
    bool hasLineFeed = false;      ///< at one of its ends
    bool curveTitleFault = false;  ///< its curve title stands on a ~Well line
    bool quickCheckPasses = true;  ///< false for what is shown in the normal colour and needs a repair all the same
    std::string why;               ///< what else stands against it, or is worth a word
    HeaderGlance header;

    Reason refused{};         ///< why the verbs do not read it
    std::size_t records = 0;  ///< of a file that they do

    /// The verbs read it, and nothing of it is lost on the way.
    bool usable() const { return refused.none() && quickCheckPasses && !curveTitleFault; }
};
/// Judges a file of any kind, and reads it through as the verbs do: notes tell what they would tell. One that is not
/// there is judged too. Refusal when a person stopped it.
FileCheck checkFile(Workbench& bench, const std::string& path, const ReadingChoices& choices);

}  // namespace welvane
