#include "las/rebuild_header.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "las/header_text.h"
#include "las/limits.h"
#include "las/sections.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr int wellColon = 57;
constexpr int curveDot = 5, curveColon = 40, curveValue = 15;
constexpr std::string_view titles[] = {"#MNEN.UNIT      VALUE                                    : DESCRIPTION",
                                       "#----.----      -----                                    : -----------"};

constexpr std::string_view neutronCurves[] = {"NPHI", "NPOR", "TNPH", "HNPO", "HTNP", "APLC", "APSC", "APDC",
                                              "FPLC", "FPSC", "FPMC", "HFDC", "HSFC", "HFLC", "HADC", "HASC",
                                              "HALC", "NPSS", "NPLS", "NPDS", "NPHS", "NPHL", "NPHD"};

bool isNeutron(std::string_view mnem) {
    return std::any_of(std::begin(neutronCurves), std::end(neutronCurves),
                       [mnem](std::string_view name) { return sameText(name, mnem); });
}

std::string normalUnit(std::string_view unit) {
    constexpr std::pair<std::string_view, std::string_view> units[] = {
        {"M3/M3", "V/V"}, {"FT3/FT3", "V/V"}, {"OHM.M", "OHMM"}, {"G/CM3", "G/CC"}};
    for (const auto& [written, normal] : units)
        if (sameText(unit, written)) return std::string(normal);
    return std::string(unit);
}

/// A ~Curve line of the source, also one with a colon in its mnemonic, which is no data line. False for a line that
/// tells no curve.
bool parseCurve(std::string_view line, HeaderField& curve) {
    const std::string_view text = trim(line);
    if (lineKind(text) == LineKind::Other) {
        const std::size_t colon = text.find(':');
        const std::size_t dot = text.find('.');
        if (dot == npos || colon > dot || std::count(text.begin(), text.end(), ':') < 2) return false;
        std::string readable(text);
        readable[colon] = '_';
        if (!parseHeaderLine(readable, curve)) return false;
        curve.mnem = getMnemField(text);
    } else if (!parseHeaderLine(text, curve)) {
        return false;
    }
    if (curve.desc.empty()) std::swap(curve.desc, curve.value);
    return true;
}

/// Depths of the source's ~Well: what stands behind the first blank of a value is the number (in front of it a unit can
/// stand).
double depthValue(const LasText& source, std::string_view mnem) {
    const std::string value(trim(getOpenValue(source, mnem, 'W')));
    const std::size_t blank = value.find(' ');
    return val(blank == std::string::npos ? value : value.substr(blank + 1));
}

std::string depthUnit(const LasText& source, RebuildKind kind) {
    LineReader header = source.headerLines();
    for (std::string_view line; header.next(line) && !holdsText(line, "~A");) {
        if (!holdsText(line, "STRT")) continue;
        if (kind == RebuildKind::Other) return getUnitField(line);
        const std::size_t dot = line.find('.');
        const std::size_t tab = dot == npos ? npos : line.find('\t', dot);
        const std::string unit = tab == npos ? std::string() : upper(trim(line.substr(dot + 1, tab - dot - 1)));
        return unit.empty() ? "M" : unit.substr(0, 1);
    }
    return "M";
}

/// The lines of the rebuilt header.
class RebuiltHeader : public HeaderText {
  public:
    explicit RebuiltHeader(const FormatDefaults& format) : format_(format) {}

    void columnTitles() {
        for (const std::string_view title : titles) line(title);
    }
    void field(const HeaderField& fields) {
        line(formatHeaderLine(fields, format_.dotColumn, wellColon, format_.valueColumn));
    }
    void curve(const HeaderField& fields) {
        const bool holdsColon = (fields.mnem + fields.unit + fields.value + fields.desc).find(':') != std::string::npos;
        if (holdsColon)
            line(fields.mnem + "." + fields.unit + std::string(16, ' ') + fields.value + ":" + fields.desc);
        else
            line(formatHeaderLine(fields, curveDot, curveColon, curveValue));
    }

  private:
    const FormatDefaults& format_;
};

/// A place in the source where a value of the new ~Well can stand.
struct ValuePlace {
    char section;
    std::string_view mnem;
};

std::string firstValue(const LasText& source, std::initializer_list<ValuePlace> places) {
    for (const ValuePlace& place : places)
        if (std::string value = getOpenValue(source, place.mnem, place.section); !trim(value).empty()) return value;
    return {};
}

void writeWell(RebuiltHeader& text, const LasText& source, std::string_view targetName, RebuildKind kind,
               const RebuildSettings& settings) {
    const double start = depthValue(source, "STRT");
    const double stop = depthValue(source, "STOP");
    const std::string unit = depthUnit(source, kind);
    const auto depth = [&settings](double value) { return formatMask(value, settings.format.dataDecimals); };
    text.field({"STRT", unit, depth(start), "START DEPTH"});
    text.field({"STOP", unit, depth(stop), "STOP DEPTH"});
    text.field({"STEP", unit, depth(rebuiltStep(source, start, stop)), "STEP LENGTH"});
    text.field({"NULL", "", plainNumber(lasNull), " NULL VALUE"});
    text.field({"COMP", "", firstValue(source, {{'W', "CN"}, {'W', "COMP"}, {'P', "COMPANY"}}), "COMPANY NAME"});
    text.field({"WELL", "", firstValue(source, {{'W', "WELL"}, {'P', "WN"}}), "WELL NAME"});
    text.field({"LOC", "", firstValue(source, {{'W', "LOC"}, {'P', "FL"}}), "LOCATIONS"});
    text.field({"FLD", "", firstValue(source, {{'W', "FN"}, {'P', "FN"}, {'P', "FLD"}, {'P', "FL"}}), "FIELD NAME"});
    const auto fromWell = [&](const char* mnem, const char* desc) {
        text.field({mnem, "", firstValue(source, {{'W', mnem}}), desc});
    };
    if (sameText(settings.country, "CANADA")) {
        fromWell("PROV", "PROVINCE");
        fromWell("UWI", "UNIQUE WELL IDENTIFIER");
        fromWell("LIC", "LICENSE NUMBER");
    } else {
        fromWell("STAT", "STATE");
        fromWell("CNTY", "COUNTY");
        fromWell("CTRY", "COUNTRY");
        fromWell("API", "API SERIAL NUMBER");
    }
    text.field({"LISF", "", std::string(targetName), "LAS FILENAME"});
    text.field({"DATE", "", firstValue(source, {{'P', "DATE"}}), "LOGGING DATE"});
    text.field({"SRVC", "", "Ostrandmeyer", "SERVICE COMPANY"});
}

void writeParameters(RebuiltHeader& text, const LasText& source, bool neutronSeen, UserInterface& user) {
    const SectionTable parameters = readSection(source, 'P', {.unitApart = true}).value_or(SectionTable());
    bool matrixSeen = false;
    for (const HeaderField& row : parameters) {
        matrixSeen = matrixSeen || sameText(row.mnem, "MATR");
        text.field(row);
    }
    if (!neutronSeen || matrixSeen) return;
    const std::string matrix =
        user.askText({"Neutron Matrix Parameter Missing!",
                      "A Neutron tool was found, but the parameter MATR was not found. Please supply the correct "
                      "matrix, SAND, LIME or DOLO, and I will add MATR.",
                      "SAND"});
    // An answer that nobody gave says nothing about the tool, so no line is made of it.
    if (!trim(matrix).empty()) text.field({"MATR", "", matrix, "Neutron Matrix Indicator"});
}

}  // namespace

double rebuiltStep(const LasText& source, double first, double last) {
    const double step = std::abs(depthValue(source, "STEP"));
    return last < first ? -step : step;
}

std::vector<HeaderField> rebuildCurves(const LasText& source, const RebuildSettings& settings) {
    std::vector<HeaderField> curves;
    const auto start = source.seekSection('C');
    if (!start) return curves;
    LineReader lines = source.headerLines(*start);
    for (std::string_view line; curves.size() < rowLimit && lines.next(line) && !beginsWith(trimLeft(line), "~");) {
        HeaderField curve;
        if (!parseCurve(line, curve)) continue;
        curve.mnem = upper(curve.mnem);
        curve.unit = normalUnit(curve.unit);
        if (curves.empty()) {
            curve.mnem = "DEPT";
            curve.desc = "DEPTH";
        } else if (settings.describeCurve) {
            const std::string known = settings.describeCurve(curve.mnem);
            if (!known.empty()) curve.desc = known.substr(0, known.find('|'));
        }
        curves.push_back(std::move(curve));
    }
    return curves;
}

std::string rebuildHeader(const LasText& source, std::string_view targetName, RebuildKind kind,
                          const RebuildSettings& settings, const std::vector<HeaderField>& curves,
                          UserInterface& user) {
    RebuiltHeader text(settings.format);
    text.line("~Version Information");
    text.line("VERS.                2.00:     CWLS LOG ASCII STANDARD - VERSION 2.0");
    text.line("WRAP.                  NO:     One Line Per Depth Step");
    text.line("~Well Information");
    text.columnTitles();
    writeWell(text, source, targetName, kind, settings);
    text.line("~Curve Information");
    text.columnTitles();
    for (const HeaderField& curve : curves) text.curve(curve);
    text.line("~Parameter Information");
    text.columnTitles();
    const bool neutronSeen =
        std::any_of(curves.begin(), curves.end(), [](const HeaderField& curve) { return isNeutron(curve.mnem); });
    writeParameters(text, source, neutronSeen, user);
    return text.take();
}

}  // namespace welvane
