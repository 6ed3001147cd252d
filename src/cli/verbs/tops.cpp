#include <memory>

#include "cli/file_results.h"
#include "cli/shown_text.h"
#include "cli/text_table.h"
#include "cli/verbs.h"
#include "jobs/info.h"
#include "shared/text.h"

namespace welvane {

namespace {

Json asJson(const std::string& path, const std::vector<Top>& tops) {
    Json all = Json::array();
    for (const Top& top : tops) all.push(Json::object({{"depth", utf8Text(top.depth)}, {"name", utf8Text(top.name)}}));
    return fileEntry(path, {{"tops", std::move(all)}});
}

std::string asText(const std::vector<Top>& tops) {
    TextTable table("rl");
    table.add({"Depth", "Name"});
    for (const Top& top : tops) table.add({shownText(top.depth), shownText(top.name)});
    return table.text("");
}

ExitCode performTops(Console& console, const std::string& file) {
    const FileWork<std::vector<Top>> work = [](Workbench& bench, const std::string& path, std::size_t) {
        return listTops(bench, path);
    };
    FileFace<std::vector<Top>> face;
    face.json = asJson;
    face.text = [&](const std::string& path, const std::vector<Top>& tops) {
        if (tops.empty()) console.user().note(path + ": no [TOPS] block with lines in front of ~A");
        return tops.empty() ? std::string() : asText(tops);
    };
    return showEachFile(console, {file}, work, face);
}

}  // namespace

VerbSyntax declareTops() {
    const auto file = std::make_shared<std::string>();
    return {{{"FILE", file.get(), "", "A LAS file", {.required = true}}},
            [file](Console& console) { return performTops(console, *file); }};
}

}  // namespace welvane
