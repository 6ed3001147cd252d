#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace welvane {

/// Bytes of the program as a window shows them: UTF-8, and Latin-1 where they are none.
QString shown(std::string_view bytes);
/// What a person typed, as UTF-8.
std::string typed(const QString& text);

}  // namespace welvane
