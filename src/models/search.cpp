#include "models/search.h"

#include "shared/files.h"

namespace welvane {

std::string_view searchLabel(SearchForm form) {
    return form == SearchForm::Text ? "Search for this Text..." : "Search for these ASCII codes...";
}

std::string_view replaceLabel(SearchForm form) {
    return form == SearchForm::Text ? "and replace with this text" : "and replace with ASCII these codes";
}

SearchReplaceResult goSearRep(App& app, const SearchRequest& request) {
    // Nothing to do is told before a target is asked for.
    if (request.search.empty() && request.replacement.empty()) return searchReplaceTo(app, request, {});
    const std::string target = app.user.askFile({.title = "Specify File to Save",
                                                 .extension = "las",
                                                 .folder = dirOf(request.sourcePath),
                                                 .defaultName = fileNameOf(request.sourcePath),
                                                 .save = true});
    if (target.empty()) {
        SearchReplaceResult result;
        result.cancelled = true;
        return result;
    }
    return searchReplaceTo(app, request, target);
}

}  // namespace welvane
