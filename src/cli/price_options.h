#pragma once

#include <string>

#include "session/session.h"
#include "shared/table.h"

namespace CLI {
class App;
}

/// The details of a price estimate, the same for a listing and for the calculator alone.
namespace welvane {

/// As typed; "" is one that was not given.
struct PriceChoices {
    std::string perFoot, other, discount, minimum;
    bool metric = false;

    bool any() const { return metric || !(perFoot + other + discount + minimum).empty(); }
};

void declarePriceOptions(CLI::App& command, PriceChoices& choices);
/// ord of a listing with the price's details as given; the settings give the others. UsageFault for a text that is no
/// number.
Table pricedOrd(App& app, const PriceChoices& choices);
/// A length or an amount as a number of single precision from 0 to `most`; UsageFault for another text.
double needAmount(std::string_view option, std::string_view text, double most);
inline constexpr double anyAmount = 3e38;

}  // namespace welvane
