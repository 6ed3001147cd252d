#include "texttools/byte_view.h"

#include <algorithm>
#include <cstring>

#include "platform/mapped_file.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::size_t codesPerLine = 16;
constexpr std::size_t charactersPerLine = 40;
/// Bytes scanned between two looks at cancelRequested.
constexpr std::size_t scanBlock = std::size_t{1} << 20;

constexpr std::string_view badTitle = "Bad Termination Found";
constexpr std::string_view goodTitle = "Termination Okay";
constexpr std::string_view goodText = "No Isolated Line Feeds (ASCII 10) found.";

bool showsCharacter(unsigned char code) {
    return code >= 32 && code <= 127;
}

std::string threeDigits(unsigned char code) {
    return {static_cast<char>('0' + code / 100), static_cast<char>('0' + code / 10 % 10),
            static_cast<char>('0' + code % 10)};
}

void appendOffset(std::string& text, std::uint64_t offset) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string shown;
    for (; offset > 0 || shown.size() < 8; offset /= 16) shown += digits[offset % 16];
    text.append(shown.rbegin(), shown.rend());
}

/// Characters of one rendered line. DEL has a character cell but nothing that a terminal can show.
void appendCharacters(std::string& text, const ByteViewState& view, std::size_t from, std::size_t to) {
    for (std::size_t index = from; index < to; ++index) {
        const auto code = static_cast<unsigned char>(view.bytes[index]);
        if (isolatedLineFeed(view, index))
            text += '*';
        else
            text += code >= 32 && code < 127 ? static_cast<char>(code) : '.';
    }
}

void appendBadEnds(std::string& text, const ByteViewState& view, std::size_t from, std::size_t to) {
    bool first = true;
    for (std::size_t index = from; index < to; ++index) {
        if (!isolatedLineFeed(view, index)) continue;
        text += first ? "  <- isolated line feed at " : ", ";
        text += std::to_string(view.pageStart + index);
        first = false;
    }
}

/// Isolated line feeds of a block. Without branches, so that it runs at the speed of the memory.
std::size_t countBadEnds(std::string_view bytes, std::size_t from, std::size_t to) {
    std::size_t count = 0;
    if (from == 0 && to > 0) count += bytes[from++] == '\n' ? 1U : 0U;
    const char* const data = bytes.data();
    for (std::size_t place = from; place < to; ++place)
        count += static_cast<std::size_t>((data[place] == '\n') & (data[place - 1] != '\r'));
    return count;
}

}  // namespace

bool openByteView(ByteViewState& view, std::string_view path) {
    view = {};
    ByteViewState opened;
    opened.path = std::string(path);
    if (!showPage(opened, 0)) return false;
    view = std::move(opened);
    return true;
}

bool showPage(ByteViewState& view, std::uint64_t start) {
    const auto file = MappedFile::open(view.path);
    if (!file) return false;
    const std::string_view bytes = file->bytes();
    if (start >= bytes.size()) start = bytes.size() > bytePageLength ? bytes.size() - bytePageLength : 0;
    view.length = bytes.size();
    view.pageStart = start;
    view.bytes = std::string(bytes.substr(start, bytePageLength));
    view.afterReturn = start > 0 && bytes[start - 1] == '\r';
    return true;
}

bool nextPage(ByteViewState& view) {
    return view.pageStart + bytePageLength < view.length && showPage(view, view.pageStart + bytePageLength);
}

bool previousPage(ByteViewState& view) {
    return view.pageStart > 0 && showPage(view, view.pageStart - std::min(view.pageStart, bytePageLength));
}

bool goToPage(ByteViewState& view, std::uint64_t number) {
    return number >= 1 && number <= view.pageCount() && showPage(view, (number - 1) * bytePageLength);
}

bool isolatedLineFeed(const ByteViewState& view, std::size_t index) {
    if (view.bytes[index] != '\n') return false;
    return index == 0 ? !view.afterReturn : view.bytes[index - 1] != '\r';
}

Table fillAsd(const ByteViewState& view) {
    Table asd(2, static_cast<int>(view.bytes.size()));
    for (std::size_t index = 0; index < view.bytes.size(); ++index) {
        const auto code = static_cast<unsigned char>(view.bytes[index]);
        SessionCell& shown = asd.cell(static_cast<int>(AsdRow::Text), static_cast<int>(index));
        SessionCell& number = asd.cell(static_cast<int>(AsdRow::Code), static_cast<int>(index));
        if (showsCharacter(code)) shown.text = view.bytes[index];
        number.text = threeDigits(code);
        if (isolatedLineFeed(view, index)) shown.backColour = number.backColour = badEndColour;
    }
    return asd;
}

std::string cellHint(unsigned char code) {
    if (code > 127) return "Un-printable";
    if (code == ' ') return "Printable character is Space";
    if (code > ' ') return std::string("Printable character is ") + static_cast<char>(code);
    return "Control character is " + (code == '\t' ? std::string("TAB") : std::to_string(code));
}

std::string renderPage(const ByteViewState& view, bool codes) {
    const std::size_t perLine = codes ? codesPerLine : charactersPerLine;
    std::string text;
    for (std::size_t from = 0; from < view.bytes.size(); from += perLine) {
        const std::size_t to = std::min(from + perLine, view.bytes.size());
        appendOffset(text, view.pageStart + from);
        text += ' ';
        if (codes) {
            for (std::size_t index = from; index < to; ++index) {
                text.append(" ").append(threeDigits(static_cast<unsigned char>(view.bytes[index])));
                text += isolatedLineFeed(view, index) ? '*' : ' ';
            }
            text.append(5 * (from + perLine - to), ' ');
        }
        text += " |";
        appendCharacters(text, view, from, to);
        text += '|';
        appendBadEnds(text, view, from, to);
        text += '\n';
    }
    return text;
}

std::size_t findIsolatedLineFeed(std::string_view bytes, std::size_t from) {
    for (std::size_t place = bytes.find('\n', from); place != npos; place = bytes.find('\n', place + 1))
        if (place == 0 || bytes[place - 1] != '\r') return place;
    return npos;
}

BadEnds findBadEnds(App& app, std::string_view path) {
    BadEnds found;
    const auto file = MappedFile::open(path);
    if (!file) return found;
    file->willReadAll();
    const std::string_view bytes = file->bytes();
    for (std::size_t from = 0; from < bytes.size(); from += scanBlock) {
        if (app.run.cancelRequested) {
            found.cancelled = true;
            break;
        }
        const std::size_t to = std::min(from + scanBlock, bytes.size());
        const std::size_t count = countBadEnds(bytes, from, to);
        found.count += count;
        std::size_t place = from;
        for (std::size_t left = count; left > 0 && found.offsets.size() < BadEnds::kept; --left, ++place) {
            place = findIsolatedLineFeed(bytes, place);
            found.offsets.push_back(place);
        }
        app.user.progress(
            {"Looking for isolated line feeds", static_cast<double>(to) / static_cast<double>(bytes.size())});
        if (!app.run.commandMode) app.user.pumpEvents();
    }
    found.readable = !file->damaged();
    return found;
}

bool findBadTermination(App& app, ByteViewState& view) {
    std::size_t place = npos;
    {
        const auto file = MappedFile::open(view.path);
        if (!file) return false;
        place = findIsolatedLineFeed(file->bytes());
    }
    if (place == npos) {
        app.user.ask({.title = std::string(goodTitle), .text = std::string(goodText), .icon = Icon::Information});
        return false;
    }
    const Prompt found{.title = std::string(badTitle),
                       .text = "Isolated Line Feed (ASCII 10) found at byte " + std::to_string(place) +
                               ". Move grid to this position? (look for red cells)",
                       .buttons = Buttons::YesNo,
                       .icon = Icon::Stop,
                       .whenHeadless = Answer::No};
    if (app.user.ask(found) != Answer::Yes) return false;
    // Kept: the page begins 200 bytes behind the line feed, so its red cell shows after one step back.
    // Test: movesTwoHundredBytesBehindTheLineFeed
    return showPage(view, place + 200);
}

}  // namespace welvane
