// The floor: the least that any program must do which reads the numbers of a LAS file and prints them again, by the
// means of the standard library. No grid, no null values, no header work.
#include <charconv>
#include <cstring>
#include <iostream>
#include <optional>
#include <string_view>
#include <system_error>

#include "block_writer.h"
#include "platform/mapped_file.h"

namespace welvane::bench {
namespace {

constexpr std::size_t columnWidth = 13;
constexpr int decimals = 5;
/// Digits of the largest double, its sign, point and decimals.
constexpr std::size_t longestText = 320;

/// Place behind the line that begins with "~A"; the whole text when there is none.
std::size_t dataStart(std::string_view bytes) {
    for (std::size_t line = 0; line < bytes.size();) {
        const std::size_t end = bytes.find('\n', line);
        const std::size_t next = end == std::string_view::npos ? bytes.size() : end + 1;
        if (bytes.size() - line >= 2 && bytes[line] == '~' && (bytes[line + 1] == 'A' || bytes[line + 1] == 'a'))
            return next;
        line = next;
    }
    return bytes.size();
}

/// Parses every number from `at` on and prints it into its column; line breaks and what is no number are copied.
void copyNumbers(const char* at, const char* end, BlockWriter& writer) {
    while (at != end) {
        if (*at == ' ' || *at == '\t') {
            ++at;
            continue;
        }
        double value = 0;
        const std::from_chars_result read = std::from_chars(at, end, value);
        if (read.ec != std::errc()) {
            *writer.reserve(1) = *at++;
            writer.advance(1);
            continue;
        }
        at = read.ptr;
        char text[longestText];
        const char* const textEnd =
            std::to_chars(text, text + longestText, value, std::chars_format::fixed, decimals).ptr;
        const auto length = static_cast<std::size_t>(textEnd - text);
        const std::size_t blanks = length < columnWidth ? columnWidth - length : 0;
        char* const column = writer.reserve(blanks + length);
        std::memset(column, ' ', blanks);
        std::memcpy(column + blanks, text, length);
        writer.advance(blanks + length);
    }
}

int run(const char* input, const char* output) {
    const std::optional<MappedFile> file = MappedFile::open(input);
    if (!file) {
        std::cerr << input << ": cannot be read\n";
        return 1;
    }
    file->willReadAll();
    const std::string_view bytes = file->bytes();
    const std::size_t start = dataStart(bytes);
    BlockWriter writer(output);
    writer.write(bytes.substr(0, start));
    copyNumbers(bytes.data() + start, bytes.data() + bytes.size(), writer);
    if (writer.close()) return 0;
    std::cerr << output << ": cannot be written\n";
    return 1;
}

}  // namespace
}  // namespace welvane::bench

int main(int count, char** arguments) {
    if (count != 3) {
        std::cerr << "usage: welvane_floor IN OUT\n";
        return 2;
    }
    return welvane::bench::run(arguments[1], arguments[2]);
}
