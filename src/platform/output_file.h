#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "shared/failure.h"

namespace welvane {

/// A file written in large blocks. Either in place (what is written so far is on disk as it goes) or beside its name:
/// then the bytes go to a file in the same folder that takes the name at commit(), so that a run that fails or is
/// killed leaves the old file whole. Where the system has such files this one has no name until then, and a kill leaves
/// nothing; elsewhere it has a temporary one (see leftovers.h).
class OutputFile {
  public:
    enum class Mode {
        InPlace,         ///< an existing file is replaced at once
        Beside,          ///< takes its name at commit(), from an existing file too
        New,             ///< as Beside, but only where nobody has the name by then: of two writers one fails
        BesideUnsynced,  ///< as Beside, but the caller syncs it, or can do without: see syncFiles
        NewUnsynced      ///< as New, the same
    };

    /// Opens for writing; FileFailure where that cannot be done, also for a name that is a folder, a pipe or a device.
    /// Of a link the file behind it is replaced. A replaced file's mode bits are kept.
    OutputFile(std::string_view path, Mode mode);
    OutputFile(OutputFile&&) noexcept;
    OutputFile& operator=(OutputFile&&) noexcept;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    /// Closes; without commit() a file written beside is removed.
    ~OutputFile();

    /// Adds bytes behind what is there. FileFailure when the disk is full or fails.
    void write(std::string_view text);
    /// The text and CR LF.
    void writeLine(std::string_view text);
    /// Room for at least `size` bytes in the block in hand; write there, then call advance with what was used. For hot
    /// loops.
    char* reserve(std::size_t size);
    void advance(std::size_t used);

    /// Path under which the bytes are found before commit(), for closing edits on the file. One that had no name gets a
    /// temporary one by this.
    const std::string& writtenPath();
    /// Everything given so far is handed to the system and the file closed; no more writes. FileFailure on failure.
    void close();
    /// close(); then, written beside: synced and given its name.
    void commit();

  private:
    struct State;
    std::unique_ptr<State> state_;
};

/// Makes written files safe against a loss of power: each of them, then once the folders of their names. Gives for each
/// the reason why that failed, "" for those that are safe.
std::vector<std::string> syncFiles(const std::vector<std::string>& paths);

/// Puts bytes over those that stand at a place (from 0) of an existing file. FileFailure when it cannot be opened or
/// written.
void overwriteBytes(std::string_view path, std::uint64_t place, std::string_view bytes);

}  // namespace welvane
