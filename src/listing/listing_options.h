#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "listing/price.h"
#include "session/session.h"
#include "shared/table.h"

/// The options and the price grid of a listing session.
namespace welvane {

/// Rows of the listing's ord by their options (column Value). Rows 7 to 11 hold the header mnemonics to list.
enum class OptionRow {
    Head = 0,
    CurveList,
    FootageStats,
    Intervals,
    MinMaxStats,
    TopName,
    Comment,
    FirstMnemonic,
    LastMnemonic = 11
};
inline constexpr int listingOrdRows = 12;
inline constexpr int listingOrdColumns = 6;

/// Header mnemonics offered for rows 7 and on.
inline constexpr std::array<std::string_view, 16> offeredMnemonics = {"STRT", "STOP", "STEP",   "COMP", "WELL", "LOC",
                                                                      "DATE", "SRVC", "CANADA", "PROV", "UWI",  "LIC",
                                                                      "STAT", "CNTY", "CTRY",   "API"};

/// ord of a listing session: what a listing holds and what it costs. Column 0 labels of the options, 1 their value (an
/// on/off one is the cell's check), 4 labels of the pricing, 5 its values (see price.h). The check of row 7 switches
/// the list of mnemonics. Lives as long as the window. Prices come from the settings "pricepercurvefoot" and
/// "minPrice"; `country` "Canada" prices by the metre.
Table makeListingOrd(App& app);

bool optionOn(const Table& ord, OptionRow row);
void setOption(Table& ord, OptionRow row, bool on);
/// Text of the option rows TopName and Comment, and of each mnemonic row.
const std::string& optionText(const Table& ord, OptionRow row);
void setOptionText(Table& ord, OptionRow row, std::string_view text);
/// The mnemonics of rows 7 to 11, each cell a "|"-joined list; blanks around them and empty ones left out.
std::vector<std::string> listedMnemonics(const Table& ord);
/// Puts a whole list into row 7 and empties the rows behind it.
void setListedMnemonics(Table& ord, const std::vector<std::string>& mnemonics);
bool includePrice(const Table& ord);
void setIncludePrice(Table& ord, bool on);
/// "Total Curve-M" or "Total Curve-Ft" by region.
std::string_view totalCurveLabel(std::string_view country);

/// The options as one "|"-joined text, kept under the setting "listdef" by each run.
std::string optionsText(const Table& ord);

}  // namespace welvane
