#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace welvane {

/// A table as a person reads it: columns two blanks apart, each as wide as its widest cell.
class TextTable {
  public:
    enum class Ends { Cut, Kept };  ///< what becomes of blanks at the end of a line

    /// `columns` has a letter for each column: "l" aligns its cells to the left, "r" to the right. A cell longer than
    /// `widest` makes its column no wider, and a last column on the left is not filled up.
    explicit TextTable(std::string_view columns, Ends ends = Ends::Cut, std::size_t widest = std::string::npos);

    /// Cells have to be texts that a terminal may be given, one for each column.
    void add(std::vector<std::string> cells);
    std::string text(std::string_view indent = "  ") const;

  private:
    std::string columns_;
    Ends ends_;
    std::size_t widest_;
    std::vector<std::size_t> widths_;
    std::vector<std::vector<std::string>> rows_;
};

}  // namespace welvane
