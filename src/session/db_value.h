#pragma once

#include <string>
#include <string_view>

namespace welvane {

/// A look-up in a comma-separated text file: lines that begin with "#" are comments, the first other line names the
/// columns. Gives the field of the named column, trimmed, in the first record whose second field equals the key; both
/// ignore case. "" when the file, the column or the key is not there; FileFailure when the file is there and cannot be
/// read. A field may stand in double quotes, in which a
/// comma is text and "" is one quote. A record ends at CR LF, CR or LF: such tables come from spreadsheets, not from
/// logging units.
std::string getDBValue(std::string_view path, std::string_view key, std::string_view column);

}  // namespace welvane
