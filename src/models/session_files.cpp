#include "models/session_files.h"

#include <algorithm>

#include "jobs/reopen.h"
#include "session/loading.h"
#include "session/session_setup.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view confirmTitle = "Please Confirm";
constexpr std::string_view removeText =
    "are you sure you want to remove the filter? All current file settings will be lost. ";
constexpr std::string_view applyText = "Are you sure you want to apply this filter to the currently loaded file(s)?";

}  // namespace

void takeFilterFile(App& app, Session& session, const std::string& path) {
    if (path != session.filterFile) session.filterApplied = false;
    session.filterFile = path;
    session.tables.frd.text(1, FrdColumn::Path) = path;
    if (path.empty()) session.tables.frd.setCheck(1, FrdColumn::Apply, Check::Unchecked);
    app.platform.settings().put("filFile", path);
}

bool doOpenFilter(App& app, Session& session, const std::string& title) {
    const FilePrompt prompt{title, "las Files (*.las;*.fil)|*.las;*.fil", dirOf(session.filterFile), "", false};
    const std::string chosen = app.user.askFile(prompt);
    if (chosen.empty()) return false;
    takeFilterFile(app, session, chosen);
    return true;
}

bool filBut(App& app, Session& session, bool on, FilterReport* report) {
    SessionTables& tables = session.tables;
    const Prompt question{std::string(confirmTitle), std::string(on ? applyText : removeText), Buttons::OkCancel,
                          Icon::Question, Answer::Cancel};
    if (app.user.ask(question) != Answer::Ok) return !on;
    const auto setCaptions = [&](std::string_view settings, std::string_view parameters) {
        tables.prd.setCaption(std::string(settings));
        tables.parg[0].setCaption(std::string(parameters));
    };
    if (on) {
        session.filterFile = tables.frd.text(1, FrdColumn::Path);
        const FilterReport followed = openFilter(app, session, session.rules);
        if (report != nullptr) *report = followed;
        if (!followed.applied) return false;
        tables.frd.setCheck(1, FrdColumn::Apply, Check::Checked);
        setCaptions(filterSettingsCaption, filterParametersCaption);
        return true;
    }
    tables.frd.setCheck(1, FrdColumn::Apply, Check::Unchecked);
    // By true figures no file that was selected in the browser since takes the place of one that is loaded.
    const bool isTrue = session.rules == FigureRules::trueFigures;
    if (!isTrue && !app.run.lasFile.empty()) session.slots[0].path = app.run.lasFile;
    Open4Files(app, session, isTrue ? std::max(session.firstSlot(), 0) : 0);
    setCaptions(settingsCaption, parametersCaption);
    return false;
}

EditOutcome switchFilter(Frame& frame, bool on) {
    FilterReport report;
    bool now = on;
    {
        const UndoHistory::Step step(frame.history, frame.app, frame.session, on ? "Apply filter" : "Remove filter");
        now = filBut(frame.app, frame.session, on, &report);
    }
    const bool cancelled = on ? !now && report.why.empty() : now;
    if (cancelled) return {false, ""};
    frame.problems.filtered(frame.session.filterFile, report);
    if (now != on) return {false, report.why};
    if (report.skipped.count == 0) return {};
    return {true, counted(static_cast<std::int64_t>(report.skipped.count), "line") +
                      " of the filter could not be followed: the list of problems tells them"};
}

bool browseFilter(App& app, Session& session) {
    if (!doOpenFilter(app, session)) return false;
    session.tables.setting(PrdRow::OpenedFile) = session.filterFile;
    return true;
}

FilterReport loadAllSlots(App& app, Session& session, std::string_view trigger) {
    if (trigger.empty()) return {};
    return reopenSlots(app, session, session.rules);
}

}  // namespace welvane
