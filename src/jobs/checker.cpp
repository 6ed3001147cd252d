#include "jobs/checker.h"

#include <cstdlib>
#include <filesystem>

#include "app/setting_keys.h"
#include "certify/certify_file.h"
#include "jobs/refusal.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t faultsShown = 10;

/// "" for a file that can be started, else why not.
std::string whyNotStarted(const fs::path& program) {
    std::error_code error;
    const fs::file_status status = fs::status(program, error);
    if (!fs::exists(status)) return "no such checker";
    if (fs::is_directory(status)) return "the checker is a folder";
    constexpr fs::perms runnable = fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;
    return (status.permissions() & runnable) == fs::perms::none ? "the checker is not executable" : "";
}

/// Why a program named without a folder is not found along the search path; "" when it is.
std::string whyNotOnPath(const std::string& name) {
    const char* const path = std::getenv("PATH");
    for (const std::string& folder : split(path == nullptr ? "" : path, ':'))
        if (whyNotStarted(fs::path(folder.empty() ? "." : folder) / name).empty()) return {};
    return "no such checker on the search path";
}

}  // namespace

bool noCheckerSet(const std::string& setting) {
    if (trim(setting).empty()) return true;
    const SettingKey* const key = findSettingKey("cert_prog");
    return key != nullptr && setting == key->defaultText && !fileExists(setting);
}

void needChecker(const std::string& setting) {
    const std::vector<std::string> arguments = checkerArguments(setting);
    if (arguments.empty() || arguments.front().empty()) throw Refusal("", "no checker is set", Remedy::Checker);
    const std::string& program = arguments.front();
    const bool hasFolder = program.find_first_of("/\\") != npos;
    const std::string why = hasFolder ? whyNotStarted(program) : whyNotOnPath(program);
    if (!why.empty()) throw Refusal(program, why, Remedy::Checker);
}

std::vector<std::string> firstFaults(std::string_view log) {
    std::vector<std::string> lines = failureLines(log);
    const std::size_t all = lines.size();
    if (all > faultsShown) lines.resize(faultsShown);
    for (std::string& line : lines) line = std::string(trim(line));
    if (all > faultsShown) lines.push_back("and " + std::to_string(all - faultsShown) + " more");
    return lines;
}

}  // namespace welvane
