#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace welvane {

/// The two ends of many files, one after another: for whoever looks at thousands of them, since reading a few thousand
/// bytes costs a third of mapping them. Holds one buffer for all.
class FileEnds {
  public:
    static constexpr std::size_t block = 4096;

    /// Reads a file's first and last 4096 bytes, of a file of at most twice as many all of it. "" when done, else the
    /// system's reason; what is no regular file is refused without being opened.
    std::string read(std::string_view path);

    std::uint64_t size() const { return size_; }
    /// At most 4096 bytes each; the same for a file that is shorter.
    std::string_view head() const { return begin().substr(0, block); }
    std::string_view tail() const;
    /// All that was read from the file's begin on without a gap.
    std::string_view begin() const { return {buffer_.data(), beginLength_}; }
    /// True when begin() is the whole file.
    bool whole() const { return beginLength_ == size_; }

  private:
    std::vector<char> buffer_ = std::vector<char>(2 * block);
    std::size_t beginLength_ = 0;
    std::uint64_t size_ = 0;
};

}  // namespace welvane
