#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "jobs/pass_request.h"
#include "session/properties.h"

/// Values of choices as people type them, behind an option or as a keyword. A Refusal names the choice and calls it
/// senseless; "--" in front of its name is left out there.
namespace welvane {

/// A number, or a limit: "<", ">" and "=" in front of one.
DepthLimit needLimit(std::string_view option, std::string_view text);
/// One number and nothing else.
GivenNumber needNumber(std::string_view option, std::string_view text);
/// The same; nothing for a choice that was not made.
std::optional<GivenNumber> optionalNumber(std::string_view option, std::string_view text);
/// Slot index from 0 of "1" to "4".
int needSlot(std::string_view option, std::string_view text);
/// The text that the list pairs with the word (case ignored).
std::string_view needWord(std::string_view option, std::string_view text, std::span<const PropertyWord> words);
bool needYesOrNo(std::string_view option, std::string_view text);
/// Pieces between separators, from `least` to `most` of them; `form` is what the option should look like.
std::vector<std::string> needPieces(std::string_view option, std::string_view text, char separator, std::size_t least,
                                    std::size_t most, std::string_view form);

}  // namespace welvane
