#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/file_identity.h"
#include "shared/failure.h"

namespace welvane {

/// A regular file's bytes, read only, mapped into memory: nothing is read before it is looked at. Movable, unmapped at
/// the end. A file that is cut by someone else while it is mapped reads as NUL bytes behind its new end, and damaged()
/// tells so.
class MappedFile {
  public:
    /// Nothing when the file is not there, is no regular file (a folder, a pipe, a device) or may not be read;
    /// `why`, when given, then holds the system's reason. An empty file maps as "".
    static std::optional<MappedFile> open(std::string_view path, std::string* why = nullptr);

    MappedFile(MappedFile&& other) noexcept;
    MappedFile& operator=(MappedFile&& other) noexcept;
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;
    ~MappedFile();

    std::string_view bytes() const;
    /// What the file was when it was opened.
    const FileIdentity& identity() const;
    /// True once a part of the mapping could not be read, because the file was cut or its disk failed.
    bool damaged() const;
    /// Tells the system that the bytes will be read from front to end.
    void willReadAll() const;

  private:
    struct Mapping;
    explicit MappedFile(std::unique_ptr<Mapping> mapping);
    std::unique_ptr<Mapping> mapping_;
};

/// The file opened; FileFailure where that cannot be done.
MappedFile mapFile(std::string_view path);
/// FileFailure when a part of the file, which was opened under this path, could not be read, or when it is another one
/// now: what was read may be of both.
void needWhole(const MappedFile& file, std::string_view path);

}  // namespace welvane
