#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "las/header_line.h"
#include "las/las_text.h"

/// Which line of ~Curve names which column of the data, by FigureRules::trueFigures.
namespace welvane {

/// The lines of ~Curve and of ~A brought together: the n-th line names the n-th column.
struct ColumnNames {
    /// Element n belongs to column n of the data (both from 0, the index first), its letters as they stand. Those
    /// beyond the data's columns are channels that the data lack.
    std::vector<HeaderField> channels;
    std::size_t curveLines = 0;  ///< lines of ~Curve that name a channel
    std::size_t columns = 0;     ///< of the data

    std::size_t missing() const { return curveLines > columns ? curveLines - columns : 0; }
    std::size_t surplus() const { return columns > curveLines ? columns - curveLines : 0; }
};

/// Names `columns` columns. A line without a mnemonic, with nothing or a dot in front, names its column all the same:
/// CH and the number of the column, the index being 1; so are columns without a line. Lines that are no header lines
/// ("TRACK", "DT .US/M") name theirs too, but where the data have just as many columns as there are proper ones.
ColumnNames nameColumns(const LasText& text, std::size_t columns);

struct CurveLineCounts {
    std::size_t proper = 0;  ///< header lines, with a mnemonic or without
    std::size_t all = 0;     ///< the others too, but comments
};
CurveLineCounts countCurveLines(const LasText& text);

/// What such a channel is called; `column` counts from 0.
std::string columnName(std::size_t column);

}  // namespace welvane
