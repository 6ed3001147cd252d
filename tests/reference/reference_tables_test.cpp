#include "reference/reference_tables.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "shared/failure.h"
#include "support/temp_folder.h"

namespace welvane {
namespace {

using Texts = std::vector<std::string>;

/// Each reader's result as one text per row, so that a failure prints what was read.
Texts unitRows(const ReferenceTables& tables) {
    Texts rows;
    for (const Unit& unit : tables.units)
        rows.push_back(unit.group + ";" + unit.externalUnit + ";" + std::to_string(unit.factor) + ";" +
                       std::to_string(unit.offset));
    return rows;
}
Texts curveRows(const ReferenceTables& tables) {
    Texts rows;
    for (const Curve& curve : tables.curves) rows.push_back(curve.group + ";" + curve.mnem + ";" + curve.desc);
    return rows;
}
Texts parameterRows(const ReferenceTables& tables) {
    Texts rows;
    for (const Parameter& row : tables.parameters)
        rows.push_back(row.mnem + ";" + row.unit + ";" + row.value + ";" + row.desc + ";" + row.searchText);
    return rows;
}

struct ReadCase {
    const char* name;
    const char* text;
    Texts rows;
};

TEST(ReadUnits, TakesGroupsAndTheirLines) {
    const ReadCase cases[] = {
        {"a group",
         "[Density|G/C3]\nKG/M3|1000|0\n G/C3 | 1 | 0 \n",
         {"Density;KG/M3;1000.000000;0.000000", "Density;G/C3;1.000000;0.000000"}},
        {"a blank behind the bracket", "[Depth|F] \nF|1|0\n", {"Depth;F;1.000000;0.000000"}},
        {"lines before any group", "F|1|0\n[Depth|F]\nM|0.3048|0", {"Depth;M;0.304800;0.000000"}},
        {"no closing bracket outside a group", "[Depth\nF|1|0\n", {}},
        {"no closing bracket ends a group", "[Depth|F]\nF|1|0\n[Time\nS|1|0\n", {"Depth;F;1.000000;0.000000"}},
        {"comments, blank lines, no separator", "[T|C]\n\n#X|1|1\nplain\nF|1.8|32\n", {"T;F;1.800000;32.000000"}},
        {"missing and unreadable numbers are 0",
         "[T|C]\nA|2\nB|\nC|x|y\n",
         {"T;A;2.000000;0.000000", "T;B;0.000000;0.000000", "T;C;0.000000;0.000000"}},
        {"empty file", "", {}},
    };
    for (const ReadCase& one : cases) {
        const test::TempFolder folder;
        for (const bool windowsEnds : {true, false}) {
            const std::string path =
                windowsEnds ? folder.writeLines("u.ini", one.text) : folder.write("u.ini", one.text);
            ReferenceTables tables;
            tables.units.resize(3);  // a read starts afresh
            EXPECT_TRUE(readUnits(tables, path)) << one.name;
            EXPECT_EQ(unitRows(tables), one.rows) << one.name;
        }
    }
}

TEST(ReadCurves, TakesMnemonicInFrontOfTheDotAndTextBehindTheFirstColon) {
    const test::TempFolder folder;
    ReferenceTables tables;
    ASSERT_TRUE(readCurves(
        tables, folder.writeLines(
                    "c.ini",
                    "GR. :outside\n[Gamma | 30 310 | GAPI|API]\nGR .GAPI : GAMMA RAY\n"
                    "SGR. :SPECTRAL: GAMMA | long text\n~Title. :x\n.X :no name\nno data line\n[Short]\nA. :\n")));
    EXPECT_EQ(curveRows(tables), (Texts{"Gamma;GR;GAMMA RAY", "Gamma;SGR;SPECTRAL: GAMMA | long text", "Short;A;"}));
    ASSERT_EQ(tables.curveGroups.size(), 2U);
    EXPECT_EQ(tables.curveGroups[0].uniqueValue, "30 310");
    EXPECT_EQ(tables.curveGroups[0].canadianUnit, "GAPI");
    EXPECT_EQ(tables.curveGroups[0].otherUnit, "API");
    EXPECT_EQ(tables.curveGroups[1].otherUnit, "");
}

TEST(ReadParameters, UpperCasesAndCutsTheSearchText) {
    const test::TempFolder folder;
    ReferenceTables tables;
    ASSERT_TRUE(
        readParameters(tables, folder.writeLines("p.ini",
                                                 "# comment. x : y\nMatr.  sand : Matrix|Lithology\n"
                                                 "BHT.DegC 35.5 : bottom hole temperature\nnot a line\n~P. : x\n")));
    EXPECT_EQ(parameterRows(tables),
              (Texts{"MATR;;SAND;MATRIX;MATR LITHOLOGY", "BHT;DEGC;35.5;BOTTOM HOLE TEMPERATURE;"}));
}

TEST(ReferenceFiles, MissingFileLeavesEmptyTables) {
    const test::TempFolder folder;
    ReferenceTables tables;
    tables.units.resize(1);
    tables.curves.resize(1);
    tables.parameters.resize(1);
    EXPECT_FALSE(readUnits(tables, folder.path("none")));
    EXPECT_FALSE(readCurves(tables, ""));
    EXPECT_FALSE(readParameters(tables, folder.path()));  // a folder
    EXPECT_TRUE(tables.units.empty() && tables.curves.empty() && tables.parameters.empty());
}

TEST(ReferenceFiles, WriteTheFormTheyRead) {
    const test::TempFolder folder;
    ReferenceTables tables;
    tables.unitGroups = {{"Density", "G/C3"}, {"Empty", "X"}, {"Temp", "DEGC"}};
    tables.units = {
        {"Density", "KG/M3", 1000, 0}, {"temp", "DEGF", 1.8, -32}, {"DENSITY", "G/C3", 1, 0}, {"Lost", "L", 1, 0}};
    ASSERT_TRUE(writeUnits(tables, folder.path("u.ini")));
    EXPECT_EQ(
        folder.read("u.ini"),
        "#[] line contains unit group name and internal unit symbol with | separator\r\n"
        "#Each line in the section contains External unit | Factor to divide external to get internal and | Offset\r\n"
        "#eg. 2650 KG/M3 / 1000 gives the internal 2.65 G/C3\r\n"
        "#each section can have 10 units max. An others are ignored\r\n"
        "[Density|G/C3]\r\nKG/M3| 1000| 0\r\nG/C3| 1| 0\r\n\r\n[Empty|X]\r\n\r\n[Temp|DEGC]\r\nDEGF| 1.8|-32\r\n");

    tables.curveGroups = {{"Gamma", "1", "GAPI", "API"}, {"SP", "2", "MV", "MV"}};
    tables.curves = {{"sp", "SP", "SPONTANEOUS"}, {"Gamma", "GR", "GAMMA RAY|x"}};
    ASSERT_TRUE(writeCurves(tables, folder.path("c.ini")));
    EXPECT_EQ(folder.read("c.ini"),
              "[Gamma|1|GAPI|API]\r\nGR. :GAMMA RAY|x\r\n\r\n[SP|2|MV|MV]\r\nSP. :SPONTANEOUS\r\n");
    EXPECT_FALSE(writeCurves(tables, folder.path("no/such/folder.ini")));
}

TEST(LookUps, IgnoreCaseAndTakeTheFirstRow) {
    ReferenceTables tables;
    tables.unitGroups = {{"Depth", "F"}, {"Other", "X"}};
    tables.units = {{"Depth", "F", 1, 0}, {"Depth", "M", 0.3048, 0}, {"Other", "m", 7, 5}, {"Other", "ZERO", 0, 4}};
    tables.curveGroups = {{"GAMMA", "30", "GAPI", "API"}};
    tables.curves = {
        {"Gamma", "GR", "GAMMA RAY | of the first run"}, {"Other", "X", "no such group"}, {"gamma", "SGR", ""}};

    struct {
        const char* unit;
        double factor, offset;
    } const units[] = {{"F", 1, 0}, {" m ", 0.3048, 0}, {"ZERO", 1, 4}, {"", 1, 0}, {"none", 1, 0}};
    for (const auto& one : units) {
        double offset = -1;
        EXPECT_EQ(unitFactor(tables, one.unit, &offset), one.factor) << one.unit;
        EXPECT_EQ(offset, one.offset) << one.unit;
    }
    EXPECT_EQ(unitFactor(ReferenceTables{}, "M"), 1);
    EXPECT_TRUE(knownUnit(tables, " f"));
    EXPECT_FALSE(knownUnit(tables, "FT"));

    EXPECT_EQ(apiCodeForMnem(tables, "sgr"), "30");
    EXPECT_EQ(apiCodeForMnem(tables, "X"), "");
    EXPECT_EQ(descriptionForMnem(tables, "gr"), "GAMMA RAY");
    EXPECT_EQ(descriptionForMnem(tables, "CALI"), "");
    EXPECT_EQ(unitForMnem(tables, "GR", true), "GAPI");
    EXPECT_EQ(unitForMnem(tables, "GR", false), "API");
    EXPECT_EQ(unitForMnem(tables, "X", false), "");
    EXPECT_EQ(groupMembers(tables, "sgr"), (Texts{"GR", "SGR"}));
    EXPECT_EQ(groupMembers(tables, "DT"), Texts{});
    std::string group;
    EXPECT_EQ(unitGroupMembers(tables, "M", &group), (Texts{"F", "M"}));
    EXPECT_EQ(group, "Depth");
    EXPECT_EQ(unitGroupMembers(tables, "?", &group), Texts{});
    EXPECT_EQ(group, "");
    EXPECT_EQ(checkUnits(tables, {"F", "ODD", "", " m", "odd ", "B/E"}), (Texts{"ODD", "B/E"}));
}

TEST(ReferenceFiles, BadInputEndsEarlyAndKeepsMemoryBounded) {
    const test::TempFolder folder;
    ReferenceTables tables;
    std::mt19937 random(4711);
    std::string noise(200'000, '\0');
    for (char& byte : noise) byte = static_cast<char>(random());
    const std::string binary = folder.write("noise.ini", noise);
    EXPECT_TRUE(readUnits(tables, binary));
    EXPECT_TRUE(readCurves(tables, binary));
    EXPECT_TRUE(readParameters(tables, binary));

    // One group with a long name, and rows without end: the name may not be kept a million times.
    std::string endless = "[" + std::string(900, 'G') + "|X]\n";
    for (int row = 0; row < 200'000; ++row) endless += "u|\n";
    EXPECT_FALSE(readUnits(tables, folder.write("rows.ini", endless)));
    EXPECT_EQ(tables.units.size(), 50'000U);

    // A line of many megabytes is no unit; beyond the limit of bytes nothing is read.
    const std::string huge = folder.write("huge.ini", "[A|X]\nu|2|0\nv|" + std::string(1'000'000, '1') + "|0\nw|3|0\n");
    EXPECT_TRUE(readUnits(tables, huge));
    EXPECT_EQ(unitRows(tables), (Texts{"A;u;2.000000;0.000000", "A;w;3.000000;0.000000"}));
    std::filesystem::resize_file(huge, 1ULL << 33);  // sparse: 8 GB of NUL
    EXPECT_FALSE(readUnits(tables, huge));
    EXPECT_EQ(tables.units.size(), 2U);
    EXPECT_THROW(readUnits(tables, "/dev/zero"), FileFailure);
    EXPECT_TRUE(tables.units.empty());
}

}  // namespace
}  // namespace welvane
