#pragma once

#include <string>
#include <string_view>

#include "session/session.h"

/// Brings a process from nothing to where a browser or a run can work: reference files located and read, settings taken
/// from the store and corrected.
namespace welvane {

/// The default texts of the settings that hold several values.
inline constexpr std::string_view stockGridSize = "Arial|10|0|800";
inline constexpr std::string_view stockFormatText = "6|15|60|50|13|5";
inline constexpr std::string_view stockMatrixText = "1.000|2.650|2.710|2.870|55.500|47.600|43.500";

/// A "|"-joined setting read and corrected: missing, zero and out-of-range fields take their replacements.
/// RunTimeFailure for a number beyond its 16 or 32 bits.
GridFontSetting parseGridSize(std::string_view text);
FormatDefaults parseFormatDefaults(std::string_view text);
MatrixTable parseMatrixTable(std::string_view text);
/// The same values as the store holds them.
std::string gridSizeText(const GridFontSetting& font);
std::string formatDefaultsText(const FormatDefaults& format);
std::string matrixTableText(const MatrixTable& matrix);

/// Density, sonic and depth units of settings.country; any country but "Canada" (case ignored) is "Other".
void setCountryUnits(StartupSettings& settings);

/// The reference file in use: the variant "NAME_ZQ.ini" where it exists, else "NAME.ini", else "".
std::string locateReferenceFile(std::string_view programFolder, std::string_view name);

/// Number of a failure as the boxes show it.
int failureNumber(std::string_view text);

/// Settings and paths of `app`. A failure in between is told in a box and keeps what was read so far. FileFailure for
/// settings that are there and cannot be read: a run with others than the user's would give another file.
void startup(App& app);

/// startup(), then the reference tables: curves, units, parameters. A missing parameter file is told in a box. False
/// when the process cannot go on, which was told too; never in command mode. FileFailure as startup(), also for a
/// reference file.
bool loadProcess(App& app);

}  // namespace welvane
