#pragma once

#include <string>
#include <string_view>

/// Files and folders that are in nobody's way while their process lives, and that the next one removes when it was
/// killed. Their names tell the host and the process that made them; those of another host are left alone, since
/// nobody here can tell whether that process lives.
namespace welvane {

/// Name of a temporary file beside `path`: hidden, not longer than a name can be; `number` tells those of one process
/// apart.
std::string partFileName(std::string_view path, unsigned number);
/// Removes the temporary files in a folder ("" is the current one) that processes left which are gone. What cannot be
/// removed stays.
void sweepPartFiles(const std::string& folder);

/// A new folder for scratch files in `base`; "" with the error number set where none can be made.
std::string makeScratchFolder(const std::string& base);
/// Removes the scratch folders in `base` that processes left which are gone.
void sweepScratchFolders(const std::string& base);

}  // namespace welvane
