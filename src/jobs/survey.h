#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "jobs/workbench.h"
#include "session/tvd.h"

/// Surveys: read, computed, saved, and depths mapped through them.
namespace welvane {

struct SurveyRequest {
    std::string survey{};              ///< the file
    std::optional<SurveyUnit> unit{};  ///< of a survey that names none; feet without it
    std::string output{};              ///< where the computed table is saved; "" nowhere
    std::vector<double> depths{};      ///< to be mapped, in the survey's unit
    bool inverse = false;              ///< they are true vertical depths, mapped to measured ones
};
struct SurveyTable : JobReport {
    /// MD, TVD, deviation (degrees), azimuth (degrees) as the table shows them, "" for an empty cell.
    using Row = std::array<std::string, 4>;
    std::vector<Row> rows;  ///< the stations, tie point first; or each depth that was to be mapped as MD and TVD
    bool mapped = false;    ///< which of the two
    SurveyUnit unit = SurveyUnit::Feet;
    std::size_t stations = 0;
};
/// Refusal for a file without a station, and for an output that cannot be written.
SurveyTable computeSurvey(Workbench& bench, const SurveyRequest& request);

/// A note where a survey, read into the session, names another unit for itself than the one that was given.
void tellOwnUnit(Workbench& bench, const Session& session, const std::string& path, std::optional<SurveyUnit> given);

/// Reads a survey into the session's table and computes it; notes tell what was passed over and put right. A file that
/// names no unit of its own counts as in `unit`. Refusal when no station is found.
SurveyReport readSurveyFile(Workbench& bench, Session& session, const std::string& path, SurveyUnit unit);

}  // namespace welvane
