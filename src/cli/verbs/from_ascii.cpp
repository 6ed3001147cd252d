#include <limits>
#include <memory>

#include "cli/shown_text.h"
#include "cli/text_table.h"
#include "cli/verbs.h"
#include "jobs/choice_text.h"
#include "jobs/table_to_las.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// What is shown of a table.
constexpr std::int64_t rowsShown = 5;
constexpr int columnsShown = 12;
constexpr std::size_t widestCell = 16;

struct FromAsciiChoices {
    TableRequest request;
    std::string names, units, drop, delimiter, sort, null;
    int dataRow = 0;  ///< 0 finds it
    bool dryRun = false;
};

std::string_view delimiterName(Delimiter delimiter) {
    switch (delimiter) {
        case Delimiter::Tab:
            return "tabs";
        case Delimiter::Comma:
            return "commas";
        case Delimiter::Semicolon:
            return "semicolons";
        default:
            return "blanks";
    }
}

std::string shortened(const std::string& text) {
    const std::string shown = shownText(text);
    return characterCount(shown) <= widestCell ? shown
                                               : shownText(std::string_view(text).substr(0, widestCell - 3)) + "...";
}

/// The first rows as they were understood.
std::string preview(const GenericTable& grd, const TableLoadResult& loaded) {
    std::vector<int> columns;
    int used = 0;
    for (int column = 1; column < grd.columns(); ++column)
        if (grd.used(column) && ++used <= columnsShown) columns.push_back(column);
    TextTable table("l" + std::string(columns.size(), 'r'), TextTable::Ends::Kept);
    const auto add = [&](std::string label, const auto& cellOf) {
        std::vector<std::string> cells = {std::move(label)};
        for (const int column : columns) cells.push_back(shortened(cellOf(column)));
        table.add(std::move(cells));
    };
    add("Name",
        [&](int column) { return grd.name(column).empty() ? "CHAN" + std::to_string(column) : grd.name(column); });
    add("Unit", [&](int column) { return grd.unit(column); });
    for (std::int64_t row = 0; row < std::min(rowsShown, grd.dataRows()); ++row)
        add("line " + std::to_string(grd.lineNumber(row)),
            [&](int column) { return grd.cell(row + grdHeadRows, column); });
    std::string text = counted(used, "column") + " parted by " + std::string(delimiterName(loaded.delimiter)) + ", " +
                       counted(grd.dataRows(), "row") + " from line " + std::to_string(loaded.dataLine) + " on\n" +
                       table.text();
    if (used > columnsShown) text += "  and " + counted(used - columnsShown, "more column") + "\n";
    return text;
}

std::vector<std::string> listOf(const std::string& text) {
    return text.empty() ? std::vector<std::string>() : split(text, ',');
}

TableRequest requestOf(const FromAsciiChoices& choices) {
    TableRequest request = choices.request;
    if (request.output.empty() && !choices.dryRun) throw UsageFault("no output is named (-o OUT)");
    request.null = optionalNumber("--null", choices.null);
    constexpr PropertyWord delimiters[] = {{"tab", "\t"}, {"comma", ","}, {"semicolon", ";"}, {"blanks", " "}};
    if (!choices.delimiter.empty())
        request.delimiter = static_cast<Delimiter>(needWord("--delimiter", choices.delimiter, delimiters).front());
    constexpr PropertyWord orders[] = {{"shallow", ""}, {"deep", "deep"}};
    if (!choices.sort.empty())
        request.order = needWord("--sort", choices.sort, orders).empty() ? RowOrder::ShallowFirst : RowOrder::DeepFirst;
    request.names = listOf(choices.names);
    request.units = listOf(choices.units);
    request.drop = listOf(choices.drop);
    request.dataLine = static_cast<std::size_t>(choices.dataRow);
    return request;
}

ExitCode performFromAscii(Console& console, const FromAsciiChoices& choices) {
    const TableRequest request = requestOf(choices);
    OpenedTable table = openTable(console.bench(), request);
    const std::string shown = shownText(request.table) + ": " + preview(table.grd, table.loaded);
    if (choices.dryRun) {
        console.print(shown);
        return ExitCode::Done;
    }
    console.user().noteBlock(shown);
    const TableToLasReport report = writeTable(console.bench(), table, request);
    const LasResult& made = report.made;
    console.user().note(request.output + ": " + counted(made.rows, "sample") + " of " +
                        counted(made.columns - 1, "channel") + ", " + plainNumber(made.firstDepth) + " to " +
                        plainNumber(made.lastDepth) + " " + report.depthUnit);
    return ExitCode::Done;
}

}  // namespace

VerbSyntax declareFromAscii() {
    const auto choices = std::make_shared<FromAsciiChoices>();
    return {
        {{"TABLE",
          &choices->request.table,
          "",
          "A table of columns, the depth first",
          {.required = true, .anyBytes = true}},
         {"-o,--output", &choices->request.output, "OUT", "The LAS file to write"},
         {"--dry-run", &choices->dryRun, "", "Print the first rows as they are understood, write nothing"},
         {"--names", &choices->names, "A,B,C", "Mnemonics of the columns; an empty place keeps the table's"},
         {"--units", &choices->units, "A,B,C", "Units of the columns"},
         {"--data-row",
          &choices->dataRow,
          "N",
          "Number of the first line of data, from 1",
          {.least = 1, .most = std::numeric_limits<int>::max()}},
         {"--delimiter", &choices->delimiter, "NAME", "What parts the columns: tab, comma, semicolon or blanks"},
         {"--decimal-comma", &choices->request.decimalComma, "", "A comma between digits is a point"},
         {"--drop", &choices->drop, "A,B,C", "Columns to leave out, by name or number"},
         {"--sort", &choices->sort, "END", "Order the rows by depth: shallow or deep end first"},
         {"--header", &choices->request.header, "FILE", "Take ~Version, ~Well, ~Parameter and ~Other from this file"},
         {"--null", &choices->null, "N", "The null value (-999.25)"}},
        [choices](Console& console) { return performFromAscii(console, *choices); }};
}

}  // namespace welvane
