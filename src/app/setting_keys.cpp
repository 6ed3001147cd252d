#include "app/setting_keys.h"

#include <algorithm>

#include "app/startup.h"
#include "shared/failure.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

std::string asItStands(std::string_view value) {
    if (value.find_first_of("\r\n") != npos) throw RunTimeFailure("a value is one line");
    return std::string(value);
}

/// "1" or "0", from a number or a word.
std::string flag(std::string_view value) {
    if (sameText(value, "yes") || sameText(value, "true")) return "1";
    if (sameText(value, "no") || sameText(value, "false")) return "0";
    return strictDouble(value) != 0 ? "1" : "0";
}

/// A check of a table: 1 on, 2 off.
std::string check(std::string_view value) {
    if (value == "2") return "2";
    return flag(value) == "1" ? "1" : "2";
}

std::string country(std::string_view value) {
    return sameText(value, "Canada") ? "Canada" : "Other";
}

std::string porosityUnits(std::string_view value) {
    if (value.empty() || sameText(value, "V/V")) return "V/V";
    if (sameText(value, "PU")) return "PU";
    throw RunTimeFailure("\"" + std::string(value) + "\" is not V/V or PU");
}

/// Fields that are there have to be numbers; whether they are in range is the matter of the correction.
void needNumbers(std::string_view value) {
    for (const std::string& field : split(value, '|')) {
        if (!trim(field).empty()) strictDouble(field);
    }
}

std::string format(std::string_view value) {
    needNumbers(value);
    return formatDefaultsText(parseFormatDefaults(value));
}

std::string matrix(std::string_view value) {
    needNumbers(value);
    return matrixTableText(parseMatrixTable(value));
}

std::string gridSize(std::string_view value) {
    return gridSizeText(parseGridSize(value));
}

std::string gridWidth(std::string_view value) {
    constexpr std::int32_t widthInstead = 600;
    if (sameText(value, "Fit")) return "-1";
    const std::int32_t width = roundToEven(strictDouble(value));
    return std::to_string(width > 0 || width == -1 ? width : widthInstead);
}

std::string number(std::string_view value) {
    const double amount = strictDouble(value);
    if (amount < 0) throw RunTimeFailure("\"" + std::string(value) + "\" is below 0");
    return std::string(trim(value));
}

}  // namespace

const std::vector<SettingKey>& settingKeys() {
    static const std::vector<SettingKey> keys = {
        {"country", "Other", "Canada or Other: units of depth, density and slowness", country},
        {"formatdef", stockFormatText, "dot|value|colon|further colon in ~Well|data width|decimals", format},
        {"mdenDef", stockMatrixText, "fluid|sand|lime|dolo density|sand|lime|dolo slowness", matrix},
        {"poro_units", "PU", "V/V or PU: default porosity units", porosityUnits},
        {"fillCVal", "0", "fill an empty VALUE in ~Curve", flag},
        {"fillCDESC", "0", "fill an empty DESC in ~Curve", flag},
        {"headComF", "0", "make a comment of an illegal header line", flag},
        {"renamedups", "1", "number channels of one name: 1 yes, 2 no", check},
        {"certafter", "1", "certify after processing", flag},
        {"editafter", "1", "open the result after processing", flag},
        {"cert_prog", "C:\\Program Files\\Ostrandmeyer\\Toolbox\\Corvant.exe", "path of the external checker",
         asItStands},
        {"log_prog", "", "path of the external log viewer", asItStands},
        {"inDir", "<program>", "source folder of the browser", asItStands},
        {"outDir", "<program>", "destination folder of the browser", asItStands},
        {"fileExt", "las", "files that the browser lists", asItStands},
        {"multButState", "1", "select several files in the browser", flag},
        {"gridSize", stockGridSize, "font|size|bold|column width of the tables", gridSize},
        {"gridFontWidth", "600", "column width of the tables; -1 or Fit fits the contents", gridWidth},
        {"minPrice", "150.00", "lowest price of an estimate", number},
        {"pricepercurvefoot", "0.042", "price per foot of curve", number},
        {"lasfile", "", "LAS file last selected", asItStands},
        {"recent", "", "files last opened, joined by |", asItStands},
        {"mwLFile", "", "listing file last written", asItStands},
        {"filFile", "", "filter last used", asItStands},
        {"tvdfile", "", "survey last used", asItStands},
        {"funLstIndex", "0", "function last chosen", number},
        {"CRPORO", "", "values of the neutron calibration last used", asItStands},
    };
    return keys;
}

const SettingKey* findSettingKey(std::string_view name) {
    const auto found = std::find_if(settingKeys().begin(), settingKeys().end(),
                                    [&](const SettingKey& key) { return sameText(key.name, name); });
    return found == settingKeys().end() ? nullptr : &*found;
}

}  // namespace welvane
