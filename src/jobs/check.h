#pragma once

#include <string>

#include "las/classify.h"

/// What files are, judged by their ends and their header alone: thousands of them in a blink.
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

    bool usable() const { return !status.red && quickCheckPasses && !curveTitleFault; }
};
/// Judges a file of any kind; one that is not there is judged too.
FileCheck checkFile(const std::string& path);

}  // namespace welvane
