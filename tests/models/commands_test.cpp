#include "models/commands.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

#include "models/command_effects.h"
#include "models/wrap_command.h"
#include "shared/failure.h"
#include "shared/files.h"
#include "shared/text.h"
#include "support/session_fixture.h"

namespace welvane {
namespace {

using test::LasText;
using Texts = std::vector<std::string>;

class Commands : public test::AppTest {
  protected:
    Commands() : frame(app) {
        frame.browser.folder = folder.path();
        frame.actions.show = [this](WorkArea area) { shown.push_back(area); };
        frame.actions.startProcess = [this] { calls.push_back("process"); };
        frame.actions.print = [this](const std::string& text) { calls.push_back("print " + text); };
    }
    std::string well(const std::string& name) { return folder.writeLines(name, LasText{}.text()); }
    void openLoadedSession(const std::string& name) {
        app.run.lasFile = well(name);
        perform(frame, "ID_MMM");
    }
    bool enabled(const char* id) { return commandEnabled(frame, *findCommand(id)); }
    std::string key(const char* name) { return platform.settings().get(name, "(none)"); }

    Frame frame;
    std::vector<WorkArea> shown;
    Texts calls;
};

TEST_F(Commands, everyIdIsKnownOnceAndReservedOnesDoNothing) {
    std::set<std::string> ids, shortcuts;
    for (const Command& command : commandTable()) {
        EXPECT_TRUE(ids.insert(upper(command.id)).second) << command.id;
        if (!command.shortcut.empty()) {
            EXPECT_TRUE(shortcuts.insert(std::string(command.shortcut)).second) << command.id;
        }
        const bool inMenu = !command.menu.empty();
        EXPECT_EQ(inMenu, command.kind == CommandKind::Action || command.kind == CommandKind::Toggle) << command.id;
        EXPECT_EQ(command.effect != nullptr, inMenu || command.kind == CommandKind::Alias) << command.id;
        EXPECT_TRUE(!inMenu || !command.tip.empty()) << command.id;
    }
    for (const char* id :
         {"ID_Multiple",   "ID_certAfter", "ID_EditAfter", "ID_ViewAfter",    "ID_ViewLog",       "ID_SpliceEM",
          "ID_Size",       "ID_Font",      "ID_Channel",   "ID_AddChannel",   "ID_DeleteChannel", "ID_Cut",
          "ID_Copy",       "ID_Paste",     "ID_OpenMany",  "ID_Open",         "ID_OpenFilter",    "ID_Print",
          "ID_Process",    "ID_SAVE",      "ID_prop",      "ID_EditLAS",      "ID_Preferences",   "ID_Exit",
          "ID_Toolbox",    "ID_MMM",       "ID_Certify",   "ID_CurveLibrary", "ID_About",         "ID_Help",
          "ID_ArrangeAll", "ID_Welvanewww"})
        EXPECT_TRUE(findCommand(id) != nullptr && findCommand(id)->effect != nullptr) << id;
    for (const char* id : {"ID_Refresh", "ID_option", "ID_SaveAsFilter", "ID_Test", "ID_info", "ID_Wizard",
                           "ID_MakeLAS", "ID_LAStoASCII", "ID_Zip", "ID_Un-Zip", "ID_FileMN", "ID_Editmn", "ID_Toolsmn",
                           "ID_Viewmn", "ID_Helpmn", "ID_Computemn", "ID_Windows"})
        EXPECT_EQ(perform(frame, id), CommandOutcome::Nothing) << id;
    EXPECT_EQ(perform(frame, "ID_Nobody"), CommandOutcome::Unknown);
}

TEST_F(Commands, everyEntryOfAMenuHasALetterOfItsOwn) {
    std::size_t entries = 0;
    for (const char* menu :
         {"", "ID_FileMN", "ID_Editmn", "ID_Viewmn", "ID_Computemn", "ID_Toolsmn", "ID_Windows", "ID_Helpmn"}) {
        Texts texts;
        for (const CommandEntry& entry : openMenu(frame, menu)) texts.push_back(entry.text);
        if (*menu == '\0')
            for (const Command& command : commandTable())
                if (command.kind == CommandKind::Menu) texts.emplace_back(command.text);
        entries += texts.size();
        std::set<char> letters;
        for (const std::string& text : texts) {
            const std::size_t mark = text.find('&');
            ASSERT_LT(mark + 1, text.size()) << text;
            EXPECT_TRUE(letters.insert(upperChar(text[mark + 1])).second) << menu << " " << text;
        }
    }
    const auto shownOnes = std::count_if(commandTable().begin(), commandTable().end(), [](const Command& command) {
        return !command.menu.empty() || command.kind == CommandKind::Menu;
    });
    EXPECT_EQ(entries, static_cast<std::size_t>(shownOnes)) << "a command stands in a menu that is none";
    ASSERT_GT(shortcutList().size(), 5U);
    EXPECT_EQ(shortcutList().front().text, "Browse Files");
}

TEST_F(Commands, whatCanBeGivenFollowsTheOpenWindows) {
    const Texts watched = {"ID_Process",       "ID_Save",    "ID_SpliceEM", "ID_OpenFilter",
                           "ID_SaveAsFilter",  "ID_EditLAS", "ID_Open",     "ID_AddChannel",
                           "ID_DeleteChannel", "ID_ViewLog", "ID_Copy",     "ID_Exit"};
    const auto given = [&] {
        std::string text;
        for (const std::string& id : watched)
            if (enabled(id.c_str())) text += id.substr(3) + " ";
        return text;
    };
    EXPECT_EQ(given(), "Open Exit ");
    perform(frame, "ID_MMM");
    EXPECT_EQ(given(), "Process Save SpliceEM OpenFilter SaveAsFilter EditLAS Open Exit ");
    frame.session.slots[0].path = well("a.las");
    ASSERT_TRUE(Open4Files(app, frame.session, 0).done());
    frame.currentChannel = 1;
    frame.actionsOf(WorkArea::Session).copy = [] {};
    EXPECT_EQ(given(),
              "Process Save SpliceEM OpenFilter SaveAsFilter EditLAS Open AddChannel DeleteChannel ViewLog Copy Exit ");
    frame.running = true;
    EXPECT_EQ(given(), "EditLAS ViewLog Copy ");
    EXPECT_EQ(perform(frame, "ID_SpliceEM"), CommandOutcome::NotNow);
    frame.running = false;
    closeArea(frame, WorkArea::Session);
    EXPECT_EQ(given(), "Open Exit ");
    perform(frame, "ID_Certify");
    EXPECT_EQ(given(), "Process Exit ");
}

TEST_F(Commands, undoSaysWhatItTakesBackAndWhatStays) {
    openLoadedSession("a.las");
    const auto tip = [&](const char* id) { return commandTip(frame, *findCommand(id)); };
    EXPECT_FALSE(enabled("ID_Undo"));
    EXPECT_EQ(tip("ID_Undo"), findCommand("ID_Undo")->tip);
    perform(frame, "ID_AddChannel");
    EXPECT_EQ(tip("ID_Undo"), "Takes back: Add Channel");
    frame.history.cannotUndo("Deleted files do not come back: b.las");
    EXPECT_EQ(tip("ID_Undo"), "Deleted files do not come back: b.las");
    user.willAnswer(Answer::Ok);
    perform(frame, "ID_Undo");
    EXPECT_EQ(box(), "Can't Undo: Deleted files do not come back: b.las. The next Undo takes back: Add Channel.");
    EXPECT_EQ(frame.session.tables.outputs().columns(), 3);
    perform(frame, "ID_Preferences");
    EXPECT_EQ(perform(frame, "ID_Undo"), CommandOutcome::NotNow) << "the window in front has no steps";
    openArea(frame, WorkArea::Session);
    perform(frame, "ID_Undo");
    EXPECT_EQ(frame.session.tables.outputs().columns(), 2);
    EXPECT_EQ(tip("ID_Redo"), "Makes again: Add Channel");
    perform(frame, "ID_Redo");
    frame.currentChannel = 2;
    perform(frame, "ID_Undo");
    EXPECT_FALSE(enabled("ID_DeleteChannel")) << "the current channel is gone";
    EXPECT_EQ(perform(frame, "ID_AddChannel"), CommandOutcome::Done);
    EXPECT_EQ(frame.currentChannel, 2);
}

TEST_F(Commands, togglesAreKept) {
    const struct {
        const char *id, *stored;
    } toggles[] = {{"ID_certAfter", "certafter"}, {"ID_EditAfter", "editafter"}, {"ID_Multiple", "multButState"}};
    for (const auto& toggle : toggles) {
        const Command& command = *findCommand(toggle.id);
        ASSERT_TRUE(commandChecked(frame, command)) << toggle.id;
        perform(frame, toggle.id);
        EXPECT_FALSE(commandChecked(frame, command)) << toggle.id;
        EXPECT_EQ(key(toggle.stored), "0");
        perform(frame, toggle.id);
        EXPECT_EQ(key(toggle.stored), "1");
    }
    EXPECT_EQ(commandText(frame, *findCommand("ID_Multiple")), "Select &Multiple Files");
    perform(frame, "ID_ViewAfter");
    EXPECT_TRUE(app.settings.viewAfter);

    perform(frame, "ID_MMM");
    EXPECT_EQ(commandText(frame, *findCommand("ID_Multiple")), "Allow &Multiple Channel Connections");
    perform(frame, "ID_Multiple");
    EXPECT_TRUE(frame.session.multipleConnections);
    EXPECT_TRUE(app.settings.multipleSelection) << "the browser's switch is another one";
    EXPECT_EQ(key("multButState"), "1");
}

TEST_F(Commands, columnWidthIsReadLeniently) {
    perform(frame, "ID_MMM");
    const struct {
        const char *stored, *shown, *typed, *kept;
    } cases[] = {{"", "800", "", "(none)"},   {"-1", "Fit", "250", "250"}, {"250", "250", "fit", "-1"},
                 {"600", "600", "-5", "600"}, {"700", "700", "x", "600"},  {"700", "700", "1e300", "600"},
                 {"700", "700", "0.2", "1"}};
    for (const auto& row : cases) {
        if (*row.stored != '\0') platform.settings().put("gridFontWidth", row.stored);
        user.willType(row.typed);
        perform(frame, "ID_Size");
        EXPECT_EQ(user.textPrompts().back().title, "Enter Column Width");
        EXPECT_EQ(
            user.textPrompts().back().text,
            "Supply a Column width for the grids. 200 or greater is suggested. Enter 'Fit' to autosize all columns "
            "to fits their contents.");
        EXPECT_EQ(user.textPrompts().back().defaultText, row.shown) << row.typed;
        EXPECT_EQ(key("gridFontWidth"), row.kept) << row.typed;
        EXPECT_EQ(std::to_string(chosenColumnWidth(app).value_or(-1)), *row.kept == '(' ? "-1" : row.kept);
        if (*row.typed != '\0') {
            EXPECT_EQ(std::to_string(app.settings.gridFont.columnWidth), row.kept);
        }
    }
}

TEST_F(Commands, fontIsCorrectedAndKept) {
    frame.actions.chooseFont = [](const GridFontSetting& now) {
        GridFontSetting font = now;
        font.name = "DejaVu Sans";
        font.size = 4;
        font.bold = true;
        return font;
    };
    perform(frame, "ID_Font");
    EXPECT_EQ(key("gridSize"), "DejaVu Sans|6|1|800");
    EXPECT_EQ(app.settings.gridFont.size, 6.0F);
    frame.actions.chooseFont = [](const GridFontSetting&) { return std::nullopt; };
    perform(frame, "ID_Font");
    EXPECT_EQ(app.settings.gridFont.name, "DejaVu Sans");
}

TEST_F(Commands, eachWindowHasItsCommandAndTheClipboardGoesToTheOneInFront) {
    const std::pair<const char*, WorkArea> windows[] = {
        {"ID_MMM", WorkArea::Session},          {"ID_Toolbox", WorkArea::Tools},
        {"ID_Certify", WorkArea::Certify},      {"ID_prop", WorkArea::Listing},
        {"ID_CurveLibrary", WorkArea::Library}, {"ID_Preferences", WorkArea::Preferences},
        {"ID_About", WorkArea::About},          {"ID_Help", WorkArea::Help}};
    for (const auto& [id, area] : windows) {
        EXPECT_EQ(perform(frame, id), CommandOutcome::Done) << id;
        EXPECT_TRUE(frame.isOpen(area)) << id;
        EXPECT_EQ(frame.front, area) << id;
        EXPECT_EQ(shown.back(), area) << id;
        EXPECT_EQ(perform(frame, "ID_Paste"), CommandOutcome::NotNow) << id;
    }
    AreaActions& help = frame.actionsOf(WorkArea::Help);
    help.cut = [this] { calls.push_back("cut"); };
    help.copy = [this] { calls.push_back("copy"); };
    help.paste = [this] { calls.push_back("paste"); };
    frame.actions.find = [this] { calls.push_back("find"); };
    frame.actions.findNext = [this] { calls.push_back("again"); };
    frame.actions.arrange = [this] { calls.push_back("arrange"); };
    for (const char* id : {"ID_Cut", "ID_Copy", "ID_Paste", "ID_Find", "ID_FindNext", "ID_ArrangeAll"})
        EXPECT_EQ(perform(frame, id), CommandOutcome::Done) << id;
    EXPECT_EQ(calls, (Texts{"cut", "copy", "paste", "find", "again", "arrange"}));
    user.willType(folder.path("f.fil"));
    perform(frame, "ID_OpenFilter");
    EXPECT_EQ(user.filePrompts().back().title, "Select LAS or FIL File for Filter");
    EXPECT_EQ(user.filePrompts().back().extension, "las Files (*.las;*.fil)|*.las;*.fil");
    EXPECT_EQ(frame.session.filterFile, folder.path("f.fil"));
}

TEST_F(Commands, openGoesToWhatIsInFront) {
    const std::string one = well("one.las"), two = well("two.las");
    user.willType(one);
    perform(frame, "ID_Open");
    EXPECT_EQ(user.filePrompts().back().title, "Select LAS File");
    EXPECT_EQ(user.filePrompts().back().extension, "las");
    EXPECT_EQ(app.run.lasFile, one);
    EXPECT_EQ(frame.browser.statusText, "LAS File");
    EXPECT_EQ(key("lasfile"), one);

    perform(frame, "ID_MMM");
    EXPECT_EQ(frame.session.slots[0].path, one) << "a session starts with the current input";
    user.willType(two);
    perform(frame, "ID_Open");
    EXPECT_EQ(frame.session.slots[1].path, two);
    frame.currentSlot = 0;
    user.willType(two);
    perform(frame, "ID_Open");
    EXPECT_EQ(frame.session.slots[0].path, two);

    perform(frame, "ID_Toolbox");
    user.willType(two);
    perform(frame, "ID_Open");
    EXPECT_EQ(frame.bytes.path, two);
    EXPECT_EQ(shown, (std::vector<WorkArea>{WorkArea::Session, WorkArea::Tools}));
}

TEST_F(Commands, whatCannotBeOpenedIsTold) {
    openLoadedSession("one.las");
    const std::string bad = folder.path("none.las");
    user.willAnswer(Answer::Ok);
    user.willType(bad);
    perform(frame, "ID_Open");
    EXPECT_EQ(box(), "File Not Loaded: " + bad + ": no such file");
    for (int slot = 1; slot < slotCount; ++slot) {
        user.willType(well("more" + std::to_string(slot) + ".las"));
        perform(frame, "ID_Open");
        EXPECT_TRUE(frame.session.loaded(slot));
    }
    user.willType(well("fifth.las"));
    user.willAnswer(Answer::Ok);
    perform(frame, "ID_Open");
    EXPECT_EQ(user.asked().back().title, "No Free File");

    platform.startsPrograms = false;
    user.willAnswer(Answer::Ok);
    perform(frame, "ID_Welvanewww");
    EXPECT_EQ(user.asked().back().title, "Can't Open File");
    user.willAnswer(Answer::Ok);
    perform(frame, "ID_ViewLog");
    EXPECT_EQ(user.asked().back().title, "No Log Viewer");
    app.settings.logProgram = "/opt/viewer";
    user.willAnswer(Answer::Ok);
    perform(frame, "ID_ViewLog");
    EXPECT_EQ(box(), "Can't Open File: /opt/viewer could not be started for " + folder.path("one.las"));
}

TEST_F(Commands, selectedFilesGoToTheirPrograms) {
    for (int file = 10; file <= 20; ++file)
        frame.browser.selected.push_back(fileNameOf(well(std::to_string(file) + ".las")));
    frame.browser.editEnabled = true;
    user.willAnswer(Answer::No);
    perform(frame, "ID_editLAS");
    EXPECT_EQ(box(), "Just Wondering...: You have selected nore than 10 files for editing. Are you sure?");
    EXPECT_EQ(user.asked().back().safe(), Answer::No);
    EXPECT_TRUE(platform.opened.empty());
    user.willAnswer(Answer::Yes);
    perform(frame, "ID_editLAS");
    EXPECT_EQ(platform.opened.size(), 11U);
    frame.browser.selected.pop_back();
    perform(frame, "ID_editLAS");
    EXPECT_EQ(platform.opened.size(), 21U) << "ten files are no question";
    platform.startsPrograms = false;
    user.willAnswer(Answer::Ok);
    perform(frame, "ID_editLAS");
}

TEST_F(Commands, theCurrentFileIsWrappedAndUnwrapped) {
    EXPECT_FALSE(enabled("ID_Wrap"));
    LasText las{.stop = 1010, .curves = "", .channels = 12};
    for (int channel = 0; channel < las.channels; ++channel) las.curves += "C" + std::to_string(channel) + ". :\n";
    const std::string file = app.run.lasFile = folder.writeLines("a.las", las.text()),
                      wrapped = folder.path("wrapped-a.las");
    EXPECT_TRUE(enabled("ID_Wrap"));
    frame.actions.wrapFile = [this] { calls.push_back(fileToWrap(frame)); };
    perform(frame, "ID_Wrap");
    EXPECT_EQ(calls, Texts{file});
    user.willType(wrapped);
    EXPECT_EQ(askWrapOutput(frame, file), wrapped);
    EXPECT_EQ(user.filePrompts().back().defaultName, "wrapped-a.las");
    EXPECT_EQ(wrapInto(app, file, wrapped).why, "Written: " + wrapped + ", wrapped");
    EXPECT_NE(folder.read("wrapped-a.las").find("YES"), npos);
    EXPECT_EQ(wrapInto(app, wrapped, folder.path("b.las")).why,
              "Written: " + folder.path("b.las") + ", one line per depth step");
    const std::string before = folder.read("a.las");
    EXPECT_FALSE(wrapInto(app, file, file).done);
    EXPECT_FALSE(wrapInto(app, folder.path("gone.las"), wrapped).done);
    EXPECT_EQ(folder.read("a.las"), before);
}

TEST_F(Commands, theLogViewerTakesTheCurrentInputElseTheFirstSlot) {
    openLoadedSession("slot.las");
    app.settings.logProgram = "viewer";
    app.run.lasFile = folder.path("current.las");
    perform(frame, "ID_ViewLog");
    app.run.lasFile.clear();
    perform(frame, "ID_ViewLog");
    EXPECT_EQ(platform.opened, (Texts{"viewer " + folder.path("current.las"), "viewer " + folder.path("slot.las")}));
}

TEST_F(Commands, saveAndPrintGoToWhatIsInFront) {
    openLoadedSession("one.las");
    perform(frame, "ID_Save");
    EXPECT_EQ(calls, Texts{"process"});
    frame.tab = SessionTab::Survey;
    user.willType("");
    perform(frame, "ID_Save");
    EXPECT_EQ(user.filePrompts().back().title, "Save Inclinometry Data");
    EXPECT_EQ(perform(frame, "ID_Print"), CommandOutcome::NotNow);

    perform(frame, "ID_CurveLibrary");
    AreaActions& library = frame.actionsOf(WorkArea::Library);
    library.save = [this] { calls.push_back("library"); };
    library.printText = [] { return std::string("groups"); };
    perform(frame, "ID_SAVE");
    perform(frame, "ID_Print");
    EXPECT_EQ(calls, (Texts{"process", "library", "print groups"}));

    library.save = [] { throw RunTimeFailure("overflow"); };
    user.willAnswer(Answer::Ok);
    EXPECT_EQ(perform(frame, "ID_Save"), CommandOutcome::Failed);
    EXPECT_EQ(box(), "Save: overflow");
}

TEST_F(Commands, channelsComeAndGoAtTheCurrentOne) {
    openLoadedSession("one.las");
    frame.currentChannel = 1;
    perform(frame, "ID_Channel");
    EXPECT_EQ(frame.currentChannel, 2);
    EXPECT_EQ(frame.session.tables.output(SrdRow::Mnem, 2), "Added");
    perform(frame, "ID_DeleteChannel");
    EXPECT_EQ(frame.session.tables.outputs().columns(), 2);
    EXPECT_EQ(frame.currentChannel, 1);
}

TEST_F(Commands, aWindowThatStaysKeepsTheProgram) {
    perform(frame, "ID_CurveLibrary");
    bool mayLeave = false;
    frame.actionsOf(WorkArea::Library).leave = [&] { return mayLeave; };
    frame.actions.exit = [this] { calls.push_back("exit"); };
    perform(frame, "ID_Exit");
    EXPECT_TRUE(calls.empty());
    EXPECT_TRUE(frame.isOpen(WorkArea::Library));
    mayLeave = true;
    perform(frame, "ID_Exit");
    EXPECT_EQ(calls, Texts{"exit"});
}

TEST_F(Commands, theEndLeavesNothingOpen) {
    platform.program().write("old.cer", "x");
    platform.program().write("old.CER", "x");
    platform.program().write("curves.ini", "x");
    std::filesystem::create_directory(platform.program().path("folder.cer"));
    platform.program().write("folder.cer/kept", "x");
    openLoadedSession("one.las");
    perform(frame, "ID_About");
    std::vector<WorkArea> closed;
    frame.actions.close = [&](WorkArea area) { closed.push_back(area); };
    frame.actions.exit = [this] { calls.push_back("exit"); };
    perform(frame, "ID_Exit");
    EXPECT_EQ(closed, (std::vector<WorkArea>{WorkArea::About, WorkArea::Session, WorkArea::Browser}));
    EXPECT_EQ(calls, Texts{"exit"});
    EXPECT_EQ(key("inDir"), folder.path());
    EXPECT_FALSE(frame.session.loaded(0));
    EXPECT_FALSE(std::filesystem::exists(platform.program().path("old.cer")));
    EXPECT_FALSE(std::filesystem::exists(platform.program().path("old.CER")));
    EXPECT_TRUE(std::filesystem::exists(platform.program().path("curves.ini")));
    EXPECT_TRUE(std::filesystem::exists(platform.program().path("folder.cer/kept")));
}

}  // namespace
}  // namespace welvane
