#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "cli/workbench.h"

namespace CLI {
class App;
}

/// The table of verbs. A verb is one file beside this one, with one routine that declares its options, and one row of
/// the table.
namespace welvane {

/// Runs a verb whose options have been read.
using VerbRun = std::function<ExitCode(Workbench& bench)>;

/// A verb: what it is called, what it does in a few words, and the routine that declares its options on the command and
/// returns what runs them. The common options are declared for it.
struct Verb {
    std::string_view name, summary;
    VerbRun (*declare)(CLI::App& command);
    bool json = false;  ///< knows --json
};
/// In the order of the help.
const std::vector<Verb>& verbTable();
/// nullptr when the table does not hold it.
const Verb* findVerb(std::string_view name);

VerbRun declareRun(CLI::App& command);
VerbRun declareBatch(CLI::App& command);
VerbRun declareFunctions(CLI::App& command);
VerbRun declareTvd(CLI::App& command);
VerbRun declareInfo(CLI::App& command);
VerbRun declareCheck(CLI::App& command);
VerbRun declareRepair(CLI::App& command);
VerbRun declareWrap(CLI::App& command);
VerbRun declareTops(CLI::App& command);
VerbRun declareStats(CLI::App& command);
VerbRun declareList(CLI::App& command);
VerbRun declarePrice(CLI::App& command);
VerbRun declareFromAscii(CLI::App& command);
VerbRun declareCertify(CLI::App& command);
VerbRun declareBytes(CLI::App& command);
VerbRun declareReplace(CLI::App& command);
VerbRun declareSettings(CLI::App& command);

/// The arguments behind the program's name, the first of them a verb, "help" or one of the options that stand alone.
ExitCode runVerb(const std::vector<std::string>& arguments);
/// The overview that `--help` prints.
std::string overviewText();

}  // namespace welvane
