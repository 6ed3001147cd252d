#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "session/choices.h"

/// Texts of the data section: overflow, delimiters, and how a record or the title of the data is broken into lines.
namespace welvane {

/// What stands for a value too wide for its column: nines with the first character a blank and a point before the
/// decimals.
std::string overflowText(int width, int decimals);

char delimiterOf(Separator separator);

/// Gives `emit` the lines of a wrapped record: the first column, then `lines` lines of perLine columns each. A count of
/// lines too high repeats what is left.
template <class Emit>
void eachWrappedLine(std::string_view record, std::size_t width, std::size_t perLine, std::int32_t lines, Emit emit) {
    emit(record.substr(0, width));
    std::string_view rest = record.size() > width ? record.substr(width) : std::string_view();
    for (std::int32_t line = 0; line < lines; ++line) {
        const std::string_view part = rest.substr(0, perLine * width);
        emit(part);
        if (rest.size() > part.size()) rest.remove_prefix(part.size());
    }
}

/// The title of wrapped data: the first column and the lines of floor(78 / width) columns behind it, each line's first
/// character replaced by the lead's first one. A title that is no whole number of columns is laid out anew, one word a
/// column.
std::string wrapTitle(std::string_view title, int width, std::string_view lead);

}  // namespace welvane
