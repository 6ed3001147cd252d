#pragma once

#include <cstdint>
#include <string_view>

#include "las/line_ends.h"
#include "shared/prompts.h"

/// What a file is, judged by cheap looks at its first and last bytes. Only quickCheck can change a file, and asks
/// before.
namespace welvane {

LineEnds lineEndKind(std::string_view path);

enum class LasTest : std::int16_t {
    Passes = -1,
    ReadError = 0,
    WrongName = 1,   ///< the first ".las" of the file name is not its end
    NoSections = 2,  ///< no "~V" and "~W", anywhere in the first 32000 bytes (of a larger file: in its first half)
};
LasTest quickLasTest(std::string_view path);

enum class PlexmoreKind : std::int16_t {
    None = -1,
    ReadError = 0,
    NoCurves = 1,  ///< its banner, but no ~C in the first block
    Version2 = 2,  ///< banner, ~C and a tab: 2.X
    Version3 = 3   ///< banner and ~C: 3.5 or earlier
};
PlexmoreKind plexmoreKind(std::string_view path);

/// The platform's own ASCII table; false also for a file of fewer than 2048 bytes.
bool isPlexmoreAscii(std::string_view path);

enum class FileVerdict : std::int16_t {
    Las = -1,
    Unusable = 0,
    UnixTermination = 1,  ///< the line-end test did not pass, whatever the reason
    Plexmore2 = 2,        ///< needs the rebuild
    Plexmore3 = 3,        ///< usable as it stands
    NotBasicLas = 4
};
/// The verdict alone; changes nothing.
FileVerdict judgeFile(std::string_view path);

/// The same judgements for a caller that has read what they look at: a file's name and a first part of it, of which
/// NoSections may still be wrong; its first 2048 bytes.
LasTest lasTestOf(std::string_view path, std::string_view bytes);
PlexmoreKind plexmoreKindOf(std::string_view head);
bool isPlexmoreAsciiTable(std::string_view head);
FileVerdict verdictOf(LineEnds ends, LasTest test, PlexmoreKind kind);
/// Offers the curve title repair, then judges.
FileVerdict quickCheck(std::string_view path, UserInterface& user);

/// A line of the browser; red ones in pure red, the others in the labels' colour.
struct StatusLine {
    std::string_view text;
    bool red = false;
};
StatusLine statusLine(FileVerdict verdict);
inline constexpr StatusLine csvStatus = {"CSV File", false};
inline constexpr StatusLine plexmoreAsciiStatus = {"Plexmore ASCII File", false};
inline constexpr StatusLine missingStatus = {"File Doesn't Exist", true};

}  // namespace welvane
