#include "las/rebuild.h"

#include <gtest/gtest.h>

#include "las/well.h"
#include "shared/text.h"
#include "support/scripted_interface.h"

namespace welvane {
namespace {

using test::ScriptedInterface;
using test::TempFolder;

const char* const plexmoreText =
    "# Ascii save\n"
    "~Version\nVERS.\t2.0 : x\n"
    "~Well\nSTRT\t.FEET\t100.5 : start\nSTOP\t. F 99.5 : stop\nSTEP\t.F\t0.5 : step\nWELL. Beech 1 : name\nAPI. 42-1 : "
    "api\nUWI. U1 : id\n"
    "~Curve\nIndex.f : index\nGR.gapi Gamma : \nNPHI.m3/m3 : Neutron\nRT:1.OHM.M  : Deep\nno curve\n"
    "~Parameter\nCOMPANY. Elm Oil : company\nWN. other : well\nFL. field : f\nDATE. 1-2-99 : date\nMUD. kg 15 : mud\n"
    "~A\n"
    " 100.5 10 0.25 -999250.0\n"
    " 100.0 20 0.35\n"
    "\n"
    " 100.0 1234567.5 0.45 3\n"
    " 99.0 abc 0.55 4 5\n"
    " 99.0 30 0.65 5\n";

TEST(Rebuild, wholeFile) {
    const TempFolder folder;
    const std::string source = folder.writeLines("a.las", plexmoreText);
    RebuildSettings settings;
    settings.describeCurve = [](std::string_view mnem) { return std::string(mnem == "GR" ? "Gamma Ray|more" : ""); };
    ScriptedInterface user;
    user.willType("LIME");
    user.willAnswer(Answer::Ok);
    RunState run;
    const RebuildResult result = rewriteLas(source, folder.path("b.las"), RebuildKind::Plexmore2, settings, run, user);
    ASSERT_EQ(result.result, StepResult::Done);
    EXPECT_EQ(result.linesWritten, 3U);
    EXPECT_EQ(result.badLines, 2U);
    EXPECT_EQ(result.firstBadLines, (std::vector<std::size_t>{25, 28}));
    EXPECT_EQ(user.askedForText().at(0), "Neutron Matrix Parameter Missing!");
    EXPECT_EQ(user.asked().at(0).title, "Bad Lines found and Discarding");
    EXPECT_EQ(user.asked().at(0).text,
              "2 bad lines were discarded during processing! Visually inspect and repair the original and try again!");
    const std::string titles =
        "#MNEN.UNIT      VALUE                                    : DESCRIPTION\r\n"
        "#----.----      -----                                    : -----------\r\n";
    EXPECT_EQ(folder.read("b.las"),
              replaceAll("~Version Information\n"
                         "VERS.                2.00:     CWLS LOG ASCII STANDARD - VERSION 2.0\n"
                         "WRAP.                  NO:     One Line Per Depth Step\n"
                         "~Well Information\n",
                         "\n", "\r\n") +
                  titles +
                  replaceAll(" STRT.F       100.50000                                 :START DEPTH\n"
                             " STOP.F       99.00000                                  :STOP DEPTH\n"
                             " STEP.F       -0.50000                                  :STEP LENGTH\n"
                             " NULL.        -999.25                                   :NULL VALUE\n"
                             " COMP.        Elm Oil                                   :COMPANY NAME\n"
                             " WELL.        Beech 1                                   :WELL NAME\n"
                             "  LOC.        field                                     :LOCATIONS\n"
                             "  FLD.        field                                     :FIELD NAME\n"
                             " STAT.                                                  :STATE\n"
                             " CNTY.                                                  :COUNTY\n"
                             " CTRY.                                                  :COUNTRY\n"
                             "  API.        42-1                                      :API SERIAL NUMBER\n"
                             " LISF.        b.las                                     :LAS FILENAME\n"
                             " DATE.        1-2-99                                    :LOGGING DATE\n"
                             " SRVC.        Ostrandmeyer                              :SERVICE COMPANY\n"
                             "~Curve Information\n",
                             "\n", "\r\n") +
                  titles +
                  replaceAll("DEPT.f                                 :DEPTH\n"
                             "  GR.gapi                              :Gamma Ray\n"
                             "NPHI.V/V                               :Neutron\n"
                             "RT:1.OHMM                :Deep\n"
                             "~Parameter Information\n",
                             "\n", "\r\n") +
                  titles +
                  replaceAll("COMPANY.      ELM OIL                                   :COMPANY\n"
                             "   WN.        OTHER                                     :WELL\n"
                             "   FL.        FIELD                                     :F\n"
                             " DATE.        1-2-99                                    :DATE\n"
                             "  MUD.KG      15                                        :MUD\n"
                             " MATR.        LIME                                      :Neutron Matrix Indicator\n"
                             "~Ascii              DEPT           GR         NPHI         RT:1\n"
                             "    100.50000     10.00000      0.25000   -999.25000\n"
                             "    100.00000   -999.25000      0.45000      3.00000\n"
                             "     99.00000     30.00000      0.65000      5.00000\n",
                             "\n", "\r\n"));
}

TEST(Rebuild, countryAndKindDecideTheWellLines) {
    const TempFolder folder;
    const std::string source = folder.writeLines(
        "a.las", "~V\n~W\nSTRT.FT 1 : x\nUWI. U1 : id\nLIC. L1 : x\n~C\nD.M : x\nA. : x\n~A\n2 5\n1 6\n");
    RebuildSettings settings;
    settings.country = "Canada";
    ScriptedInterface user;
    RunState run;
    ASSERT_EQ(rewriteLas(source, folder.path("b.las"), RebuildKind::Other, settings, run, user).result,
              StepResult::Done);
    const std::string text = folder.read("b.las");
    EXPECT_TRUE(holdsText(text, " STRT.FT      2.00000 "));
    EXPECT_TRUE(holdsText(text, "  UWI.        U1       "));
    EXPECT_TRUE(holdsText(text, "  LIC.        L1       "));
    EXPECT_FALSE(holdsText(text, "CNTY"));
    ASSERT_EQ(rewriteLas(source, folder.path("b.las"), RebuildKind::Plexmore2, settings, run, user).result,
              StepResult::Done);
    EXPECT_TRUE(holdsText(folder.read("b.las"), " STRT.M       2.00000 ")) << "no tab in the line";
}

TEST(Rebuild, targetThatIsTheSource) {
    const TempFolder folder;
    const std::string source = folder.writeLines("a.las", plexmoreText);
    const std::string before = folder.read("a.las");
    ScriptedInterface user;
    RunState run;
    const auto rebuild = [&](const std::string& answer) {
        user.willType(answer);
        return rewriteLas(source, source, RebuildKind::Plexmore2, {}, run, user);
    };
    EXPECT_EQ(rebuild("").result, StepResult::Cancelled);
    user.willAnswer(Answer::Ok);
    EXPECT_EQ(rebuild(upper(source)).result, StepResult::Cancelled);
    EXPECT_EQ(user.asked().at(0).title, "Duplicate Filename");
    EXPECT_EQ(user.asked().at(0).text, "Must supply different file name or different path for new file. Try again.");
    user.willType(folder.path("c.las"));
    user.willAnswer(Answer::Ok);
    user.willType("SAND");
    EXPECT_EQ(rewriteLas(source, source, RebuildKind::Plexmore2, {}, run, user).target, folder.path("c.las"));
    EXPECT_TRUE(std::filesystem::exists(folder.path("c.las")));
    EXPECT_EQ(user.askedForText(),
              (std::vector<std::string>{"Save LAS", "Save LAS", "Save LAS", "Neutron Matrix Parameter Missing!"}));
    EXPECT_EQ(folder.read("a.las"), before);
}

TEST(Rebuild, nothingIsWrittenOnCancelOrWithoutData) {
    const TempFolder folder;
    SilentInterface user;
    RunState run;
    const auto rebuild = [&](const char* name, const char* text) {
        return rewriteLas(folder.writeLines(name, text), folder.path("b.las"), RebuildKind::Other, {}, run, user)
            .result;
    };
    EXPECT_EQ(rebuild("n.las", "~V\n~C\nD. : x\n"), StepResult::Failed);
    EXPECT_EQ(rebuild("c.las", "~V\n~A\n1 2\n"), StepResult::Failed);
    EXPECT_EQ(rewriteLas(folder.path("none"), folder.path("b.las"), RebuildKind::Other, {}, run, user).result,
              StepResult::Failed);
    run.cancelRequested = true;
    EXPECT_EQ(rebuild("a.las", plexmoreText), StepResult::Cancelled);
    EXPECT_FALSE(std::filesystem::exists(folder.path("b.las")));
}

}  // namespace
}  // namespace welvane
