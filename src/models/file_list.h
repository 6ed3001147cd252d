#pragma once

#include <string>
#include <string_view>
#include <vector>

/// What stands in a folder, as the browser lists it. Names are bytes: any that the system has are listed.
namespace welvane {

/// A pattern of the browser: "*" stands for any characters, "?" for one, everything else (a "[" too) for itself;
/// several are parted by ";". Case does not matter, and "*.*" fits names without a dot too.
bool fitsPattern(std::string_view name, std::string_view pattern);
/// The pattern that a typed extension means: "las" and ".las" are "*.las". "" for one that no file name can fit.
std::string patternOf(std::string_view extension);

/// A name that a new folder can have: not empty, not "." or "..", at most 255 bytes, without "/", "\" or control
/// characters.
bool legalFolderName(std::string_view name);

/// Names in the order of their letters, case ignored. Names that begin with a dot are left out.
struct FolderListing {
    std::vector<std::string> folders, files;
    std::string problem;  ///< the system's reason when the folder could not be read, or not to its end
};
/// The folders in a folder, and its files that fit the pattern.
FolderListing listFolder(const std::string& folder, std::string_view pattern);

/// A name as a line of text: control characters as "\n" or "\x01".
std::string lineOfName(std::string_view name);

}  // namespace welvane
