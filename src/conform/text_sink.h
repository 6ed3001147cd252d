#pragma once

#include <functional>
#include <string_view>

namespace welvane {

/// Takes the next bytes of a text that is being written.
using TextSink = std::function<void(std::string_view)>;

}  // namespace welvane
