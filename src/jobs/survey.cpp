#include "jobs/survey.h"

#include "jobs/las_check.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::size_t shownLine = 40;

/// The one line on what was not taken; "" when all was.
std::string skippedText(const SurveyReport& report) {
    std::string text;
    if (report.passedOver != 0) {
        text = counted(report.passedOver, "line") + " skipped as no station, first \"" +
               report.firstPassedOver.substr(0, shownLine) + "\"";
    }
    if (report.tooMany) {
        text += (text.empty() ? "" : "; ") + std::string("everything behind the first ") +
                std::to_string(InclinometryTable::capacity) + " stations skipped";
    }
    return text;
}

constexpr std::array<TrdColumn, 4> shownColumns = {TrdColumn::Md, TrdColumn::Tvd, TrdColumn::Deviation,
                                                   TrdColumn::Azimuth};

std::vector<SurveyTable::Row> stationsOf(const Table& trd) {
    std::vector<SurveyTable::Row> rows;
    for (int row = at(TrdRow::Tie); row < trd.rows(); ++row) {
        SurveyTable::Row texts;
        for (std::size_t place = 0; place < texts.size(); ++place)
            texts[place] = std::string(trim(trd.text(row, shownColumns[place])));
        if (!texts[0].empty()) rows.push_back(std::move(texts));
    }
    return rows;
}

std::vector<SurveyTable::Row> mappedDepths(const InclinometryTable& table, const SurveyRequest& request,
                                           SurveyUnit unit) {
    const double factor = unit == SurveyUnit::Metres ? static_cast<double>(metresPerFoot) : 1;
    std::vector<SurveyTable::Row> rows;
    for (const double depth : request.depths) {
        const double mapped = mapDepth(table, depth / factor, request.inverse ? 1 : 0) * factor;
        const std::string given = plainNumber(depth), found = formatMask(mapped, 2);
        rows.push_back(request.inverse ? SurveyTable::Row{found, given, "", ""}
                                       : SurveyTable::Row{given, found, "", ""});
    }
    return rows;
}

}  // namespace

SurveyReport readSurveyFile(Workbench& bench, Session& session, const std::string& path, SurveyUnit unit) {
    // Any line end ends a line of a survey, so one in LF needs no repaired copy.
    if (const std::string why = whyUnreadable(path); !why.empty()) throw Refusal(path, why);
    setSurveyUnit(session.tables.trd, unit);
    SurveyReport report;
    bool found = false;
    {
        // The note below says what the box about too many lines says, with the number that counts.
        const HeldBoxes held(bench.user());
        found = readSurvey(resolvePath(path), session, bench.user(), &report);
    }
    const auto note = [&](const std::string& text, std::size_t count = 0) {
        bench.note({.kind = NoteKind::Survey, .file = path, .count = count, .text = text});
    };
    if (const std::string skipped = skippedText(report); !skipped.empty()) note(skipped, report.passedOver);
    if (!found) throw Refusal(path, "no survey station was found in it");
    if (report.reordered) note("its stations were not in order of depth and have been put in order");
    if (report.repeated != 0)
        note(counted(report.repeated, "station") + " at the depth of the one above", report.repeated);
    if (report.stations < 2) note("one station alone maps no depth");
    if (!report.computed) note("it names no deviation; its own TVD is taken");
    return report;
}

void tellOwnUnit(Workbench& bench, const Session& session, const std::string& path, std::optional<SurveyUnit> given) {
    const SurveyUnit unit = surveyUnit(session.tables.trd);
    if (given && unit != *given)
        bench.note(NoteKind::Unit, path,
                   std::string("it says itself that its depths are in ") + (unit == SurveyUnit::Metres ? "M" : "F"));
}

SurveyTable computeSurvey(Workbench& bench, const SurveyRequest& request) {
    if (!request.output.empty()) bench.checkOutput(request.output, {{request.survey, request.survey}});
    Session session;
    const SurveyReport report = readSurveyFile(bench, session, request.survey, request.unit.value_or(SurveyUnit::Feet));
    const Table& trd = session.tables.trd;
    SurveyTable table;
    table.unit = surveyUnit(trd);
    table.stations = report.stations;
    tellOwnUnit(bench, session, request.survey, request.unit);
    table.mapped = !request.depths.empty();
    table.rows = table.mapped ? mappedDepths(session.inclinometry, request, table.unit) : stationsOf(trd);
    if (!request.output.empty() && !saveTVDFile(request.output, session, bench.outputMode()))
        throw Refusal(request.output, "not written");
    table.notes = bench.takeNotes();
    return table;
}

}  // namespace welvane
