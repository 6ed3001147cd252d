#pragma once

#include <optional>
#include <string>

#include "jobs/given_number.h"
#include "jobs/workbench.h"
#include "shared/table.h"

/// What a length of curve costs.
namespace welvane {

/// The details of an estimate. What is not given comes from the settings.
struct PriceDetails {
    std::optional<GivenNumber> perFoot{};   ///< price of a foot of curve, with `metric` of a metre
    std::optional<GivenNumber> other{};     ///< other charges
    std::optional<GivenNumber> discount{};  ///< in percent
    std::optional<GivenNumber> minimum{};   ///< least price, 0 for none
    bool metric = false;                    ///< the price is for a metre whatever the settings say

    bool any() const { return metric || perFoot || other || discount || minimum; }
};
/// ord of a listing with these details. Refusal for one that is negative or too large.
Table pricedOrd(App& app, const PriceDetails& details);

struct PriceReport : JobReport {
    Table ord;          ///< rows of the price grid as they are shown
    std::string total;  ///< with its currency sign
};
/// Estimates the price of a length of curve in feet, with PriceDetails::metric in metres.
PriceReport estimatePrice(Workbench& bench, const GivenNumber& length, const PriceDetails& details);

}  // namespace welvane
