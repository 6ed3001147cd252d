#include <memory>

#include "cli/json_document.h"
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
    return Json::object({{"path", utf8Text(path)}, {"tops", std::move(all)}});
}

std::string asText(const std::vector<Top>& tops) {
    TextTable table("rl");
    table.add({"Depth", "Name"});
    for (const Top& top : tops) table.add({shownText(top.depth), shownText(top.name)});
    return table.text("");
}

ExitCode performTops(Console& console, const std::string& file) {
    const std::vector<Top> tops = listTops(console.bench(), file);
    if (console.options().json) {
        Json files = Json::array();
        files.push(asJson(file, tops));
        console.print(jsonDocument(std::move(files), {}).dump(2) + "\n");
    } else if (tops.empty()) {
        console.user().note(file + ": no [TOPS] block with lines in front of ~A");
    } else {
        console.print(asText(tops));
    }
    return ExitCode::Done;
}

}  // namespace

VerbSyntax declareTops() {
    const auto file = std::make_shared<std::string>();
    return {{{"FILE", file.get(), "", "A LAS file", {.required = true}}},
            [file](Console& console) { return performTops(console, *file); }};
}

}  // namespace welvane
