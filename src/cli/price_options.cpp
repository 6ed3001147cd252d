#include "cli/price_options.h"

#include <CLI/CLI.hpp>

#include "cli/option_text.h"
#include "cli/workbench.h"
#include "listing/listing_options.h"
#include "shared/numbers.h"

namespace welvane {

double needAmount(std::string_view option, std::string_view text, double most) {
    const double amount = needNumber(option, text);
    if (!(amount >= 0 && amount <= most))
        throw UsageFault(std::string(option) + ": '" + std::string(text) + "' is not between 0 and " +
                         plainNumber(most));
    return amount;
}

void declarePriceOptions(CLI::App& command, PriceChoices& choices) {
    const char* const group = "Price";
    command
        .add_option("--per-foot", choices.perFoot,
                    "Price of a foot of curve, with --metric of a metre; else the setting pricepercurvefoot")
        ->type_name("P")
        ->group(group);
    command.add_option("--other", choices.other, "Other charges")->type_name("N")->group(group);
    command.add_option("--discount", choices.discount, "Discount in percent")->type_name("N")->group(group);
    command.add_option("--minimum", choices.minimum, "Least price, 0 for none; else the setting minPrice")
        ->type_name("N")
        ->group(group);
    command.add_flag("--metric", choices.metric, "The price is for a metre; else as the setting country says")
        ->group(group);
}

Table pricedOrd(App& app, const PriceChoices& choices) {
    constexpr double wholePercent = 100;
    if (choices.metric) app.settings.country = "Canada";
    Table ord = makeListingOrd(app);
    const auto set = [&ord](PriceRow row, std::string_view option, const std::string& text, double most) {
        if (text.empty()) return;
        needAmount(option, text, most);
        setPriceValue(ord, row, text);
    };
    set(PriceRow::PricePerFoot, "--per-foot", choices.perFoot, anyAmount);
    set(PriceRow::Other, "--other", choices.other, anyAmount);
    set(PriceRow::Discount, "--discount", choices.discount, wholePercent);
    set(PriceRow::Minimum, "--minimum", choices.minimum, anyAmount);
    return ord;
}

}  // namespace welvane
