#include "app/command_line.h"

#include <algorithm>

#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

template <std::size_t slot>
std::string& slotPath(CommandLine& line) {
    return line.slotPaths[slot];
}

std::string withoutQuotes(std::string_view text) {
    return withoutChar(text, '"');
}

void appendWords(std::vector<std::string>& files, std::string_view text) {
    for (std::string& word : split(text, ' ')) {
        if (!word.empty()) files.push_back(std::move(word));
    }
}

/// Places in the argument where a switch of the table begins with its "/".
std::vector<std::size_t> switchPlaces(std::string_view argument) {
    std::vector<std::size_t> places;
    for (std::size_t place = argument.find('/'); place != npos; place = argument.find('/', place + 1)) {
        const std::string_view rest = argument.substr(place + 1);
        const auto begins = [&](const CommandSwitch& known) { return beginsWith(rest, known.name); };
        if (std::any_of(commandSwitches().begin(), commandSwitches().end(), begins)) places.push_back(place);
    }
    return places;
}

std::string withBackslashes(std::string_view path) {
    std::string result(path);
    std::replace(result.begin(), result.end(), '/', '\\');
    return result;
}

std::string argumentText(const std::string& argument) {
    std::string text = argument;
    if (fileExists(argument) || folderExists(argument)) {
        text = withBackslashes(argument);
    } else {
        const std::vector<std::size_t> places = switchPlaces(argument);
        // One switch and nothing else: all behind its name is a path.
        if (places.size() == 1 && places.front() == 0) return "/" + withBackslashes(argument.substr(1));
        if (!places.empty()) return argument;
    }
    const bool isName = !trim(text).empty() && text.find_first_of("\"/") == std::string::npos;
    return isName && text.find(' ') != std::string::npos ? "\"" + text + "\"" : text;
}

}  // namespace

const std::vector<CommandSwitch>& commandSwitches() {
    static const std::vector<CommandSwitch> switches = {
        {"File1=", slotPath<0>, "the first input"},
        {"File2=", slotPath<1>, "the second input"},
        {"File3=", slotPath<2>, "the third input"},
        {"File4=", slotPath<3>, "the fourth input"},
        {"Filter=", [](CommandLine& line) -> std::string& { return line.filterPath; }, "a filter file"},
        {"Output=", [](CommandLine& line) -> std::string& { return line.outputPath; }, "the file to write"},
        {"Dowhat=", [](CommandLine& line) -> std::string& { return line.dowhat; }, "splice, merge or Filter"}};
    return switches;
}

void splitCommandLine(std::string_view text, std::vector<std::string>& files, std::vector<std::string>& switches) {
    files.clear();
    switches.clear();
    if (text.empty()) return;
    std::string rest(text);
    if (rest.find('/') != std::string::npos) {
        const std::vector<std::string> pieces = split(text, '/');
        switches.emplace_back();
        rest = pieces.front();
        for (std::size_t piece = 1; piece < pieces.size(); ++piece) {
            switches.emplace_back(trim(pieces[piece]));
            // A "/" with nothing behind it is no switch and stays where it stands.
            rest += switches.back().empty() ? " /" : " ";
        }
        rest = trim(rest);
    }
    if (rest.empty()) return;
    files.emplace_back();
    if (rest.find('"') == std::string::npos) return appendWords(files, rest);
    const std::vector<std::string> pieces = split(rest, '"');
    for (std::size_t piece = 1; piece < pieces.size(); piece += 2) files.emplace_back(trim(pieces[piece]));
    for (std::size_t piece = 0; piece < pieces.size(); piece += 2) appendWords(files, pieces[piece]);
}

void applySwitches(const std::vector<std::string>& switches, CommandLine& line) {
    for (std::size_t number = 1; number < switches.size(); ++number) {
        const std::string& text = switches[number];
        for (const CommandSwitch& known : commandSwitches()) {
            const std::size_t place = findText(text, known.name);
            if (place == npos) continue;
            std::string& target = known.target(line);
            target = text.substr(place + known.name.size());
            if (&target == &line.outputPath) {
                const std::string folder = withoutQuotes(dirOf(target));
                line.refusedOutput = folder.empty() || folderExists(folder) ? std::string() : withoutQuotes(target);
                if (!line.refusedOutput.empty()) target.clear();
            }
            break;
        }
    }
    for (std::string* path : {&line.runFile, &line.outputPath, &line.filterPath}) *path = withoutQuotes(*path);
    for (std::string& path : line.slotPaths) path = withoutQuotes(path);
    if (line.slotPaths[0].empty()) line.slotPaths[0] = line.runFile;
}

CommandLine readCommandLine(std::string_view text) {
    std::vector<std::string> files, switches;
    splitCommandLine(text, files, switches);
    CommandLine line;
    if (files.size() > 1) (fileExists(files[1]) ? line.runFile : line.missingFile) = files[1];
    line.slotPaths[0] = line.runFile;
    applySwitches(switches, line);
    return line;
}

std::string commandText(const std::vector<std::string>& arguments) {
    std::vector<std::string> texts;
    for (const std::string& argument : arguments) texts.push_back(argumentText(argument));
    return std::string(trim(join(texts, " ")));
}

}  // namespace welvane
