#pragma once

#include <string>

namespace welvane {

/// Holds a lock file while it lives, against all other processes; another one's lock is waited for, two seconds at
/// most. The file itself stays: to remove it would let two processes lock two files of one name.
class FileLock {
  public:
    explicit FileLock(const std::string& path);
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    ~FileLock();
    bool held() const { return held_; }
    /// Why it is not held.
    const std::string& why() const { return why_; }

  private:
    int file_;
    bool held_ = false;
    std::string why_;
};

}  // namespace welvane
