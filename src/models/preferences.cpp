#include "models/preferences.h"

#include <utility>

#include "app/startup.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view checkerTitle = "Select Corvant program", viewerTitle = "Select LAS Log viewer program";

}  // namespace

Preferences::Preferences(App& app) : app_(app), edited_(app.settings), prd_(static_cast<int>(preferenceCount) + 1, 2) {
    prd_.text(0, 0) = "Preference";
    prd_.text(0, 1) = "Value";
    show();
}

void Preferences::show() {
    for (const Preference& preference : preferenceRows()) {
        prd_.text(preference.row, 0) = preferenceName(preference, edited_.units);
        std::string& value = prd_.text(preference.row, 1);
        // The row that is only shown keeps what was chosen in it.
        if (!preference.key.empty() || value.empty()) value = preferenceText(preference, edited_);
    }
}

void Preferences::edit(const CellEdit& edit) {
    const Preference& preference = preferenceOf(static_cast<PreferenceRow>(edit.row));
    if (sameText(edit.text, prd_.text(edit.row, 1))) return;
    setPreference(edited_, preference, edit.text, edited_.units);
    if (preference.row == PreferenceRow::QuickCheck) prd_.text(edit.row, 1) = edit.text;
    if (preference.row == PreferenceRow::Country) {
        app_.settings.country = edited_.country;
        setCountryUnits(app_.settings);
    }
    show();
}

CellTableModel Preferences::model() {
    TableRules rules;
    rules.mayEdit = [](TableIndex row, TableIndex column) { return row > 0 && column == 1; };
    rules.pickList = [](TableIndex row, TableIndex column) {
        return row > 0 && column == 1 ? std::string(preferenceOf(static_cast<PreferenceRow>(row)).list) : std::string();
    };
    rules.edit = [this](const CellEdit& one) { edit(one); };
    return {prd_, std::move(rules)};
}

bool Preferences::browseProgram(int row) {
    const bool checker = row == at(PreferenceRow::CheckerPath);
    if (!checker && row != at(PreferenceRow::ViewerPath)) return false;
    std::string& path = checker ? edited_.certProgram : edited_.logProgram;
    const std::string chosen =
        app_.user.askFile({std::string(checker ? checkerTitle : viewerTitle), "exe", dirOf(path), "", false});
    if (chosen.empty()) return false;
    path = chosen;
    show();
    return true;
}

bool Preferences::accept() {
    bool stored = true;
    for (const Preference& preference : preferenceRows())
        if (!preference.key.empty())
            stored = app_.platform.settings().put(preference.key, preferenceKeyText(preference, edited_)) && stored;
    app_.settings.country = edited_.country;
    setCountryUnits(app_.settings);
    app_.settings.fillCurveValue = edited_.fillCurveValue;
    app_.settings.fillCurveDescription = edited_.fillCurveDescription;
    app_.settings.keepBadLines = edited_.keepBadLines;
    app_.settings.certProgram = edited_.certProgram;
    app_.settings.logProgram = edited_.logProgram;
    app_.settings.matrix = edited_.matrix;
    app_.settings.porosityUnits = edited_.porosityUnits;
    app_.settings.format = edited_.format;
    if (!stored)
        app_.user.ask({"Preferences Not Stored",
                       "The preferences hold until the program ends, but could not be stored.", Buttons::Ok,
                       Icon::Warning, Answer::Ok});
    return stored;
}

bool acceptPreferences(Frame& frame, Preferences& preferences) {
    const bool stored = preferences.accept();
    frame.history.settingsHold(frame.app, "The preferences stay as they were chosen");
    return stored;
}

}  // namespace welvane
