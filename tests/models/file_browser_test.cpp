#include "models/file_browser.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "app/startup.h"
#include "models/recent_files.h"
#include "shared/files.h"
#include "support/session_fixture.h"

namespace welvane {
namespace {

using test::LasText;
using Texts = std::vector<std::string>;

TEST(FileList, patternsFitWholeNames) {
    const struct {
        const char *pattern, *fits, *fitsNot;
    } cases[] = {{"*.las", "A.LAS", "a.las.bak"},
                 {"*.*", "README", nullptr},
                 {"*", "a.b", nullptr},
                 {"a?.las", "ab.las", "a.las"},
                 {"[ab].las", "[AB].las", "a.las"},
                 {"*.las;*.txt", "b.txt", "b.csv"},
                 {"*a*b*.x", "cacbc.x", "cbca.x"},
                 {".", ".", "a"},
                 {"*.las", ".las", "las"}};
    for (const auto& row : cases) {
        EXPECT_TRUE(fitsPattern(row.fits, row.pattern)) << row.pattern;
        if (row.fitsNot != nullptr) {
            EXPECT_FALSE(fitsPattern(row.fitsNot, row.pattern)) << row.pattern;
        }
    }
    // Each "*" of a hostile pattern takes the name once, not the pattern's power of it.
    EXPECT_FALSE(fitsPattern(std::string(5000, 'a'), std::string(40, '*') + "a*a*a*a*a*a*a*a*b"));
}

class BrowserWindow : public test::AppTest {
  protected:
    BrowserWindow() {
        startup(app);
        app.settings.inDir = folder.path();
        app.settings.outDir = folder.path("out");
        app.settings.editAfter = false;
        std::filesystem::create_directory(folder.path("out"));
        well("b.las");
        well("A.las");
        folder.write("note.txt", "text");
    }
    std::string well(const std::string& name) { return folder.writeLines(name, LasText{}.text()); }
    std::string key(const char* name) { return platform.settings().get(name, "(none)"); }
    static std::string bytesOf(std::uint64_t bytes) { return "Total bytes :" + std::to_string(bytes); }
};

TEST_F(BrowserWindow, listsWhatFitsThePattern) {
    Frame frame(app);
    FileBrowser browser(frame);
    EXPECT_EQ(browser.heading(), "File List (*.las)");
    EXPECT_EQ(browser.files(), (Texts{"A.las", "b.las"}));
    EXPECT_EQ(browser.folders(), Texts{"out"});
    EXPECT_EQ(browser.sourceLabel(), folder.path());
    EXPECT_EQ(browser.sizeText(), bytesOf(0));
    user.willType("*.*");
    EXPECT_TRUE(browser.chooseExtension());
    EXPECT_EQ(user.textPrompts().back().text, "Enter new file extension. (*.*, *.las)");
    EXPECT_EQ(user.textPrompts().back().defaultText, "las");
    EXPECT_EQ(browser.heading(), "File List (*.*)");
    EXPECT_EQ(browser.files(), (Texts{"A.las", "b.las", "note.txt"}));
    EXPECT_EQ(key("fileExt"), "*.*");
    user.willType("a/b");
    user.willAnswer(Answer::Ok);
    EXPECT_FALSE(browser.chooseExtension());
    EXPECT_EQ(box(), "Extension Error: Invalid extension. Using only valid file name characters. (a/b)");
    EXPECT_EQ(browser.pattern(), "*.*");
    user.willType(".TXT");
    EXPECT_TRUE(browser.chooseExtension());
    EXPECT_EQ(browser.files(), Texts{"note.txt"});
    EXPECT_EQ(FileBrowser(frame).pattern(), "*.TXT") << "kept for the next start";
}

TEST_F(BrowserWindow, aSelectionIsJudgedAndMeasured) {
    Frame frame(app);
    FileBrowser browser(frame);
    browser.select({"A.las"});
    EXPECT_EQ(browser.status(), "LAS File");
    EXPECT_EQ(app.run.lasFile, folder.path("A.las"));
    EXPECT_TRUE(frame.browser.editEnabled);
    const std::uint64_t one = *fileSize(folder.path("A.las"));
    EXPECT_EQ(browser.sizeText(), bytesOf(one));
    const auto details = browser.details();
    ASSERT_EQ(details.size(), 7U);
    EXPECT_EQ(details[0].second, "X-1");
    EXPECT_EQ(details[1].second, "1000 to 1001 M");
    EXPECT_EQ(details[6].second, "GR");

    browser.select({"A.las", "b.las"});
    EXPECT_EQ(app.run.lasFile, "");
    EXPECT_EQ(browser.sizeText(), bytesOf(2 * one));
    EXPECT_TRUE(browser.details().empty());
    app.settings.multipleSelection = false;
    browser.select({"A.las", "b.las"});
    EXPECT_EQ(browser.selected(), Texts{"b.las"});

    // Deleted behind the list's back.
    std::filesystem::remove(folder.path("A.las"));
    browser.select({"A.las"});
    EXPECT_EQ(browser.status(), "File Doesn't Exist");
    EXPECT_TRUE(browser.statusRed());
    EXPECT_EQ(browser.sizeText(), bytesOf(0));
    EXPECT_EQ(app.run.lasFile, "");
}

TEST_F(BrowserWindow, whatWasSelectedStaysSelected) {
    Frame frame(app);
    FileBrowser browser(frame);
    frame.browser.selected = {"B.LAS", "gone.las", "a.las"};
    well("c.las");
    browser.refresh();
    EXPECT_EQ(browser.files(), (Texts{"A.las", "b.las", "c.las"}));
    EXPECT_EQ(browser.selected(), (Texts{"A.las", "b.las"}));
}

TEST_F(BrowserWindow, anyNameIsListedAndUsable) {
    Frame frame(app);
    const Texts odd = {"new\nline.las", "\xE9t\xE9.las", "b|ar.las", "[x].las", "blank .las"};
    for (const std::string& name : odd) well(name);
    FileBrowser browser(frame);
    for (const std::string& name : odd) {
        EXPECT_EQ(std::count(browser.files().begin(), browser.files().end(), name), 1) << lineOfName(name);
        browser.select({name});
        EXPECT_EQ(browser.status(), "LAS File") << lineOfName(name);
        noteRecentFile(platform.settings(), app.run.lasFile);
    }
    EXPECT_EQ(lineOfName(odd[0]), "new\\nline.las");
    Texts expected;
    for (const std::string& name : odd) expected.insert(expected.begin(), folder.path(name));
    EXPECT_EQ(recentFiles(platform.settings()), expected);
    EXPECT_EQ(key("recent").find('\n'), std::string::npos) << "a setting is one line";
}

TEST_F(BrowserWindow, tenRecentFilesTheLatestFirst) {
    Texts paths;
    for (int file = 0; file < 12; ++file) {
        paths.push_back(well("w" + std::to_string(file) + "%7C.las"));
        noteRecentFile(platform.settings(), paths.back());
    }
    noteRecentFile(platform.settings(), paths[5]);
    std::filesystem::remove(paths[11]);
    EXPECT_EQ(recentFiles(platform.settings()),
              (Texts{paths[5], paths[10], paths[9], paths[8], paths[7], paths[6], paths[4], paths[3], paths[2]}));
}

TEST_F(BrowserWindow, filesAreDeletedAfterAQuestion) {
    Frame frame(app);
    FileBrowser browser(frame);
    browser.deleteSelected();
    browser.select({"b.las"});
    user.willAnswer(Answer::No);
    browser.deleteSelected();
    EXPECT_EQ(box(), "Delete File??: Please confirm your wish to delete b.las");
    EXPECT_EQ(user.asked().back().safe(), Answer::No);
    EXPECT_EQ(browser.files().size(), 2U);
    browser.select({"A.las", "b.las"});
    user.willAnswer(Answer::Yes);
    browser.deleteSelected();
    EXPECT_EQ(box(), "Delete File??: Please confirm your wish to delete these 2 file(s).");
    EXPECT_TRUE(browser.files().empty());
    EXPECT_TRUE(browser.selected().empty());
    EXPECT_EQ(browser.sizeText(), bytesOf(0));
    EXPECT_TRUE(frame.history.lastStays());
    EXPECT_EQ(frame.history.undoText(), "Deleted files do not come back: 2 files");

    // A folder in the place of a file stays: the others go, and the box names it.
    well("c.las");
    well("d.las");
    browser.refresh();
    browser.select({"c.las", "d.las"});
    std::filesystem::remove(folder.path("c.las"));
    std::filesystem::create_directories(folder.path("c.las/inside"));
    user.willAnswer(Answer::Yes);
    user.willAnswer(Answer::Ok);
    browser.deleteSelected();
    EXPECT_EQ(box(), "Can't Delete File!: Unable to delete c.las");
    EXPECT_FALSE(std::filesystem::exists(folder.path("d.las")));
    app.run.commandMode = true;
    well("e.las");
    browser.refresh();
    browser.select({"e.las"});
    browser.deleteSelected();
    EXPECT_TRUE(std::filesystem::exists(folder.path("e.las")));
}

TEST_F(BrowserWindow, aNewFolderIsEntered) {
    Frame frame(app);
    FileBrowser browser(frame);
    user.willType("");
    EXPECT_FALSE(browser.makeFolder());
    EXPECT_EQ(user.textPrompts().back().title, "Create New Folder");
    EXPECT_EQ(user.textPrompts().back().text, "Enter new folder name for \n" + folder.path());
    EXPECT_EQ(user.textPrompts().back().defaultText, "data");
    const struct {
        const char *typed, *shown;
    } illegal[] = {
        {"a/b", "\"a/b\""}, {"..", "\"..\""}, {"a\\b", "\"a\\b\""}, {"a\nb", "\"a\\nb\""}, {"out", "\"out\""}};
    for (const auto& row : illegal) {
        user.willType(row.typed);
        user.willAnswer(Answer::Ok);
        EXPECT_FALSE(browser.makeFolder()) << row.typed;
        const std::string start =
            std::string("Unable to Create Folder: Illegal folder name or unable to create the folder ") + row.shown +
            ". Try again. Error was :";
        EXPECT_TRUE(box().starts_with(start) && box().size() > start.size()) << box();
    }
    user.willType("\"new one\"");
    EXPECT_TRUE(browser.makeFolder());
    EXPECT_EQ(browser.sourceLabel(), folder.path("new one/"));
    EXPECT_TRUE(browser.files().empty());
    EXPECT_TRUE(browser.enterFolder(".."));
    EXPECT_EQ(browser.files().size(), 2U);
}

TEST_F(BrowserWindow, foldersAreChosenAndKept) {
    Frame frame(app);
    FileBrowser browser(frame);
    browser.select({"A.las"});
    user.willType(folder.path("out"));
    EXPECT_TRUE(browser.chooseSource());
    EXPECT_EQ(user.askedForText().back(), "Select Source Folder");
    EXPECT_EQ(key("inDir"), folder.path("out/"));
    EXPECT_TRUE(browser.selected().empty());
    EXPECT_EQ(browser.status(), "");
    user.willType(folder.path());
    EXPECT_TRUE(browser.chooseDestination());
    EXPECT_EQ(browser.destinationLabel(), folder.path());
    EXPECT_EQ(key("outDir"), folder.path());
    for (const char* none : {"none", "note.txt"}) {
        user.willType(folder.path(none));
        user.willAnswer(Answer::Ok);
        EXPECT_FALSE(browser.chooseSource()) << none;
        user.willType(folder.path(none));
        user.willAnswer(Answer::Ok);
        EXPECT_FALSE(browser.chooseDestination()) << none;
    }
    EXPECT_EQ(browser.sourceLabel(), folder.path("out/"));

    std::filesystem::remove(folder.path("out"));
    browser.refresh();
    EXPECT_EQ(browser.status(), folder.path("out") + "/: No such file or directory");
    EXPECT_TRUE(browser.statusRed());
}

}  // namespace
}  // namespace welvane
