#include "models/preferences.h"

#include <gtest/gtest.h>

#include "app/startup.h"
#include "support/app_fixture.h"

namespace welvane {
namespace {

class PreferencesTest : public test::AppTest {
  protected:
    PreferencesTest() { startup(app); }
    std::string key(const char* name) { return platform.settings().get(name, "(none)"); }
    /// The settings of the next start.
    StartupSettings nextStart() {
        App next(user, platform);
        startup(next);
        return next.settings;
    }
};

TEST_F(PreferencesTest, rowsShowTheSettings) {
    app.settings.matrix[10] = 55.5F;
    app.settings.keepBadLines = true;
    const Preferences preferences(app);
    const struct {
        int row;
        const char *name, *value;
    } rows[] = {{1, "Country", "Other"},
                {2, "Fill empty VALUE field in ~Curve", "No"},
                {4, "Fix illegal lines by adding #", "Yes"},
                {5, "Do Quick Check as files are selected", "Yes"},
                {6, "Path to Corvant.exe", "C:\\Program Files\\Ostrandmeyer\\Toolbox\\Corvant.exe"},
                {9, "Lime Density  (G/C3)", "2.71"},
                {11, "Fluid Density  (G/C3)", "1.00"},
                {12, "Sand Slowness us/f", "55.50"},
                {15, "Default Porosity units", "PU"},
                {18, "Colon Position", "60"},
                {19, "Colon + Position", "50"},
                {21, "Data # Decimals", "5"}};
    for (const auto& row : rows) {
        EXPECT_EQ(preferences.prd().text(row.row, 0), row.name);
        EXPECT_EQ(preferences.prd().text(row.row, 1), row.value) << row.name;
    }
    EXPECT_EQ(preferences.prd().rows(), 22);
}

TEST_F(PreferencesTest, theCountryTakesEffectAtOnceAndStays) {
    Preferences preferences(app);
    CellTableModel grid = preferences.model();
    EXPECT_EQ(grid.pickList(1, 1), "Canada|Other");
    EXPECT_TRUE(grid.edit(1, 1, "canada").done);
    EXPECT_EQ(grid.text(1, 1), "Canada");
    EXPECT_EQ(grid.text(12, 0), "Sand Slowness us/m");
    EXPECT_EQ(grid.text(12, 1), "182.09");
    EXPECT_EQ(app.settings.units.depthUnit, "M");
    EXPECT_TRUE(grid.edit(12, 1, "185").done);
    EXPECT_TRUE(grid.edit(1, 1, "Norway").done);
    EXPECT_EQ(grid.text(1, 1), "Other");
    EXPECT_EQ(grid.text(12, 1), "56.39") << "185 us/m is 56.388 us/f";
    EXPECT_TRUE(grid.edit(1, 1, "Canada").done);
    // Dismissed: nothing is stored, the country of the process stays.
    EXPECT_EQ(app.settings.country, "Canada");
    EXPECT_EQ(key("country"), "(none)");
    EXPECT_EQ(app.settings.matrix[10], 55.5F);
}

TEST_F(PreferencesTest, acceptedValuesHoldAtOnceAndAtTheNextStart) {
    app.settings.matrix[11] = 47.625F;
    Preferences preferences(app);
    CellTableModel grid = preferences.model();
    const struct {
        int row;
        const char* text;
    } edits[] = {{1, "Canada"}, {2, "yes"}, {4, "Yes"}, {8, "2.66"}, {12, "185"}, {15, "v/v"}, {18, "55"}, {20, "4"}};
    for (const auto& edit : edits) EXPECT_TRUE(grid.edit(edit.row, 1, edit.text).done) << edit.text;
    user.willType("/opt/corvant");
    EXPECT_TRUE(preferences.browseProgram(6));
    user.willType("");
    EXPECT_FALSE(preferences.browseProgram(7));
    EXPECT_EQ(user.filePrompts()[0].title, "Select Corvant program");
    EXPECT_EQ(user.filePrompts()[0].extension, "exe");
    EXPECT_EQ(user.filePrompts()[1].title, "Select LAS Log viewer program");
    EXPECT_FALSE(preferences.browseProgram(8));
    ASSERT_TRUE(preferences.accept());
    EXPECT_EQ(key("mdenDef"), "1.000|2.660|2.710|2.870|56.388|47.625|43.500") << "what was not edited keeps its digits";
    EXPECT_EQ(key("formatdef"), "6|15|55|50|4|5");
    EXPECT_EQ(key("fillCVal"), "1");
    EXPECT_EQ(key("fillCDESC"), "0");
    EXPECT_EQ(app.settings.format.dataWidth, 4) << "nothing is corrected before the next start";
    EXPECT_EQ(app.settings.certProgram, "/opt/corvant");
    const StartupSettings next = nextStart();
    EXPECT_EQ(next.format.dataWidth, 13);
    EXPECT_EQ(next.format.colonColumn, 55);
    EXPECT_EQ(next.country, "Canada");
    EXPECT_EQ(next.porosityUnits, "V/V");
    EXPECT_TRUE(next.keepBadLines);
    EXPECT_EQ(next.matrix[10], 56.388F);
}

TEST_F(PreferencesTest, whatCannotBeMeantIsRefused) {
    Preferences preferences(app);
    CellTableModel grid = preferences.model();
    const struct {
        int row, column;
        const char *text, *why;
    } cases[] = {{2, 1, "maybe", "\"maybe\" is not Yes or No"}, {15, 1, "percent", "\"percent\" is not V/V or PU"},
                 {8, 1, "heavy", "\"heavy\" is not a number"},  {16, 1, "99999", "overflow"},
                 {7, 1, "two\nlines", "a path is one line"},    {8, 0, "name", "this cell takes no edit"},
                 {0, 1, "head", "this cell takes no edit"}};
    for (const auto& row : cases) {
        const std::string before = grid.text(row.row, row.column);
        const EditOutcome outcome = grid.edit(row.row, row.column, row.text);
        EXPECT_FALSE(outcome.done) << row.text;
        EXPECT_EQ(outcome.why, row.why);
        EXPECT_EQ(grid.text(row.row, row.column), before);
    }
    EXPECT_TRUE(grid.edit(5, 1, "No").done);
    EXPECT_EQ(grid.text(5, 1), "No") << "shown, and nothing else";
}

/// A store that takes nothing, as a read-only file.
class ReadOnlyPlatform : public test::MemoryPlatform {
    struct : MemorySettings {
        bool put(std::string_view, std::string_view) override { return false; }
    } store_;

  public:
    SettingsStore& settings() override { return store_; }
};

TEST_F(PreferencesTest, whatCannotBeStoredIsToldAndHolds) {
    ReadOnlyPlatform readOnly;
    App other(user, readOnly);
    startup(other);
    Frame frame(other);
    Preferences preferences(other);
    EXPECT_TRUE(preferences.model().edit(at(PreferenceRow::DataWidth), 1, "17").done);
    user.willAnswer(Answer::Ok);
    EXPECT_FALSE(acceptPreferences(frame, preferences));
    EXPECT_EQ(box(), "Preferences Not Stored: The preferences hold until the program ends, but could not be stored.");
    EXPECT_EQ(other.settings.format.dataWidth, 17);
    EXPECT_TRUE(frame.history.lastStays());
}

TEST_F(PreferencesTest, aSlownessIsFoundUnderEachOfItsNames) {
    for (const Preference& preference : preferenceRows()) {
        const auto found = findPreference(preferenceName(preference, app.settings.units), app.settings);
        ASSERT_TRUE(found) << preference.name;
        EXPECT_EQ(found->preference->row, preference.row);
    }
    const struct {
        const char* name;
        double factor;
    } cases[] = {{"sand slowness us/m", 1 / 0.3048}, {" Sand Slowness us/f ", 1}, {"Sand Slowness", 1}};
    for (const auto& row : cases) {
        const auto found = findPreference(row.name, app.settings);
        ASSERT_TRUE(found) << row.name;
        EXPECT_EQ(found->preference->row, PreferenceRow::SandSlowness);
        EXPECT_EQ(found->units.sonicFactor, row.factor) << row.name;
    }
    EXPECT_FALSE(findPreference("us/f", app.settings));
    EXPECT_FALSE(findPreference("", app.settings));
}

}  // namespace
}  // namespace welvane
