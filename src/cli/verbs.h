#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "cli/console.h"
#include "cli/options.h"

/// The table of verbs. A verb is one file in verbs/, with one routine that tells its options, and one row of the table.
namespace welvane {

/// Runs a verb whose options have been read.
using VerbRun = std::function<ExitCode(Console& console)>;

/// The options that are a verb's own, and what runs it once they are read.
struct VerbSyntax {
    VerbOptions options;
    VerbRun run;
    std::string_view footer{};  ///< last line of its help
};

/// What a verb prints for programs: nothing, one document with --json, or also an entry a line with --json-lines.
enum class JsonForm { None, Document, Lines };

/// A verb: what it is called, what it does in a few words, and the routine that tells its options. The common options
/// are added to them.
struct Verb {
    std::string_view name, summary;
    VerbSyntax (*declare)();
    std::string_view examples{};  ///< for its help, one a line
    JsonForm json = JsonForm::None;
};
/// In the order of the help.
const std::vector<Verb>& verbTable();
/// nullptr when the table does not hold it.
const Verb* findVerb(std::string_view name);

/// All that is known of a verb's command line; the common options go to `common`.
CommandSyntax commandOf(const Verb& verb, const VerbSyntax& syntax, CommonOptions& common);

/// True where a line of arguments can be nothing but a verb that is not spelled right: one word in front that is no
/// path, and no switch of the headless line.
bool isMistypedVerb(const std::vector<std::string>& arguments);

VerbSyntax declareRun();
VerbSyntax declareBatch();
VerbSyntax declareBatchReport();
VerbSyntax declareFunctions();
VerbSyntax declareTvd();
VerbSyntax declareInfo();
VerbSyntax declareCheck();
VerbSyntax declareRead();
VerbSyntax declareRepair();
VerbSyntax declareWrap();
VerbSyntax declareTops();
VerbSyntax declareStats();
VerbSyntax declareCoverage();
VerbSyntax declarePlot();
VerbSyntax declareList();
VerbSyntax declarePrice();
VerbSyntax declareFromAscii();
VerbSyntax declareCertify();
VerbSyntax declareConform();
VerbSyntax declareBytes();
VerbSyntax declareReplace();
VerbSyntax declareLibrary();
VerbSyntax declareSettings();
VerbSyntax declareCompletions();
VerbSyntax declareMan();

/// The arguments behind the program's name, the first of them a verb, "help" or one of the options that stand alone.
ExitCode runVerb(const std::vector<std::string>& arguments);
/// The overview that `--help` prints.
std::string overviewText();

}  // namespace welvane
