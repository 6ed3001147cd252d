#pragma once

#include <string>

#include "cli/options.h"
#include "jobs/price.h"

/// The details of a price estimate, the same for a listing and for the calculator alone.
namespace welvane {

/// As typed; "" is one that was not given.
struct PriceChoices {
    std::string perFoot, other, discount, minimum;
    bool metric = false;
};

inline constexpr std::string_view priceGroup = "Price";
void addPriceOptions(VerbOptions& rows, PriceChoices& choices);
/// UsageFault for a text that is no number.
PriceDetails priceDetails(const PriceChoices& choices);

}  // namespace welvane
