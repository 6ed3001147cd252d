#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Records as other programs read them.
namespace welvane {

enum class RecordForm {
    Csv,       ///< RFC 4180: a title row, then a row for each record, no null but an empty cell
    JsonLines  ///< an object for each record, one a line, null for null
};

/// Adds the shortest text that reads back as the same double, without an exponent where it is about as short. Null for
/// a value that is no number is the caller's.
void appendNumber(std::string& text, double value);

/// Makes the text of records, one after the other.
class RecordText {
  public:
    /// `names` and `units` (UTF-8, of equal number) by column; names have to be distinct.
    RecordText(RecordForm form, const std::vector<std::string>& names, const std::vector<std::string>& units);

    /// The rows in front of the first record; `withUnits` for a second one with the units.
    std::string head(bool withUnits) const;
    /// Adds a record: as many values as there are names, NaN for null.
    void add(std::string& text, std::span<const double> values) const;

  private:
    RecordForm form_;
    const std::vector<std::string>& names_;
    const std::vector<std::string>& units_;
    std::vector<std::string> leads_;  ///< what stands in front of each value, by column
};

}  // namespace welvane
