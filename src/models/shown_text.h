#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/platform.h"

/// Texts that a window shows: a listing that was written, the pages of the guide.
namespace welvane {

/// A file's text, as much of it as a window takes.
struct ShownText {
    static constexpr std::size_t most = std::size_t{8} << 20U;
    std::string text{};
    bool cut = false;   ///< the file is longer than `most`
    std::string why{};  ///< why there is none
};
ShownText readShownText(std::string_view path);

/// Where a file of the documentation stands, "docs/guide.md": in the source tree, or where it was installed. "" when it
/// is in neither.
std::string documentPath(const Platform& platform, std::string_view name);

/// The example wells that come with the program, by name; empty where they were not installed.
std::vector<std::string> exampleWells(const Platform& platform);

}  // namespace welvane
