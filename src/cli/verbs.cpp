#include "cli/verbs.h"

#include <algorithm>
#include <cstdio>

#include "app/command_line.h"
#include "cli/shown_text.h"
#include "platform/terminal.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view usageLines =
    "Usage: welvane VERB [FILE...] [options]      see 'welvane VERB --help'\n"
    "       welvane FILE /Switch=value ...        the headless line: silent, exit status 0\n"
    "       welvane                               opens the desktop\n";

VerbOptions commonOptions(const Verb& verb, CommonOptions& common) {
    VerbOptions rows;
    addOptions(rows, commonGroup,
               {{"-q,--quiet", &common.quiet, "", "Say nothing but errors"},
                {"--progress",
                 &common.progress,
                 "WHEN",
                 "Show a progress bar: auto, always or never",
                 {.words = {"auto", "always", "never"}}},
                {"-y,--yes", &common.yes, "", "Answer every question with Yes or OK"},
                {"-n,--no", &common.no, "", "Answer every question with No or Cancel", {.excludes = "--yes"}},
                {"-f,--force", &common.force, "", "Replace an output that exists"},
                {"--strict", &common.strict, "", "Refuse an input of which there is something to note"}});
    if (verb.json) addOptions(rows, commonGroup, {{"--json", &common.json, "", "Print one JSON document on stdout"}});
    return rows;
}

ExitCode usageFault(const std::string& message, const Verb* verb) {
    std::string line = "welvane: " + message + "\n";
    line += verb == nullptr ? "See 'welvane --help'.\n" : "See 'welvane " + std::string(verb->name) + " --help'.\n";
    std::fputs(shownText(line).c_str(), stderr);
    return ExitCode::Usage;
}

/// Results are worth nothing when they did not get out.
ExitCode flushOutput(ExitCode code) {
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return code;
    std::fputs("welvane: the results could not be written to standard output\n", stderr);
    return code == ExitCode::Done ? ExitCode::Negative : code;
}

ExitCode perform(const VerbRun& run, const CommonOptions& common, const Verb& verb) {
    ExitCode code = ExitCode::Done;
    try {
        Console console(common);
        try {
            code = run(console);
        } catch (const UsageFault& fault) {
            code = usageFault(fault.what(), &verb);
        } catch (const Refusal& refused) {
            if (refused.fault.senseless)
                code = usageFault(faultText(refused.fault), &verb);
            else if (!wasInterrupted())
                console.say(refused.fault);
            if (!refused.fault.senseless) code = ExitCode::Negative;
        } catch (const std::bad_alloc&) {
            console.user().say("out of memory");
            code = ExitCode::Negative;
        } catch (const std::exception& error) {
            // Somebody who stopped the run knows why it ended.
            if (!wasInterrupted()) console.user().say(error.what());
            code = ExitCode::Negative;
        }
        if (wasInterrupted()) {
            console.user().say("stopped");
            code = ExitCode::Interrupted;
        }
        cancelOnInterrupt(nullptr);
    } catch (const std::exception& error) {
        std::fputs(shownText(std::string("welvane: ") + error.what() + "\n").c_str(), stderr);
        code = ExitCode::Negative;
    }
    return flushOutput(code);
}

}  // namespace

const std::vector<Verb>& verbTable() {
    static const std::vector<Verb> table = {
        {"run", "Make one LAS file of one to four inputs", declareRun, true},
        {"batch", "The same once per file, into a folder", declareBatch, true},
        {"functions", "The channel functions that filters and --curve know", declareFunctions, true},
        {"tvd", "Compute a survey and map depths through it", declareTvd, true},
        {"info", "Tell what stands in a LAS file: depths, data, sections, channels", declareInfo, true},
        {"check", "Judge what files are, by their ends alone", declareCheck, true},
        {"read", "The channels as they stand, as CSV or JSON lines", declareRead},
        {"conform", "Hold files against the LAS standard, rule by rule", declareConform, true},
        {"repair", "Repair line ends, a curve title or a whole header", declareRepair, true},
        {"wrap", "Wrap the data of a LAS file, or unwrap them", declareWrap},
        {"tops", "List the [TOPS] block", declareTops, true},
        {"stats", "Statistics and covered intervals of each channel", declareStats, true},
        {"list", "List files: curves, footage, statistics, a summary, a price", declareList, true},
        {"coverage", "How the depths of up to four files lie against each other, as a picture", declareCoverage, true},
        {"plot", "Draw logs in tracks over depth, of files or of what a run would make of them", declarePlot},
        {"price", "Estimate the price of a length of curve", declarePrice, true},
        {"from-ascii", "Make a LAS file of a table of columns", declareFromAscii},
        {"certify", "Run the external checker, a verdict per file", declareCertify, true},
        {"bytes", "Show a file byte by byte, or find its bad line ends", declareBytes},
        {"replace", "Search and replace over a whole file", declareReplace},
        {"library", "List and edit the groups of curves and units", declareLibrary, true},
        {"settings", "List, get and set the preferences", declareSettings, true},
    };
    return table;
}

const Verb* findVerb(std::string_view name) {
    const auto found =
        std::find_if(verbTable().begin(), verbTable().end(), [&](const Verb& verb) { return verb.name == name; });
    return found == verbTable().end() ? nullptr : &*found;
}

std::string overviewText() {
    std::string text = "Welvane reads, joins, repairs and writes well logs in LAS files.\n\n";
    text += usageLines;
    text += "\nVerbs:\n";
    std::size_t width = 0;
    for (const Verb& verb : verbTable()) width = std::max(width, verb.name.size());
    for (const Verb& verb : verbTable()) text += "  " + padded(verb.name, width + 3) + std::string(verb.summary) + "\n";
    text += "\nSwitches of the headless line (their case does not matter):\n";
    for (const CommandSwitch& known : commandSwitches())
        text += "  " + padded("/" + std::string(known.name), 12) + std::string(known.help) + "\n";
    text +=
        "\nExamples:\n"
        "  welvane info well.las\n"
        "  welvane run run1.las run2.las --splice -o joined.las\n"
        "  welvane /File1=run1.las /File2=run2.las /Dowhat=splice /Output=joined.las\n"
        "\nExit status of the verbs: 0 done; 1 refused, failed, or a negative verdict; 2 wrong usage; 130 stopped.\n";
    return text;
}

ExitCode runVerb(const std::vector<std::string>& arguments) {
    const std::string& first = arguments.front();
    const bool wantsHelp = first == "help" || first == "--help" || first == "-h";
    if (first == "--version") {
        std::fputs("welvane " WELVANE_VERSION "\n", stdout);
        return flushOutput(ExitCode::Done);
    }
    if (wantsHelp && arguments.size() == 1) {
        std::fputs(overviewText().c_str(), stdout);
        return flushOutput(ExitCode::Done);
    }
    const std::string& name = wantsHelp ? arguments[1] : first;
    const Verb* const verb = findVerb(name);
    if (verb == nullptr) return usageFault("there is no verb '" + name + "'", nullptr);

    CommonOptions common;
    const VerbSyntax syntax = verb->declare();
    std::vector<std::string> rest(arguments.begin() + 1, arguments.end());
    if (wantsHelp) rest = {"--help"};
    const ReadArguments read =
        readArguments({verb->name, verb->summary, syntax.footer, syntax.options, commonOptions(*verb, common)}, rest);
    if (read.outcome == ReadArguments::Outcome::Fault) return usageFault(read.text, verb);
    if (read.outcome == ReadArguments::Outcome::Help) {
        std::fputs(read.text.c_str(), stdout);
        return flushOutput(ExitCode::Done);
    }
    return perform(syntax.run, common, *verb);
}

}  // namespace welvane
