#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "texttools/search_replace.h"

/// The command "search and replace": the fields of its window, its checks and its boxes.
namespace welvane {

/// InOpt: how the two fields are read.
enum class SearchForm {
    Text,  ///< as they stand
    Codes  ///< decimal ASCII codes from 1 to 255, blanks between them
};

/// What the search field holds when the code form is chosen.
inline constexpr std::string_view startingCodes = "13 10";
std::string_view searchLabel(SearchForm form);
std::string_view replaceLabel(SearchForm form);

/// The fields of the command.
struct SearchRequest {
    SearchForm form = SearchForm::Text;
    std::string sourcePath{};
    std::string search{}, replacement{};  ///< as typed
};

/// The bytes of a field of codes. Nothing, after one box, when a character is no digit, blank, ".", "/" or ":" or when
/// a code is outside 1 to 255.
/// `why`, when given, then holds the box's text.
std::optional<std::string> bytesOfCodes(App& app, std::string_view field, std::string* why = nullptr);

/// goSearRep: checks the fields, asks for the target and runs searchReplaceFile. Every refusal shows its box and gives
/// a result that is neither done nor cancelled, with nothing written; a target that is not chosen gives a cancelled
/// one.
SearchReplaceResult goSearRep(App& app, const SearchRequest& request);

/// The same without the dialog: the target is given. Used by whoever knows it.
SearchReplaceResult searchReplaceTo(App& app, const SearchRequest& request, const std::string& targetPath);

}  // namespace welvane
