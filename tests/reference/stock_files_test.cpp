#include <cmath>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <string>

#include "reference/reference_tables.h"
#include "shared/text.h"
#include "support/temp_folder.h"

/// The reference files as delivered: that they read whole, and that their figures are those of physics.
namespace welvane {
namespace {

std::string stockPath(const std::string& name) {
    return std::string(WELVANE_SOURCE_DIR) + "/data/" + name;
}

ReferenceTables stockTables() {
    ReferenceTables tables;
    EXPECT_TRUE(readUnits(tables, stockPath("units.ini")));
    EXPECT_TRUE(readCurves(tables, stockPath("curves.ini")));
    EXPECT_TRUE(readParameters(tables, stockPath("para.ini")));
    return tables;
}

/// Lines of a file that are neither blank nor a comment.
std::size_t contentLines(const std::string& path) {
    std::ifstream file(path);
    std::size_t count = 0;
    for (std::string line; std::getline(file, line);)
        if (!line.empty() && line.front() != '#') ++count;
    return count;
}

TEST(StockFiles, EveryLineBecomesARow) {
    const ReferenceTables tables = stockTables();
    EXPECT_EQ(contentLines(stockPath("units.ini")), tables.unitGroups.size() + tables.units.size());
    EXPECT_EQ(contentLines(stockPath("curves.ini")), tables.curveGroups.size() + tables.curves.size());
    EXPECT_EQ(contentLines(stockPath("para.ini")), tables.parameters.size());
    EXPECT_GT(tables.curves.size(), 500U);
}

TEST(StockUnits, WriteBackAsTheyAre) {
    const ReferenceTables tables = stockTables();
    const test::TempFolder folder;
    ASSERT_TRUE(writeUnits(tables, folder.path("u.ini")));
    std::string written = folder.read("u.ini");
    std::erase(written, '\r');
    EXPECT_EQ(written, test::TempFolder::readFile(stockPath("units.ini")));
}

TEST(StockUnits, AreSpelledOnceAndAgreeWithTheirGroup) {
    const ReferenceTables tables = stockTables();
    std::map<std::string, std::string> groupOf;
    for (const Unit& unit : tables.units) {
        EXPECT_TRUE(groupOf.emplace(upper(unit.externalUnit), unit.group).second)
            << unit.externalUnit << " stands twice";
        EXPECT_GT(unit.factor, 0) << unit.externalUnit;
    }
    for (const UnitGroup& group : tables.unitGroups) {
        double offset = 1;
        EXPECT_TRUE(knownUnit(tables, group.internalUnit)) << group.group;
        EXPECT_EQ(unitFactor(tables, group.internalUnit, &offset), 1) << group.group;
        EXPECT_EQ(offset, 0) << group.group;
    }
}

TEST(StockUnits, FactorsAreThoseOfPhysics) {
    const ReferenceTables tables = stockTables();
    const double foot = 0.3048, inch = 0.0254, pound = 0.45359237, gallon = 231 * inch * inch * inch, gravity = 9.80665;
    struct {
        const char* one;
        const char* other;
        double ratio;  ///< how many of `other` make `one`
    } const cases[] = {
        {"FT", "M", foot},
        {"M", "CM", 100},
        {"IN", "MM", 25.4},
        {"F", "IN", 12},
        {"INCHES", ".1IN", 10},
        {"US/F", "US/M", 1 / foot},
        {"US/M", "NS/M", 1000},
        {"G/C3", "K/M3", 1000},
        {"LB/GAL", "KG/M3", pound / gallon},
        {"LB/F3", "KG/M3", pound / (foot * foot * foot)},
        {"V/V", "%", 100},
        {"DECP", "PU", 100},
        {"OHMM", "OHM-FT", 1 / foot},
        {"S/M", "MMHO/M", 1000},
        {"MS/M", "US/CM", 10},
        {"MS/CM", "MS/M", 100},
        {"BAR", "KPA", 100},
        {"PSI", "PA", pound * gravity / (inch * inch)},
        {"ATM", "PA", 101325},
        {"PSI/F", "KPA/M", pound * gravity / (inch * inch) / 1000 / foot},
        {"LBF", "N", pound * gravity},
        {"KLBF", "LBS", 1000},
        {"KG", "LBM", 1 / pound},
        {"H", "S", 3600},
        {"S", "MS", 1000},
        {"DAY", "HR", 24},
        {"F/H", "M/H", foot},
        {"M/S", "M/MIN", 60},
        {"M/MIN", "F/MIN", 1 / foot},
        {"MIN/F", "MIN/M", 1 / foot},
        {"RPS", "RPM", 60},
        {"KHZ", "HZ", 1000},
        {"V", "MV", 1000},
        {"MA", "A", 0.001},
        {"DARCY", "MD", 1000},
        {"GAL/MIN", "L/MIN", gallon * 1000},
        {"BBL/D", "M3/D", 42 * gallon},
        {"BBL", "GAL", 42},
        {"M3", "F3", 1 / (foot * foot * foot)},
        {"RAD", "DEG", 57.29577951308232},
        {"DEG/30M", "DEG/100F", 100 * foot / 30},
        {"DB/M", "DB/F", foot},
        {"SHOTS/F", "SHOTS/M", 1 / foot},
        {"CPS", "CPM", 60},
        {"CU", "1/CM", 0.001},
        {"W/W", "PPM", 1e6},
        {"DEGF/F", "DEGC/M", 1 / 1.8 / foot},
        {"F.LBF", "N.M", pound * gravity * foot},
        {"S/QT", "S/L", 4 / (gallon * 1000)},
    };
    for (const auto& one : cases) {
        ASSERT_TRUE(knownUnit(tables, one.one) && knownUnit(tables, one.other)) << one.one << " " << one.other;
        const double ratio = unitFactor(tables, one.other) / unitFactor(tables, one.one);
        EXPECT_NEAR(ratio / one.ratio, 1, 1e-12) << one.one << " in " << one.other;
    }
    // A step of half a foot is 0.1524 m, to the last bit that a table prints.
    EXPECT_EQ(unitFactor(tables, "M") / unitFactor(tables, "F"), 0.3048);
    EXPECT_EQ(unitFactor(tables, "MMHO/M") * unitFactor(tables, "OHMM"), 1);
}

TEST(StockUnits, OffsetsGiveCelsius) {
    const ReferenceTables tables = stockTables();
    struct {
        const char* unit;
        double external, celsius;
    } const cases[] = {{"DEGF", 212, 100}, {"DEG_F", -40, -40}, {"K", 273.15, 0}, {"DEGR", 491.67, 0}, {"C", 37, 37}};
    for (const auto& one : cases) {
        double offset = 0;
        const double factor = unitFactor(tables, one.unit, &offset);
        EXPECT_NEAR(one.external / factor + offset, one.celsius, 1e-9) << one.unit;
    }
}

TEST(StockCurves, EachMnemonicStandsInOneGroupAndEachGroupHasItsCode) {
    const ReferenceTables tables = stockTables();
    std::map<std::string, std::string> groupOf, groupByCode, groups;
    for (const CurveGroup& group : tables.curveGroups) {
        EXPECT_TRUE(groups.emplace(upper(group.group), group.group).second) << group.group << " stands twice";
        EXPECT_TRUE(groupByCode.emplace(group.uniqueValue, group.group).second) << group.uniqueValue << " stands twice";
        EXPECT_TRUE(knownUnit(tables, group.canadianUnit)) << group.group << ": " << group.canadianUnit;
        EXPECT_TRUE(knownUnit(tables, group.otherUnit)) << group.group << ": " << group.otherUnit;
        std::string canadian, other;
        unitGroupMembers(tables, group.canadianUnit, &canadian);
        unitGroupMembers(tables, group.otherUnit, &other);
        EXPECT_EQ(canadian, other) << group.group << " has two units that cannot be changed into each other";
    }
    for (const Curve& curve : tables.curves) {
        EXPECT_TRUE(groupOf.emplace(upper(curve.mnem), curve.group).second) << curve.mnem << " stands twice";
        EXPECT_TRUE(groups.contains(upper(curve.group))) << curve.mnem;
        EXPECT_FALSE(curve.desc.empty()) << curve.mnem;
    }
}

TEST(StockCurves, JoinAliasesAndKeepDifferentMeasurementsApart) {
    const ReferenceTables tables = stockTables();
    const auto group = [&](const char* mnem) { return apiCodeForMnem(tables, mnem); };
    const std::pair<const char*, const char*> together[] = {{"GR", "GRC"},   {"RHOB", "RHOZ"}, {"DT", "DTCO"},
                                                            {"ILD", "RILD"}, {"CALI", "HCAL"}, {"PEF", "PE"},
                                                            {"NPHI", "CNC"}, {"AT90", "AHT90"}};
    for (const auto& [one, other] : together) EXPECT_EQ(group(one), group(other)) << one << " " << other;
    const std::pair<const char*, const char*> apart[] = {
        {"ILD", "ILM"},   {"ILD", "CILD"},          {"LLD", "LLS"},   {"CALI", "BS"},
        {"DT", "DTS"},    {"RHOB", "DRHO"},         {"DEPT", "TVD"},  {"GR", "CGR"},
        {"AT10", "AT90"}, {"AT90", "AF90"},         {"SFLU", "MSFL"}, {"MNOR", "MINV"},
        {"DPHI", "NPHI"}, {"NPHI_LIM", "NPHI_SAN"}, {"RM", "RMF"},    {"QF", "QN"}};
    for (const auto& [one, other] : apart) EXPECT_NE(group(one), group(other)) << one << " " << other;
    // The result lists of the channel functions are these groups.
    for (const char* name : {"CILD", "ILD", "DPHI", "RHOB", "SPHI", "DT", "NPHI"}) {
        ASSERT_FALSE(groupMembers(tables, name).empty()) << name;
        EXPECT_EQ(groupMembers(tables, name).front(), name);
        EXPECT_EQ(tables
                      .curveGroups[static_cast<std::size_t>(
                          std::find_if(tables.curveGroups.begin(), tables.curveGroups.end(),
                                       [&](const CurveGroup& one) { return one.group == name; }) -
                          tables.curveGroups.begin())]
                      .uniqueValue,
                  group(name));
    }
}

TEST(StockParameters, HaveKnownUnits) {
    const ReferenceTables tables = stockTables();
    for (const Parameter& parameter : tables.parameters) {
        EXPECT_TRUE(parameter.unit.empty() || knownUnit(tables, parameter.unit))
            << parameter.mnem << ": " << parameter.unit;
        EXPECT_EQ(parameter.desc, upper(parameter.desc));
        EXPECT_FALSE(parameter.searchText.empty()) << parameter.mnem;
    }
}

}  // namespace
}  // namespace welvane
