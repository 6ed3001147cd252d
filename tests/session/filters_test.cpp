#include "session/filters.h"

#include "functions/functions.h"
#include "session/step_text.h"
#include "support/session_fixture.h"

namespace welvane::test {

class Filters : public SessionTest {
  protected:
    FigureRules rules = FigureRules::trueFigures;
    FilterReport apply(std::string_view text) {
        setFilterInUse(session, folder.writeLines("f.fil", text));
        return openFilter(app, session, rules);
    }
    FilterReport applyWell(std::string_view lines) {
        return apply("~V\nVERS. 2.0 :\nWRAP. NO :\n~W\n" + std::string(lines));
    }
    FilterReport applyCurves(std::string_view lines) { return apply("~C\nDEPT.M : DEPTH\n" + std::string(lines)); }
    static Texts skippedOf(const FilterReport& report) {
        Texts names;
        for (const SkippedStep& step : report.skipped.first) names.push_back(step.what);
        return names;
    }
    FunctionDescriptor descriptor(int column) const {
        return FunctionDescriptor::parse(session.tables.outputs().data(SrdRow::Function, column));
    }
};

TEST_F(Filters, SelectRenameAndOrderChannels) {
    LasText las;
    las.curves = "GR.GAPI : GAMMA RAY\nRHOB.G/C3 : DENSITY\nNPHI.V/V : NEUTRON\n";
    las.channels = 3;
    load(0, las);
    const FilterReport report =
        applyCurves("NPHI.V/V 42 890 : Porosity\nGamma.API 30 310 : Natural | gr\nLOST. : X | NOWHERE\n");
    EXPECT_TRUE(report.applied) << report.why;
    EXPECT_EQ(outputs(), (Texts{"NPHI", "Gamma", "(RHOB)"}));
    EXPECT_EQ(cell(SrdRow::Unit, 2), "API");
    EXPECT_EQ(cell(SrdRow::Value, 2), "30 310");
    EXPECT_EQ(cell(SrdRow::Description, 2), "Natural");
    EXPECT_EQ(link(0, 2), (Texts{"GR", "1", "1000", "1001"}));
    EXPECT_EQ(skippedOf(report), Texts{"LOST"});
    EXPECT_EQ(report.skipped.first[0].why, "there is no channel \"NOWHERE\" for it");
    EXPECT_TRUE(session.multipleConnections);
    EXPECT_TRUE(session.tables.filterInUse());
}

TEST_F(Filters, AMnemonicWinsOverASource) {
    load(0, {"GR", "SP"});
    applyCurves("A. : first | GR\nGR. : second\n");
    EXPECT_EQ(outputs(), (Texts{"GR", "(SP)"}));
    EXPECT_EQ(cell(SrdRow::Description, 1), "second");
}

TEST_F(Filters, FunctionsMakeNewColumns) {
    LasText las;
    las.curves = "X.OHMM : INPUT\nDPHI.PU : PORO\n";
    las.channels = 2;
    load(0, las);
    struct Case {
        std::string_view clause, key;
        std::string_view fields;  ///< 1 to 5
        std::size_t skipped;
    };
    for (const Case& one :
         {Case{"BULKDEN2PORO,X,2.65,1.0", "BULKDEN2PORO", "2|2.65|1.0||", 0},
          Case{"denmatrix, dphi, LIME, sand", "DENMATRIX", "4|||1|0", 0},
          Case{"DENMATRIX,DPHI,2.65,1,SAND,DOLO", "DENMATRIX", "4|2.65|1|0|2", 0},
          Case{"MATH,X,2,0,1,1,9,9", "MATH", "10|2|0|1|1", 0}, Case{"RES2COND,X", "RES2COND", "0||||", 0},
          Case{"MATH,X,2", "MATH", "10|2|||", 1}, Case{"NOSUCH,X,1", "<none>", "", 1},
          Case{"RES2COND,GONE", "RES2COND", "0||||", 1}, Case{"", "<none>", "", 2}}) {
        SCOPED_TRACE(one.clause);
        Open4Files(app, session, 0);
        const FilterReport report = applyCurves("NEW.V/V 1 : Made | FUN=" + std::string(one.clause) + "\n");
        EXPECT_EQ(outputs(), (Texts{"NEW", "(X)", "(DPHI)"}));
        EXPECT_EQ(cell(SrdRow::Function, 1), one.key);
        EXPECT_EQ(cell(SrdRow::Description, 1), "Made");
        EXPECT_EQ(session.tables.outputs()
                      .data(SrdRow::Function, 1)
                      .substr(0, one.fields.empty() ? std::string::npos : one.fields.size()),
                  one.fields);
        EXPECT_EQ(report.skipped.count, one.skipped);
        for (const Table& table : session.tables.srd) EXPECT_EQ(table.columns(), 4);
    }
    Open4Files(app, session, 0);
    applyCurves("NEW. : | FUN=RES2COND,X\n");
    EXPECT_EQ(link(0, 1), (Texts{"X", "1", "1000", "1001"}));
    EXPECT_EQ(cell(SrdRow::InputUnit, 1), "OHMM");
    EXPECT_EQ(descriptor(1).resultMnem, "NEW");
}

TEST_F(Filters, CurveLinesKeepTheChannelsThatTheyDoNotName) {
    load(0, {"GR", "RHOB", "SP"});
    const FilterReport report = applyCurveLines(
        session, {"DPHI.V/V : Porosity | FUN=BULKDEN2PORO,RHOB,2.65,1.0", "POT.MV : | SP", "no line at all"},
        FigureRules::trueFigures);
    EXPECT_EQ(outputs(), (Texts{"DPHI", "POT", "GR", "RHOB"}));
    EXPECT_EQ(skippedOf(report), Texts{"no line at all"});
    EXPECT_FALSE(session.tables.filterInUse());
}

TEST_F(Filters, AFunctionReadsItsOwnColumnWhereverColumnsMove) {
    struct Case {
        FigureRules rules;
        Texts lines, outputs, reads, inFront;  ///< of columns in use: what the link names, and the function in front
    };
    const FigureRules laid = FigureRules::asLaidDown, true_ = FigureRules::trueFigures;
    for (const Case& one :
         {Case{laid, {"RHOB. : x | FUN=MATH,GR,2,0,0,1"}, {"RHOB", "RHOB", "GR"}, {"RHOB", "GR", "GR"}, {}},
          Case{true_, {"RHOB. : x | FUN=MATH,GR,2,0,0,1"}, {"RHOB", "GR"}, {"GR", "GR"}, {}},
          Case{true_, {"RHOB. : x | FUN=MATH,GONE,2,0,0,1"}, {"RHOB", "GR", "RHOB"}, {"", "GR", "RHOB"}, {}},
          Case{true_,
               {"RHOB. : x | FUN=MATH,GR,2,0,0,1", "RHOB. : kept"},
               {"RHOB", "RHOB", "GR"},
               {"GR", "RHOB", "GR"},
               {}},
          Case{true_,
               {"B. : x | FUN=MATH,GR,2,0,0,1", "A. : y | FUN=MATH,B,3,0,0,1"},
               {"B", "A", "GR", "RHOB"},
               {"GR", "GR", "GR", "RHOB"},
               {"A after B"}},
          Case{laid,
               {"B. : x | FUN=MATH,GR,2,0,0,1", "A. : y | FUN=MATH,B,3,0,0,1"},
               {"B", "A", "GR", "RHOB"},
               {"GR", "GR", "GR", "RHOB"},
               {}}}) {
        SCOPED_TRACE(one.lines.front());
        load(0, {"GR", "RHOB"});
        applyCurveLines(session, one.lines, one.rules);
        const Table& table = session.tables.outputs();
        Texts names, reads, inFront;
        for (int column = 1; column < table.columns(); ++column) {
            if (!table.checked(SrdRow::Use, column)) continue;
            names.push_back(cell(SrdRow::Mnem, column));
            reads.push_back(link(0, column)[0]);
            EXPECT_EQ(readsOwnColumn(table, column), !table.data(SrdRow::Function, column).empty());
            if (const int front = functionInFront(table, column); front != 0)
                inFront.push_back(names.back() + " after " + cell(SrdRow::Mnem, front));
        }
        EXPECT_EQ(names, one.outputs);
        EXPECT_EQ(reads, one.reads);
        EXPECT_EQ(inFront, one.inFront);
    }
}

TEST_F(Filters, stepAndDirection) {
    rules = FigureRules::asLaidDown;
    struct Case {
        std::string_view lines, rate, unit, direction, from, to;
    };
    for (const Case& one :
         {Case{"STEP.M 0.5 :\n", "\" 1.64042 f (0.5000 m)", "M", "Shallow to Deep", "1000", "1001"},
          Case{"STRT.f 10 :\nSTOP.f 20 :\nSTEP.f -0.5 :\n", "\" 0.5000 f (0.1524 m)", "F", "Deep To Shallow", "20",
               "10"},
          Case{"STRT. 20 :\nSTOP. 10 :\nSTEP. 0.25 :\n", "\" 0.82021 f (0.2500 m)", "M", "Shallow to Deep", "10", "20"},
          Case{"STRT.M >=1000 :\nSTOP.M 900 :\nSTEP.M 1 :\n", "\" 3.28084 f (1.0000 m)", "M", "Shallow to Deep",
               ">=1000", "900"},
          Case{"STEP.F 0 :\n", "\" 1.64042 f (0.5000 m)", "F", "Shallow to Deep", "1000", "1001"},
          Case{"NULL. -999 :\n", "\" 1.64042 f (0.5000 m)", "M", "Shallow to Deep", "1000", "1001"},
          Case{"STRT.M abc :\n", "\" 1.64042 f (0.5000 m)", "M", "Shallow to Deep", "1000", "1001"}}) {
        SCOPED_TRACE(one.lines);
        load(0, {"GR"});
        applyWell(one.lines);
        EXPECT_EQ(setting(PrdRow::SampleRate), one.rate);
        EXPECT_EQ(setting(PrdRow::DepthUnits), one.unit);
        EXPECT_EQ(setting(PrdRow::Direction), one.direction);
        EXPECT_EQ(setting(PrdRow::From), one.from);
        EXPECT_EQ(setting(PrdRow::To), one.to);
    }
}

TEST_F(Filters, TheStepTextReadsBackAsTheSameStep) {
    for (const double step : {0.5, 0.1524, 0.25, 1.0, 2.0, 0.0254})
        for (const char* unit : {"F", "FT", "M", "FEET"})
            EXPECT_EQ(formatMask(stepNumber(stepItemText(step, unit), unit), 4), formatMask(step, 4))
                << step << " " << unit;
}

TEST_F(Filters, PropertiesComeFromVersionAndWell) {
    struct Case {
        std::string_view name, text;
        PrdRow row;
        std::string_view value;
    };
    for (const Case& one : {Case{"wrap", "~V\nWRAP. YES :\n", PrdRow::Wrap, "Yes"},
                            Case{"wrap blank", "~V\nWRAP. :\n", PrdRow::Wrap, "No"},
                            Case{"wrap unknown", "~V\nWRAP. MAYBE :\n", PrdRow::Wrap, "No"},
                            Case{"vers", "~V\nVERS. 1.20 :\n", PrdRow::Vers, "1.2"},
                            Case{"vers unknown", "~V\nVERS. 3.0 :\n", PrdRow::Vers, "2.0"},
                            Case{"null", "~W\nNULL. -99999 :\n", PrdRow::Null, "-99999"},
                            Case{"null absent", "~W\nSTRT. :\n", PrdRow::Null, "-999.25"},
                            Case{"offset", "~W\nDO_FILTER. 2.5 :\n", PrdRow::DepthOffset, "2.5"},
                            Case{"offset absent", "~W\n", PrdRow::DepthOffset, "0"},
                            Case{"dot", "~W\nDVCP_FILTER. 7 16 50 3 :\n", PrdRow::FormatDot, "7"},
                            Case{"plus", "~W\nDVCP_FILTER. 7 16 50 3 :\n", PrdRow::WellPlus, "3"},
                            Case{"columns out of order", "~W\nDVCP_FILTER. 30 10 60 :\n", PrdRow::FormatValue, "15"},
                            Case{"dot at 0", "~W\nDVCP_FILTER. 0 15 40 0 :\n", PrdRow::FormatColon, "60"},
                            Case{"value too near", "~W\nDVCP_FILTER. 7 13 50 :\n", PrdRow::FormatDot, "6"},
                            Case{"no number", "~W\nDVCP_FILTER. 7 x 50 :\n", PrdRow::FormatColon, "50"},
                            Case{"beyond 16 bits", "~W\nDVCP_FILTER. 6 15 99999 :\n", PrdRow::FormatColon, "60"},
                            Case{"width", "~W\nFMT_FILTER. 12.4 :\n", PrdRow::DataWidth, "12"},
                            Case{"decimals", "~W\nFMT_FILTER. 12.4 :\n", PrdRow::DataDecimals, "4"},
                            Case{"blank between", "~W\nFMT_FILTER. 14 2 :\n", PrdRow::DataDecimals, "2"},
                            Case{"no width", "~W\nFMT_FILTER. 0 2 :\n", PrdRow::DataWidth, "13"}}) {
        SCOPED_TRACE(one.name);
        app.settings.format = FormatDefaults{};
        load(0, {"GR"});
        EXPECT_TRUE(apply(one.text).applied);
        EXPECT_EQ(setting(one.row), one.value);
        EXPECT_EQ(setting(PrdRow::DataWidth), std::to_string(app.settings.format.dataWidth))
            << "formats take effect at once";
    }
}

TEST_F(Filters, WellAndParameterAreMergedWithTheFiles) {
    LasText las;
    las.well = "COMP. Acme Oil : COMPANY\nUWI. 77 : ID\n";
    las.parameters = "MATR. SAND : MATRIX\nBHT.DEGC 85 : TEMP\n";
    load(0, las);
    apply(
        "~W\nSTRT.M : START\nDO_FILTER. 1 :\nCOMP. : Owner | note\nWELL. X-9 : WELL\n~P\nBHT.F 99 : Temperature\nMATR. "
        ": Rock\nEXTRA.M 1.5 : Added\n");
    const auto rows = [](const Table& table) {
        Texts lines;
        for (int row = 1; row < table.rows(); ++row)
            lines.push_back(table.text(row, 0) + "." + table.text(row, 2) + " " + table.text(row, 3) + ":" +
                            table.text(row, 5) + (table.rowHidden(row) ? " hidden" : ""));
        return lines;
    };
    EXPECT_EQ(rows(session.tables.parg[0]), (Texts{"BHT.F 99:Temperature", "MATR. SAND:Rock", "EXTRA.M 1.5:Added"}));
    EXPECT_EQ(rows(session.tables.wrd),
              (Texts{"STRT.M 1000:START", "DO_FILTER. 1: hidden", "COMP. Acme Oil:Owner", "WELL. X-9:WELL", ". :"}));
    EXPECT_EQ(session.tables.parg[0].caption(), "~Parameters (from Filter)");
    load(0, las);
    apply("~W\nNULL. -999.25 :\n");
    EXPECT_EQ(session.tables.parg[0].text(1, 0), "MATR") << "a filter without ~P leaves the parameters";
    EXPECT_EQ(outputs(), Texts{"GR"}) << "and one without ~C the channels";
    las.vers = "1.2";
    las.well = "WELL. WELL : A-1\n";
    load(0, las);
    apply("~W\nWELL. : Name\nNULL. :\n");
    EXPECT_EQ(session.tables.wrd.text(1, FieldColumn::Value), "A-1") << "LAS 1.2 keeps its texts behind the colon";
}

TEST_F(Filters, ReferencesAreLookedUp) {
    LasText las;
    las.well = "UWI. B-2 : ID\nNAME. My Well : N\n";
    load(0, las);
    folder.write("Wells.csv", "n,uwi,operator\r\n1,B-2,Beta Ltd\r\n2,file1.las,By File\r\n");
    folder.write("My Wells.csv", "n,uwi,The Operator\r\n1,B-2,Gamma Inc\r\n");
    folder.writeLines("other.las", "~V\nVERS. 2.0 :\n~W\nCNTY. Harris : C\n");
    struct Case {
        std::string_view reference, value;
    };
    for (const Case& one :
         {Case{"[File=Wells.csv Key=LAS(~W:UWI) Col=Operator]", "Beta Ltd"},
          Case{"[file=WELLS.CSV key=b-2 col=operator] x", "Beta Ltd"},
          Case{"[File=Wells.csv Key=ThisLASFileName Col=operator]", "By File"},
          Case{"[File=other.las Key=CNTY]", "Harris"}, Case{"[File=Wells.csv Key=NONE Col=Operator]", ""},
          Case{"[File=gone.csv Key=B-2 Col=Operator]", ""},
          Case{"[File=Wells.csv Key=LAS(UWI) Col=\"Operator\"]", "Beta Ltd"}, Case{"[LAS(~W:NAME)]", "My Well"},
          Case{"[File=\"My Wells.csv\" Key=B-2 Col=\"The Operator\"]", "Gamma Inc"},
          Case{"[\"File=My Wells.csv\" Key=B-2 Col=\"The Operator\"]", "Gamma Inc"},
          Case{"[File=Wells.csv Key=B-2 now Col=Operator]", "Beta Ltd"},
          Case{"[File=My Wells.csv Key=B-2 Col=\"The Operator\"]", ""}, Case{"[]", ""}, Case{"[open", "[open"}}) {
        SCOPED_TRACE(one.reference);
        const FilterReport report =
            apply("~W\nSRVC. " + std::string(one.reference) + " : X\n~P\nOP. " + std::string(one.reference) + " : X\n");
        EXPECT_EQ(session.tables.wrd.text(1, FieldColumn::Value), one.value);
        EXPECT_EQ(session.tables.parg[0].text(1, FieldColumn::Value), one.value);
        EXPECT_EQ(report.skipped.count, one.value.empty() ? 2U : 0U);
        EXPECT_EQ(session.tables.wrd.data(1, FieldColumn::Value), one.value == one.reference ? "" : one.reference);
    }
    // A filter that names itself is read as a table or a header once, and no more.
    EXPECT_TRUE(apply("~W\nSRVC. [File=f.fil Key=SRVC] : X\nWELL. [File=f.fil Key=SRVC Col=SRVC] :\n").applied);
}

TEST_F(Filters, BadFiltersChangeNothing) {
    load(0, {"GR", "SP"});
    for (const std::string& bytes :
         {std::string(), std::string(10000, '\0'), std::string("just text\r\n"), std::string(200000, '~')}) {
        setFilterInUse(session, folder.write("bad.fil", bytes));
        const FilterReport report = openFilter(app, session, FigureRules::trueFigures);
        EXPECT_FALSE(report.applied);
        EXPECT_FALSE(report.why.empty());
        EXPECT_EQ(outputs(), (Texts{"GR", "SP"}));
        EXPECT_EQ(setting(PrdRow::SampleRate), "0.5000");
    }
    session.filterFile = folder.path("missing.fil");
    EXPECT_FALSE(openFilter(app, session, FigureRules::trueFigures).applied);
    setFilterInUse(session, folder.write("unix.fil", "~C\nSP. : S\n"));
    EXPECT_TRUE(openFilter(app, session, FigureRules::trueFigures).applied)
        << "line feeds alone are read through a copy";
    EXPECT_EQ(outputs(), (Texts{"SP", "(GR)"}));
}

TEST_F(Filters, ManyLinesAndQuotesStayCheap) {
    load(0, {"GR"});
    std::string text;
    for (int line = 0; line < 10000; ++line) text += "C" + std::to_string(line) + ".\"U\" \"v\" : \"d\" | \"GR\"\n";
    const FilterReport report = applyCurves(text + "G. : \"quoted\" | GR\n");
    EXPECT_EQ(outputs(), Texts{"G"});
    EXPECT_EQ(cell(SrdRow::Description, 1), "\"quoted\"");
    EXPECT_EQ(report.skipped.count, 10000U);
    EXPECT_EQ(report.skipped.first.size(), FailureList::kept);
    std::string functions;
    for (int line = 0; line < 40000; ++line) functions += "C. : | FUN=MATH,GR,1,0,0,1\n";
    const FilterReport tooMany = applyCurves(functions);
    EXPECT_FALSE(tooMany.applied);
    EXPECT_EQ(outputs(), Texts{"G"}) << "beyond 16-bit columns nothing changes";
}

}  // namespace welvane::test
