#include "convert/make_las.h"

#include <filesystem>
#include <gtest/gtest.h>

#include "convert/header_template.h"
#include "support/memory_platform.h"
#include "support/scripted_interface.h"
#include "support/temp_folder.h"

namespace welvane {
namespace {

struct MakeLas : testing::Test {
    test::ScriptedInterface user;
    test::MemoryPlatform platform;
    App app{user, platform};
    test::TempFolder folder;
    LasRequest request;
    LasResult result;

    MakeLas() {
        request.targetPath = folder.path("out.las");
        app.settings.format = {6, 15, 40, 10, 10, 3};
        app.reference.curveGroups = {{"GAMMA", "30 310 01 00", "GAPI", "GAPI"}};
        app.reference.curves = {{"GAMMA", "GR", "Gamma Ray"}};
    }
    /// The written file without carriage returns; "" when there is none.
    std::string made(std::string_view table) {
        result = tableToLas(app, folder.write("table.txt", table), {}, request);
        std::string text = folder.read("out.las");
        std::erase(text, '\r');
        return text;
    }
    std::string data(std::string_view table) {
        const std::string text = made(table);
        const std::size_t at = text.find("~Ascii");
        return at == std::string::npos ? "" : text.substr(text.find('\n', at) + 1);
    }
};

TEST_F(MakeLas, writesTheTemplateTheCurvesAndTheData) {
    EXPECT_EQ(made("Depth (m),GR (GAPI),\n100,10.5,1\n100.5,,-1234567.125\n101,nan,3\n"),
              "~Version Information\n"
              " VERS.             2.00                :CWLS LOG ASCII STANDARD - VERSION 2.00\n"
              " WRAP.             NO                  :One line per depth step\n"
              "~WELL INFORMATION BLOCK\n"
              "#MNEM.UNIT          DATA                                DESCRIPTION\n"
              "#---------   -----------------------------------        ------------  \n"
              "  STRT.M           100.0000                             :START DEPTH\n"
              "  STOP.M          101.0000                              :STOP DEPTH\n"
              "  STEP.M             0.5000                             :STEP LENGTH\n"
              "  NULL.           -999.25                               :Null value\n"
              " COMP .                                                 :Company\n"
              " WELL .                                                 :Well\n"
              " FLD  .                                                 :Field\n"
              " LOC  .                                                 :Location\n"
              " STAT .                                                 :State\n"
              " CNTY .                                                 :County\n"
              " CTRY .                                                 :Country\n"
              " API  .                                                 :API Number\n"
              " DATE .                                                 :Run Date\n"
              " SRVC .            Ostrandmeyer Verdaine                :SERVICE COMPANY\n"
              "~Curve Section\n"
              " DEPT.M                                :\n"
              "   GR.GAPI    30 310 01 00             :Gamma Ray\n"
              "CHAN3.                                 :\n"
              "~AsciiDEPT        GR     CHAN3\n"
              "       100      10.5         1\n"
              "     100.5   -999.25 -1234567.125\n"
              "       101   -999.25         3\n");
}

TEST_F(MakeLas, cellsStandRightAlignedAndWhole) {
    request.nullText = "-9999";
    EXPECT_EQ(data("1,10.5,x y\n2,,-1234567.125\n3,NaN,3\n"),
              "         1      10.5       x_y\n         2     -9999 -1234567.125\n         3     -9999         3\n");
    EXPECT_TRUE(result.done) << result.why;
    EXPECT_EQ(result.textCells, 1);
    EXPECT_EQ(result.rows, 3);
    EXPECT_EQ(result.columns, 3);
}

TEST_F(MakeLas, stepIsCheckedInTheMask) {
    struct Case {
        const char *name, *table;
        double step;
        bool varies;
    };
    for (const Case& row : {
             Case{"constant", "1 1\n1.5 1\n2 1\n", 0.5, false},
             Case{"upwards", "2 1\n1.5 1\n1 1\n", -0.5, false},
             Case{"equal in four decimals", "0 1\n0.1 1\n0.20004 1\n", 0.1, false},
             Case{"thirds", "0 1\n0.3333 1\n0.6667 1\n", 0, true},
             Case{"a jump", "1 1\n2 1\n4 1\n", 0, true},
             Case{"null depths do not count", "1 1\n-999.25 1\n2 1\nnan 1\n3 1\n", 1, false},
             Case{"a depth twice", "1 1\n1 1\n", 0, true},
             Case{"one row", "1 1\n", 0, false},
         }) {
        SCOPED_TRACE(row.name);
        if (row.varies) user.willAnswer(Answer::Ok);
        const std::string text = made(row.table);
        EXPECT_TRUE(result.done) << result.why;
        EXPECT_EQ(result.stepVaries, row.varies);
        EXPECT_EQ(result.step, row.step);
        if (row.varies) {
            EXPECT_EQ(user.asked().back().title, "STEP Not Constant!");
            EXPECT_EQ(user.asked().back().text,
                      "The depth interval between depths is not constant. If you don't expect this, try sorting the "
                      "depth. The STEP will be "
                      "written as 0 (= variable STEP) for now. ");
            EXPECT_NE(text.find("  STEP.F             0.0000 "), std::string::npos) << text;
        }
    }
}

TEST_F(MakeLas, refusesWhatCannotBeALog) {
    struct Case {
        const char *name, *table, *title, *why;
    };
    for (const Case& row : {
             Case{"empty", "", "Insufficient Data to Convert",
                  "You must have at least 2 columns and one row of data to create a new LAS file. "},
             Case{"one column", "1\n2\n", "Insufficient Data to Convert", "You must have at least 2 columns"},
             Case{"an empty depth", "1,2\n,3\nx,5\n", "Empty Depth Sample",
                  "One or more of the depth entries (column 1) are empty. All Depths must have numeric values. Remove "
                  "empty rows, and fill in "
                  "missing depths, then try again. (line 2)"},
             Case{"a text depth", "DEPT,GR\n1,2\n2,2\n3 m,2\n", "Depth Is No Number",
                  "The depth \"3 m\" in line 4 is not a number."},
         }) {
        SCOPED_TRACE(row.name);
        user.willAnswer(Answer::Ok);
        EXPECT_EQ(made(row.table), "");
        EXPECT_FALSE(result.done);
        EXPECT_EQ(user.asked().back().title, row.title);
        EXPECT_EQ(result.why.substr(0, std::string_view(row.why).size()), row.why);
        EXPECT_FALSE(std::filesystem::exists(request.targetPath));
    }
    EXPECT_EQ(made(std::string("1,2\0", 4)), "");
    EXPECT_EQ(result.why, "the file is not a text file");
    request.targetPath = folder.path("table.txt");
    made("1 2\n2 3\n");
    EXPECT_FALSE(result.done) << "onto the table itself";
    EXPECT_EQ(folder.read("table.txt"), "1 2\n2 3\n");
}

TEST_F(MakeLas, unusedColumnsAreDroppedForGood) {
    GenericTable grd;
    ASSERT_TRUE(loadTableText(app, "9 A 1 B\n8 C 2 D\n", {}, grd).done);
    grd.setUsed(1, false);
    grd.setUsed(2, false);
    grd.setCell(1, 3, "MD");
    result = makeLas(app, grd, request);
    EXPECT_TRUE(result.done) << result.why;
    EXPECT_EQ(grd.columns(), 3);
    EXPECT_EQ(result.firstDepth, 1);
    EXPECT_EQ(result.step, 1);
    EXPECT_NE(folder.read("out.las").find("~Ascii  MD     CHAN2\r\n         1         B\r\n         2         D\r\n"),
              std::string::npos)
        << folder.read("out.las");
    grd.setUsed(1, false);
    grd.setUsed(2, false);
    user.willAnswer(Answer::Ok);
    EXPECT_FALSE(makeLas(app, grd, request).done);
}

TEST_F(MakeLas, takesTheHeaderFromAFile) {
    const std::string header =
        "~V\n VERS. 1.2 : x\n WRAP. YES : y\n~Well Information\n STRT.F 1 : start\n STOP.F 2 : stop\n STEP.F 1 : "
        "step\n NULL. -1 : null\n"
        " WELL.  Old Well : WELL\n~Curve\n DEPT.F : x\n~Parameter Information\n BHT.DEGC   35.5 : temp\n\n~Other\nfree "
        "text\n~A DEPT GR\n1 2\n";
    const std::string crlf = [&header] {
        std::string text;
        for (const char c : header) text += c == '\n' ? std::string("\r\n") : std::string(1, c);
        return text;
    }();
    for (const std::string& bytes : {header, crlf}) {
        request.headerFile = folder.write("header.las", bytes);
        const std::string text = made("Depth (M) GR\n5 1\n5.25 2\n");
        EXPECT_TRUE(result.done) << result.why;
        EXPECT_EQ(text,
                  "~V\n VERS. 1.2 : x\n WRAP.        NO                       :y\n"
                  "~Well Information\n"
                  " STRT.M       5.0000                             :start\n"
                  " STOP.M       5.2500                             :stop\n"
                  " STEP.M       0.2500                             :step\n"
                  " NULL.        -999.25                            :null\n"
                  " WELL.  Old Well : WELL\n"
                  "~Curve Section\n"
                  " DEPT.M                                :\n"
                  "   GR.        30 310 01 00             :Gamma Ray\n"
                  "~Parameter Information\n BHT.DEGC   35.5 : temp\n"
                  "~Other\nfree text\n"
                  "~AsciiDEPT        GR\n"
                  "         5         1\n"
                  "      5.25         2\n");
    }
    for (const std::string& bytes : {std::string("~V\0binary", 9), std::string("nothing of a header"), std::string()}) {
        std::filesystem::remove(request.targetPath);
        request.headerFile = folder.write("header.las", bytes);
        EXPECT_EQ(made("1 2\n2 3\n"), "");
        EXPECT_NE(result.why.find("has neither a ~Version nor a ~Well section"), std::string::npos) << result.why;
    }
    request.headerFile = folder.path("absent.las");
    EXPECT_NE(made("1 2\n2 3\n").find("~WELL INFORMATION BLOCK"), std::string::npos) << "the template stands in";
    request.headerText =
        "~Version Information\n VERS.             2.00                :v\n~Well Information\n COMP .   Mine "
        ":Company\n~Ascii\n";
    EXPECT_NE(made("1 2\n2 3\n").find("COMP .   Mine :Company"), std::string::npos);
}

TEST_F(MakeLas, templateFollowsTheRegion) {
    const auto canada = headerTemplate("canada", "M");
    const auto other = headerTemplate("Other", "F");
    EXPECT_EQ(canada.size(), 19U);
    EXPECT_EQ(other.size(), 20U);
    EXPECT_EQ(canada[14].substr(0, 7), " PROV .");
    EXPECT_EQ(canada[16].substr(56), ":License Number");
    EXPECT_EQ(other[17].substr(56), ":API Number");
    EXPECT_EQ(canada[6].substr(0, 8), " STRT .M");
}

TEST_F(MakeLas, cancelLeavesTheOldFile) {
    folder.write("out.las", "old");
    request.mode = OutputFile::Mode::Beside;
    app.run.cancelRequested = true;
    EXPECT_EQ(made("1 2\n2 3\n"), "old");
    EXPECT_TRUE(result.cancelled);
    app.run.cancelRequested = false;
    request.targetPath = folder.path("no/such/out.las");
    EXPECT_EQ(made("1 2\n2 3\n"), "old");
    EXPECT_FALSE(result.why.empty());
}

}  // namespace
}  // namespace welvane
