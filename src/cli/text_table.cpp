#include "cli/text_table.h"

#include <algorithm>

#include "cli/shown_text.h"
#include "shared/text.h"

namespace welvane {

TextTable::TextTable(std::string_view columns, Ends ends, std::size_t widest)
    : columns_(columns), ends_(ends), widest_(widest), widths_(columns.size()) {}

void TextTable::add(std::vector<std::string> cells) {
    for (std::size_t cell = 0; cell < cells.size(); ++cell)
        widths_[cell] = std::min(widest_, std::max(widths_[cell], characterCount(cells[cell])));
    rows_.push_back(std::move(cells));
}

std::string TextTable::text(std::string_view indent) const {
    std::string text;
    for (const std::vector<std::string>& cells : rows_) {
        std::string line(indent);
        for (std::size_t cell = 0; cell < cells.size(); ++cell) {
            const bool last = cell + 1 == cells.size();
            if (cell != 0) line += "  ";
            line += columns_[cell] == 'r' ? paddedLeft(cells[cell], widths_[cell])
                    : last                ? cells[cell]
                                          : padded(cells[cell], widths_[cell]);
        }
        text.append(ends_ == Ends::Cut ? trimRight(line) : std::string_view(line)).append("\n");
    }
    return text;
}

}  // namespace welvane
