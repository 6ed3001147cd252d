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

bool goToPage(ByteViewState& view, std::uint64_t number) {
    return number >= 1 && number <= view.pageCount() && showPage(view, (number - 1) * bytePageLength);
}

bool isolatedLineFeed(const ByteViewState& view, std::size_t index) {
    if (view.bytes[index] != '\n') return false;
    return index == 0 ? !view.afterReturn : view.bytes[index - 1] != '\r';
}

std::string threeDigits(unsigned char code) {
    return {static_cast<char>('0' + code / 100), static_cast<char>('0' + code / 10 % 10),
            static_cast<char>('0' + code % 10)};
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

}  // namespace welvane
