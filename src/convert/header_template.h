#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace welvane {

/// The header lines that a table gets when no header file is given: ~Version and ~Well for the region, ready to be
/// filled in.
std::vector<std::string> headerTemplate(std::string_view country, std::string_view depthUnit);

/// The sections of a header that a new file takes over: each its title line and its lines, parted by CR LF, without one
/// at the end; "" when absent.
struct HeaderTexts {
    std::string version, well, parameter, other;
};
/// The sections of a header's text, whatever ends its lines, up to ~A. A section begins at a line that starts with "~"
/// and its letter ("~Version Information", "~Well Information", "~Parameter Information", "~Other Information");
/// "~Curve Section" and "~Ascii" are made anew and left out.
HeaderTexts headerTextsOf(std::string_view text);
/// Those of a file. Nothing, with the reason in `why`, when it cannot be read, is no text, or has neither ~Version nor
/// ~Well.
std::optional<HeaderTexts> readHeaderTexts(std::string_view path, std::string& why);

}  // namespace welvane
