#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "shared/settings.h"

/// The preferences as a person knows them: 21 rows with names, over the settings and their keys.
namespace welvane {

/// Rows of the table of preferences; row 0 holds the heads.
enum class PreferenceRow {
    Head = 0,
    Country,
    FillValue,
    FillDescription,
    FixLines,
    QuickCheck,
    CheckerPath,
    ViewerPath,
    SandDensity,
    LimeDensity,
    DoloDensity,
    FluidDensity,
    SandSlowness,
    LimeSlowness,
    DoloSlowness,
    PorosityUnits,
    DotPosition,
    ValuePosition,
    ColonPosition,
    ColonPlusPosition,
    DataWidth,
    DataDecimals
};
inline constexpr std::size_t preferenceCount = 21;

/// One row.
struct Preference {
    PreferenceRow row;
    std::string_view name;  ///< a slowness has the sonic unit behind it, see preferenceName
    std::string_view list;  ///< items joined by "|"; "" for free text, "..." for a file
    std::string_view key;   ///< of the settings; "" for the row that is only shown
    std::size_t index = 0;  ///< of a density or slowness in MatrixTable
    bool slowness() const { return row >= PreferenceRow::SandSlowness && row <= PreferenceRow::DoloSlowness; }
};
const std::array<Preference, preferenceCount>& preferenceRows();
const Preference& preferenceOf(PreferenceRow row);

/// The name as it is shown: a slowness with the sonic unit of the region.
std::string preferenceName(const Preference& preference, const CountryUnits& units);
/// The value as it is shown: densities and slownesses with two decimals, slownesses in the region's unit.
std::string preferenceText(const Preference& preference, const StartupSettings& settings);
/// The whole value of the row's key, as the settings keep it; "" for the row without a key.
std::string preferenceKeyText(const Preference& preference, const StartupSettings& settings);
/// Takes a typed value over; a slowness is in the unit of `units`. A country is "Canada" or else "Other".
/// RunTimeFailure, with nothing changed, for what is not in the row's list or no number.
void setPreference(StartupSettings& settings, const Preference& preference, std::string_view text,
                   const CountryUnits& units);

/// A row by its name (case and blanks at the ends do not matter), and the units that the name speaks of. The name of a
/// slowness may have the unit of any region, or none, which is the one of `settings`.
struct NamedPreference {
    const Preference* preference = nullptr;
    CountryUnits units{};
};
std::optional<NamedPreference> findPreference(std::string_view name, const StartupSettings& settings);

}  // namespace welvane
