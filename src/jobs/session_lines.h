#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Lines of words, as a session file has them: parts with a title in brackets, a keyword and its values a line, texts
/// in double quotes, and behind "#" what is for a reader alone. The last line counts the others and holds their check.
namespace welvane {

/// A word that stands in quotes is a text, whatever it holds.
struct SessionWord {
    std::string text;
    bool quoted = false;
};

class SessionLine {
  public:
    SessionLine(std::size_t number, std::vector<SessionWord> words) : number_(number), words_(std::move(words)) {}

    /// From 1, in its file.
    std::size_t number() const { return number_; }
    std::size_t size() const { return words_.size(); }
    const SessionWord& word(std::size_t place) const { return words_[place]; }
    const std::string& keyword() const { return words_.front().text; }

    /// These ask for a word that is there and of that kind; RunTimeFailure with the line's number otherwise.
    const std::string& plain(std::size_t place) const;
    const std::string& text(std::size_t place) const;
    std::int64_t number(std::size_t place, std::int64_t least, std::int64_t most) const;
    float single(std::size_t place) const;
    bool yes(std::size_t place) const;
    void needSize(std::size_t size) const;
    [[noreturn]] void refuse(const std::string& why) const;

  private:
    std::size_t number_;
    std::vector<SessionWord> words_;
};

struct SessionPart {
    std::string title;  ///< without its brackets
    std::size_t number = 0;
    std::vector<SessionLine> lines;
};

/// A text as a word in quotes: control characters and what is no UTF-8 as "\xHH", quote and backslash behind a
/// backslash.
std::string quotedText(std::string_view text);

/// A 64-bit number that bytes give, another one for nearly every change of them; the same on every machine.
std::uint64_t checkOf(std::string_view bytes);
std::string checkText(std::uint64_t check);

/// The parts between first and last line; `body` ends in a line feed.
std::string closedText(std::string_view body);
/// The parts of such a text. RunTimeFailure, with the line, for a text of another kind or version, one that was cut,
/// one whose check does not fit, and a line that cannot be read.
std::vector<SessionPart> readSessionParts(std::string_view text);

}  // namespace welvane
