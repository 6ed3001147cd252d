#include "convert/load_table.h"

#include <limits>

#include "shared/failure.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view skippedTitle = "Lines Skipped!";
constexpr std::string_view skippedText = "A total of";
constexpr std::string_view skippedEnd =
    " lines were skipped because the number of columns was different from the one specified as the starting line. Do "
    "not trust this file!";
/// Lines between two looks at cancelRequested.
constexpr std::size_t turnLines = 1024;
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

void tellSkipped(App& app, std::int64_t skipped) {
    if (skipped == 0) return;
    app.user.ask({.title = std::string(skippedTitle),
                  .text = std::string(skippedText).append(strNumber(static_cast<double>(skipped))).append(skippedEnd),
                  .icon = Icon::Warning});
}

/// A depth unit as LAS headers show it: the bare letters as capitals.
std::string depthUnit(const std::string& unit) {
    return unit.size() == 1 && (unit == "m" || unit == "f") ? upper(unit) : unit;
}

}  // namespace

/// Builds a table from its bytes, which the table already holds.
class TableLoader {
  public:
    TableLoader(App& app, const LoadOptions& options, GenericTable& table)
        : app_(app), options_(options), table_(table) {}

    static void hold(GenericTable& table, MappedFile file) { table.file_.emplace(std::move(file)); }
    static void hold(GenericTable& table, std::string text) {
        table.text_ = std::make_shared<const std::string>(std::move(text));
    }

    TableLoadResult load() {
        std::string_view bytes = table_.bytes();
        if (!isText(bytes)) return refuse("the file is not a text file");
        // The mark is blanked out by beginning behind it: places of rows count from the file's start all the same.
        const std::size_t skip = beginsWith(bytes, byteOrderMark) ? byteOrderMark.size() : 0;
        TableLayout layout = findTableLayout(bytes.substr(skip), options_.delimiter, options_.dataLine);
        layout.dataPosition += skip;
        if (layout.columns >= static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max()))
            return refuse("the table has " + std::to_string(layout.columns) + " columns, more than can be counted");
        result_.delimiter = table_.delimiter_ = layout.delimiter;
        setColumns(layout);
        if (layout.columns > 0) {
            result_.dataLine = TableLines(bytes).numberAt(layout.dataPosition);
            readRows(layout);
        }
        result_.done = !result_.cancelled && table_.readable();
        if (!result_.done && !result_.cancelled) result_.why = "the file could not be read to its end";
        return result_;
    }

  private:
    TableLoadResult refuse(std::string why) {
        result_.why = std::move(why);
        return result_;
    }

    void setColumns(const TableLayout& layout) {
        for (std::size_t field = 0; field < layout.columns; ++field) {
            table_.appendColumn(field);
            table_.columns_.back().name = layout.names[field];
            table_.columns_.back().unit = layout.units[field];
        }
        table_.nextSource_ = layout.columns;
        if (layout.columns == 0) return;
        GenericTable::Column& depth = table_.columns_.front();
        depth.name = "DEPT";
        result_.depthUnitTold = !depth.unit.empty();
        depth.unit = depth.unit.empty() ? app_.settings.units.depthUnit : depthUnit(depth.unit);
    }

    void readRows(const TableLayout& layout) {
        const std::string_view bytes = table_.bytes();
        TableLines lines(bytes, layout.dataPosition);
        std::size_t taken = 0;
        std::string_view line;
        for (std::size_t start = lines.position(); lines.next(line); start = lines.position()) {
            if (++taken % turnLines == 0 && !turn(start, bytes.size())) return;
            const std::size_t count = countFields(line, layout.delimiter);
            if (count == 0) continue;
            if (trimSpace(line).front() == '=' && isRuleLine(line)) {
                dropNames();
                continue;
            }
            skippedBefore_ = count != layout.columns;
            if (skippedBefore_)
                ++result_.skipped;
            else
                table_.rows_.push_back(start);
        }
    }

    /// At the rules of a further block: the line before them held its names.
    void dropNames() {
        if (skippedBefore_)
            --result_.skipped;
        else if (!table_.rows_.empty() && !isNumeric(RowReader(table_).cell(table_.dataRows() - 1, 1)))
            table_.rows_.pop_back();
        skippedBefore_ = false;
    }

    bool turn(std::size_t done, std::size_t all) {
        result_.cancelled = app_.run.cancelRequested;
        app_.run.progressFraction = static_cast<float>(static_cast<double>(done) / static_cast<double>(all));
        app_.user.progress({"Reading the table", static_cast<double>(app_.run.progressFraction)});
        if (!app_.run.commandMode) app_.user.pumpEvents();
        return !result_.cancelled;
    }

    App& app_;
    const LoadOptions& options_;
    GenericTable& table_;
    TableLoadResult result_;
    bool skippedBefore_ = false;  // the last line that was not blank was skipped
};

namespace {

template <class Source>
TableLoadResult loadFrom(App& app, Source source, const LoadOptions& options, GenericTable& grd) {
    TableLoadResult result;
    try {
        GenericTable table;
        TableLoader::hold(table, std::move(source));
        result = TableLoader(app, options, table).load();
        if (!result.done) return result;
        grd = std::move(table);
        tellSkipped(app, result.skipped);
    } catch (const std::exception& error) {
        result.done = false;
        result.why = error.what();
    }
    return result;
}

}  // namespace

TableLoadResult loadTable(App& app, std::string_view path, const LoadOptions& options, GenericTable& grd) {
    TableLoadResult result;
    auto file = MappedFile::open(path, &result.why);
    if (!file) return result;
    file->willReadAll();
    return loadFrom(app, std::move(*file), options, grd);
}

TableLoadResult loadTableText(App& app, std::string text, const LoadOptions& options, GenericTable& grd) {
    return loadFrom(app, std::move(text), options, grd);
}

}  // namespace welvane
