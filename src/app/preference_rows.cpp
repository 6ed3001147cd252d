#include "app/preference_rows.h"

#include "app/startup.h"
#include "shared/failure.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view yesNo = "Yes|No";

bool& flagOf(StartupSettings& settings, PreferenceRow row) {
    switch (row) {
        case PreferenceRow::FillValue:
            return settings.fillCurveValue;
        case PreferenceRow::FillDescription:
            return settings.fillCurveDescription;
        case PreferenceRow::FixLines:
            return settings.keepBadLines;
        default:
            throw RunTimeFailure("subscript out of range");
    }
}

std::int16_t& formatOf(FormatDefaults& format, PreferenceRow row) {
    switch (row) {
        case PreferenceRow::DotPosition:
            return format.dotColumn;
        case PreferenceRow::ValuePosition:
            return format.valueColumn;
        case PreferenceRow::ColonPosition:
            return format.colonColumn;
        case PreferenceRow::ColonPlusPosition:
            return format.wellExtraColon;
        case PreferenceRow::DataWidth:
            return format.dataWidth;
        case PreferenceRow::DataDecimals:
            return format.dataDecimals;
        default:
            throw RunTimeFailure("subscript out of range");
    }
}

bool isMatrix(const Preference& preference) {
    return preference.row >= PreferenceRow::SandDensity && preference.row <= PreferenceRow::DoloSlowness;
}

/// The item of the row's list that the text is; RunTimeFailure for another text.
std::string itemOf(const Preference& preference, std::string_view text) {
    const std::vector<std::string> items = split(preference.list, '|');
    for (const std::string& item : items)
        if (sameText(item, trim(text))) return item;
    throw RunTimeFailure("\"" + std::string(text) + "\" is not " + join(items, " or "));
}

void setCountry(StartupSettings& settings, std::string_view text) {
    settings.country = sameText(trim(text), "Canada") ? "Canada" : "Other";
    setCountryUnits(settings);
}

void setMatrix(StartupSettings& settings, const Preference& preference, std::string_view text,
               const CountryUnits& units) {
    const double value = strictDouble(text) / (preference.slowness() ? units.sonicFactor : 1);
    settings.matrix[preference.index] = toSingle(value);
}

std::string pathOf(std::string_view text) {
    if (text.find_first_of("\r\n") != npos) throw RunTimeFailure("a path is one line");
    return std::string(text);
}

}  // namespace

const std::array<Preference, preferenceCount>& preferenceRows() {
    using enum PreferenceRow;
    static constexpr std::array<Preference, preferenceCount> rows = {{
        {Country, "Country", "Canada|Other", "country"},
        {FillValue, "Fill empty VALUE field in ~Curve", yesNo, "fillCVal"},
        {FillDescription, "Fill empty DESC field in ~Curve", yesNo, "fillCDESC"},
        {FixLines, "Fix illegal lines by adding #", yesNo, "headComF"},
        {QuickCheck, "Do Quick Check as files are selected", yesNo, ""},
        {CheckerPath, "Path to Corvant.exe", "...", "cert_prog"},
        {ViewerPath, "Path to LAS viewer like Tracewick", "...", "log_prog"},
        {SandDensity, "Sand Density (G/C3)", "", "mdenDef", 1},
        {LimeDensity, "Lime Density  (G/C3)", "", "mdenDef", 2},
        {DoloDensity, "Dolo Density  (G/C3)", "", "mdenDef", 3},
        {FluidDensity, "Fluid Density  (G/C3)", "", "mdenDef", 0},
        {SandSlowness, "Sand Slowness ", "", "mdenDef", 10},
        {LimeSlowness, "Lime Slowness ", "", "mdenDef", 11},
        {DoloSlowness, "Dolo Slowness ", "", "mdenDef", 12},
        {PorosityUnits, "Default Porosity units", "V/V|PU", "poro_units"},
        {DotPosition, "Dot Position", "", "formatdef"},
        {ValuePosition, "Value Position", "", "formatdef"},
        {ColonPosition, "Colon Position", "", "formatdef"},
        {ColonPlusPosition, "Colon + Position", "", "formatdef"},
        {DataWidth, "Data Column Width", "", "formatdef"},
        {DataDecimals, "Data # Decimals", "", "formatdef"},
    }};
    return rows;
}

const Preference& preferenceOf(PreferenceRow row) {
    const auto index = static_cast<std::size_t>(row) - 1;
    if (index >= preferenceCount) throw RunTimeFailure("subscript out of range");
    return preferenceRows()[index];
}

std::string preferenceName(const Preference& preference, const CountryUnits& units) {
    return std::string(preference.name) + (preference.slowness() ? units.sonicUnit : std::string());
}

std::string preferenceText(const Preference& preference, const StartupSettings& settings) {
    switch (preference.row) {
        case PreferenceRow::Country:
            return settings.country;
        case PreferenceRow::QuickCheck:
            return "Yes";  // every selection is judged, whatever stands here
        case PreferenceRow::CheckerPath:
            return settings.certProgram;
        case PreferenceRow::ViewerPath:
            return settings.logProgram;
        case PreferenceRow::PorosityUnits:
            return settings.porosityUnits;
        default:
            break;
    }
    StartupSettings copy = settings;
    if (preference.list == yesNo) return flagOf(copy, preference.row) ? "Yes" : "No";
    if (!isMatrix(preference)) return std::to_string(formatOf(copy.format, preference.row));
    // By way of its shortest text: 2.65 as a single is a little more than 2.65 as a double.
    const double value = val(plainNumber(settings.matrix[preference.index]));
    return formatMask(value * (preference.slowness() ? settings.units.sonicFactor : 1), 2);
}

std::string preferenceKeyText(const Preference& preference, const StartupSettings& settings) {
    if (preference.key == "mdenDef") return matrixTableText(settings.matrix);
    if (preference.key == "formatdef") return formatDefaultsText(settings.format);
    if (preference.key.empty()) return {};
    const std::string text = preferenceText(preference, settings);
    return preference.list == yesNo ? (text == "Yes" ? "1" : "0") : text;
}

void setPreference(StartupSettings& settings, const Preference& preference, std::string_view text,
                   const CountryUnits& units) {
    switch (preference.row) {
        case PreferenceRow::Country:
            return setCountry(settings, text);
        case PreferenceRow::QuickCheck:
            itemOf(preference, text);
            return;
        case PreferenceRow::CheckerPath:
            settings.certProgram = pathOf(text);
            return;
        case PreferenceRow::ViewerPath:
            settings.logProgram = pathOf(text);
            return;
        case PreferenceRow::PorosityUnits:
            settings.porosityUnits = itemOf(preference, text);
            return;
        default:
            break;
    }
    if (preference.list == yesNo)
        flagOf(settings, preference.row) = itemOf(preference, text) == "Yes";
    else if (isMatrix(preference))
        setMatrix(settings, preference, text, units);
    else
        formatOf(settings.format, preference.row) = strictInt16(text);
}

std::optional<NamedPreference> findPreference(std::string_view name, const StartupSettings& settings) {
    StartupSettings regions[2];
    regions[0].country = "Canada";
    for (StartupSettings& region : regions) setCountryUnits(region);
    for (const Preference& preference : preferenceRows()) {
        if (sameText(trim(preference.name), trim(name))) return NamedPreference{&preference, settings.units};
        for (const StartupSettings& region : regions)
            if (sameText(preferenceName(preference, region.units), trim(name)))
                return NamedPreference{&preference, region.units};
    }
    return std::nullopt;
}

}  // namespace welvane
