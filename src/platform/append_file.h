#pragma once

#include <string>
#include <string_view>

namespace welvane {

/// A file that only grows, and that no other process may grow at the same time. What was appended is there whatever
/// becomes of the process.
class AppendFile {
  public:
    enum class Start {
        New,      ///< only where there is none
        Emptied,  ///< what was there goes
        Kept      ///< behind what is there, if anything
    };
    /// Opens and locks it. FileFailure when that fails, also when another process holds it.
    AppendFile(const std::string& path, Start start);
    ~AppendFile();
    AppendFile(const AppendFile&) = delete;
    AppendFile& operator=(const AppendFile&) = delete;

    /// Handed to the system in one piece; may be called by several threads. FileFailure when the disk is full or fails.
    void append(std::string_view text) const;
    /// Waits until the disk has it all. FileFailure when it does not.
    void sync() const;

  private:
    std::string path_;
    int file_;
};

}  // namespace welvane
