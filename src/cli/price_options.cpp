#include "cli/price_options.h"

#include "jobs/choice_text.h"

namespace welvane {

void addPriceOptions(VerbOptions& rows, PriceChoices& choices) {
    addOptions(rows, priceGroup,
               {{"--per-foot", &choices.perFoot, "P",
                 "Price of a foot of curve, with --metric of a metre; else the setting pricepercurvefoot"},
                {"--other", &choices.other, "N", "Other charges"},
                {"--discount", &choices.discount, "N", "Discount in percent"},
                {"--minimum", &choices.minimum, "N", "Least price, 0 for none; else the setting minPrice"},
                {"--metric", &choices.metric, "", "The price is for a metre; else as the setting country says"}});
}

PriceDetails priceDetails(const PriceChoices& choices) {
    PriceDetails details;
    details.perFoot = optionalNumber("--per-foot", choices.perFoot);
    details.other = optionalNumber("--other", choices.other);
    details.discount = optionalNumber("--discount", choices.discount);
    details.minimum = optionalNumber("--minimum", choices.minimum);
    details.metric = choices.metric;
    return details;
}

}  // namespace welvane
