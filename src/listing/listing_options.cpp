#include "listing/listing_options.h"

#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view perFootLabel = "$/Curve-Ft";

constexpr std::array<std::string_view, 8> optionLabels = {"Statistics",
                                                          "Include Curve.Unit Listings",
                                                          "Include Curve Footage Stats",
                                                          "Include Non-Null Interval listings",
                                                          "Include Min/Max/Ave Stats",
                                                          "Over Top Named...",
                                                          "General Comment",
                                                          "Mnemonics List"};
constexpr std::array<std::string_view, 9> priceLabels = {"Pricing Details", "No. of Curve Feet",  "",
                                                         "Other $",         "% Discount",         "Minimum",
                                                         "Total",           "Include In Listing", "Pricing Comments"};
constexpr std::array<std::string_view, 5> startingMnemonics = {"COMP", "WELL", "STRT", "STOP", "STEP"};

bool isCanada(std::string_view country) {
    return sameText(country, "Canada");
}

constexpr int firstMnemonicRow = at(OptionRow::FirstMnemonic);
constexpr int lastMnemonicRow = at(OptionRow::LastMnemonic);

}  // namespace

Table makeListingOrd(App& app) {
    Table ord(listingOrdRows, listingOrdColumns);
    for (std::size_t row = 0; row < optionLabels.size(); ++row) ord.text(row, OrdColumn::Label) = optionLabels[row];
    for (std::size_t row = 0; row < priceLabels.size(); ++row) ord.text(row, OrdColumn::PriceLabel) = priceLabels[row];
    ord.text(0, OrdColumn::Value) = ord.text(0, OrdColumn::Price) = "Settings";
    ord.text(PriceRow::PricePerFoot, OrdColumn::PriceLabel) =
        isCanada(app.settings.country) ? perMetreLabel : perFootLabel;
    for (const OptionRow row :
         {OptionRow::CurveList, OptionRow::FootageStats, OptionRow::MinMaxStats, OptionRow::FirstMnemonic})
        setOption(ord, row, true);
    setOption(ord, OptionRow::Intervals, false);
    setIncludePrice(ord, false);
    for (std::size_t index = 0; index < startingMnemonics.size(); ++index)
        ord.text(firstMnemonicRow + index, OrdColumn::Value) = startingMnemonics[index];
    setPriceValue(ord, PriceRow::PricePerFoot, app.platform.settings().get("pricepercurvefoot", "0.042"));
    setPriceValue(ord, PriceRow::Minimum, app.platform.settings().get("minPrice", "150.00"));
    CalcPrice(ord);
    return ord;
}

bool optionOn(const Table& ord, OptionRow row) {
    return ord.checked(row, OrdColumn::Value);
}

void setOption(Table& ord, OptionRow row, bool on) {
    ord.setCheck(row, OrdColumn::Value, on ? Check::Checked : Check::Unchecked);
}

const std::string& optionText(const Table& ord, OptionRow row) {
    return ord.text(row, OrdColumn::Value);
}

void setOptionText(Table& ord, OptionRow row, std::string_view text) {
    ord.text(row, OrdColumn::Value) = std::string(text);
}

std::vector<std::string> listedMnemonics(const Table& ord) {
    std::vector<std::string> mnemonics;
    for (int row = firstMnemonicRow; row <= lastMnemonicRow; ++row)
        for (const std::string& piece : split(ord.text(row, OrdColumn::Value), '|'))
            if (const auto mnemonic = trim(piece); !mnemonic.empty()) mnemonics.emplace_back(mnemonic);
    return mnemonics;
}

void setListedMnemonics(Table& ord, const std::vector<std::string>& mnemonics) {
    for (int row = firstMnemonicRow; row <= lastMnemonicRow; ++row) ord.text(row, OrdColumn::Value).clear();
    ord.text(firstMnemonicRow, OrdColumn::Value) = join(mnemonics, "|");
}

bool includePrice(const Table& ord) {
    return ord.checked(PriceRow::Include, OrdColumn::Price);
}

void setIncludePrice(Table& ord, bool on) {
    ord.setCheck(PriceRow::Include, OrdColumn::Price, on ? Check::Checked : Check::Unchecked);
}

std::string_view totalCurveLabel(std::string_view country) {
    return isCanada(country) ? "Total Curve-M" : "Total Curve-Ft";
}

std::string optionsText(const Table& ord) {
    std::vector<std::string> pieces;
    for (const OptionRow row : {OptionRow::CurveList, OptionRow::FootageStats, OptionRow::Intervals,
                                OptionRow::MinMaxStats, OptionRow::FirstMnemonic})
        pieces.emplace_back(optionOn(ord, row) ? "1" : "0");
    pieces.emplace_back(includePrice(ord) ? "1" : "0");
    pieces.push_back(optionText(ord, OptionRow::TopName));
    pieces.push_back(optionText(ord, OptionRow::Comment));
    for (const std::string& mnemonic : listedMnemonics(ord)) pieces.push_back(mnemonic);
    return join(pieces, "|");
}

}  // namespace welvane
