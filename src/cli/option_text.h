#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "session/session.h"

/// Values of options as people type them. Each routine names the option in the UsageFault that it raises.
namespace welvane {

/// A number, or a limit: "<", ">" and "=" in front of one.
void needLimit(std::string_view option, std::string_view text);
/// One number and nothing else.
double needNumber(std::string_view option, std::string_view text);
/// Slot index from 0 of "1" to "4"; Refusal when no file stands there.
int needSlot(std::string_view option, std::string_view text, const Session& session);
/// The text that the list pairs with the word (case ignored).
using Words = std::vector<std::pair<std::string_view, std::string_view>>;
std::string_view needWord(std::string_view option, std::string_view text, const Words& words);
bool needYesOrNo(std::string_view option, std::string_view text);
/// Pieces between separators, from `least` to `most` of them; `form` is what the option should look like.
std::vector<std::string> needPieces(std::string_view option, std::string_view text, char separator, std::size_t least,
                                    std::size_t most, std::string_view form);

}  // namespace welvane
