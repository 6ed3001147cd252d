#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "session/session.h"

/// A paged view of a file's raw bytes, and the finder of bad line ends. A line of a LAS file ends at CR LF or at CR; a
/// line feed alone ends none, and such an isolated line feed is the defect that this view hunts.
namespace welvane {

inline constexpr std::uint64_t bytePageLength = 400;

/// One page of a file. Offsets count bytes from 0.
struct ByteViewState {
    std::string path;
    std::uint64_t length = 0;     ///< of the file when the page was read
    std::uint64_t pageStart = 0;  ///< offset of the page's first byte
    std::string bytes;            ///< the page: bytePageLength bytes, fewer at the end of the file
    bool afterReturn = false;     ///< the byte in front of the page is a carriage return

    std::uint64_t pageLength() const { return bytes.size(); }
    /// Pages of a file of this length, counted from its start; an empty file has none.
    std::uint64_t pageCount() const { return (length + bytePageLength - 1) / bytePageLength; }
    /// What the view is tagged with.
    std::string tag() const { return "Text or Ascii codes for: " + path; }
};

/// Shows the first page of a file. False, with an empty view, when it cannot be read.
bool openByteView(ByteViewState& view, std::string_view path);
/// Reads the page that begins at the offset. A start at or behind the end of the file shows the file's last 400 bytes.
/// False, with the view as it was, when the file cannot be read.
bool showPage(ByteViewState& view, std::uint64_t start);
/// Page `number` from 1 of the pages counted from the file's start; false for a number outside.
bool goToPage(ByteViewState& view, std::uint64_t number);

/// Whether the page's byte at `index` (from 0) is a line feed without a carriage return before it.
bool isolatedLineFeed(const ByteViewState& view, std::size_t index);

/// A code by the mask "000".
std::string threeDigits(unsigned char code);

/// The page as lines for a terminal, each closed by "\n": the offset in eight hexadecimal digits, then with `codes`
/// sixteen decimal codes and their text, without it forty characters. A byte that shows nothing is "."; an isolated
/// line feed is "*" beside its code or in the text, and its offset stands at the end of its line.
std::string renderPage(const ByteViewState& view, bool codes);

/// Offset of the first line feed without a carriage return before it, at or behind `from`; npos when there is none.
std::size_t findIsolatedLineFeed(std::string_view bytes, std::size_t from = 0);

/// All isolated line feeds of a file.
struct BadEnds {
    static constexpr std::size_t kept = 1000;
    bool readable = false;
    bool cancelled = false;
    std::uint64_t count = 0;
    std::vector<std::uint64_t> offsets;  ///< of the first `kept`
};
/// Reads the whole file, telling its progress; stops when cancelRequested is set.
BadEnds findBadEnds(App& app, std::string_view path);

}  // namespace welvane
