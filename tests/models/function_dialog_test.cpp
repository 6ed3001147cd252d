#include "models/function_dialog.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "functions/crnphi.h"
#include "models/function_choice.h"
#include "platform/memory_settings.h"
#include "support/scripted_interface.h"
#include "support/session_fixture.h"
#include "support/temp_folder.h"

namespace welvane {
namespace {

using Texts = std::vector<std::string>;

class FunctionDialogTest : public testing::Test {
  protected:
    FunctionDialogTest() {
        canada_.densityFactor = 1, canada_.densityUnit = "K/M3", canada_.sonicFactor = 1 / 0.3048,
        canada_.sonicUnit = "us/m";
        other_.densityFactor = 0.001, other_.densityUnit = "G/C3";
        settings_.units = canada_;
        reference_.curves = {{"DPHI", "DPHI", ""}, {"dphi", "PHID", ""}, {"NPHI", "NPHI", ""}};
    }
    FunctionDialog open(int code, const std::string& old = "") {
        store_.put("funLstIndex", "0");  // values of another function would stay in its shared fields
        FunctionDialog dialog = openFunctionDialog(context_, {"GRLONG", "RHOB", "ILD"}, 0, old);
        if (old.empty()) chooseFunction(dialog, context_, code);
        return dialog;
    }
    std::string add(const FunctionDialog& dialog) {
        const auto descriptor = AddFunToList(dialog, context_);
        return descriptor ? descriptor->text() : "nothing";
    }

    CountryUnits canada_, other_;
    ReferenceTables reference_;
    StartupSettings settings_;
    MemorySettings store_;
    test::ScriptedInterface user_;
    test::TempFolder folder_;
    FunctionDialogContext context_{reference_, settings_, store_, user_, folder_.path() + "/", {}};
};

TEST_F(FunctionDialogTest, descriptors) {
    const struct {
        int code;
        const char* descriptor;
    } cases[] = {
        {0, "0|||||1|CILD|was :GRLONG "},
        {1, "1|||||1|RILD|was :GRLONG "},
        {2, "2|2.65|1.00|-1|-1|1|DPHI|was :GRLONG Matrix=2.65 Fluid=1.00"},
        {3, "3|2.65|1.00|0|-1|1|RHOB|was :GRLONG Matrix=2.65 Fluid=1.00"},
        {4, "4|||0|0|1|DPHI|was :GRLONG Matrix In=Sand: 2.650 Matrix Out=Sand: 2.650"},
        {5, "5|55.50|189.00|-1|-1|1|SPHI|was :GRLONG Matrix=182.09 Fluid=620.08"},
        {6, "6|55.50|189.00|-1|-1|1|DT|was :GRLONG Matrix=182.09 Fluid=620.08"},
        {7, "7|||0|0|1|NPHI|was :GRLONG Matrix In=Sand Matrix Out=Sand"},
        {8, "8|||0|0|1|NPHI|was :GRLONG Matrix In=Sand Matrix Out=Sand"},
        {10, "10|1|0|0|1|1|GRLONG|was :GRLONG A=1 B=0 C=0 n=1"},
        {11, "11|0|100|||1|GRLONG|was :GRLONG Min =0. Max = 100"},
        {12, "12|||||1|GRLONG|was :GRLONG Compute PHIT from  and "},
        {13, "13||-999.25|||1|GRLONG|was :GRLONG Replace  with -999.25"},
        {14, "14|1|1|||1|GRLONG|was :GRLONG Averaged 1 * point , 0.5 * point before,  0.5 * point after"},
        {15,
         "15|0.2|2000|3.25|5.75|1|GRLONG|was :GRLONG New Left Scale=0.2New Right Scale=2000 Old Left Track =3.25Old "
         "Right Track =5.75"},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(add(open(one.code)), one.descriptor);
        EXPECT_EQ(add(open(0, one.descriptor)), one.descriptor) << "opened anew";
    }
}

TEST_F(FunctionDialogTest, EditedFieldsReachTheDescriptor) {
    FunctionDialog dialog = open(11);
    const struct {
        const char *low, *high, *label;
    } limits[] = {{"", "", ""}, {"5", "", "Min =5"}, {"", "7", "Max =7"}};
    for (const auto& one : limits) {
        dialog.parT = {one.low, one.high};
        EXPECT_EQ(add(dialog), std::string("11|") + one.low + "|" + one.high + "|||1|GRLONG|was :GRLONG " + one.label);
    }
    dialog = open(14);
    dialog.funOpt = 2;
    dialog.aveT = "9";
    chooseSource(dialog, 2);
    EXPECT_EQ(add(dialog), "14|2|9|||3|ILD|was :ILD Averaged over Point");
    dialog = open(15);
    dialog.llChk = true;
    const std::string logarithmic = add(dialog);
    EXPECT_EQ(FunctionDescriptor::parse(logarithmic).parameters[3], "-5.75");
    dialog = open(0, logarithmic);
    EXPECT_TRUE(dialog.llChk);
    EXPECT_EQ(dialog.linlogT[3], "5.75");
    dialog = open(10);
    dialog.conTL.clear();
    dialog.fT[0] = "1|2";  // may not shift the fields behind it
    EXPECT_EQ(add(dialog), "10|12|0|0|1|1|GRLONG|was :GRLONG A=12 B=0 C=0 n=1");
    dialog.source = -1;
    EXPECT_EQ(add(dialog), "nothing");
}

TEST_F(FunctionDialogTest, densityDefaultsOutsideCanadaAreZero) {
    settings_.units = other_;
    FunctionDialog dialog = open(2);
    EXPECT_EQ(dialog.parT[0], "0.00");
    EXPECT_EQ(dialog.parT[1], "0.00");
    EXPECT_EQ(dialog.parTags[0], "Matrix Value G/C3");
    EXPECT_EQ(dialog.parTags[1], "Fluid ValueG/C3");
    dialog.parT = {"2.65", "1"};
    const std::string descriptor = add(dialog);
    EXPECT_EQ(descriptor, "2|2650.00|1000.00|-1|-1|1|DPHI|was :GRLONG Matrix=2.65 Fluid=1");
    EXPECT_EQ(open(0, descriptor).parT[0], "2.65");
    EXPECT_EQ(open(5).parT[0], "55.50");
    EXPECT_EQ(open(5).parTags[0], "Matrix Value  us/f");
}

TEST_F(FunctionDialogTest, OpensWithListsFormulaAndTheLastFunction) {
    EXPECT_EQ(open(2).resultList, (Texts{"DPHI", "PHID"}));
    EXPECT_EQ(store_.get("funLstIndex", ""), "2");
    const FunctionDialog again = openFunctionDialog(context_, {"GRLONG"}, 0, "");
    EXPECT_EQ(again.funLst, 2);
    EXPECT_EQ(again.formula, "New Channel =  (A x GRLO + (B x GRLO) + C");
    for (const char* broken : {"x|1", "16|1", "2.5|1", "-1|"}) {
        const FunctionDialog dialog = openFunctionDialog(context_, {"GRLONG"}, 0, broken);
        EXPECT_EQ(dialog.funLst, 2) << broken;
        EXPECT_EQ(dialog.parT[0], "2.65") << broken;
    }
}

TEST_F(FunctionDialogTest, EditedMatrixRowsChangeTheTable) {
    FunctionDialog dialog = open(4);
    chooseMatrix(dialog, context_, 0, 1, "Lime: 2.72 ");
    chooseMatrix(dialog, context_, 1, 2, "Dolo: 2.85");
    EXPECT_EQ(settings_.matrix[5], 2.72F);
    EXPECT_EQ(settings_.matrix[9], 2.85F);
    EXPECT_EQ(dialog.matr[0], (Texts{"Sand: 2.650", "Lime: 2.720", "Dolo: 2.870"}));
    chooseMatrix(dialog, context_, 0, 0, "Sand");  // no value, no change
    EXPECT_EQ(settings_.matrix[4], 2.65F);
    EXPECT_EQ(FunctionDescriptor::parse(add(dialog)).parameters[2], "0");
    EXPECT_EQ(FunctionDescriptor::parse(add(dialog)).parameters[3], "2");
}

TEST_F(FunctionDialogTest, countRatesAreChecked) {
    const struct {
        const char *high, *low, *highPorosity, *lowPorosity, *title;
    } cases[] = {
        {"900", "100", "0.3", "0.01", ""},
        {"900", "100", "0.3", "-0.01", ""},  // the sign is not looked at
        {"From_Log", "FROM_LOG", "0.3", "0.01", ""},
        {"900", "", "0.3", "0.01", ""},
        {"", "100", "0.3", "0.01", "Invalid Court Rate Values"},
        {"100", "100", "0.3", "0.01", "Invalid Court Rate Values"},
        {"100", "900", "0.3", "0.3", "Invalid Court Rate Values"},
        {"900", "100", "0.3", "0.3", "Invalid Porosity Values"},
        {"900", "100", "0.1", "0.3", "Invalid Porosity Values"},
    };
    for (const auto& one : cases) {
        FunctionDialog dialog = open(9);
        const char* texts[] = {one.high, one.low, one.highPorosity, one.lowPorosity};
        for (std::size_t box = 0; box < 4; ++box) setCountRate(dialog, context_, box, texts[box]);
        const std::size_t asked = user_.asked().size();
        const bool refused = *one.title != '\0';
        if (refused) user_.willAnswer(Answer::Ok);
        EXPECT_EQ(add(dialog) == "nothing", refused) << one.high << " " << one.low;
        ASSERT_EQ(user_.asked().size(), asked + (refused ? 1 : 0));
        EXPECT_EQ(refused ? user_.asked().back().title : "", one.title);
    }
    EXPECT_EQ(user_.asked().front().text, "Count rates must not be equal and High must be greater than Low");
    EXPECT_EQ(user_.asked().back().text,
              "Porosities must not be equal and High must be greater than Low, and neither can be less than 0. ");
}

TEST_F(FunctionDialogTest, CountRatesAreKept) {
    FunctionDialog dialog = open(9);
    EXPECT_EQ(dialog.ncr[0], "From_Log");
    EXPECT_FALSE(dialog.toolListsVisible);
    context_.statistics = [](std::string_view channel) -> std::optional<CountRateEnds> {
        if (channel != "GRLONG") return std::nullopt;
        return CountRateEnds{1234.5, 7};
    };
    fillCountRatesFromLog(dialog, context_);
    setCountRate(dialog, context_, 2, "0.3");
    setCountRate(dialog, context_, 3, "0.01");
    EXPECT_EQ(store_.get("CRPORO", ""),
              "1234.5000|7.0000|0.3000|0.0100|0.0000|0.0000|0.0000|0.0000|0.0000|0.0000|0.0000");
    EXPECT_EQ(add(open(9)),
              "9|1234.5000|7.0000|0.3000|0.0100|1|NPHI|was :GRLONG Low Count=7.0000 Hi Count=1234.5000 Low Poro=0.0100 "
              "Hi poro=0.3000");
    setCountRate(dialog, context_, 0, " ");
    EXPECT_EQ(dialog.ncr[0], "From_Log");
    EXPECT_EQ(open(9).ncr[0], "From_Log");
    chooseSource(dialog, 1);
    user_.willAnswer(Answer::Ok);
    fillCountRatesFromLog(dialog, context_);
    EXPECT_EQ(user_.asked().back().text, "Error doing Statistics listing");
    EXPECT_EQ(user_.asked().back().title, "Error");
}

TEST_F(FunctionDialogTest, CountRateTables) {
    Texts list = {"old"};
    EXPECT_FALSE(readCrnphi(list, CrnphiMode::Tools, "", context_.programFolder));
    EXPECT_TRUE(list.empty());
    folder_.writeLines("crnphi.ini",
                       "# [comment]\n1 2 3 4 5\n[Tool A]\n\n6.0  0.02 900 0.3   100\n1 2 3 4\n# a b c d\n[odd\n7 7 7 7 "
                       "7\n  [Tool AB] x\n8 0.01 800 0.4 80\n");
    ASSERT_TRUE(readCrnphi(list, CrnphiMode::Tools, "", context_.programFolder));
    EXPECT_EQ(list, (Texts{"[Tool A]", "[Tool AB] x"}));
    ASSERT_TRUE(readCrnphi(list, CrnphiMode::Diameters, "tool a", context_.programFolder));
    EXPECT_EQ(list, (Texts{"Dia:   Low_Ø High_CR  High_Ø  Low_CR", "6.0  0.02 900 0.3   100", "8 0.01 800 0.4 80"}));

    FunctionDialog dialog = open(9);
    EXPECT_TRUE(dialog.toolListsVisible);
    chooseTool(dialog, context_, 1);
    chooseDiameter(dialog, context_, 0);  // the heading
    EXPECT_EQ(dialog.ncr[0], "From_Log");
    chooseDiameter(dialog, context_, 1);
    EXPECT_EQ(dialog.ncr, (std::array<std::string, 4>{"800", "80", "0.4", "0.01"}));
    ASSERT_TRUE(readCrnphi(list, CrnphiMode::Tools, "", std::string(WELVANE_SOURCE_DIR) + "/data/"));
    EXPECT_GE(list.size(), 1U);
}

TEST_F(FunctionDialogTest, eachFunctionShowsThePageOfWhatItTakes) {
    Texts shown;
    for (const FunctionEntry& entry : functionCatalogue()) {
        const auto page = pageOf(entry.code);
        shown.emplace_back(page ? functionPageNames[static_cast<std::size_t>(*page)] : "");
    }
    EXPECT_EQ(shown, (Texts{"", "", "P/d", "P/d", "Matrix", "P/d", "P/d", "Matrix", "Matrix", "Neutron", "General",
                            "General", "General", "General", "Average", "Lin/Log"}));
}

using FunctionOfAChannel = test::SessionTest;

TEST_F(FunctionOfAChannel, OpensAtTheOldFunctionOrAtTheOnePicked) {
    load(0, {"GR", "RHOB"});
    const std::string old = "9|900.0000|100.0000|0.3000|0.0100|1|NPHI|was :GR";
    FunctionChoice kept(app, session, 2, old, "NEUTCR2PORO");
    EXPECT_EQ(kept.dialog.fNamT, (Texts{"GR", "RHOB"}));
    EXPECT_EQ(kept.dialog.source, 0) << "that of the old function";
    EXPECT_EQ(kept.dialog.ncr, (std::array<std::string, 4>{"900.0000", "100.0000", "0.3000", "0.0100"}));
    EXPECT_EQ(kept.old->text(), old) << "what holds when it is left";
    const FunctionChoice other(app, session, 2, old, "BULKDEN2PORO");
    EXPECT_EQ(other.dialog.funLst, 2);
    EXPECT_EQ(other.dialog.conTL, "DPHI");
    const FunctionChoice first(app, session, 2, "", "MATH");
    EXPECT_EQ(first.dialog.source, 1) << "the channel itself";
    EXPECT_EQ(first.dialog.conTL, "RHOB");
    EXPECT_FALSE(first.old);
}

using CountRatesOfALog = test::SessionTest;

TEST_F(CountRatesOfALog, AreTheEndsOfTheSourceInTheFirstFile) {
    MemorySettings store;
    const CountRateStatistics statistics = countRateStatistics(app, session);
    FunctionDialogContext context{app.reference, app.settings, store, user, "", statistics};
    FunctionDialog dialog = openFunctionDialog(context, {"SP", "GR", "gone"}, 1, "");
    user.willAnswer(Answer::Ok);
    fillCountRatesFromLog(dialog, context);
    EXPECT_EQ(box(), "Error: Error doing Statistics listing") << "no file";
    load(0, {"SP", "GR"});
    fillCountRatesFromLog(dialog, context);
    EXPECT_EQ(dialog.ncr[0], "12.5000");
    EXPECT_EQ(dialog.ncr[1], "10.5000");
    dialog.source = 2;
    user.willAnswer(Answer::Ok);
    fillCountRatesFromLog(dialog, context);
    EXPECT_EQ(dialog.ncr[0], "12.5000") << "kept";
}

}  // namespace
}  // namespace welvane
