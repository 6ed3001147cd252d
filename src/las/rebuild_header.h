#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "las/header_line.h"
#include "las/las_text.h"
#include "las/rebuild_settings.h"
#include "shared/prompts.h"

/// The header half of the rebuild: rebuild.cpp joins it with the data.
namespace welvane {

/// The curves of the source as the new file has them; the first is the index.
std::vector<HeaderField> rebuildCurves(const LasText& source, const RebuildSettings& settings);

/// All header lines in front of the data title, each with its CR LF. Asks for the matrix when a neutron curve comes
/// without one.
std::string rebuildHeader(const LasText& source, std::string_view targetName, RebuildKind kind,
                          const RebuildSettings& settings, const std::vector<HeaderField>& curves, UserInterface& user);

/// STEP of the source with the sign of the direction from `first` to `last`.
double rebuiltStep(const LasText& source, double first, double last);

}  // namespace welvane
