#include "cli/verbs.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <numeric>
#include <utility>

#include "app/command_line.h"
#include "cli/shown_text.h"
#include "cli/standard_streams.h"
#include "platform/terminal.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view usageLines =
    "Usage: welvane VERB [FILE...] [options]      see 'welvane VERB --help'\n"
    "       welvane FILE /Switch=value ...        the headless line: silent, exit status 0\n"
    "       welvane                               opens the desktop\n";

constexpr std::string_view exitStatuses =
    "Exit status: 0 done; 1 refused, failed, or a negative verdict; 2 wrong usage; 130 stopped.";

/// Whether a verb takes many files, so that a folder can stand for its own.
bool takesList(const VerbOptions& options) {
    return std::ranges::any_of(options, [](const VerbOption& row) {
        return row.names == "FILE" && std::holds_alternative<std::vector<std::string>*>(row.place);
    });
}

VerbOptions commonOptions(const Verb& verb, const VerbOptions& options, CommonOptions& common) {
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
    if (takesList(options))
        addOptions(rows, commonGroup,
                   {{"-r,--recursive", &common.recursive, "", "Of a folder also the files in the folders below it"}});
    if (verb.json != JsonForm::None)
        addOptions(rows, commonGroup, {{"--json", &common.json, "", "Print one JSON document on stdout"}});
    if (verb.json == JsonForm::Lines)
        addOptions(rows, commonGroup,
                   {{"--json-lines",
                     &common.jsonLines,
                     "",
                     "Print a line of JSON for each input as it ends",
                     {.excludes = "--json"}}});
    return rows;
}

/// Letters to be changed, added or dropped to make one word of another (V. I. Levenshtein's distance).
std::size_t distance(std::string_view one, std::string_view other) {
    std::vector<std::size_t> row(other.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < one.size(); ++i) {
        std::size_t corner = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < other.size(); ++j) {
            const std::size_t changed = corner + (one[i] == other[j] ? 0 : 1);
            corner = row[j + 1];
            row[j + 1] = std::min({changed, corner + 1, row[j] + 1});
        }
    }
    return row.back();
}

/// What was meant by a word that is no verb; "" where nothing is near.
std::string suggestion(std::string_view name) {
    const auto nearer = [&](const Verb& one, const Verb& other) {
        return distance(name, one.name) < distance(name, other.name);
    };
    const Verb& nearest = *std::ranges::min_element(verbTable(), nearer);
    const std::size_t most = name.size() > 4 ? 2 : 1;
    return distance(name, nearest.name) > most ? "" : "; did you mean '" + std::string(nearest.name) + "'?";
}

ExitCode usageFault(const std::string& message, const Verb* verb) {
    std::string line = "welvane: " + message + "\n";
    line += verb == nullptr ? "See 'welvane --help'.\n" : "See 'welvane " + std::string(verb->name) + " --help'.\n";
    std::fputs(shownText(line).c_str(), stderr);
    return ExitCode::Usage;
}

/// Results are worth nothing when they did not get out.
ExitCode flushOutput(ExitCode code) {
    errno = 0;
    if (code == ExitCode::ClosedPipe || (std::fflush(stdout) == 0 && std::ferror(stdout) == 0)) return code;
    if (errno == EPIPE) return ExitCode::ClosedPipe;
    std::fputs("welvane: the results could not be written to standard output\n", stderr);
    return code == ExitCode::Done ? ExitCode::Negative : code;
}

ExitCode perform(const VerbSyntax& syntax, const CommonOptions& common, const Verb& verb) {
    ExitCode code = ExitCode::Done;
    try {
        Console console(common);
        try {
            StandardStreams streams(console, syntax.options);
            code = syntax.run(console);
            streams.pour();
        } catch (const UsageFault& fault) {
            code = usageFault(fault.what(), &verb);
        } catch (const Refusal& refused) {
            if (refused.fault.senseless)
                code = usageFault(faultText(refused.fault), &verb);
            else if (!wasInterrupted())
                console.say(refused.fault);
            if (!refused.fault.senseless) code = ExitCode::Negative;
        } catch (const ClosedPipe&) {
            code = ExitCode::ClosedPipe;
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
        {"run", "Make one LAS file of one to four inputs", declareRun,
         "  welvane run run1.las run2.las --splice -o joined.las\n"
         "  welvane run well.las --step 0.5 --from 1000 --to 1200 -o cut.las\n"
         "  welvane run well.las --csv -o - | head\n",
         JsonForm::Document},
        {"batch", "The same once per file, into a folder", declareBatch,
         "  welvane batch wells/*.las --filter house.fil --out-dir house\n"
         "  welvane batch wells --unit M --out-dir metric\n"
         "  welvane batch @list --out-dir new --log new.jsonl --resume\n",
         JsonForm::Document},
        {"batch-report", "Join the logs of a batch: what is written, failed, missing, twice", declareBatchReport,
         "  welvane batch-report logs/*.jsonl\n"
         "  welvane batch-report one.jsonl two.jsonl --inputs @list\n",
         JsonForm::Document},
        {"functions", "The channel functions that filters and --curve know", declareFunctions, "  welvane functions\n",
         JsonForm::Document},
        {"tvd", "Compute a survey and map depths through it", declareTvd,
         "  welvane tvd survey.txt --map 1800 1850\n"
         "  welvane run well.las --tvd survey.txt -o tvd.las\n",
         JsonForm::Document},
        {"info", "Tell what stands in a LAS file: depths, data, sections, channels", declareInfo,
         "  welvane info well.las\n"
         "  welvane info wells --recursive --json\n",
         JsonForm::Lines},
        {"check", "Judge what files are, by their ends alone", declareCheck,
         "  welvane check wells --recursive\n"
         "  find . -name \"*.LAS\" -print0 | welvane check @-\n",
         JsonForm::Lines},
        {"read", "The channels as they stand, as CSV or JSON lines", declareRead,
         "  welvane read well.las --csv -o well.csv\n"
         "  welvane read well.las --json-lines | head -3\n"},
        {"conform", "Hold files against the LAS standard, rule by rule", declareConform,
         "  welvane conform wells --recursive\n"
         "  welvane conform well.las --fix -o mended.las\n",
         JsonForm::Lines},
        {"repair", "Repair line ends, a curve title or a whole header", declareRepair,
         "  welvane repair broken.las -o mended.las\n"
         "  welvane repair broken.las --rebuild -o clean.las\n",
         JsonForm::Document},
        {"wrap", "Wrap the data of a LAS file, or unwrap them", declareWrap, "  welvane wrap well.las -o wrapped.las\n",
         JsonForm::Document},
        {"tops", "List the [TOPS] block", declareTops, "  welvane tops well.las --json\n", JsonForm::Lines},
        {"stats", "Statistics and covered intervals of each channel", declareStats,
         "  welvane stats well.las\n"
         "  welvane stats well.las --top \"Upper Sand\"\n",
         JsonForm::Lines},
        {"list", "List files: curves, footage, statistics, a summary, a price", declareList,
         "  welvane list wells/*.las -o summary.txt\n", JsonForm::Lines},
        {"coverage", "How the depths of up to four files lie against each other, as a picture", declareCoverage,
         "  welvane coverage run1.las run2.las -o coverage.svg\n", JsonForm::Document},
        {"plot", "Draw logs in tracks over depth, of files or of what a run would make of them", declarePlot,
         "  welvane plot well.las --tracks \"GR,CALI;ILD:log,ILM:log;RHOB,NPHI\" -o log.svg\n"
         "  welvane plot run1.las run2.las --splice -o joined.svg\n"},
        {"price", "Estimate the price of a length of curve", declarePrice, "  welvane price --feet 12000\n",
         JsonForm::Document},
        {"from-ascii", "Make a LAS file of a table of columns", declareFromAscii,
         "  welvane from-ascii table.csv -o well.las --units M\n"},
        {"certify", "Run the external checker, a verdict per file", declareCertify,
         "  welvane certify wells/*.las --checker \"lascheck\"\n", JsonForm::Lines},
        {"bytes", "Show a file byte by byte, or find its bad line ends", declareBytes,
         "  welvane bytes well.las --find-bad-ends\n"},
        {"replace", "Search and replace over a whole file", declareReplace,
         "  welvane replace well.las -o new.las --search OLD --replace NEW\n"},
        {"library", "List and edit the groups of curves and units", declareLibrary,
         "  welvane library curves list\n"
         "  welvane library units add LENGTH CHAIN 20.1168\n",
         JsonForm::Document},
        {"completions", "Completion of verbs and options for a shell", declareCompletions,
         "  welvane completions bash > ~/.local/share/bash-completion/completions/welvane\n"
         "  welvane completions fish > ~/.config/fish/completions/welvane.fish\n"},
        {"man", "The manual page, as man reads it", declareMan, "  welvane man | man -l -\n"},
        {"settings", "List, get and set the preferences", declareSettings,
         "  welvane settings list\n"
         "  welvane settings set country Canada\n",
         JsonForm::Document},
    };
    return table;
}

const Verb* findVerb(std::string_view name) {
    const auto found =
        std::find_if(verbTable().begin(), verbTable().end(), [&](const Verb& verb) { return verb.name == name; });
    return found == verbTable().end() ? nullptr : &*found;
}

namespace {

/// What stands behind the options in a verb's help: what it says itself, its examples, the exit statuses.
std::string helpFooter(const Verb& verb, const VerbSyntax& syntax) {
    std::string text(syntax.footer);
    if (!text.empty()) text += "\n\n";
    return text + "Examples:\n" + std::string(verb.examples) + "\n" + std::string(exitStatuses);
}

}  // namespace

CommandSyntax commandOf(const Verb& verb, const VerbSyntax& syntax, CommonOptions& common) {
    return {verb.name, verb.summary, helpFooter(verb, syntax), syntax.options,
            commonOptions(verb, syntax.options, common)};
}

bool isMistypedVerb(const std::vector<std::string>& arguments) {
    const std::string& first = arguments.front();
    if (first.empty() || first.find_first_of("./\\:= ") != std::string::npos || fileExists(first)) return false;
    return std::ranges::none_of(arguments, [](const std::string& argument) {
        return argument.starts_with('/') && argument.find('=') != std::string::npos;
    });
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
        "\n";
    return text + std::string(exitStatuses) + "\n";
}

ExitCode runVerb(const std::vector<std::string>& arguments) {
    const std::string& first = arguments.front();
    const bool wantsHelp = first == "help" || first == "--help" || first == "-h";
    if (first == "--version" || first == "-V") {
        std::fputs("welvane " WELVANE_VERSION "\n", stdout);
        return flushOutput(ExitCode::Done);
    }
    if (wantsHelp && arguments.size() == 1) {
        std::fputs(overviewText().c_str(), stdout);
        return flushOutput(ExitCode::Done);
    }
    const std::string& name = wantsHelp ? arguments[1] : first;
    const Verb* const verb = findVerb(name);
    if (verb == nullptr) return usageFault("there is no verb '" + name + "'" + suggestion(name), nullptr);

    CommonOptions common;
    const VerbSyntax syntax = verb->declare();
    std::vector<std::string> rest(arguments.begin() + 1, arguments.end());
    if (wantsHelp) rest = {"--help"};
    const ReadArguments read = readArguments(commandOf(*verb, syntax, common), rest);
    if (read.outcome == ReadArguments::Outcome::Fault) return usageFault(read.text, verb);
    if (read.outcome == ReadArguments::Outcome::Help) {
        std::fputs(read.text.c_str(), stdout);
        return flushOutput(ExitCode::Done);
    }
    return perform(syntax, common, *verb);
}

}  // namespace welvane
