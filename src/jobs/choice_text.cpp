#include "jobs/choice_text.h"

#include "jobs/refusal.h"
#include "shared/text.h"

namespace welvane {

namespace {
[[noreturn]] void refuse(std::string_view option, std::string_view text, std::string_view wanted) {
    if (option.starts_with("--")) option.remove_prefix(2);
    throw senselessChoice(std::string(option), "'" + std::string(text) + "' is not " + std::string(wanted));
}
}  // namespace

DepthLimit needLimit(std::string_view option, std::string_view text) {
    const std::optional<DepthLimit> limit = DepthLimit::read(text);
    if (!limit) refuse(option, text, "a depth, or a limit such as \">=1000\"");
    return *limit;
}

GivenNumber needNumber(std::string_view option, std::string_view text) {
    const std::optional<GivenNumber> number = GivenNumber::read(text);
    if (!number) refuse(option, text, "a number");
    return *number;
}

std::optional<GivenNumber> optionalNumber(std::string_view option, std::string_view text) {
    if (text.empty()) return std::nullopt;
    return needNumber(option, text);
}

int needSlot(std::string_view option, std::string_view text) {
    const bool known = text.size() == 1 && text[0] >= '1' && text[0] <= '4';
    if (!known) refuse(option, text, "a slot: 1 is the first input, 4 the fourth");
    return text[0] - '1';
}

std::string_view needWord(std::string_view option, std::string_view text, std::span<const PropertyWord> words) {
    std::string list;
    for (const auto& [word, meaning] : words) {
        if (sameText(word, text)) return meaning;
        list.append(list.empty() ? "one of " : ", ").append(word);
    }
    refuse(option, text, list);
}

bool needYesOrNo(std::string_view option, std::string_view text) {
    return needWord(option, text, findProperty(PrdRow::Wrap)->words) == textOf(Wrap::Yes);
}

std::vector<std::string> needPieces(std::string_view option, std::string_view text, char separator, std::size_t least,
                                    std::size_t most, std::string_view form) {
    std::vector<std::string> pieces = split(text, separator);
    if (pieces.size() < least || pieces.size() > most) refuse(option, text, std::string("of the form ").append(form));
    return pieces;
}

}  // namespace welvane
