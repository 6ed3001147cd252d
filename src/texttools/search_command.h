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

/// The same without the dialog: the target is given. Used by whoever knows it.
SearchReplaceResult searchReplaceTo(App& app, const SearchRequest& request, const std::string& targetPath,
                                    OutputFile::Mode mode = OutputFile::Mode::Beside);

}  // namespace welvane
