#include "models/browser.h"

#include <gtest/gtest.h>

#include "las/well.h"
#include "support/scripted_interface.h"

namespace welvane {
namespace {

using test::ScriptedInterface;
using test::smallWell;
using test::TempFolder;

struct Browser {
    TempFolder folder;
    BrowserState state;
    BrowserActions actions;
    RunState run;
    ScriptedInterface user;
    std::vector<std::string> calls;

    Browser() {
        state.folder = folder.path();
        state.outDir = folder.path("out");
        std::filesystem::create_directory(state.outDir);
        const auto note = [this](const char* what) {
            return [this, what](const std::string& path) { calls.push_back(what + path); };
        };
        actions = {note("last "), note("survey "), note("shell "), note("show ")};
    }
    void select(std::vector<std::string> names) {
        calls.clear();
        state.selected = std::move(names);
        classifySelection(state, actions, {}, run, user);
    }
};

TEST(Selection, statusOfWhatIsSelected) {
    const std::string banner = "# Ascii save\r\n";
    const struct {
        const char *file, *bytes, *status;
        bool red, usable;
    } cases[] = {
        {"a.las", "~V\r\n~W\r\n", "LAS File", false, true},
        {"a.CSV", "1,2", "CSV File", false, true},
        {"a.las", "", "File Doesn't Exist", true, false},
        {"a.las", "# Ascii save\r\n~C\r\n", "Plexmore 3.5 or earlier LAS", false, true},
        {"a.txt", "text", "before", false, true},
    };
    for (const auto& row : cases) {
        Browser browser;
        browser.state.statusText = "before";
        browser.folder.write(row.file, row.bytes);
        browser.select({row.file});
        EXPECT_EQ(browser.state.statusText, row.status) << row.file;
        EXPECT_EQ(browser.state.statusRed, row.red) << row.status;
        EXPECT_EQ(browser.run.lasFile, row.usable ? browser.folder.path(row.file) : "") << row.status;
        EXPECT_EQ(browser.state.inDir, browser.folder.path());
        EXPECT_EQ(browser.state.sourceFolderLabel, browser.folder.path());
        EXPECT_EQ(browser.calls.size(), row.usable ? 2U : 1U) << row.status;
    }
    Browser browser;
    browser.select({"one.las", "two.las"});
    EXPECT_EQ(browser.run.lasFile, "");
    EXPECT_EQ(browser.state.statusText, "");
    browser.select({"missing.las"});
    EXPECT_EQ(browser.state.statusText, "File Doesn't Exist");
}

TEST(Selection, unixTerminationIsRepairedOnDemand) {
    Browser browser;
    const std::string path = browser.folder.write("a.las", smallWell());
    browser.user.willAnswer(Answer::No);
    browser.select({"a.las"});
    EXPECT_EQ(browser.user.asked().at(0).title, "Unix Termination! ");
    EXPECT_EQ(browser.user.asked().at(0).text,
              "Unix Termination found. " + path + " is not usable as is. Repair Now? ");
    EXPECT_EQ(browser.run.lasFile, "");
    EXPECT_EQ(browser.state.statusText, "Unix Termination");

    browser.user.willAnswer(Answer::Yes);
    browser.user.willAnswer(Answer::Ok);
    browser.select({"a.las"});
    EXPECT_EQ(browser.user.asked().at(2).title, "Unix Repair Successful");
    EXPECT_EQ(browser.user.asked().at(2).text,
              "Unix repair successful. Original file renamed to" + browser.folder.path("a.unixterm.las"));
    EXPECT_EQ(browser.state.statusText, "LAS File");
    EXPECT_EQ(browser.run.lasFile, path);
    EXPECT_EQ(browser.folder.read("a.unixterm.las"), smallWell());
    EXPECT_EQ(browser.folder.read("a.las"), test::withLineEnds(smallWell()));

    browser.folder.write("a.las", "~V\n~W\n");
    browser.user.willAnswer(Answer::Yes);
    browser.user.willAnswer(Answer::Ok);
    browser.select({"a.las"});
    EXPECT_EQ(browser.folder.read("a.unixterm.las"), smallWell()) << "an older copy is not lost";
    EXPECT_EQ(browser.folder.read("a.unixterm-2.las"), "~V\n~W\n");
}

TEST(Selection, repairThatDoesNotHelpIsOfferedOnce) {
    Browser browser;
    const std::string path = browser.folder.write("a.las", std::string("~V\0\n~W\n", 7));
    for (const Answer answer : {Answer::Yes, Answer::Ok, Answer::Ok}) browser.user.willAnswer(answer);
    browser.select({"a.las"});
    EXPECT_EQ(browser.user.asked().at(2).title, "Caution!");
    EXPECT_EQ(browser.user.asked().at(2).text,
              "Unix repair attempt of " + path + " was NOT successful. Use this file with caution.");
    EXPECT_EQ(browser.run.lasFile, "");
}

TEST(Selection, commandModeRepairsWithoutAWord) {
    Browser browser;
    browser.run.commandMode = true;
    browser.folder.write("a.las", smallWell());
    browser.select({"a.las"});
    EXPECT_EQ(browser.run.lasFile, browser.folder.path("a.las"));
    EXPECT_EQ(browser.folder.read("a.las"), test::withLineEnds(smallWell()));
    EXPECT_FALSE(std::filesystem::exists(browser.folder.path("a.unixterm.las")));
    browser.folder.write("p.las", "# Ascii save\r\n~C\t\r\n");
    browser.select({"p.las"});
    EXPECT_EQ(browser.state.statusText, "Plexmore 2.X LAS");
}

TEST(Selection, plexmoreIsRebuiltIntoTheOutputFolder) {
    Browser browser;
    browser.state.editAfter = true;
    const std::string path =
        browser.folder.writeLines("p.las", "# Ascii save\n~W\nSTRT\t.M\t1 : x\n~C\nD.M : x\nA. : x\n~A\n1 2\n");
    browser.user.willAnswer(Answer::Yes);
    browser.select({"p.las"});
    EXPECT_EQ(browser.user.asked().at(0).title, "Plexmore 2.5 LAS (Bad LAS, Bad!)");
    EXPECT_EQ(browser.user.asked().at(0).text,
              "Plexmore 2.5 LAS found. " + path + " is not usable as is. Repair Now? ");
    EXPECT_EQ(browser.calls,
              (std::vector<std::string>{"last " + path, "shell " + browser.folder.path("out/p.las"), "show " + path}));
    EXPECT_TRUE(std::filesystem::exists(browser.folder.path("out/p.las")));
}

TEST(Selection, surveyIsOfferedWhileItsTabIsOpen) {
    Browser browser;
    browser.state.tvdTabOpen = true;
    const std::string path = browser.folder.write("s.txt", "1 2 3");
    browser.select({"s.txt"});
    EXPECT_EQ(browser.calls.at(1), "survey " + path);
    browser.user.willAnswer(Answer::No);
    browser.select({"s.txt"});
    EXPECT_EQ(browser.calls.size(), 1U);
    EXPECT_EQ(browser.user.asked().at(0).text, "Do you want to re-load the file?");
    EXPECT_EQ(browser.user.asked().at(0).title, "Please Confirm");
    browser.run.commandMode = true;
    browser.select({"s.txt"});
    EXPECT_EQ(browser.calls.size(), 3U);
}

}  // namespace
}  // namespace welvane
