#include "cli/option_text.h"

#include <algorithm>

#include "cli/verbs.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {
[[noreturn]] void refuse(std::string_view option, std::string_view text, std::string_view wanted) {
    throw UsageFault(std::string(option) + ": '" + std::string(text) + "' is not " + std::string(wanted));
}
}  // namespace

void needLimit(std::string_view option, std::string_view text) {
    const std::size_t number = text.find_first_not_of("<>=");
    const std::string_view sign = text.substr(0, number == npos ? text.size() : number);
    constexpr std::string_view signs[] = {"", "<", ">", "=", "<=", ">=", "=<", "=>"};
    const bool knownSign = std::find(std::begin(signs), std::end(signs), sign) != std::end(signs);
    if (!knownSign || number == npos || !isNumeric(text.substr(number)))
        refuse(option, text, "a depth, or a limit such as \">=1000\"");
}

double needNumber(std::string_view option, std::string_view text) {
    if (!isNumeric(text)) refuse(option, text, "a number");
    return val(text);
}

int needSlot(std::string_view option, std::string_view text, const Session& session) {
    const bool known = text.size() == 1 && text[0] >= '1' && text[0] <= '4';
    if (!known) refuse(option, text, "a slot: 1 is the first input, 4 the fourth");
    const int slot = text[0] - '1';
    if (!session.loaded(slot)) throw UsageFault(std::string(option) + ": there is no input " + std::string(text));
    return slot;
}

std::string_view needWord(std::string_view option, std::string_view text, const Words& words) {
    std::string list;
    for (const auto& [word, meaning] : words) {
        if (sameText(word, text)) return meaning;
        list.append(list.empty() ? "one of " : ", ").append(word);
    }
    refuse(option, text, list);
}

bool needYesOrNo(std::string_view option, std::string_view text) {
    return needWord(option, text, {{"yes", "Yes"}, {"no", "No"}}) == "Yes";
}

std::vector<std::string> needPieces(std::string_view option, std::string_view text, char separator, std::size_t least,
                                    std::size_t most, std::string_view form) {
    std::vector<std::string> pieces = split(text, separator);
    if (pieces.size() < least || pieces.size() > most) refuse(option, text, std::string("of the form ").append(form));
    return pieces;
}

}  // namespace welvane
