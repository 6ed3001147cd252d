#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "convert/load_table.h"
#include "platform/output_file.h"
#include "shared/figure_rules.h"

/// A generic table becomes a LAS file: its first column the depth, the others the channels.
namespace welvane {

struct LasRequest {
    std::string targetPath{};
    std::string headerFile{};  ///< hTxt: a file to take the header from; "" or one that does not exist: headerText,
                               ///< otherwise the template
    std::string headerText{};  ///< the template as the user edited it
    std::string nullText{};    ///< the null value's text; "" is -999.25
    OutputFile::Mode mode = OutputFile::Mode::InPlace;
    /// By true figures: no depth is a null, a cell that is no number is null and counted, a decimal comma refuses the
    /// table, depths and step are told with all their digits, names are distinct and stand whole over their columns.
    FigureRules rules = FigureRules::asLaidDown;
};

/// Cells of one column that are no numbers.
struct TextCells {
    std::string channel;
    std::int64_t count = 0;
    std::int64_t firstRow = 0;  ///< data row, from 0
};

struct LasResult {
    bool done = false;
    bool cancelled = false;
    std::string why;  ///< of a refusal or failure
    double firstDepth = 0, lastDepth = 0;
    double step = 0;                                  ///< 0 when it is not constant
    std::string firstText{}, lastText{}, stepText{};  ///< the same as the header tells them
    bool stepVaries = false;
    std::int64_t rows = 0;
    int columns = 0;             ///< written, the depth included
    std::int64_t textCells = 0;  ///< cells that do not begin like a number, written as they stand
    /// By true figures: columns with cells that are no numbers; null is written for each.
    std::vector<TextCells> noNumbers;
    bool decimalComma = false;  ///< refused for one
};

/// Names of the table's columns, the depth's first: CHAN and its number where the table has none; by true figures no
/// two are equal.
std::vector<std::string> columnNames(const GenericTable& grd, FigureRules rules);

/// The ~Curve line and data title of the table's columns, as makeLas writes them.
struct CurveTexts {
    std::string curves;  ///< the section with its title, lines parted by CR LF
    std::string
        dataTitle;  ///< "~Ascii" over the first six characters of the mnemonics, each right-aligned in its column
};
CurveTexts curveTexts(const App& app, const GenericTable& grd, FigureRules rules = FigureRules::asLaidDown);

/// Writes the table as a LAS file. Columns whose "Use?" is off are dropped from the table for good. Refused, with a box
/// and nothing written: a table of fewer than two columns or without data, an empty depth, a depth that is no number. A
/// step that is not constant is told in a box and written as 0. The format settings give the widths; a cell as wide as
/// its column or wider keeps a blank in front of it and all its characters.
LasResult makeLas(App& app, GenericTable& grd, const LasRequest& request);

/// Loads a table and writes it: one item of a many-file run.
LasResult tableToLas(App& app, std::string_view sourcePath, const LoadOptions& options, const LasRequest& request,
                     TableLoadResult* loaded = nullptr);

}  // namespace welvane
