#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "jobs/picture_file.h"
#include "jobs/workbench.h"
#include "picture/coverage.h"

namespace welvane {

struct CoverageRequest {
    std::vector<std::string> files{};  ///< one to four
    PictureRequest picture{};
    bool loose = false;  ///< accept data of no regular shape
};
struct CoverageReport : JobReport {
    Coverage coverage;
    CoverageFiles files;                                 ///< depths in the unit of the first one that could be read
    std::string depthUnit;                               ///< that unit
    std::array<std::optional<Fault>, slotCount> faults;  ///< why there is none
    std::string svg;                                     ///< the picture; "" while a file has a fault
};
/// How the depths of one to four files lie against each other. The picture is written only where all could be read:
/// otherwise Refusal. Where a header's STRT and STOP are not where its data begin and end, the data count, and a note
/// tells.
CoverageReport showCoverage(Workbench& bench, const CoverageRequest& request);

}  // namespace welvane
