#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/shown_text.h"
#include "cli/verbs.h"
#include "las/tops.h"
#include "shared/text.h"

namespace welvane {

namespace {

using Json = nlohmann::ordered_json;

Json asJson(const std::string& path, const std::vector<Top>& tops) {
    Json json = {{"path", utf8Text(path)}, {"tops", Json::array()}};
    for (const Top& top : tops) json["tops"].push_back({{"depth", utf8Text(top.depth)}, {"name", utf8Text(top.name)}});
    return json;
}

std::string asText(const std::vector<Top>& tops) {
    std::size_t width = 5;
    for (const Top& top : tops) width = std::max(width, characterCount(shownText(top.depth)));
    std::string text = paddedLeft("Depth", width) + "  Name\n";
    for (const Top& top : tops)
        text += std::string(trimRight(paddedLeft(shownText(top.depth), width) + "  " + shownText(top.name))) + "\n";
    return text;
}

ExitCode performTops(Workbench& bench, const std::string& file) {
    const Input input = bench.openInput(file);
    const std::vector<Top> tops = readTops(input.path);
    if (bench.options().json) {
        bench.print(asJson(input.given, tops).dump(2) + "\n");
    } else if (tops.empty()) {
        bench.user().note(file + ": no [TOPS] block with lines in front of ~A");
    } else {
        bench.print(asText(tops));
    }
    return ExitCode::Done;
}

}  // namespace

VerbRun declareTops(CLI::App& command) {
    const auto file = std::make_shared<std::string>();
    command.add_option("FILE", *file, "A LAS file")->required()->type_name("");
    return [file](Workbench& bench) { return performTops(bench, *file); };
}

}  // namespace welvane
