#pragma once

#include <string>

#include "cli/console.h"
#include "cli/options.h"

namespace welvane {

/// "-" among the arguments of a verb: as an input the data of the standard input, as the output the standard output.
/// Both go through files in the process's scratch folder, so that every verb reads and writes files alone, and nothing
/// comes out of one that fails.
class StandardStreams {
  public:
    /// Replaces "-" in the places of the options. UsageFault for two such inputs.
    StandardStreams(Console& console, const VerbOptions& options);
    /// Puts an output that was written on the standard output.
    void pour();

  private:
    void takeInput(std::string& name, bool anyBytes);
    void takeOutput(std::string& name);
    std::string scratch(const std::string& name);

    Console& console_;
    std::string input_{}, output_{};  ///< paths of the files; "" where none was named
};

}  // namespace welvane
