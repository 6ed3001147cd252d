#include <cmath>
#include <cstdio>
#include <exception>
#include <string>

#include "las/read_channels.h"
#include "shared/numbers.h"

/// print_channels FILE [--loose]: the channels of a LAS file as ChannelReader gives them, for another reader to
/// compare. The names on the first line, then a record a line, parted by tabs, "." for null. Notes on stderr. 1 for a
/// refusal.
namespace welvane {
namespace {

void print(const LasFile& file, const ChannelReading& how) {
    ChannelReader reader(file, how);
    std::string text;
    for (std::size_t column = 0; column < reader.shape().columns; ++column)
        text.append(column == 0 ? "" : "\t").append(reader.names().channels[column].mnem);
    std::puts(text.c_str());
    for (RecordBlock block; reader.next(block);) {
        for (std::size_t record = 0; record < block.records; ++record) {
            text.clear();
            for (std::size_t column = 0; column < block.columns; ++column) {
                const double value = block.record(record)[column];
                text.append(column == 0 ? "" : "\t").append(std::isnan(value) ? "." : plainNumber(value));
            }
            std::puts(text.c_str());
        }
    }
    for (const Note& note : reader.notes(file.path())) {
        text = std::to_string(static_cast<int>(note.kind)) + ": " + note.channel + ": line " +
               std::to_string(note.line) + ": " + note.text + " (" + std::to_string(note.count) + ")\n";
        std::fputs(text.c_str(), stderr);
    }
}

}  // namespace
}  // namespace welvane

int main(int count, char** arguments) {
    if (count < 2) return 2;
    try {
        const welvane::LasFile file(arguments[1], welvane::FigureRules::trueFigures);
        welvane::print(file, {.loose = count > 2 && std::string_view(arguments[2]) == "--loose"});
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "refused: %s\n", failure.what());
        return 1;
    }
    return 0;
}
