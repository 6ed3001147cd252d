// The examples of docs/formats.md, read by the readers of the program: what the page promises has to hold.

#include <cmath>
#include <map>

#include "app/setting_keys.h"
#include "app/startup.h"
#include "functions/crnphi.h"
#include "functions/functions.h"
#include "platform/file_settings.h"
#include "session/db_value.h"
#include "session/filters.h"
#include "session/tvd.h"
#include "support/session_fixture.h"

namespace welvane::test {

class Formats : public SessionTest {
  protected:
    /// Puts each fenced example that has a file's name into the folder.
    Formats() {
        page_ = TempFolder::readFile(std::string(WELVANE_SOURCE_DIR) + "/docs/formats.md");
        constexpr std::string_view fence = "```";
        for (std::size_t at = page_.find(fence); at != std::string::npos;) {
            const std::size_t text = page_.find('\n', at) + 1, end = page_.find("\n```", text) + 1;
            const std::string name = page_.substr(at + fence.size(), text - 1 - at - fence.size());
            folder.writeLines(name, page_.substr(text, end - text));
            at = page_.find(fence, end + fence.size());
        }
    }
    std::string page_;
};

TEST_F(Formats, AFilterShapesAFile) {
    LasText las;
    las.start = 999;
    las.stop = 1003;
    las.step = 1;
    las.well = "WELL. Heron 4 : WELL\nUWI. 42-501-20130 : ID\n";
    las.curves = "ILD.OHMM : DEEP\nRHOB.G/C3 : DENSITY\nGR.GAPI : GAMMA\nSP.MV : LEFT OUT\n";
    las.channels = 4;
    load(0, las);
    setFilterInUse(session, folder.path("house.fil"));
    const FilterReport report = openFilter(app, session, FigureRules::trueFigures);
    EXPECT_TRUE(report.applied) << report.why;
    EXPECT_EQ(report.skipped.count, 0U) << report.skipped.first.front().what << report.skipped.first.front().why;
    EXPECT_EQ(outputs(), (Texts{"GR", "RDEP", "PHID", "(RHOB)", "(SP)"}));
    const auto function = FunctionDescriptor::parse(session.tables.outputs().data(SrdRow::Function, 3));
    EXPECT_EQ(function.code(), FunctionCode::BulkDen2Poro);
    EXPECT_EQ(function.parameters[0], "2.65");
    EXPECT_EQ(setting(PrdRow::From), ">=1000");
    EXPECT_EQ(setting(PrdRow::To), "1003");
    EXPECT_EQ(setting(PrdRow::Null), "-9999");
    EXPECT_EQ(setting(PrdRow::FormatColon), "50");
    EXPECT_EQ(setting(PrdRow::DataWidth), "12");
    EXPECT_EQ(setting(PrdRow::DataDecimals), "3");
    std::map<std::string, std::string> well;
    const Table& wrd = session.tables.wrd;
    for (int row = 1; row < wrd.rows(); ++row)
        well[wrd.text(row, FieldColumn::Mnem)] = wrd.text(row, FieldColumn::Value);
    EXPECT_EQ(well["WELL"], "Heron 4");
    EXPECT_EQ(well["OPER"], "Heron Oil");
    EXPECT_EQ(session.tables.parg[0].text(1, FieldColumn::Value), "8.5");
}

TEST_F(Formats, SurveysAreReadInBothForms) {
    // Built from 0 to 10 degrees over 100 m on an arc, then held.
    const double built = 100 / (10 * M_PI / 180) * std::sin(10 * M_PI / 180), held = 100 * std::cos(10 * M_PI / 180);
    struct Case {
        const char* name;
        double tie;
    };
    for (const Case& one : {Case{"survey.csv", 1000}, Case{"acquisition.txt", 999.5}}) {
        SCOPED_TRACE(one.name);
        setSurveyUnit(session.tables.trd, SurveyUnit::Metres);
        SurveyReport report;
        ASSERT_TRUE(readSurvey(folder.path(one.name), session, user, &report));
        EXPECT_EQ(report.passedOver, 0U);
        const double feet = mapDepth(session.inclinometry, 1200 / 0.3048, 0);
        EXPECT_NEAR(feet * 0.3048, one.tie + built + held, 0.02);
    }
}

TEST_F(Formats, ATableIsLookedUpByItsSecondColumn) {
    EXPECT_EQ(getDBValue(folder.path("wells.csv"), "42-501-20131", "operator"), "Kestrel Energy");
    EXPECT_EQ(getDBValue(folder.path("wells.csv"), "42-501-20130", "Remark"), "joint, with partners");
}

TEST_F(Formats, ReferenceFilesFillTheirTables) {
    ReferenceTables tables;
    ASSERT_TRUE(readUnits(tables, folder.path("units.ini")));
    EXPECT_EQ(2650 / unitFactor(tables, "KG/M3"), 2.65);
    EXPECT_NEAR(1000 / unitFactor(tables, "M"), 3280.84, 0.001);
    ASSERT_TRUE(readCurves(tables, folder.path("curves.ini")));
    EXPECT_EQ(groupMembers(tables, "GRC"), (Texts{"GR", "GRC"}));
    EXPECT_EQ(apiCodeForMnem(tables, "ZDEN"), "42 350 02 00");
    EXPECT_EQ(unitForMnem(tables, "RHOB", true), "K/M3");
    EXPECT_EQ(unitForMnem(tables, "RHOB", false), "G/C3");
    EXPECT_EQ(descriptionForMnem(tables, "GRC"), "GAMMA RAY, CORRECTED");
    ASSERT_TRUE(readParameters(tables, folder.path("para.ini")));
    ASSERT_EQ(tables.parameters.size(), 2U);
    EXPECT_EQ(tables.parameters[0].desc, "MATRIX");
    EXPECT_EQ(tables.parameters[0].searchText, "MATR LITHOLOGY");
    EXPECT_EQ(tables.parameters[1].unit, "IN");
    EXPECT_EQ(tables.parameters[1].value, "8.5");
    std::vector<std::string> rows;
    ASSERT_TRUE(readCrnphi(rows, CrnphiMode::Diameters, "NAPI", folder.path() + "/"));
    CrnphiRow row;
    ASSERT_EQ(rows.size(), 3U);
    ASSERT_TRUE(splitCrnphiRow(rows[2], row));
    EXPECT_EQ(row.highCountRate, "1900");
    EXPECT_EQ(row.lowCountRate, "850");
}

TEST_F(Formats, SettingsReachTheProcess) {
    const FileSettings store(folder.path("settings.ini"));
    for (const SettingKey& key : settingKeys()) {
        const std::string value = store.get(key.name, "");
        if (!value.empty()) platform.settings().put(key.name, value);
    }
    startup(app);
    EXPECT_EQ(app.settings.country, "Canada");
    EXPECT_EQ(app.settings.units.depthUnit, "M");
    EXPECT_EQ(app.settings.format.colonColumn, 50);
    EXPECT_EQ(app.settings.format.dataDecimals, 3);
    EXPECT_EQ(app.settings.certProgram, "/opt/corvant/corvant --fast");
    EXPECT_TRUE(app.settings.fillCurveDescription);
    EXPECT_FALSE(app.settings.fillCurveValue);
    openSession(app, session);
    EXPECT_FALSE(session.tables.checked(PrdRow::RenameDuplicates));
}

TEST_F(Formats, EverySettingHasItsRow) {
    const auto escaped = [](std::string_view text) {
        std::string shown;
        for (const char c : text) shown.append(c == '|' ? "\\|" : std::string(1, c));
        return shown;
    };
    std::string rows;
    for (const SettingKey& key : settingKeys()) {
        const std::string usual = key.defaultText.empty() ? "" : "`" + escaped(key.defaultText) + "`";
        rows += "| `" + std::string(key.name) + "` | " + usual + " | " + escaped(key.help) + " |\n";
    }
    const std::string head = "| key | default | what it is |\n|---|---|---|\n";
    EXPECT_EQ(page_.substr(page_.find(head) + head.size()), rows) << "the page holds another table";
}

}  // namespace welvane::test
