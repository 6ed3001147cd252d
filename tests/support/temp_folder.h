#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

namespace welvane::test {

/// A folder of its own for one test, removed at the end.
class TempFolder {
  public:
    TempFolder() {
        std::random_device random;
        do {
            path_ = std::filesystem::temp_directory_path() / ("welvane-test-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path_));
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    std::string path(std::string_view name = "") const { return (path_ / name).string(); }
    /// Writes the bytes as they stand and returns the path.
    std::string write(std::string_view name, std::string_view bytes) const {
        std::ofstream file(path_ / name, std::ios::binary);
        file << bytes;
        return path(name);
    }
    /// The same with each "\n" as CR LF, as LAS files want it.
    std::string writeLines(std::string_view name, std::string_view text) const {
        std::string bytes;
        for (const char c : text) {
            if (c == '\n') bytes += '\r';
            bytes += c;
        }
        return write(name, bytes);
    }
    std::string read(std::string_view name) const { return readFile(path(name)); }
    static std::string readFile(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

  private:
    std::filesystem::path path_;
};

}  // namespace welvane::test
