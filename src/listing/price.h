#pragma once

#include <string>
#include <string_view>

#include "session/session.h"
#include "shared/table.h"

/// The price estimate: what the curves of a listing cost, by curve length, with extras, a discount and a floor. All in
/// single precision.
namespace welvane {

/// Columns of the listing's ord.
enum class OrdColumn { Label = 0, Value = 1, PriceLabel = 4, Price = 5 };
/// Rows of ord whose column Price holds an input or a result of the estimate.
enum class PriceRow { CurveFeet = 1, PricePerFoot, Other, Discount, Minimum, Total, Include, Comments };

/// The numbers of the estimate. Empty cells are 0.
struct PriceInput {
    float curveFeet = 0;     ///< curve length, in the unit of the price
    float pricePerUnit = 0;  ///< for a foot of curve, or for a metre
    bool perMetre = false;   ///< the price is for a metre
    float other = 0;
    float discount = 0;  ///< in percent
    float minimum = 0;   ///< 0 means no floor

    /// Price for a foot of curve: a metre's price is turned into a foot's.
    float pricePerFoot() const { return perMetre ? pricePerUnit * 0.3048F : pricePerUnit; }
};

/// base = length x price; gross = base + other; net = gross less the discount, taken up to the minimum. Infinite when
/// beyond a single.
float netPrice(const PriceInput& input);
/// The price of one file: its curve length x price per foot x depth factor, taken up to the minimum.
float wellPrice(const PriceInput& input, double depthFactor, double curveTotal);
/// The total of an estimate over several files: their prices and the other charges, less the discount.
float estimateTotal(const PriceInput& input, double sumOfPrices);

/// A single in the mask "$0.00" (or with more decimals), by its shortest decimal text; "-$1.00" when negative.
std::string dollars(float value, int decimals = 2);
/// In the mask "%0.00".
std::string percent(float value);

/// Cell of the price grid in ord: its data hold the value as typed, its text shows it.
std::string_view priceValue(const Table& ord, PriceRow row);
/// Sets a value; numbers are shown in the mask "0.0000", an empty one stays empty.
void setPriceValue(Table& ord, PriceRow row, std::string_view value);
/// A user's edit: as setPriceValue, and the price and the minimum are kept in the settings at once.
void editPriceValue(App& app, Table& ord, PriceRow row, std::string_view value);

/// What the label of the price begins with where it is for a metre.
inline constexpr std::string_view perMetreLabel = "$/Curve-M";
bool pricePerMetre(const Table& ord);
/// Rows 1 to 5 as numbers; RunTimeFailure for one beyond a single.
PriceInput readPriceInput(const Table& ord);
/// CalcPrice: recomputes row 6 from rows 1 to 5; empties it when they give no number.
void CalcPrice(Table& ord);

}  // namespace welvane
