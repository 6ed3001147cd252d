#pragma once

#include <string_view>

#include "texttools/search_command.h"

/// The window of the command "search and replace".
namespace welvane {

/// What the search field holds when the code form is chosen.
inline constexpr std::string_view startingCodes = "13 10";
std::string_view searchLabel(SearchForm form);
std::string_view replaceLabel(SearchForm form);

/// goSearRep: checks the fields, asks for the target and runs searchReplaceFile. Every refusal shows its box and gives
/// a result that is neither done nor cancelled, with nothing written; a target that is not chosen gives a cancelled
/// one.
SearchReplaceResult goSearRep(App& app, const SearchRequest& request);

}  // namespace welvane
