#include "texttools/search_command.h"

#include "shared/field_splitter.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

struct Box {
    std::string_view title, text;
};
constexpr Box nothingToDo{
    "Nothing to Do!",
    "There is nothing specifed to search for and/or replace. Specify something then click replace again."};
constexpr Box sameFile{"Replace File is Same as Search File",
                       "Do not replace your original file! Specify a different name!"};
constexpr Box invalidCharacters{"INVALID CHARACTERS",
                                "Only the space and numbers (0-9) are legal characters when using ASCII codes"};
constexpr Box invalidCodes{"INVALID ASCII CODES", "All ASCII code numbers must be between 1-255"};

void tell(App& app, const Box& box) {
    app.user.ask({.title = std::string(box.title), .text = std::string(box.text), .icon = Icon::Warning});
}

SearchReplaceResult refuse(App& app, const Box& box) {
    tell(app, box);
    SearchReplaceResult result;
    result.why = std::string(box.text);
    return result;
}

bool emptyRequest(const SearchRequest& request) {
    return request.search.empty() && request.replacement.empty();
}

}  // namespace

std::optional<std::string> bytesOfCodes(App& app, std::string_view field, std::string* why) {
    const auto refuseFor = [&](const Box& box) {
        tell(app, box);
        if (why != nullptr) *why = std::string(box.text);
        return std::nullopt;
    };
    for (const char c : field) {
        // Kept: ".", "/" and ":" pass, though the box names only blanks and digits. Test: codesOfAField
        if (c == ' ' || (c >= '.' && c <= ':')) continue;
        return refuseFor(invalidCharacters);
    }
    std::string bytes;
    FieldSplitter codes;
    codes.setText(field);
    for (std::size_t number = 1; number <= codes.count(); ++number) {
        const double code = val(codes.field(number));
        if (code < 1 || code > 255) return refuseFor(invalidCodes);
        bytes += static_cast<char>(roundToEven(code));
    }
    return bytes;
}

SearchReplaceResult searchReplaceTo(App& app, const SearchRequest& request, const std::string& targetPath,
                                    OutputFile::Mode mode) {
    if (emptyRequest(request)) return refuse(app, nothingToDo);
    if (sameText(targetPath, request.sourcePath) || samePath(targetPath, request.sourcePath))
        return refuse(app, sameFile);
    if (request.form == SearchForm::Text)
        return searchReplaceFile(app, request.sourcePath, targetPath, request.search, request.replacement, mode);
    SearchReplaceResult refused;
    const auto search = bytesOfCodes(app, request.search, &refused.why);
    if (!search) return refused;
    const auto replacement = bytesOfCodes(app, request.replacement, &refused.why);
    if (!replacement) return refused;
    return searchReplaceFile(app, request.sourcePath, targetPath, *search, *replacement, mode);
}

}  // namespace welvane
