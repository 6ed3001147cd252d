#include "jobs/pass_request.h"

#include <algorithm>
#include <iterator>

namespace welvane {

std::optional<DepthLimit> DepthLimit::read(std::string_view text) {
    const std::size_t number = std::min(text.find_first_not_of("<>="), text.size());
    constexpr std::string_view signs[] = {"", "<", ">", "=", "<=", ">=", "=<", "=>"};
    const bool knownSign = std::find(std::begin(signs), std::end(signs), text.substr(0, number)) != std::end(signs);
    if (!knownSign || !GivenNumber::read(text.substr(number))) return std::nullopt;
    return DepthLimit(text);
}

}  // namespace welvane
