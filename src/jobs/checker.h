#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The external checker as a job runs it.
namespace welvane {

/// Seconds that a checker gets for one file where nothing else is said: it must not hold anybody for ever.
inline constexpr double checkerPatience = 600;

/// True where the setting names no checker: it is empty, or is what it was at first and no such program is there. The
/// program then judges files by itself.
bool noCheckerSet(const std::string& setting);
/// Refusal for a checker's command line whose program is not there or cannot be executed, so that this is told once and
/// not for each file.
void needChecker(const std::string& setting);

/// The first lines of a log that tell a fault, and how many more there are.
std::vector<std::string> firstFaults(std::string_view log);

}  // namespace welvane
