#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "shared/settings.h"

namespace welvane {

/// What the rebuild takes from outside.
struct RebuildSettings {
    FormatDefaults format;
    std::string country;  ///< "CANADA" gives the ~Well lines of that country
    /// Description of a mnemonic in the curve library, as it stands there; "" when the library does not have it.
    std::function<std::string(std::string_view mnem)> describeCurve;
};

enum class RebuildKind { Plexmore2 = 2, Other = 3 };

}  // namespace welvane
