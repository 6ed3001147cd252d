#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/option_text.h"
#include "cli/run_report.h"
#include "cli/shown_text.h"
#include "cli/survey_file.h"
#include "cli/verbs.h"
#include "session/tvd.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

using Json = nlohmann::ordered_json;

struct TvdChoices {
    std::string survey, output, unit;
    std::vector<std::string> depths;
    bool inverse = false;
};

constexpr std::array<TrdColumn, 4> shownColumns = {TrdColumn::Md, TrdColumn::Tvd, TrdColumn::Deviation,
                                                   TrdColumn::Azimuth};
constexpr std::array<const char*, 4> keys = {"md", "tvd", "deviation", "azimuth"};
constexpr std::array<const char*, 4> heads = {"MD", "TVD", "Deviation", "Azimuth"};

using Row = std::array<std::string, 4>;

/// The table as it stands, tie point first; an empty cell is "".
std::vector<Row> stationsOf(const Table& trd) {
    std::vector<Row> rows;
    for (int row = static_cast<int>(TrdRow::Tie); row < trd.rows(); ++row) {
        Row texts;
        for (std::size_t place = 0; place < texts.size(); ++place)
            texts[place] = std::string(trim(trd.text(row, static_cast<int>(shownColumns[place]))));
        if (!texts[0].empty()) rows.push_back(std::move(texts));
    }
    return rows;
}

/// Each depth with what it is mapped to, as MD and TVD.
std::vector<Row> mappedDepths(const InclinometryTable& table, const TvdChoices& choices, SurveyUnit unit) {
    const double factor = unit == SurveyUnit::Metres ? static_cast<double>(metresPerFoot) : 1;
    std::vector<Row> rows;
    for (const std::string& text : choices.depths) {
        const double depth = needNumber("--map", text);
        const double mapped = mapDepth(table, depth / factor, choices.inverse ? 1 : 0) * factor;
        const std::string given = plainNumber(depth), found = formatMask(mapped, 2);
        rows.push_back(choices.inverse ? Row{found, given, "", ""} : Row{given, found, "", ""});
    }
    return rows;
}

Json asJson(const std::vector<Row>& rows, std::string_view unit, std::size_t columns) {
    Json all = Json::array();
    for (const Row& row : rows) {
        Json one;
        for (std::size_t place = 0; place < columns; ++place)
            one[keys[place]] = row[place].empty() ? Json(nullptr) : Json(val(row[place]));
        one["unit"] = unit;
        all.push_back(std::move(one));
    }
    return all;
}

std::string asTable(const std::vector<Row>& rows, std::string_view unit, std::size_t columns) {
    std::string text;
    const auto line = [&](const auto& cells) {
        for (std::size_t place = 0; place < columns; ++place) text += paddedLeft(cells[place], place == 0 ? 11 : 12);
        text += "\n";
    };
    line(heads);
    const std::string depthUnit(unit);
    line(Row{depthUnit, depthUnit, "deg", "deg"});
    for (const Row& row : rows) line(row);
    return text;
}

SurveyUnit unitOf(const std::string& text) {
    if (text.empty()) return SurveyUnit::Feet;
    const Words words = {{"F", "F"}, {"FT", "F"}, {"M", "M"}};
    return needWord("--unit", text, words) == "M" ? SurveyUnit::Metres : SurveyUnit::Feet;
}

ExitCode performTvd(Workbench& bench, const TvdChoices& choices) {
    if (choices.inverse && choices.depths.empty()) throw UsageFault("--inverse goes with --map");
    const SurveyUnit wanted = unitOf(choices.unit);
    if (!choices.output.empty()) bench.checkOutput(choices.output, {{choices.survey, choices.survey}});
    Session session;
    const SurveyReport report = readSurveyFile(bench, session, choices.survey, wanted);
    const Table& trd = session.tables.trd;
    const SurveyUnit unit = surveyUnit(trd);
    const std::string_view unitText = unit == SurveyUnit::Metres ? "M" : "F";
    if (!choices.unit.empty() && unit != wanted)
        bench.user().note(choices.survey + ": it says itself that its depths are in " + std::string(unitText));
    const bool maps = !choices.depths.empty();
    const std::vector<Row> rows = maps ? mappedDepths(session.inclinometry, choices, unit) : stationsOf(trd);
    const std::size_t columns = maps ? 2 : 4;
    if (!choices.output.empty()) {
        if (!saveTVDFile(choices.output, session)) throw Refusal(choices.output, "not written");
        bench.user().note(choices.output + ": " + counted(static_cast<std::int64_t>(report.stations), "station"));
    }
    if (bench.options().json)
        bench.print(asJson(rows, unitText, columns).dump(2) + "\n");
    else if (maps || choices.output.empty())
        bench.print(asTable(rows, unitText, columns));
    return ExitCode::Done;
}

}  // namespace

VerbRun declareTvd(CLI::App& command) {
    const auto choices = std::make_shared<TvdChoices>();
    command
        .add_option("SURVEY", choices->survey,
                    "Survey: a line of heads (MD, INC, AZI, TVD) and columns, or the acquisition system's own form")
        ->required()
        ->type_name("");
    command.add_option("-o,--output", choices->output, "Save the computed table")->type_name("OUT");
    command.add_option("--map", choices->depths, "Map measured depths to true vertical depths")
        ->type_name("DEPTH...")
        ->expected(1, -1)
        ->delimiter(',');
    command.add_flag("--inverse", choices->inverse, "Map the other way: true vertical depths to measured ones");
    command.add_option("--unit", choices->unit, "Unit of a survey that does not say it (F)")->type_name("F|M");
    return [choices](Workbench& bench) { return performTvd(bench, *choices); };
}

}  // namespace welvane
