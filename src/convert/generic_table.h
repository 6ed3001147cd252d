#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "convert/table_layout.h"
#include "platform/mapped_file.h"

namespace welvane {

/// Rows of grd.
enum class GrdRow { Channels = 0, Name, Unit, Use, FirstData };
inline constexpr std::int64_t grdHeadRows = 4;
/// Back colour of the cells of rows Name to Use, and the width that a column starts with.
inline constexpr std::uint32_t grdHeadColour = 0x80FFFF;
inline constexpr int grdColumnWidth = 200;

/// grd: a generic table on its way to a LAS file. Row 0 the column numbers, 1 mnemonics, 2 units, 3 whether the column
/// is used, then one data row per text line; column 0 labels, column 1 the depth. Lives as long as the session window.
///
/// A loaded table keeps the bytes of its file (mapped, so that they need no memory of their own) and one place per row;
/// a cell is cut out when it is asked for. Cells that were edited stand in a store beside.
class GenericTable {
  public:
    /// Columns with the labels, rows with the four heading rows; an empty table has 0 of both.
    int columns() const { return columns_.empty() ? 0 : static_cast<int>(columns_.size()) + 1; }
    std::int64_t rows() const { return columns_.empty() ? 0 : static_cast<std::int64_t>(rows_.size()) + grdHeadRows; }
    std::int64_t dataRows() const { return static_cast<std::int64_t>(rows_.size()); }

    /// Text of a cell, cleaned ("inf" and "NaN" are "-999.25"); row 3 holds "1" or "0". RunTimeFailure outside the
    /// table.
    std::string cell(std::int64_t row, int column) const;
    void setCell(std::int64_t row, int column, std::string_view text);
    const std::string& name(int column) const { return head(column).name; }
    const std::string& unit(int column) const { return head(column).unit; }
    bool used(int column) const { return head(column).use; }
    void setUsed(int column, bool use) { head(column).use = use; }

    /// Raises the size to what is wanted (labels and heading rows counted); never lowers it. New cells are empty, new
    /// columns used. A table that was empty gets "DEPT" and the given unit in column 1.
    void setUp(std::int64_t rows, int columns, std::string_view depthUnit);
    /// Takes a column out for good; those behind it move up.
    void dropColumn(int column);
    /// Takes a data row out (row as in cell()).
    void removeRow(std::int64_t row);
    /// Orders the data rows by the number in column 1; equal depths keep the order that they had in the file.
    void sortDepth(bool deepestFirst = false);

    /// 1-based line of the file that a data row (from 0) was read from; 0 for one that was added.
    std::size_t lineNumber(std::int64_t dataRow) const;
    /// False once a part of the loaded file could not be read.
    bool readable() const { return !file_ || !file_->damaged(); }

  private:
    friend class TableLoader;
    friend class RowReader;
    struct Column {
        std::string name{}, unit{};
        std::size_t source = 0;  ///< field of the text line
        bool use = true;
    };
    /// Place of a row's line in the bytes; with addedRow set, the number of a row that has no line.
    using RowPlace = std::uint64_t;
    static constexpr RowPlace addedRow = RowPlace{1} << 63;

    const Column& head(int column) const;
    Column& head(int column);
    RowPlace place(std::int64_t row) const;
    /// Nothing in a table that was moved away.
    std::string_view bytes() const {
        return file_ ? file_->bytes() : text_ ? std::string_view(*text_) : std::string_view();
    }
    const std::string* edited(RowPlace place, std::size_t source) const;
    void appendColumn(std::size_t source);

    std::optional<MappedFile> file_;
    std::shared_ptr<const std::string> text_ = std::make_shared<const std::string>();
    Delimiter delimiter_ = Delimiter::Blanks;
    std::vector<Column> columns_;
    std::deque<RowPlace> rows_;  // in blocks, so that growing copies nothing
    std::unordered_map<RowPlace, std::vector<std::pair<std::size_t, std::string>>> edits_;
    std::size_t nextSource_ = 0;
    RowPlace nextAdded_ = addedRow;
};

/// Reads the rows of a table one after another; allocates nothing per row.
class RowReader {
  public:
    explicit RowReader(const GenericTable& table);

    /// Cells of a data row (from 0), raw: "inf" and "NaN" as they stand. Element 0 is column 1. Valid until the next
    /// call.
    const std::vector<std::string_view>& read(std::int64_t dataRow);
    /// One raw cell of a data row, columns from 1.
    std::string_view cell(std::int64_t dataRow, int column) const;

  private:
    const GenericTable& table_;
    TableLines lines_;
    std::vector<std::string_view> fields_, cells_;
};

}  // namespace welvane
