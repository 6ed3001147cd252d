#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace welvane {

/// Which file, and in which state: two looks at a file that nobody touched in between give the same. A new file under
/// an old name is another one.
struct FileIdentity {
    std::uint64_t device = 0, number = 0;  ///< the file itself, whatever its name
    std::uint64_t size = 0;                ///< in bytes
    std::int64_t changed = 0;              ///< when its bytes were last written, in nanoseconds since 1970
    bool operator==(const FileIdentity&) const = default;
};

/// Of the file that the path names now; nothing when there is none or the system does not tell.
std::optional<FileIdentity> identifyFile(std::string_view path);

}  // namespace welvane
