#pragma once

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

namespace welvane::bench {

/// A file written in blocks of a megabyte and nothing else: what a plain program would do.
class BlockWriter {
  public:
    explicit BlockWriter(const char* path) : file_(std::fopen(path, "wb")) {
        if (file_ != nullptr) std::setvbuf(file_, nullptr, _IONBF, 0);
        failed_ = file_ == nullptr;
    }
    BlockWriter(const BlockWriter&) = delete;
    BlockWriter& operator=(const BlockWriter&) = delete;
    ~BlockWriter() { close(); }

    /// Room for `size` bytes, at most `slack`; what was used is told by advance().
    char* reserve(std::size_t size) {
        if (block + slack - used_ < size) flush();
        return buffer_.get() + used_;
    }
    void advance(std::size_t used) { used_ += used; }
    void write(std::string_view text) {
        while (!text.empty()) {
            const std::string_view piece = text.substr(0, slack);
            std::memcpy(reserve(piece.size()), piece.data(), piece.size());
            advance(piece.size());
            text.remove_prefix(piece.size());
        }
    }
    /// Everything out and the file closed; false when any of it failed.
    bool close() {
        if (file_ == nullptr) return !failed_;
        flush();
        if (std::fclose(file_) != 0) failed_ = true;
        file_ = nullptr;
        return !failed_;
    }

  private:
    static constexpr std::size_t block = 1 << 20;
    static constexpr std::size_t slack = 4096;

    void flush() {
        if (file_ != nullptr && std::fwrite(buffer_.get(), 1, used_, file_) != used_) failed_ = true;
        used_ = 0;
    }

    std::FILE* file_;
    std::unique_ptr<char[]> buffer_ = std::make_unique_for_overwrite<char[]>(block + slack);
    std::size_t used_ = 0;
    bool failed_ = false;
};

}  // namespace welvane::bench
