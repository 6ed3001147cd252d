#include "cli/survey_file.h"

#include "cli/las_check.h"
#include "cli/run_report.h"
#include "shared/files.h"

namespace welvane {

namespace {

constexpr std::size_t shownLine = 40;

/// The one line on what was not taken; "" when all was.
std::string skippedText(const SurveyReport& report) {
    std::string text;
    if (report.passedOver != 0) {
        text = counted(static_cast<std::int64_t>(report.passedOver), "line") + " skipped as no station, first \"" +
               report.firstPassedOver.substr(0, shownLine) + "\"";
    }
    if (report.tooMany) {
        text += (text.empty() ? "" : "; ") + std::string("everything behind the first ") +
                std::to_string(InclinometryTable::capacity) + " stations skipped";
    }
    return text;
}

}  // namespace

SurveyReport readSurveyFile(Workbench& bench, Session& session, const std::string& path, SurveyUnit unit) {
    // Any line end ends a line of a survey, so one in LF needs no repaired copy.
    if (const std::string why = whyUnreadable(path); !why.empty()) throw Refusal(path, why);
    setSurveyUnit(session.tables.trd, unit);
    SurveyReport report;
    // The line below says what the box about too many lines says, with the number that counts.
    bench.user().mute(true);
    const bool found = readSurvey(resolvePath(path), session, bench.user(), &report);
    bench.user().mute(false);
    const auto note = [&](const std::string& text) { bench.user().note(path + ": " + text); };
    if (const std::string skipped = skippedText(report); !skipped.empty()) note(skipped);
    if (!found) throw Refusal(path, "no survey station was found in it");
    if (report.reordered) note("its stations were not in order of depth and have been put in order");
    if (report.repeated != 0)
        note(counted(static_cast<std::int64_t>(report.repeated), "station") + " at the depth of the one above");
    if (report.stations < 2) note("one station alone maps no depth");
    if (!report.computed) note("it names no deviation; its own TVD is taken");
    return report;
}

}  // namespace welvane
