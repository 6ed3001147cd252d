#include "listing/price.h"

#include <cmath>

#include "shared/failure.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr int shownDecimals = 4;

bool isNumberRow(PriceRow row) {
    return row >= PriceRow::CurveFeet && row <= PriceRow::Minimum;
}

SessionCell& priceCell(Table& ord, PriceRow row) {
    return ord.cell(row, OrdColumn::Price);
}

float number(const Table& ord, PriceRow row) {
    return toSingle(val(priceValue(ord, row)));
}

float raisedToMinimum(float price, float minimum) {
    return price < minimum && minimum > 0 ? minimum : price;
}

}  // namespace

float netPrice(const PriceInput& input) {
    const float base = input.curveFeet * input.pricePerUnit;
    const float gross = base + input.other;
    const float net = gross - gross * input.discount / 100.0F;
    return raisedToMinimum(net, input.minimum);
}

float wellPrice(const PriceInput& input, double depthFactor, double curveTotal) {
    const float price = static_cast<float>(depthFactor) * input.pricePerFoot() * static_cast<float>(curveTotal);
    return raisedToMinimum(price, input.minimum);
}

float estimateTotal(const PriceInput& input, double sumOfPrices) {
    const float total = static_cast<float>(sumOfPrices) + input.other;
    return total - total * input.discount / 100.0F;
}

std::string dollars(float value, int decimals) {
    // A single stands for its shortest decimal text, so that 10.005 rounds as a person reading it expects.
    const std::string text = formatMask(val(plainNumber(value)), decimals);
    return text.front() == '-' ? "-$" + text.substr(1) : "$" + text;
}

std::string percent(float value) {
    return "%" + formatMask(val(plainNumber(value)), 2);
}

std::string_view priceValue(const Table& ord, PriceRow row) {
    return ord.cell(row, OrdColumn::Price).data;
}

void setPriceValue(Table& ord, PriceRow row, std::string_view value) {
    SessionCell& cell = priceCell(ord, row);
    cell.data = std::string(value);
    cell.text = isNumberRow(row) && !value.empty() ? formatMask(val(value), shownDecimals) : std::string(value);
}

void editPriceValue(App& app, Table& ord, PriceRow row, std::string_view value) {
    setPriceValue(ord, row, value);
    if (row == PriceRow::PricePerFoot) app.platform.settings().put("pricepercurvefoot", value);
    if (row == PriceRow::Minimum) app.platform.settings().put("minPrice", value);
    CalcPrice(ord);
}

bool pricePerMetre(const Table& ord) {
    return beginsWith(ord.text(PriceRow::PricePerFoot, OrdColumn::PriceLabel), perMetreLabel);
}

PriceInput readPriceInput(const Table& ord) {
    PriceInput input;
    input.curveFeet = number(ord, PriceRow::CurveFeet);
    input.pricePerUnit = number(ord, PriceRow::PricePerFoot);
    input.perMetre = pricePerMetre(ord);
    input.other = number(ord, PriceRow::Other);
    input.discount = number(ord, PriceRow::Discount);
    input.minimum = number(ord, PriceRow::Minimum);
    return input;
}

void CalcPrice(Table& ord) {
    std::string total;
    try {
        const float net = netPrice(readPriceInput(ord));
        if (std::isfinite(net)) total = dollars(net);
    } catch (const RunTimeFailure&) {
        total.clear();
    }
    setPriceValue(ord, PriceRow::Total, total);
}

}  // namespace welvane
