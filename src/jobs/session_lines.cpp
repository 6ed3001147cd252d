#include "jobs/session_lines.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "shared/failure.h"
#include "shared/text.h"
#include "shared/utf8.h"

namespace welvane {

namespace {

constexpr std::string_view firstWords = "welvane session ";
constexpr std::string_view versionText = "1";
constexpr std::string_view hexDigits = "0123456789abcdef";

[[noreturn]] void refuseLine(std::size_t number, const std::string& why) {
    throw RunTimeFailure("line " + std::to_string(number) + ": " + why);
}

void addHex(std::string& text, unsigned char byte) {
    text += "\\x";
    text += hexDigits[byte >> 4U];
    text += hexDigits[byte & 15U];
}

/// Reads the words of one line.
class WordReader {
  public:
    WordReader(std::string_view line, std::size_t number) : line_(line), number_(number) {}

    std::vector<SessionWord> words() {
        std::vector<SessionWord> found;
        for (skipBlanks(); !ended(); skipBlanks()) found.push_back(line_[place_] == '"' ? quoted() : plain());
        return found;
    }

  private:
    bool ended() const { return place_ >= line_.size() || line_[place_] == '#'; }
    void skipBlanks() {
        while (place_ < line_.size() && (line_[place_] == ' ' || line_[place_] == '\t')) ++place_;
    }
    SessionWord plain() {
        const std::size_t end = std::min(line_.find_first_of(" \t#\"", place_), line_.size());
        SessionWord word{std::string(line_.substr(place_, end - place_)), false};
        place_ = end;
        return word;
    }
    char next() {
        if (place_ >= line_.size()) refuseLine(number_, "a text has no closing quote");
        return line_[place_++];
    }
    unsigned hexDigit() {
        const std::size_t digit = hexDigits.find(next());
        if (digit == std::string_view::npos) refuseLine(number_, "\\x is no byte");
        return static_cast<unsigned>(digit);
    }
    char escaped() {
        const char letter = next();
        if (letter == '\\' || letter == '"') return letter;
        if (letter != 'x') refuseLine(number_, std::string("\\") + letter + " is no character");
        const unsigned high = hexDigit();
        return static_cast<char>(high << 4U | hexDigit());
    }
    SessionWord quoted() {
        SessionWord word{"", true};
        for (++place_;;) {
            const char letter = next();
            if (letter == '"') return word;
            word.text += letter == '\\' ? escaped() : letter;
        }
    }

    std::string_view line_;
    std::size_t number_;
    std::size_t place_ = 0;
};

std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    for (std::size_t place = 0; place < text.size();) {
        const std::size_t end = std::min(text.find('\n', place), text.size());
        lines.push_back(text.substr(place, end - place));
        place = end + 1;
    }
    while (!lines.empty() && trim(lines.back()).empty()) lines.pop_back();
    return lines;
}

void needKnownVersion(const std::vector<std::string_view>& lines) {
    if (lines.empty() || !lines.front().starts_with(firstWords)) throw RunTimeFailure("is no session file");
    const std::string version(trim(lines.front().substr(firstWords.size())));
    if (version != versionText)
        throw RunTimeFailure("is a session file of version " + version + "; this program reads version " +
                             std::string(versionText));
}

/// What the last line tells of those above it. Without its check (which a person who edits the file takes away) all
/// that it tells is that the file was not cut.
void needWholeText(std::string_view text, const std::vector<std::string_view>& lines) {
    const std::size_t last = lines.size();
    const SessionLine end(last, WordReader(lines.back(), last).words());
    if (end.size() == 0 || end.word(0).quoted || end.keyword() != "end")
        throw RunTimeFailure("was cut: its last line, " + std::to_string(last) + ", is no end line");
    if (end.size() == 1) return;
    end.needSize(3);
    const auto counted = static_cast<std::size_t>(end.number(1, 0, INT64_MAX));
    const auto above = static_cast<std::size_t>(lines.back().data() - text.data());
    if (counted != last - 1 || end.plain(2) != checkText(checkOf(text.substr(0, above))))
        throw RunTimeFailure(
            "was changed after it was saved, by damage or by hand; with \"end\" alone as its last "
            "line it is taken as it stands");
}

std::optional<std::string> titleOf(std::string_view line) {
    const std::string_view text = trim(line);
    if (text.size() < 2 || text.front() != '[' || text.back() != ']') return std::nullopt;
    return std::string(text.substr(1, text.size() - 2));
}

}  // namespace

void SessionLine::refuse(const std::string& why) const {
    refuseLine(number_, why);
}

void SessionLine::needSize(std::size_t size) const {
    if (words_.size() != size) refuse("\"" + keyword() + "\" has " + counted(size - 1, "value"));
}

const std::string& SessionLine::plain(std::size_t place) const {
    if (place >= words_.size()) refuse("a value is missing");
    if (words_[place].quoted) refuse("a text stands where none belongs");
    return words_[place].text;
}

const std::string& SessionLine::text(std::size_t place) const {
    if (place >= words_.size()) refuse("a text is missing");
    if (!words_[place].quoted) refuse("'" + words_[place].text + "' stands where a text in quotes belongs");
    return words_[place].text;
}

std::int64_t SessionLine::number(std::size_t place, std::int64_t least, std::int64_t most) const {
    const std::string& word = plain(place);
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error != std::errc() || end != word.data() + word.size() || value < least || value > most)
        refuse("'" + word + "' is no number from " + std::to_string(least) + " to " + std::to_string(most));
    return value;
}

float SessionLine::single(std::size_t place) const {
    const std::string& word = plain(place);
    float value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error != std::errc() || end != word.data() + word.size()) refuse("'" + word + "' is no number");
    return value;
}

bool SessionLine::yes(std::size_t place) const {
    const std::string& word = plain(place);
    if (word != "yes" && word != "no") refuse("'" + word + "' is neither yes nor no");
    return word == "yes";
}

std::string quotedText(std::string_view text) {
    const bool isUtf8 = utf8Text(text) == text;
    std::string quoted = "\"";
    for (const char letter : text) {
        const auto byte = static_cast<unsigned char>(letter);
        if (letter == '"' || letter == '\\') {
            quoted += '\\';
            quoted += letter;
        } else if (byte < 0x20 || byte == 0x7F || (byte >= 0x80 && !isUtf8)) {
            addHex(quoted, byte);
        } else {
            quoted += letter;
        }
    }
    return quoted + '"';
}

std::uint64_t checkOf(std::string_view bytes) {
    constexpr std::uint64_t prime = 0x9E3779B97F4A7C15U;
    std::uint64_t check = prime ^ bytes.size();
    const auto mix = [&check](std::uint64_t word) {
        check = (check ^ word) * prime;
        check ^= check >> 29U;
    };
    std::size_t place = 0;
    const auto wordAt = [&](std::size_t count) {
        std::uint64_t word = 0;
        for (std::size_t byte = 0; byte < count; ++byte)
            word |= static_cast<std::uint64_t>(static_cast<unsigned char>(bytes[place + byte])) << (8 * byte);
        return word;
    };
    for (; place + 8 <= bytes.size(); place += 8) mix(wordAt(8));
    mix(wordAt(bytes.size() - place));
    mix(0);
    return check;
}

std::string checkText(std::uint64_t check) {
    std::string text;
    for (int shift = 60; shift >= 0; shift -= 4) text += hexDigits[check >> static_cast<unsigned>(shift) & 15U];
    return text;
}

std::string closedText(std::string_view body) {
    std::string text = std::string(firstWords) + std::string(versionText) + "\n";
    text += body;
    const auto lines = std::count(text.begin(), text.end(), '\n');
    return text + "end " + std::to_string(lines) + " " + checkText(checkOf(text)) + "\n";
}

std::vector<SessionPart> readSessionParts(std::string_view raw) {
    // An editor or a transfer may have given the lines other ends; a text never holds one.
    std::string text;
    std::copy_if(raw.begin(), raw.end(), std::back_inserter(text), [](char letter) { return letter != '\r'; });
    const std::vector<std::string_view> lines = linesOf(text);
    needKnownVersion(lines);
    needWholeText(text, lines);
    std::vector<SessionPart> parts;
    for (std::size_t number = 2; number < lines.size(); ++number) {
        if (std::optional<std::string> title = titleOf(lines[number - 1])) {
            parts.push_back({std::move(*title), number, {}});
            continue;
        }
        std::vector<SessionWord> words = WordReader(lines[number - 1], number).words();
        if (words.empty()) continue;
        if (words.front().quoted || parts.empty()) refuseLine(number, "cannot be read");
        parts.back().lines.emplace_back(number, std::move(words));
    }
    return parts;
}

}  // namespace welvane
