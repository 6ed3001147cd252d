#include "app/startup.h"

#include <gtest/gtest.h>
#include <string>

#include "shared/failure.h"
#include "support/memory_platform.h"
#include "support/scripted_interface.h"

namespace welvane {
namespace {

std::string formatText(std::string_view stored) {
    return formatDefaultsText(parseFormatDefaults(stored));
}

TEST(StoredFormat, isCorrected) {
    const std::pair<const char*, const char*> cases[] = {{"6|15|60|50|13|5", "6|15|60|50|13|5"},
                                                         {"6|15|60|50|4|5", "6|15|60|50|13|5"},
                                                         {"6|15|60|50|5|5", "6|15|60|50|13|5"},
                                                         {"6|15|0|0|13|5", "6|15|50|10|13|5"},
                                                         {"8|20", "8|20|50|10|13|5"},
                                                         {"", "6|15|50|10|13|5"},
                                                         {"7.5|8.5|60|50|13|5", "8|8|60|50|13|5"},
                                                         {"a|15|60|50|13|0", "6|15|60|50|13|5"},
                                                         {"-3|15|60|50|13|5|9", "-3|15|60|50|13|5"}};
    for (const auto& [stored, kept] : cases) EXPECT_EQ(formatText(stored), kept) << stored;
    EXPECT_THROW(parseFormatDefaults("6|99999|60|50|13|5"), RunTimeFailure);
}

TEST(StoredMatrix, isCorrectedFieldByField) {
    const std::pair<const char*, const char*> cases[] = {
        {"0.5|2.4|2.71|2.87|54|47.6|43.5", "1.000|2.650|2.710|2.870|55.500|47.600|43.500"},
        {"1.1|2.5|2.8|2.9|55|47|43", "1.100|2.500|2.800|2.900|55.000|47.000|43.000"},
        {"", "1.000|2.650|2.710|2.870|55.500|47.600|43.500"}};
    for (const auto& [stored, kept] : cases) EXPECT_EQ(matrixTableText(parseMatrixTable(stored)), kept) << stored;
    const MatrixTable table = parseMatrixTable("1|2.9|2.9|2.9|99|99|99");
    EXPECT_EQ(table[4], 2.65F) << "the matrices of the conversions are never taken from the store";
    EXPECT_EQ(table[9], 2.87F);
    EXPECT_EQ(table[12], 99.0F);
}

TEST(StoredGridFont, isCorrected) {
    const std::pair<const char*, const char*> cases[] = {{"Arial|10|0|800", "Arial|10|0|800"},
                                                         {"|4|1|100", "Arial|6|1|200"},
                                                         {"Mono|7.5|2|-1", "Mono|7.5|1|-1"},
                                                         {"", "Arial|6|0|200"}};
    for (const auto& [stored, kept] : cases) EXPECT_EQ(gridSizeText(parseGridSize(stored)), kept) << stored;
}

/// A process on settings in memory and a program folder of its own.
struct Startup : ::testing::Test {
    test::MemoryPlatform platform;
    test::ScriptedInterface user;
    App app{user, platform};
    void put(const char* key, const std::string& value) { platform.settings().put(key, value); }
};

TEST_F(Startup, anEmptyStoreGivesTheDefaults) {
    startup(app);
    EXPECT_EQ(app.settings.inDir, platform.programFolder());
    EXPECT_EQ(app.settings.porosityUnits, "PU");
    EXPECT_EQ(app.settings.units.depthUnit, "F");
    EXPECT_EQ(app.settings.units.densityFactor, 0.001);
    EXPECT_EQ(formatDefaultsText(app.settings.format), "6|15|60|50|13|5") << "not the replacements of a zero";
    EXPECT_TRUE(app.settings.certifyAfter && app.settings.editAfter && app.settings.multipleSelection);
    EXPECT_FALSE(app.settings.fillCurveValue || app.settings.fillCurveDescription || app.settings.keepBadLines);
    EXPECT_EQ(app.settings.unitsPath, "");
}

TEST_F(Startup, storedValuesAreTakenWhateverTheCaseOfTheirKeys) {
    put("COUNTRY", "canada");
    put("fillcval", "-1");
    put("fillCDesc", "0.5");
    put("editafter", "no");
    put("poro_units", "");
    put("lasfile", platform.program().path("gone.las"));
    startup(app);
    EXPECT_EQ(app.settings.units.depthUnit, "M");
    EXPECT_EQ(app.settings.units.sonicFactor, 1 / 0.3048);
    EXPECT_TRUE(app.settings.fillCurveValue && app.settings.fillCurveDescription);
    EXPECT_FALSE(app.settings.editAfter) << "a text without a number reads as 0";
    EXPECT_EQ(app.settings.porosityUnits, "V/V");
    EXPECT_EQ(app.run.lasFile, "") << "the file is not there any more";
}

TEST_F(Startup, variantOfAReferenceFileWins) {
    platform.program().write("units.ini", "[DENSITY|G/C3]\r\nK/M3|1000|0\r\n");
    platform.program().write("para.ini", "");
    platform.program().write("curves_ZQ.ini", "");
    startup(app);
    EXPECT_EQ(app.settings.unitsPath, platform.programFolder() + "units.ini");
    EXPECT_EQ(app.settings.curvesPath, platform.programFolder() + "curves_ZQ.ini");
    platform.program().write("units_ZQ.ini", "");
    startup(app);
    EXPECT_EQ(app.settings.unitsPath, platform.programFolder() + "units_ZQ.ini");
}

TEST_F(Startup, everyStartEmptiesTheListingList) {
    put("listdef", "1|0|1");
    startup(app);
    EXPECT_EQ(platform.settings().get("listdef", "missing"), "");
}

TEST_F(Startup, aFailureIsToldAndKeepsWhatWasRead) {
    put("country", "Canada");
    put("formatdef", "6|15|99999|50|13|5");
    put("poro_units", "PU");
    user.willAnswer(Answer::Ok);
    startup(app);
    ASSERT_EQ(user.asked().size(), 1u);
    EXPECT_EQ(user.asked()[0].text, "Error in startup was overflowerr =6");
    EXPECT_EQ(app.settings.units.depthUnit, "M") << "read before the failure";
    EXPECT_EQ(app.settings.porosityUnits, "V/V") << "not read any more";
}

TEST_F(Startup, loadReadsTheTablesAndTellsOfMissingParameters) {
    platform.program().write("units.ini", "[DENSITY|G/C3]\r\nK/M3|1000|0\r\n");
    user.willAnswer(Answer::Ok);
    EXPECT_TRUE(loadProcess(app));
    EXPECT_EQ(app.reference.units.size(), 1u);
    ASSERT_EQ(user.asked().size(), 1u);
    EXPECT_EQ(user.asked()[0].title, "PARA.INI File Missing!");
    EXPECT_EQ(user.asked()[0].text,
              "The pararameter file (para.ini or para_ZQ.ini) is missing from the program directory. Replace it from "
              "the install diskettes. "
              "Without it, you will not be able to fill standard Parameters.");
}

}  // namespace
}  // namespace welvane
