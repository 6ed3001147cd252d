#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/price_options.h"
#include "cli/shown_text.h"
#include "cli/verbs.h"
#include "listing/listing_options.h"
#include "shared/numbers.h"

namespace welvane {

namespace {

using Json = nlohmann::ordered_json;

struct PriceVerbChoices {
    std::string feet;
    PriceChoices price;
};

std::string asText(const Table& ord) {
    std::string text;
    for (int row = static_cast<int>(PriceRow::CurveFeet); row <= static_cast<int>(PriceRow::Total); ++row) {
        const std::string& value = ord.text(row, static_cast<int>(OrdColumn::Price));
        text += padded(ord.text(row, static_cast<int>(OrdColumn::PriceLabel)), 20) +
                paddedLeft(value.empty() ? "-" : value, 16) + "\n";
    }
    return text;
}

Json asJson(const Table& ord, const std::string& total) {
    const auto number = [&ord](PriceRow row) { return val(priceValue(ord, row)); };
    return {{"feet", number(PriceRow::CurveFeet)},
            {"perFoot", number(PriceRow::PricePerFoot)},
            {"metric", pricePerMetre(ord)},
            {"other", number(PriceRow::Other)},
            {"discount", number(PriceRow::Discount)},
            {"minimum", number(PriceRow::Minimum)},
            {"total", val(std::string_view(total).substr(1))}};
}

ExitCode performPrice(Workbench& bench, const PriceVerbChoices& choices) {
    Table ord = pricedOrd(bench.app(), choices.price);
    needAmount("--feet", choices.feet, anyAmount);
    setPriceValue(ord, PriceRow::CurveFeet, choices.feet);
    CalcPrice(ord);
    const std::string total(priceValue(ord, PriceRow::Total));
    if (total.empty()) throw Refusal("", "the price is beyond what can be counted");
    bench.print(bench.options().json ? asJson(ord, total).dump(2) + "\n" : asText(ord));
    return ExitCode::Done;
}

}  // namespace

VerbRun declarePrice(CLI::App& command) {
    const auto choices = std::make_shared<PriceVerbChoices>();
    command.add_option("--feet", choices->feet, "Length of curve in feet, with --metric in metres")
        ->required()
        ->type_name("N");
    declarePriceOptions(command, choices->price);
    return [choices](Workbench& bench) { return performPrice(bench, *choices); };
}

}  // namespace welvane
