#include <memory>

#include "cli/file_results.h"
#include "cli/shown_text.h"
#include "cli/verbs.h"
#include "jobs/choice_text.h"
#include "jobs/survey.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

struct TvdChoices {
    SurveyRequest request;
    std::vector<std::string> depths;
    std::string unit;
};

constexpr std::array<const char*, 4> keys = {"md", "tvd", "deviation", "azimuth"};
constexpr std::array<const char*, 4> heads = {"MD", "TVD", "Deviation", "Azimuth"};

Json rowsAsJson(const std::vector<SurveyTable::Row>& rows, std::size_t columns) {
    Json all = Json::array();
    for (const SurveyTable::Row& row : rows) {
        Json one = Json::object();
        for (std::size_t place = 0; place < columns; ++place)
            one.add(keys[place], row[place].empty() ? Json() : Json(val(row[place])));
        all.push(std::move(one));
    }
    return all;
}

std::string asTable(const std::vector<SurveyTable::Row>& rows, std::string_view unit, std::size_t columns) {
    std::string text;
    const auto line = [&](const auto& cells) {
        for (std::size_t place = 0; place < columns; ++place) text += paddedLeft(cells[place], place == 0 ? 11 : 12);
        text += "\n";
    };
    line(heads);
    const std::string depthUnit(unit);
    line(SurveyTable::Row{depthUnit, depthUnit, "deg", "deg"});
    for (const SurveyTable::Row& row : rows) line(row);
    return text;
}

SurveyRequest requestOf(const TvdChoices& choices) {
    SurveyRequest request = choices.request;
    if (request.inverse && choices.depths.empty()) throw UsageFault("--inverse goes with --map");
    for (const std::string& depth : choices.depths) request.depths.push_back(needNumber("--map", depth).value());
    constexpr PropertyWord words[] = {{"F", "F"}, {"FT", "F"}, {"M", "M"}};
    if (!choices.unit.empty())
        request.unit = needWord("--unit", choices.unit, words) == "M" ? SurveyUnit::Metres : SurveyUnit::Feet;
    return request;
}

SurveyTable computeAndTell(Console& console, const SurveyRequest& request) {
    SurveyTable table = computeSurvey(console.bench(), request);
    if (!request.output.empty()) console.user().note(request.output + ": " + counted(table.stations, "station"));
    return table;
}

ExitCode performTvd(Console& console, const TvdChoices& choices) {
    const SurveyRequest request = requestOf(choices);
    const FileWork<SurveyTable> work = [&](Workbench&, const std::string&, std::size_t) {
        return computeAndTell(console, request);
    };
    const auto unitOf = [](const SurveyTable& table) { return table.unit == SurveyUnit::Metres ? "M" : "F"; };
    const auto columns = [](const SurveyTable& table) -> std::size_t { return table.mapped ? 2 : 4; };
    FileFace<SurveyTable> face;
    face.json = [&](const std::string& path, const SurveyTable& table) {
        return fileEntry(path, {{"depthUnit", unitOf(table)}, {"rows", rowsAsJson(table.rows, columns(table))}});
    };
    face.text = [&](const std::string&, const SurveyTable& table) {
        const bool shown = table.mapped || request.output.empty();
        return shown ? asTable(table.rows, unitOf(table), columns(table)) : std::string();
    };
    return showEachFile(console, {request.survey}, work, face);
}

}  // namespace

VerbSyntax declareTvd() {
    const auto choices = std::make_shared<TvdChoices>();
    return {{{"SURVEY",
              &choices->request.survey,
              "",
              "Survey: a line of heads (MD, INC, AZI, TVD) and columns, or the acquisition system's own form",
              {.required = true}},
             {"-o,--output", &choices->request.output, "OUT", "Save the computed table"},
             {"--map",
              &choices->depths,
              "DEPTH...",
              "Map measured depths to true vertical depths",
              {.several = Several::Parted}},
             {"--inverse", &choices->request.inverse, "", "Map the other way: true vertical depths to measured ones"},
             {"--unit", &choices->unit, "F|M", "Unit of a survey that does not say it (F)"}},
            [choices](Console& console) { return performTvd(console, *choices); }};
}

}  // namespace welvane
