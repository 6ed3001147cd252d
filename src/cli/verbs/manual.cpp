#include <functional>
#include <memory>

#include "app/command_line.h"
#include "cli/verbs.h"
#include "shared/text.h"

// What a shell and man know of the verbs, made from the tables that the help is made from.

namespace welvane {

namespace {

/// One verb as the tables tell it.
struct KnownVerb {
    const Verb& verb;
    CommandSyntax syntax;
    std::vector<VerbOption> options;  ///< its own and the common ones, but places
};

void eachVerb(const std::function<void(const KnownVerb&)>& tell) {
    for (const Verb& verb : verbTable()) {
        CommonOptions common;
        const VerbSyntax declared = verb.declare();
        KnownVerb known{verb, commandOf(verb, declared, common), {}};
        for (const VerbOptions* rows : {&known.syntax.options, &known.syntax.common})
            for (const VerbOption& row : *rows)
                if (row.names.starts_with("-")) known.options.push_back(row);
        tell(known);
    }
}

/// The spellings of an option; "!" marks the opposite of a switch.
std::vector<std::string> namesOf(const VerbOption& option) {
    std::vector<std::string> names = split(option.names, ',');
    for (std::string& name : names)
        if (name.starts_with("!")) name.erase(0, 1);
    return names;
}

std::string optionNames(const KnownVerb& known) {
    std::string names = "--help";
    for (const VerbOption& option : known.options)
        for (const std::string& name : namesOf(option)) names += " " + name;
    return names;
}

std::string allVerbs() {
    std::string names = "help";
    for (const Verb& verb : verbTable()) names += " " + std::string(verb.name);
    return names;
}

/// For a text between single quotes of a shell.
std::string shellQuoted(std::string_view text) {
    std::string safe;
    for (const char c : text) safe += c == '\'' ? std::string("'\\''") : std::string(1, c == '\n' ? ' ' : c);
    return "'" + safe + "'";
}

std::string bashCompletion() {
    std::string text =
        "_welvane() {\n"
        "    local word=\"${COMP_WORDS[COMP_CWORD]}\" options=\"\"\n"
        "    if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
        "        COMPREPLY=($(compgen -W \"" +
        allVerbs() +
        "\" -- \"$word\") $(compgen -f -- \"$word\"))\n"
        "        return\n"
        "    fi\n"
        "    case \"${COMP_WORDS[1]}\" in\n";
    eachVerb([&](const KnownVerb& known) {
        text += "        " + std::string(known.verb.name) + ") options=\"" + optionNames(known) + "\" ;;\n";
    });
    return text +
           "    esac\n"
           "    case \"$word\" in\n"
           "        -*) COMPREPLY=($(compgen -W \"$options\" -- \"$word\")) ;;\n"
           "        *) COMPREPLY=($(compgen -f -- \"$word\")) ;;\n"
           "    esac\n"
           "}\n"
           "complete -o filenames -F _welvane welvane\n";
}

std::string zshCompletion() {
    std::string text = "#compdef welvane\nlocal -a verbs options\nverbs=(\n";
    for (const Verb& verb : verbTable())
        text += "    " + shellQuoted(std::string(verb.name) + ":" + std::string(verb.summary)) + "\n";
    text += ")\nif (( CURRENT == 2 )); then\n    _describe verb verbs\n    _files\n    return\nfi\ncase $words[2] in\n";
    eachVerb([&](const KnownVerb& known) {
        text += "    " + std::string(known.verb.name) + ") options=(" + optionNames(known) + ") ;;\n";
    });
    return text + "esac\nif [[ $PREFIX == -* ]]; then\n    compadd -a options\nelse\n    _files\nfi\n";
}

std::string fishCompletion() {
    std::string text;
    for (const Verb& verb : verbTable())
        text += "complete -c welvane -n __fish_use_subcommand -a " + std::string(verb.name) + " -d " +
                shellQuoted(verb.summary) + "\n";
    eachVerb([&](const KnownVerb& known) {
        for (const VerbOption& option : known.options) {
            text += "complete -c welvane -n '__fish_seen_subcommand_from " + std::string(known.verb.name) + "'";
            for (const std::string& name : namesOf(option))
                text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
            text += std::string(option.form.empty() ? "" : " -r") + " -d " + shellQuoted(option.help) + "\n";
        }
    });
    return text;
}

/// A text that man shows as it stands.
std::string manText(std::string_view text) {
    std::string safe;
    for (const char c : text) {
        if (c == '\\' || c == '-') safe += '\\';
        safe += c == '\\' ? 'e' : c;
        if (c == '\n') safe += "\\&";
    }
    return safe.starts_with(".") || safe.starts_with("'") ? "\\&" + safe : safe;
}

std::string manualOf(const KnownVerb& known) {
    std::string text = ".SS " + manText(known.verb.name) + "\n" + manText(known.verb.summary) + ".\n";
    for (const VerbOption& option : known.syntax.options) {
        text += ".TP\n.B " + manText(join(namesOf(option), ", "));
        if (!option.form.empty()) text += " " + manText(option.form);
        text += "\n" + manText(option.help) + "\n";
    }
    return text + ".PP\n.nf\n" + manText(known.verb.examples) + "\n.fi\n";
}

std::string manual() {
    std::string text =
        ".TH WELVANE 1 \"\" \"welvane " WELVANE_VERSION
        "\" \"User commands\"\n.SH NAME\nwelvane \\- read, join, repair and write well logs in LAS files\n"
        ".SH SYNOPSIS\n.B welvane\n.I VERB\n[FILE...] [options]\n.br\n.B welvane\nFILE "
        "/Switch=value ...\n.SH DESCRIPTION\nA verb does one thing to LAS files and tells what there is "
        "to note on the standard error. The second form is the headless line: silent, exit status 0 "
        "whatever happened.\n.PP\n\\- as a file is the standard input, as an output the standard "
        "output; @LIST stands for the files that LIST names, @\\- for those that the standard input "
        "names, a folder for its *.las files.\n.SH VERBS\n";
    eachVerb([&](const KnownVerb& known) { text += manualOf(known); });
    text += ".SH OPTIONS OF ALL VERBS\n";
    CommonOptions common;
    const Verb& first = verbTable().front();
    const CommandSyntax syntax = commandOf(first, first.declare(), common);
    for (const VerbOption& option : syntax.common)
        text += ".TP\n.B " + manText(join(namesOf(option), ", ")) + "\n" + manText(option.help) + "\n";
    text += ".SH SWITCHES OF THE HEADLESS LINE\n";
    for (const CommandSwitch& known : commandSwitches())
        text += ".TP\n.B /" + manText(known.name) + "\n" + manText(known.help) + "\n";
    return text +
           ".SH EXIT STATUS\n0 done; 1 refused, failed, or a negative verdict; 2 wrong usage; 130 stopped; 141 nobody "
           "reads the output any more.\n.SH ENVIRONMENT\n.TP\n.B WELVANE_HOME\nThe folder of the reference files.\n"
           ".TP\n.B NO_COLOR\nNo colours on a terminal.\n";
}

}  // namespace

VerbSyntax declareCompletions() {
    const auto shell = std::make_shared<std::string>();
    return {
        {{"SHELL", shell.get(), "", "bash, zsh or fish", {.required = true, .words = {"bash", "zsh", "fish"}}}},
        [shell](Console& console) {
            console.print(*shell == "bash" ? bashCompletion() : *shell == "zsh" ? zshCompletion() : fishCompletion());
            return ExitCode::Done;
        }};
}

VerbSyntax declareMan() {
    return {{}, [](Console& console) {
                console.print(manual());
                return ExitCode::Done;
            }};
}

}  // namespace welvane
