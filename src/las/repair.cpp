#include "las/repair.h"

#include <algorithm>
#include <exception>

#include "las/limits.h"
#include "las/run_turn.h"
#include "platform/mapped_file.h"
#include "platform/output_file.h"
#include "shared/failure.h"
#include "shared/files.h"
#include "shared/line_reader.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// Bytes between two looks at the wish to stop.
constexpr std::size_t block = std::size_t{1} << 20U;

bool isFaulty(std::string_view line) {
    return holdsText(line, "~C") && holdsText(line, "YWELL") && holdsText(line, "XWELL");
}

/// Calls `take` with the header lines in front of the first one that holds "~A".
template <class Take>
void eachHeaderLine(std::string_view bytes, Take&& take) {
    LineReader file(bytes.substr(0, headerLimit));
    for (std::string_view line; file.next(line) && !holdsText(line, "~A");) take(line);
}

/// Finds `pattern`, case ignored. A character of the pattern that is no letter is looked for with the fastest search
/// there is.
class Finder {
  public:
    explicit Finder(std::string_view pattern) : pattern_(pattern) {
        const auto plain = std::find_if(pattern.begin(), pattern.end(), [](char c) { return !isLetter(c); });
        if (plain != pattern.end()) anchor_ = static_cast<std::size_t>(plain - pattern.begin());
    }

    /// First match at or behind `from`; npos when there is none.
    std::size_t next(std::string_view text, std::size_t from) const {
        if (anchor_ == npos) return findText(text, pattern_, from);
        for (std::size_t place = text.find(pattern_[anchor_], from + anchor_); place != npos;
             place = text.find(pattern_[anchor_], place + 1)) {
            const std::size_t start = place - anchor_;
            if (sameText(text.substr(start, pattern_.size()), pattern_)) return start;
        }
        return npos;
    }

  private:
    static bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
    std::string_view pattern_;
    std::size_t anchor_ = npos;
};

/// Writes `bytes` with each place that `find(window, from)` gives, of `length` bytes, replaced. The window shows one
/// block and so much behind it that a match that begins in the block is seen whole.
template <class Find>
bool writeReplaced(OutputFile& target, std::string_view bytes, std::size_t length, std::string_view replacement,
                   RunTurn& turn, std::uint64_t& found, Find&& find) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        if (!turn.goesOn(done)) return false;
        const std::size_t blockEnd = std::min(bytes.size(), done + block);
        const std::string_view window = bytes.substr(0, std::min(bytes.size(), blockEnd + length - 1));
        while (done < blockEnd) {
            const std::size_t place = find(window, done);
            if (place == npos) break;
            target.write(bytes.substr(done, place - done));
            target.write(replacement);
            done = place + length;
            ++found;
        }
        if (done >= blockEnd) continue;
        target.write(bytes.substr(done, blockEnd - done));
        done = blockEnd;
    }
    return true;
}

template <class Find>
StepResult replaceBytes(std::string_view source, std::string_view target, std::size_t length,
                        std::string_view replacement, RunState& run, UserInterface& user, ReplaceReport& report,
                        OutputFile::Mode mode, Find&& find) {
    const auto mapped = MappedFile::open(source, &report.why);
    if (!mapped) return StepResult::Failed;
    try {
        mapped->willReadAll();
        OutputFile output(target, mode);
        RunTurn turn(run, user, mapped->bytes().size());
        if (!writeReplaced(output, mapped->bytes(), length, replacement, turn, report.replacements, find))
            return StepResult::Cancelled;
        if (run.cancelRequested) return StepResult::Cancelled;
        needWhole(*mapped, source);
        output.commit();
        return StepResult::Done;
    } catch (const std::exception& error) {
        report.why = error.what();
        return StepResult::Failed;
    }
}

std::size_t findBareLineFeed(std::string_view text, std::size_t from) {
    for (std::size_t place = text.find('\n', from); place != npos; place = text.find('\n', place + 1))
        if (place == 0 || text[place - 1] != '\r') return place;
    return npos;
}

}  // namespace

bool hasCurveTitleFault(std::string_view path) {
    const auto mapped = MappedFile::open(path);
    return mapped && curveTitleFaultIn(mapped->bytes());
}

bool curveTitleFaultIn(std::string_view bytes) {
    bool faulty = false;
    eachHeaderLine(bytes, [&faulty](std::string_view line) { faulty = faulty || isFaulty(line); });
    return faulty;
}

bool fixCurveTitle(std::string_view path, std::string_view target, OutputFile::Mode mode, std::string* why) {
    if (!hasCurveTitleFault(path)) return false;
    const auto mapped = MappedFile::open(path);
    if (!mapped) return false;
    try {
        const std::string_view bytes = mapped->bytes();
        OutputFile output(target, mode);
        std::size_t done = 0;
        eachHeaderLine(bytes, [&](std::string_view line) {
            if (!isFaulty(line)) return;
            const auto start = static_cast<std::size_t>(line.data() - bytes.data());
            output.write(bytes.substr(done, start - done));
            output.write("~Curve");
            done = start + line.size();
        });
        output.write(bytes.substr(done));
        needWhole(*mapped, path);
        output.commit();
        return true;
    } catch (const std::exception& failed) {
        if (why != nullptr) *why = failed.what();
        return false;
    }
}

bool repairCurveTitle(std::string_view path, UserInterface& user) {
    if (!hasCurveTitleFault(path)) return false;
    const Answer answer = user.ask({"",
                                    "LAS found to have a common Plexmore error (XWELL/YWELL/~Curve all on same line). "
                                    "Do you want to repair it now?",
                                    Buttons::YesNo, Icon::Question, Answer::No});
    return answer == Answer::Yes && fixCurveTitle(path, path);
}

std::string safetyCopyName(std::string_view path, std::string_view mark) {
    const std::string start(mark);
    std::string name = changeExtension(path, start + ".las");
    for (int number = 2; fileExists(name) || folderExists(name); ++number)
        name = changeExtension(path, start + "-" + std::to_string(number) + ".las");
    return name;
}

StepResult replaceInFile(std::string_view source, std::string_view target, std::string_view find,
                         std::string_view replacement, RunState& run, UserInterface& user, ReplaceReport* report,
                         OutputFile::Mode mode) {
    run.statusText = "Doing Search and Replace. Please Wait...";
    ReplaceReport unwanted;
    const Finder finder(find);
    // Nothing to look for: the target is a plain copy.
    return replaceBytes(
        source, target, std::max<std::size_t>(find.size(), 1), replacement, run, user, report ? *report : unwanted,
        mode, [&](std::string_view text, std::size_t from) { return find.empty() ? npos : finder.next(text, from); });
}

StepResult repairLineEnds(std::string_view source, std::string_view target, RunState& run, UserInterface& user,
                          OutputFile::Mode mode, std::string* why) {
    ReplaceReport report;
    const StepResult result = replaceBytes(source, target, 1, "\r\n", run, user, report, mode, findBareLineFeed);
    if (why != nullptr) *why = report.why;
    return result;
}

}  // namespace welvane
