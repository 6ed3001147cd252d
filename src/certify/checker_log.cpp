#include "certify/checker_log.h"

#include <algorithm>
#include <array>

#include "platform/mapped_file.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::array<std::string_view, 2> keywords = {"Failed:", "Error:"};
constexpr std::size_t longestKeyword = 7;
constexpr std::string_view lineEnds = "\r\n";

/// Place of the colon of the first keyword at or behind `from`; npos when there is none. Both words end at a colon,
/// which is rare.
std::size_t findKeyword(std::string_view text, std::size_t from) {
    for (std::size_t colon = text.find(':', from); colon != npos; colon = text.find(':', colon + 1))
        for (const std::string_view word : keywords)
            if (colon + 1 >= word.size() && sameText(text.substr(colon + 1 - word.size(), word.size()), word))
                return colon;
    return npos;
}

/// Hands each line that holds a keyword to `take`, until that returns false.
template <class Take>
void forEachFailureLine(std::string_view text, Take take) {
    for (std::size_t place = findKeyword(text, 0); place != npos;) {
        const std::size_t before = text.find_last_of(lineEnds, place);
        const std::size_t start = before == npos ? 0 : before + 1;
        const std::size_t end = std::min(text.find_first_of(lineEnds, place), text.size());
        if (!take(text.substr(start, end - start))) return;
        place = findKeyword(text, end);
    }
}

std::string shortened(std::string_view bytes) {
    std::string text(bytes.substr(0, longestLog));
    // The rest begins at a whole line, so that a keyword across the cut is found in it.
    const std::size_t cut = text.find_last_of(lineEnds);
    if (cut != npos && cut + 1 > longestLog / 2) text.resize(cut + 1);
    const std::string_view rest = bytes.substr(text.size());
    text.append("\r\n... ").append(std::to_string(rest.size())).append(" further bytes; their lines with a fault:\r\n");
    const std::size_t limit = longestLog + longestLog / 4;
    forEachFailureLine(rest, [&](std::string_view line) {
        // A line without an end may be as long as the flood itself: its keyword is at hand, the rest of it is not worth
        // keeping.
        if (line.size() > longestLog / 8) {
            const std::size_t colon = findKeyword(line, 0);
            line = line.substr(colon < longestKeyword ? 0 : colon + 1 - longestKeyword, 1000);
        }
        text.append(line).append("\r\n");
        return text.size() < limit;
    });
    return text;
}

}  // namespace

std::string readWholeFile(std::string_view path) {
    const auto file = MappedFile::open(path);
    if (!file) return {};
    if (file->bytes().size() <= longestLog) return std::string(file->bytes());
    return shortened(file->bytes());
}

bool holdsFailure(std::string_view text) {
    return findKeyword(text, 0) != npos;
}

std::vector<std::string> failureLines(std::string_view text) {
    std::vector<std::string> lines;
    forEachFailureLine(text, [&](std::string_view line) {
        lines.emplace_back(line);
        return true;
    });
    return lines;
}

Verdict verdictOf(std::string_view logText) {
    if (logText.empty()) return Verdict::CheckIncomplete;
    return holdsFailure(logText) ? Verdict::Failed : Verdict::Passed;
}

std::string_view verdictText(Verdict verdict) {
    constexpr std::array<std::string_view, 3> texts = {"Check Incomplete", "Failed", "Passed"};
    return texts[static_cast<std::size_t>(verdict)];
}

std::uint32_t verdictColour(Verdict verdict) {
    return verdict == Verdict::Passed ? passedColour : failedColour;
}

}  // namespace welvane
