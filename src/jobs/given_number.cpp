#include "jobs/given_number.h"

#include "shared/numbers.h"

namespace welvane {

GivenNumber::GivenNumber(double value) : value_(value), text_(plainNumber(value)) {}

std::optional<GivenNumber> GivenNumber::read(std::string_view text) {
    if (!isNumeric(text)) return std::nullopt;
    GivenNumber number(val(text));
    number.text_ = text;
    return number;
}

}  // namespace welvane
