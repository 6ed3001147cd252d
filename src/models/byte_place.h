#pragma once

#include <cstddef>
#include <string>

#include "texttools/byte_view.h"

namespace welvane {

/// Shows the page of a file that holds the begin of a line, counted from 1; line 0 and one behind the end show the
/// first page. A line ends at CR LF, LF or CR. False, with the view as it was, when the file cannot be read.
bool showLineOfFile(ByteViewState& view, const std::string& path, std::size_t line);

}  // namespace welvane
