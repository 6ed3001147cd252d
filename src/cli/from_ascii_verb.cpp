#include <CLI/CLI.hpp>
#include <limits>
#include <memory>

#include "cli/las_check.h"
#include "cli/option_text.h"
#include "cli/run_report.h"
#include "cli/shown_text.h"
#include "cli/verbs.h"
#include "convert/load_table.h"
#include "convert/make_las.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// What is shown of a table.
constexpr std::int64_t rowsShown = 5;
constexpr int columnsShown = 12;
constexpr std::size_t widestCell = 16;

struct FromAsciiChoices {
    std::string table, output, names, units, drop, delimiter, sort, header, null;
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

LoadOptions loadOptions(const FromAsciiChoices& choices) {
    LoadOptions options;
    options.dataLine = static_cast<std::size_t>(choices.dataRow);
    if (!choices.delimiter.empty()) {
        const Words words = {{"tab", "\t"}, {"comma", ","}, {"semicolon", ";"}, {"blanks", " "}};
        options.delimiter = static_cast<Delimiter>(needWord("--delimiter", choices.delimiter, words).front());
    }
    return options;
}

/// A mnemonic or a unit as a header line can hold it.
void needHeaderWord(std::string_view option, const std::string& text, std::string_view forbidden) {
    for (const char c : text)
        if (static_cast<unsigned char>(c) <= ' ' || forbidden.find(c) != npos)
            throw UsageFault(std::string(option) + ": '" + text + "' holds what a header line has no place for");
}

void setHeads(GenericTable& grd, std::string_view option, const std::string& list, GrdRow row,
              std::string_view forbidden) {
    if (list.empty()) return;
    const std::vector<std::string> texts = split(list, ',');
    if (texts.size() > static_cast<std::size_t>(grd.columns() - 1))
        throw UsageFault(std::string(option) + ": " + std::to_string(texts.size()) + " for a table of " +
                         counted(grd.columns() - 1, "column"));
    for (std::size_t index = 0; index < texts.size(); ++index) {
        const std::string text(trim(texts[index]));
        needHeaderWord(option, text, forbidden);
        // An empty place keeps what the table says.
        if (!text.empty()) grd.setCell(static_cast<std::int64_t>(row), static_cast<int>(index) + 1, text);
    }
}

/// Columns of this name, or the one of this number from 1.
void dropColumns(GenericTable& grd, const std::string& wanted) {
    bool found = false;
    for (int column = 1; column < grd.columns(); ++column) {
        if (!sameText(trim(grd.name(column)), trim(wanted)) || trim(wanted).empty()) continue;
        grd.setUsed(column, false);
        found = true;
    }
    if (found) return;
    for (int column = 1; column < grd.columns(); ++column) {
        if (std::to_string(column) != trim(wanted)) continue;
        grd.setUsed(column, false);
        return;
    }
    throw UsageFault("--drop: there is no column '" + wanted + "'");
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
    for (int column = 1; column < grd.columns(); ++column) {
        if (!grd.used(column)) continue;
        if (++used <= columnsShown) columns.push_back(column);
    }
    std::vector<std::vector<std::string>> lines = {{"Name"}, {"Unit"}};
    const std::int64_t rows = std::min(rowsShown, grd.dataRows());
    for (std::int64_t row = 0; row < rows; ++row) lines.push_back({"line " + std::to_string(grd.lineNumber(row))});
    std::vector<std::size_t> widths;
    for (const int column : columns) {
        lines[0].push_back(shortened(grd.name(column).empty() ? "CHAN" + std::to_string(column) : grd.name(column)));
        lines[1].push_back(shortened(grd.unit(column)));
        for (std::int64_t row = 0; row < rows; ++row)
            lines[static_cast<std::size_t>(row) + 2].push_back(shortened(grd.cell(row + grdHeadRows, column)));
        std::size_t width = 0;
        for (const auto& line : lines) width = std::max(width, characterCount(line.back()));
        widths.push_back(width);
    }
    std::size_t first = 0;
    for (const auto& line : lines) first = std::max(first, line.front().size());
    std::string text = counted(used, "column") + " parted by " + std::string(delimiterName(loaded.delimiter)) + ", " +
                       counted(grd.dataRows(), "row") + " from line " + std::to_string(loaded.dataLine) + " on\n";
    for (const auto& line : lines) {
        text += "  " + padded(line.front(), first);
        for (std::size_t cell = 1; cell < line.size(); ++cell) text += "  " + paddedLeft(line[cell], widths[cell - 1]);
        text += "\n";
    }
    if (used > columnsShown) text += "  and " + counted(used - columnsShown, "more column") + "\n";
    return text;
}

GenericTable loadedTable(Workbench& bench, const FromAsciiChoices& choices, TableLoadResult& loaded) {
    GenericTable grd;
    bench.user().bar().setTotal(fileSize(choices.table).value_or(0));
    bench.user().setSubject(choices.table);
    loaded = loadTable(bench.app(), choices.table, loadOptions(choices), grd);
    bench.user().setSubject("");
    if (!loaded.done) throw Refusal(choices.table, loaded.cancelled ? "stopped" : loaded.why);
    if (grd.columns() == 0 || grd.dataRows() == 0)
        throw Refusal(choices.table, choices.dataRow == 0 ? "no rows of numbers in it (--data-row names the first)"
                                                          : "no data in line " + std::to_string(choices.dataRow));
    setHeads(grd, "--names", choices.names, GrdRow::Name, ".:#~");
    setHeads(grd, "--units", choices.units, GrdRow::Unit, ":");
    if (!choices.drop.empty())
        for (const std::string& column : split(choices.drop, ',')) dropColumns(grd, column);
    int used = 0;
    for (int column = 1; column < grd.columns(); ++column) used += grd.used(column) ? 1 : 0;
    if (used < 2)
        throw Refusal(choices.table, "a LAS file needs a depth and a channel; " + counted(used, "column") +
                                         " of the table " + (used == 1 ? "is" : "are") + " left" +
                                         (choices.delimiter.empty() ? " (--delimiter?)" : ""));
    if (!choices.sort.empty())
        grd.sortDepth(needWord("--sort", choices.sort, {{"shallow", ""}, {"deep", "deep"}}) == "deep");
    return grd;
}

/// Wrong texts are told before a table of some size is read.
void checkOptions(const FromAsciiChoices& choices) {
    if (choices.output.empty() && !choices.dryRun) throw UsageFault("no output is named (-o OUT)");
    if (!choices.null.empty()) needNumber("--null", choices.null);
    if (!choices.sort.empty()) needWord("--sort", choices.sort, {{"shallow", ""}, {"deep", ""}});
    if (!choices.header.empty())
        if (const std::string why = whyUnreadable(choices.header); !why.empty()) throw Refusal(choices.header, why);
}

ExitCode performFromAscii(Workbench& bench, const FromAsciiChoices& choices) {
    checkOptions(choices);
    if (const std::string why = whyUnreadable(choices.table); !why.empty()) throw Refusal(choices.table, why);
    if (!choices.output.empty()) {
        std::vector<Input> inputs = {{choices.table, choices.table}};
        if (!choices.header.empty()) inputs.push_back({choices.header, choices.header});
        bench.checkOutput(choices.output, inputs);
    }
    TableLoadResult loaded;
    GenericTable grd = loadedTable(bench, choices, loaded);
    const std::string shown = shownText(choices.table) + ": " + preview(grd, loaded);
    if (choices.dryRun) {
        bench.print(shown);
        return ExitCode::Done;
    }
    bench.user().noteBlock(shown);
    LasRequest request;
    request.targetPath = choices.output;
    request.headerFile = choices.header;
    request.nullText = choices.null;
    request.mode = OutputFile::Mode::Beside;
    const std::string unit = grd.unit(1);
    // What the boxes of the conversion tell stands in its result too.
    bench.user().mute(true);
    const LasResult made = makeLas(bench.app(), grd, request);
    bench.user().mute(false);
    bench.user().bar().clear();
    if (!made.done) throw Refusal(choices.table, made.cancelled ? "stopped" : made.why);
    if (made.stepVaries)
        bench.user().note(choices.output +
                          ": the depth interval is not constant; STEP is written as 0 (--sort orders the depths)");
    if (made.textCells != 0)
        bench.user().note(choices.output + ": " + counted(made.textCells, "cell") +
                          " no number, written as in the table");
    bench.user().note(choices.output + ": " + counted(made.rows, "sample") + " of " +
                      counted(made.columns - 1, "channel") + ", " + plainNumber(made.firstDepth) + " to " +
                      plainNumber(made.lastDepth) + " " + unit);
    return ExitCode::Done;
}

}  // namespace

VerbRun declareFromAscii(CLI::App& command) {
    const auto choices = std::make_shared<FromAsciiChoices>();
    command.add_option("TABLE", choices->table, "A table of columns, the depth first")->required()->type_name("");
    command.add_option("-o,--output", choices->output, "The LAS file to write")->type_name("OUT");
    command.add_flag("--dry-run", choices->dryRun, "Print the first rows as they are understood, write nothing");
    command.add_option("--names", choices->names, "Mnemonics of the columns; an empty place keeps the table's")
        ->type_name("A,B,C");
    command.add_option("--units", choices->units, "Units of the columns")->type_name("A,B,C");
    command.add_option("--data-row", choices->dataRow, "Number of the first line of data, from 1")
        ->check(CLI::Range(1, std::numeric_limits<int>::max()))
        ->type_name("N");
    command.add_option("--delimiter", choices->delimiter, "What parts the columns: tab, comma, semicolon or blanks")
        ->type_name("NAME");
    command.add_option("--drop", choices->drop, "Columns to leave out, by name or number")->type_name("A,B,C");
    command.add_option("--sort", choices->sort, "Order the rows by depth: shallow or deep end first")->type_name("END");
    command.add_option("--header", choices->header, "Take ~Version, ~Well, ~Parameter and ~Other from this file")
        ->type_name("FILE");
    command.add_option("--null", choices->null, "The null value (-999.25)")->type_name("N");
    return [choices](Workbench& bench) { return performFromAscii(bench, *choices); };
}

}  // namespace welvane
