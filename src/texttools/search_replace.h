#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/output_file.h"
#include "session/session.h"

namespace welvane {

/// What a search and replace did.
struct SearchReplaceResult {
    bool done = false;               ///< the target stands, whole
    bool cancelled = false;          ///< cancelRequested was set; the target was not written
    std::uint64_t replacements = 0;  ///< occurrences found
    std::string why;                 ///< the reason of a failure
    explicit operator bool() const { return done; }
};

/// Writes the source to the target with every occurrence of `search` replaced: replaceInFile for the tool, which shows
/// how many there were. Both files are closed on any failure.
SearchReplaceResult searchReplaceFile(App& app, std::string_view sourcePath, std::string_view targetPath,
                                      std::string_view searchBytes, std::string_view replaceBytes,
                                      OutputFile::Mode mode = OutputFile::Mode::Beside);

}  // namespace welvane
