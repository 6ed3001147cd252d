#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

/// The table type of a session: cells with text, check, hidden data and a colour.
namespace welvane {

/// Number of a row or column that an enum names.
template <class Name>
requires std::is_enum_v<Name>
constexpr int at(Name name) {
    return static_cast<int>(name);
}

/// A row or a column of a table: its number, or the name that an enum beside the table has for it. A number that no int
/// holds is outside of every table.
class TableIndex {
  public:
    template <std::integral Number>
    constexpr TableIndex(Number number) : number_(std::in_range<int>(number) ? static_cast<int>(number) : -1) {}
    template <class Name>
    requires std::is_enum_v<Name>
    constexpr TableIndex(Name name) : number_(at(name)) {}
    constexpr operator int() const { return number_; }
    template <class Name>
    requires std::is_enum_v<Name>
    explicit constexpr operator Name() const { return static_cast<Name>(number_); }
    template <class Name>
    requires std::is_enum_v<Name>
    friend constexpr bool operator==(TableIndex index, Name name) { return index.number_ == at(name); }

  private:
    int number_;
};

enum class Check : std::uint8_t { None = 0, Checked = 1, Unchecked = 2 };

struct SessionCell {
    std::string text;
    std::string data;  ///< invisible; keeps a value that edits must not lose
    Check check = Check::None;
    std::uint32_t backColour = 0;  ///< a marking only; 0 is the table's normal colour
    bool operator==(const SessionCell&) const = default;
};

/// Rows and columns count from 0. Reading or writing outside raises RunTimeFailure("subscript out of range").
/// Held by columns, so that moving a column moves no text.
class Table {
  public:
    Table() = default;
    Table(int rows, int columns) { resize(rows, columns); }

    int rows() const { return rows_; }
    int columns() const { return static_cast<int>(columns_.size()); }
    /// Cells inside both the old and the new size keep their content; new ones are empty.
    void resize(int rows, int columns);
    void clear() { resize(0, 0); }

    SessionCell& cell(TableIndex row, TableIndex column);
    const SessionCell& cell(TableIndex row, TableIndex column) const;
    std::string& text(TableIndex row, TableIndex column) { return cell(row, column).text; }
    const std::string& text(TableIndex row, TableIndex column) const { return cell(row, column).text; }
    std::string& data(TableIndex row, TableIndex column) { return cell(row, column).data; }
    const std::string& data(TableIndex row, TableIndex column) const { return cell(row, column).data; }
    Check check(TableIndex row, TableIndex column) const { return cell(row, column).check; }
    void setCheck(TableIndex row, TableIndex column, Check check) { cell(row, column).check = check; }
    bool checked(TableIndex row, TableIndex column) const { return cell(row, column).check == Check::Checked; }
    std::uint32_t backColour(TableIndex row, TableIndex column) const { return cell(row, column).backColour; }
    void setBackColour(TableIndex row, TableIndex column, std::uint32_t colour) {
        cell(row, column).backColour = colour;
    }

    /// A row at the end with these texts from column 0; the table is widened when there are more. Returns its number.
    int addRow(const std::vector<std::string>& texts);
    void removeRow(TableIndex row);
    /// A column is taken out and put at place `to`; those in between shift by one.
    void moveColumn(int from, int to);

    bool rowHidden(TableIndex row) const;
    void setRowHidden(TableIndex row, bool hidden);
    bool visible() const { return visible_; }
    void setVisible(bool visible) { visible_ = visible; }
    const std::string& caption() const { return caption_; }
    void setCaption(std::string caption) { caption_ = std::move(caption); }
    bool operator==(const Table&) const = default;

  private:
    std::vector<std::vector<SessionCell>> columns_;
    std::vector<bool> hiddenRows_;
    int rows_ = 0;
    bool visible_ = true;
    std::string caption_;
};

}  // namespace welvane
