#include "jobs/session_file.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <utility>

#include "jobs/session_parts.h"
#include "jobs/true_input.h"
#include "platform/mapped_file.h"
#include "shared/failure.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::size_t mostBytes = std::size_t{1} << 30U;

struct BothPaths {
    std::string absolute, relative;
};

BothPaths pathsFor(const std::string& path, const std::string& file) {
    const auto whole = [](const std::string& name) {
        return std::filesystem::absolute(resolvePath(name)).lexically_normal();
    };
    const std::filesystem::path absolute = whole(path);
    const std::filesystem::path relative = absolute.lexically_relative(whole(file).parent_path());
    return {absolute.string(), relative.empty() ? absolute.string() : relative.string()};
}

std::string pathLines(const BothPaths& paths) {
    return "path " + quotedText(paths.absolute) + "\nrelative " + quotedText(paths.relative) + "\n";
}

std::string besideSession(const SavedSession& saved, const std::string& relative) {
    return std::filesystem::path(relative).is_absolute() ? relative : dirOf(saved.file) + relative;
}

/// Where the file is now, the place beside the session first; one of the size that it had goes before one that has not.
std::string whereNow(const SavedSession& saved, const SavedInput& input) {
    std::string found;
    for (const std::string& place : {besideSession(saved, input.relative), input.path}) {
        if (!fileExists(place)) continue;
        if (fileSize(resolvePath(place)) == input.bytes) return place;
        if (found.empty()) found = place;
    }
    return found;
}

std::vector<std::string> mnemsOf(const SlotChannels& channels) {
    std::vector<std::string> mnems;
    for (const SlotChannel& channel : channels) mnems.push_back(channel.field.mnem);
    return mnems;
}

std::string inputPart(const Input& input, int slot, const Session& fresh, const Session& session,
                      const std::string& file) {
    const std::uint64_t bytes = fileSize(resolvePath(input.given)).value_or(0);
    std::string text = "\n[input " + std::to_string(slot + 1) + "]\n" + pathLines(pathsFor(input.given, file)) +
                       "bytes " + std::to_string(bytes) + "\ncheck " + checkText(checkOf(input.file->bytes())) +
                       "\ncurves";
    for (const std::string& mnem : mnemsOf(fresh.channels[slot])) text += " " + quotedText(mnem);
    return text + "\n" + channelChanges(fresh.channels[slot], session.channels[slot]);
}

std::string readingPart(const Session& session, const RunMarks& marks) {
    const auto yesNo = [](bool yes) { return yes ? "yes\n" : "no\n"; };
    std::string text = "\n[run]\nrules ";
    text += session.rules == FigureRules::trueFigures ? "true-figures\n" : "as-laid-down\n";
    text += std::string("loose ") + yesNo(session.loose) + "decimal-comma " + yesNo(session.decimalComma);
    text += "index-unit " + quotedText(session.indexUnit) + "\n";
    return text + "wrap-settled " + yesNo(marks.wrapSettled) + "csv " + yesNo(marks.csv);
}

std::uint64_t hexNumber(const SessionLine& line, std::size_t place) {
    const std::string& word = line.plain(place);
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value, 16);
    if (error != std::errc() || end != word.data() + word.size()) line.refuse("'" + word + "' is no check");
    return value;
}

void takeReadingLine(SavedSession& saved, const SessionLine& line) {
    const std::string& what = line.keyword();
    if (what == "rules") {
        const std::string& rules = line.plain(1);
        if (rules != "true-figures" && rules != "as-laid-down") line.refuse("there are no rules '" + rules + "'");
        saved.rules = rules == "true-figures" ? FigureRules::trueFigures : FigureRules::asLaidDown;
    } else if (what == "loose") {
        saved.loose = line.yes(1);
    } else if (what == "decimal-comma") {
        saved.decimalComma = line.yes(1);
    } else if (what == "index-unit") {
        saved.indexUnit = line.text(1);
    } else if (what == "wrap-settled") {
        saved.marks.wrapSettled = line.yes(1);
    } else if (what == "csv") {
        saved.marks.csv = line.yes(1);
    } else {
        line.refuse("'" + what + "' is nothing of a run");
    }
}

void takeInputLine(SavedInput& input, const SessionLine& line) {
    const std::string& what = line.keyword();
    if (what == "path")
        input.path = line.text(1);
    else if (what == "relative")
        input.relative = line.text(1);
    else if (what == "bytes")
        input.bytes = static_cast<std::uint64_t>(line.number(1, 0, INT64_MAX));
    else if (what == "check")
        input.check = hexNumber(line, 1);
    else if (what == "curves")
        for (std::size_t place = 1; place < line.size(); ++place) input.curves.push_back(line.text(place));
    else if (what != "channel")
        line.refuse("an input has no '" + what + "'");
}

/// The slot of an input by the title of its part; -1 for another part.
int slotOfPart(const SessionPart& part) {
    for (int slot = 0; slot < slotCount; ++slot)
        if (part.title == "input " + std::to_string(slot + 1)) return slot;
    return -1;
}

void takeHead(SavedSession& saved, const SessionPart& part) {
    if (part.title == "run") {
        for (const SessionLine& line : part.lines) takeReadingLine(saved, line);
        return;
    }
    const int slot = slotOfPart(part);
    if (slot < 0) return;
    if (!saved.inputs.empty() && saved.inputs.back().slot >= slot)
        throw RunTimeFailure("line " + std::to_string(part.number) + ": its inputs are out of order");
    saved.inputs.emplace_back().slot = slot;
    for (const SessionLine& line : part.lines) takeInputLine(saved.inputs.back(), line);
}

/// A path of the part "filter" or "survey": where the file is now, or where it was.
std::string otherPath(const SavedSession& saved, const SessionPart& part) {
    SavedInput file;
    for (const SessionLine& line : part.lines) takeInputLine(file, line);
    if (file.path.empty()) return {};
    const std::string beside = besideSession(saved, file.relative);
    return fileExists(beside) ? beside : file.path;
}

/// The saved session over a fresh one; all or nothing.
void applySaved(const SavedSession& saved, const NamedTexts& named, Session& session, StartupSettings& settings) {
    Session next = session;
    StartupSettings nextSettings = settings;
    next.inclinometry.rows.clear();
    next.filterFile = named.at("filter");
    next.tvdFile = named.at("survey");
    for (const SessionPart& part : saved.parts) {
        const int slot = slotOfPart(part);
        if (slot >= 0) {
            for (const SessionLine& line : part.lines)
                if (line.keyword() == "channel") changeChannel(next.channels[slot], line);
        } else if (part.title != "run" && part.title != "filter" && part.title != "survey" &&
                   !takePart(part, named, next, nextSettings)) {
            throw RunTimeFailure("line " + std::to_string(part.number) + ": no part is called '" + part.title + "'");
        }
    }
    needWholeTables(session, next);
    session = std::move(next);
    settings = std::move(nextSettings);
}

NamedTexts pathsNow(const SavedSession& saved, const Session& fresh) {
    NamedTexts named = namedPaths(fresh);
    named["filter"].clear();
    named["survey"].clear();
    for (const SessionPart& part : saved.parts)
        if (part.title == "filter" || part.title == "survey") named[part.title] = otherPath(saved, part);
    return named;
}

SavedSession parsed(const std::string& file, std::string_view text) {
    SavedSession saved;
    saved.file = file;
    saved.parts = readSessionParts(text);
    for (const SessionPart& part : saved.parts) takeHead(saved, part);
    if (saved.inputs.empty()) throw RunTimeFailure("names no input");
    return saved;
}

std::string difference(const std::vector<std::string>& before, const std::vector<std::string>& now) {
    for (std::size_t place = 0; place < std::min(before.size(), now.size()); ++place)
        if (before[place] != now[place])
            return "its channel " + std::to_string(place) + " is " + now[place] + ", was " + before[place];
    if (before.size() == now.size()) return {};
    return "it has " + counted(static_cast<std::int64_t>(now.size()), "channel") + ", had " +
           std::to_string(before.size());
}

/// Whether the file is what it was when the session was saved.
void needSameInput(Workbench& bench, const Input& input, const SavedInput& before, const SlotChannels& channels,
                   bool named) {
    if (!input.file) throw Refusal(input.given, "no such file");
    if (checkOf(input.file->bytes()) == before.check) return;
    const std::string what = "is not the file that the session was saved with";
    const std::string other = difference(before.curves, mnemsOf(channels));
    if (!other.empty()) throw Refusal(input.given, what + ": " + other);
    if (!named) throw Refusal(input.given, what + "; where the inputs are named it is taken all the same");
    tellNotes(bench, input.given,
              {{.kind = NoteKind::File, .file = input.given, .text = what + "; its channels are the same"}});
}

}  // namespace

SavedSession readSavedSession(const std::string& file) {
    return readingOf(file, [&] {
        const MappedFile mapped = mapFile(resolvePath(file));
        if (mapped.bytes().size() > mostBytes) throw RunTimeFailure("is no session file");
        SavedSession saved = parsed(file, mapped.bytes());
        needWhole(mapped, file);
        return saved;
    });
}

std::vector<int> slotsOf(const SavedSession& saved) {
    std::vector<int> slots;
    for (const SavedInput& input : saved.inputs) slots.push_back(input.slot);
    return slots;
}

std::vector<std::string> findSavedInputs(const SavedSession& saved) {
    std::vector<std::string> files;
    std::vector<std::string> missing;
    for (const SavedInput& input : saved.inputs) {
        files.push_back(whereNow(saved, input));
        if (files.back().empty()) missing.push_back(input.path);
    }
    if (missing.empty()) return files;
    throw Refusal(saved.file, "its input" + std::string(missing.size() == 1 ? " " : "s ") + join(missing, ", ") +
                                  (missing.size() == 1 ? " is" : " are") + " missing");
}

void takeReading(const SavedSession& saved, PassRequest& request) {
    const PassRequest usual;
    const auto take = [](const char* choice, auto& value, const auto& usualValue, const auto& savedValue) {
        if (value != usualValue && value != savedValue)
            throw refusedChoice(choice, "the session's inputs were read in another way");
        value = savedValue;
    };
    take("rules", request.rules, usual.rules, saved.rules);
    take("loose", request.loose, usual.loose, saved.loose);
    take("decimal-comma", request.decimalComma, usual.decimalComma, saved.decimalComma);
    take("index-unit", request.indexUnit, usual.indexUnit, saved.indexUnit);
    request.csv = request.csv || saved.marks.csv;
    if (request.csv && request.plain) throw senselessChoice("ascii", "the session gives comma-separated values");
}

void restoreSession(Workbench& bench, Session& session, const std::vector<Input>& inputs, const SavedSession& saved,
                    bool named) {
    if (inputs.size() != saved.inputs.size())
        throw refusedChoice("session", "it has " + counted(static_cast<std::int64_t>(saved.inputs.size()), "input") +
                                           ", not " + std::to_string(inputs.size()));
    for (std::size_t place = 0; place < inputs.size(); ++place) {
        const SavedInput& before = saved.inputs[place];
        needSameInput(bench, inputs[place], before, session.channels[before.slot], named);
    }
    try {
        applySaved(saved, pathsNow(saved, session), session, bench.app().settings);
    } catch (const RunTimeFailure& failure) {
        throw Refusal(saved.file, failure.what());
    }
}

std::string sessionText(const App& app, const Session& session, const Session& fresh, const std::vector<Input>& inputs,
                        const RunMarks& marks, const std::string& file) {
    for (const Input& input : inputs)
        if (!input.file) throw Refusal(file, "the session cannot be saved: its input " + input.given + " is missing");
    std::string text =
        "# Inputs, how they are read, and what differs from the tables as these inputs fill them. An edited file ends\n"
        "# in \"end\" alone.\n" +
        readingPart(session, marks);
    auto input = inputs.begin();
    for (int slot = 0; slot < slotCount && input != inputs.end(); ++slot)
        if (!fresh.slots[slot].path.empty()) text += inputPart(*input++, slot, fresh, session, file);
    if (!session.filterFile.empty()) text += "\n[filter]\n" + pathLines(pathsFor(session.filterFile, file));
    if (!session.tvdFile.empty()) text += "\n[survey]\n" + pathLines(pathsFor(session.tvdFile, file));
    text = closedText(text + settingsPart(app.settings) + sessionParts(fresh, session));
    Session again = fresh;
    StartupSettings settings = app.settings;
    try {
        applySaved(parsed(file, text), namedPaths(session), again, settings);
    } catch (const RunTimeFailure& failure) {
        throw Refusal(file, std::string("the session cannot be saved: ") + failure.what());
    }
    if (!sameSession(session, again) || !sameSettings(app.settings, settings))
        throw Refusal(file, "the session cannot be saved: reading it back would give another one");
    return text;
}

void writeSession(const Workbench& bench, const std::string& file, const std::string& text) {
    readingOf(file, [&] {
        OutputFile output(resolvePath(file), bench.outputMode());
        output.write(text);
        output.commit();
    });
}

}  // namespace welvane
