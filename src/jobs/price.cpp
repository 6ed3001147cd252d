#include "jobs/price.h"

#include "listing/listing_options.h"
#include "shared/numbers.h"

namespace welvane {

namespace {

/// The largest amount is about that of a single.
constexpr double anyAmount = 3e38, wholePercent = 100;

void needAmount(const std::string& choice, const GivenNumber& amount, double most) {
    if (!(amount.value() >= 0 && amount.value() <= most))
        throw senselessChoice(choice, "'" + amount.text() + "' is not between 0 and " + plainNumber(most));
}

void setAmount(Table& ord, PriceRow row, const std::string& choice, const std::optional<GivenNumber>& amount,
               double most) {
    if (!amount) return;
    needAmount(choice, *amount, most);
    setPriceValue(ord, row, amount->text());
}

}  // namespace

Table pricedOrd(App& app, const PriceDetails& details) {
    if (details.metric) app.settings.country = "Canada";
    Table ord = makeListingOrd(app);
    setAmount(ord, PriceRow::PricePerFoot, "per-foot", details.perFoot, anyAmount);
    setAmount(ord, PriceRow::Other, "other", details.other, anyAmount);
    setAmount(ord, PriceRow::Discount, "discount", details.discount, wholePercent);
    setAmount(ord, PriceRow::Minimum, "minimum", details.minimum, anyAmount);
    return ord;
}

PriceReport estimatePrice(Workbench& bench, const GivenNumber& length, const PriceDetails& details) {
    PriceReport report;
    report.ord = pricedOrd(bench.app(), details);
    setAmount(report.ord, PriceRow::CurveFeet, "feet", length, anyAmount);
    CalcPrice(report.ord);
    report.total = priceValue(report.ord, PriceRow::Total);
    if (report.total.empty()) throw Refusal("", "the price is beyond what can be counted");
    return report;
}

}  // namespace welvane
