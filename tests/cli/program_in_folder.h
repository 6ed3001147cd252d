#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/run_program.h"
#include "support/sample_las.h"
#include "support/temp_folder.h"

namespace welvane::test {

/// The built program in a folder of its own, with a clean environment.
struct ProgramInFolder : ::testing::Test {
    TempFolder folder, homes;
    std::vector<std::string> environment = cleanEnvironment(homes.path(), homes.path());

    ProgramRun run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), WELVANE_PROGRAM);
        return runProgram(arguments, folder.path(), environment);
    }
    void write(const char* name, const std::string& text) { folder.writeLines(name, text); }
    bool exists(const char* name) const { return std::filesystem::exists(folder.path(name)); }
    /// The line of an output whose first word is this; "" when there is none.
    std::string line(const char* name, const std::string& firstWord) const {
        std::istringstream lines(folder.read(name));
        for (std::string text; std::getline(lines, text);) {
            std::istringstream words(text);
            std::string word, rest, all;
            words >> word;
            if (word != firstWord) continue;
            while (words >> rest) all += (all.empty() ? "" : " ") + rest;
            return word + " " + all;
        }
        return {};
    }
};

}  // namespace welvane::test
