#include "shared/files.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>

#include "shared/failure.h"
#include "shared/text.h"

namespace welvane {

namespace fs = std::filesystem;

std::string resolvePath(std::string_view path) {
    std::string result(path);
    if (result.find('\\') == std::string::npos) return result;
    std::error_code error;
    if (fs::exists(result, error)) return result;
    std::replace(result.begin(), result.end(), '\\', '/');
    return result;
}

bool fileExists(std::string_view path) {
    if (path.empty()) return false;
    std::error_code error;
    const fs::file_status status = fs::status(resolvePath(path), error);
    if (fs::exists(status)) return !fs::is_directory(status);
    constexpr std::array notThere = {std::errc::no_such_file_or_directory, std::errc::not_a_directory,
                                     std::errc::filename_too_long, std::errc::invalid_argument,
                                     std::errc::too_many_symbolic_link_levels};
    if (std::ranges::none_of(notThere, [&](std::errc reason) { return error == reason; }))
        throw FileFailure(std::string(path), error.message());
    return false;
}

bool folderExists(std::string_view path) {
    std::error_code error;
    return !path.empty() && fs::is_directory(resolvePath(path), error);
}

std::optional<std::uint64_t> fileSize(std::string_view path) {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(resolvePath(path), error);
    if (error) return std::nullopt;
    return size;
}

bool samePath(std::string_view one, std::string_view other) {
    const std::string first = resolvePath(one);
    const std::string second = resolvePath(other);
    std::error_code error;
    return fs::equivalent(first, second, error) || sameName(first, second);
}

bool sameName(std::string_view one, std::string_view other) {
    fs::path first = resolvePath(one), second = resolvePath(other);
    if (first.is_absolute() != second.is_absolute()) {
        std::error_code error;
        first = fs::absolute(first, error);
        second = fs::absolute(second, error);
    }
    return first.lexically_normal() == second.lexically_normal();
}

std::string onlyPath(std::string_view path) {
    std::error_code error;
    std::string given = resolvePath(path);
    const std::filesystem::path only = std::filesystem::weakly_canonical(given, error);
    return error ? given : only.string();
}

std::string dirOf(std::string_view path) {
    const std::size_t last = path.find_last_of("/\\");
    return last == npos ? std::string() : std::string(path.substr(0, last + 1));
}

std::string fileNameOf(std::string_view path) {
    const std::size_t last = path.find_last_of("/\\");
    return std::string(last == npos ? path : path.substr(last + 1));
}

std::string withBackslash(std::string_view folder) {
    std::string result(folder);
    if (!result.empty() && result.back() != '/' && result.back() != '\\') result += '/';
    return result;
}

std::string changeExtension(std::string_view path, std::string_view extension) {
    const std::string name = fileNameOf(path);
    const std::size_t dot = name.rfind('.');
    std::string result(path.substr(0, path.size() - name.size()));
    return result.append(name, 0, dot).append(".").append(extension);
}

bool removeFile(std::string_view path) {
    std::error_code error;
    return fs::remove(resolvePath(path), error) && !error;
}

bool copyFile(std::string_view source, std::string_view target) {
    std::error_code error;
    return fs::copy_file(resolvePath(source), resolvePath(target), fs::copy_options::overwrite_existing, error) &&
           !error;
}

}  // namespace welvane
