#pragma once

#include <cstdint>
#include <string>

#include "shared/table.h"
#include "texttools/byte_view.h"

/// The byte view as a window shows it: its cells and hints, paging, and the search for bad line ends.
namespace welvane {

/// One page on or back, stopping at the ends of the file.
bool nextPage(ByteViewState& view);
bool previousPage(ByteViewState& view);

/// Back colour of an isolated line feed's cell.
inline constexpr std::uint32_t badEndColour = 255;
/// Rows of asd.
enum class AsdRow { Text = 0, Code };
/// asd, the view as cells: one column per byte of the page; the text row holds the character (codes 32 to 127,
/// otherwise ""), the code row its code with three digits. An isolated line feed is painted in badEndColour. Lives as
/// long as the page.
Table fillAsd(const ByteViewState& view);

/// What pointing at a byte tells in the status line.
std::string cellHint(unsigned char code);

/// The command "Find Bad Termination": scans the view's file from its start and asks whether to go to the first
/// isolated line feed. True when the page moved.
bool findBadTermination(App& app, ByteViewState& view);

}  // namespace welvane
