#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Paths and small file helpers. A path may use "\" for "/": wherever one is opened it goes through resolvePath.
namespace welvane {

/// The path as this system opens it: the text itself when such a file exists, otherwise with each "\" as "/".
std::string resolvePath(std::string_view path);

/// A file that is there, whatever kind it has but a folder; "" is none. FileFailure when the system does not tell: a
/// file that was taken for missing would be left out of a run unseen.
bool fileExists(std::string_view path);
bool folderExists(std::string_view path);
/// Bytes of a regular file; nothing when it cannot be told.
std::optional<std::uint64_t> fileSize(std::string_view path);
/// The same file under two names (links followed); where one does not exist the resolved texts are compared.
bool samePath(std::string_view one, std::string_view other);
/// The texts alone, resolved: the same name, whether there is such a file or not. Asks the system for nothing but the
/// current folder, and that only where one of them is relative and the other is not.
bool sameName(std::string_view one, std::string_view other);
/// One spelling per file, links followed, whether it is there or not.
std::string onlyPath(std::string_view path);

/// Folder part, with its last separator; "" when the path has none. Both "/" and "\" separate.
std::string dirOf(std::string_view path);
/// What stands behind the last separator.
std::string fileNameOf(std::string_view path);
/// The folder with a separator at its end: a "/" is added where neither "/" nor "\" stands there; "" stays "". Named
/// for the separator of the system that it was first written on.
std::string withBackslash(std::string_view folder);
/// The name with the part behind the last dot of its file name replaced ("a.las", "txt" gives "a.txt").
std::string changeExtension(std::string_view path, std::string_view extension);

/// Deletes a file; false when it was not there or stays.
bool removeFile(std::string_view path);
/// Copies the bytes over an existing or new target; false on any failure.
bool copyFile(std::string_view source, std::string_view target);

}  // namespace welvane
