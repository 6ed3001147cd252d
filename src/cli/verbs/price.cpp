#include <memory>

#include "cli/json_document.h"
#include "cli/price_options.h"
#include "cli/shown_text.h"
#include "cli/verbs.h"
#include "jobs/choice_text.h"
#include "listing/listing_options.h"
#include "shared/numbers.h"

namespace welvane {

namespace {

struct PriceVerbChoices {
    std::string feet;
    PriceChoices price;
};

std::string asText(const Table& ord) {
    std::string text;
    for (int row = at(PriceRow::CurveFeet); row <= at(PriceRow::Total); ++row) {
        const std::string& value = ord.text(row, OrdColumn::Price);
        text += padded(ord.text(row, OrdColumn::PriceLabel), 20) + paddedLeft(value.empty() ? "-" : value, 16) + "\n";
    }
    return text;
}

Json asJson(const PriceReport& report) {
    const auto number = [&report](PriceRow row) { return val(priceValue(report.ord, row)); };
    return ownDocument({{"feet", number(PriceRow::CurveFeet)},
                        {"perFoot", number(PriceRow::PricePerFoot)},
                        {"metric", pricePerMetre(report.ord)},
                        {"other", number(PriceRow::Other)},
                        {"discount", number(PriceRow::Discount)},
                        {"minimum", number(PriceRow::Minimum)},
                        {"total", val(std::string_view(report.total).substr(1))}});
}

ExitCode performPrice(Console& console, const PriceVerbChoices& choices) {
    const PriceReport report =
        estimatePrice(console.bench(), needNumber("--feet", choices.feet), priceDetails(choices.price));
    console.print(console.options().json ? asJson(report).dump(2) + "\n" : asText(report.ord));
    return ExitCode::Done;
}

}  // namespace

VerbSyntax declarePrice() {
    const auto choices = std::make_shared<PriceVerbChoices>();
    VerbOptions options = {
        {"--feet", &choices->feet, "N", "Length of curve in feet, with --metric in metres", {.required = true}}};
    addPriceOptions(options, choices->price);
    return {options, [choices](Console& console) { return performPrice(console, *choices); }};
}

}  // namespace welvane
