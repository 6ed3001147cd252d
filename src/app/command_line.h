#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "session/session_tables.h"

/// The headless line: "FILE... /Switch=value ...".
namespace welvane {

/// What a line asks for. Paths are as given, double quotes removed.
struct CommandLine {
    std::string runFile;                             ///< first file named without a switch, when it exists
    std::array<std::string, slotCount> slotPaths{};  ///< "File1=" to "File4="; slot 0 is runFile where it is not named
    std::string filterPath, outputPath, dowhat;
    std::string missingFile;    ///< the first file named without a switch, when it does not exist
    std::string refusedOutput;  ///< the output as it was named, where its folder does not exist and outputPath is ""
};

/// One switch of the line, and what it is for.
struct CommandSwitch {
    std::string_view name;  ///< with its "="
    std::string& (*target)(CommandLine&);
    std::string_view help;
};
/// In the order in which a switch text is tried against them.
const std::vector<CommandSwitch>& commandSwitches();

/// Cuts a line into the files and the switches. Element 0 of both is unused; with nothing found an array stays empty.
/// Blind to quotes where it cuts at "/", so a path in the line holds "\" for it.
void splitCommandLine(std::string_view text, std::vector<std::string>& files, std::vector<std::string>& switches);

/// Fills `line` by the switches; a switch that the table does not hold is ignored. An output in a folder that does not
/// exist leaves outputPath empty.
void applySwitches(const std::vector<std::string>& switches, CommandLine& line);

/// The whole way from a line's text to what it asks for.
CommandLine readCommandLine(std::string_view text);

/// The line's text from the arguments of a process: joined by blanks, paths with "\" for "/" so that they survive the
/// cut at
/// "/", a name with blanks in double quotes. An argument that holds several switches is passed on as it stands.
std::string commandText(const std::vector<std::string>& arguments);

}  // namespace welvane
