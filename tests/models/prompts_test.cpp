#include <filesystem>
#include <regex>

#include "app/startup.h"
#include "engine/driver.h"
#include "models/channels_tab.h"
#include "models/export_picture.h"
#include "models/file_browser.h"
#include "models/frame.h"
#include "models/make_las_tab.h"
#include "models/session_files.h"
#include "models/session_store.h"
#include "models/survey.h"
#include "models/wrap_command.h"
#include "support/session_fixture.h"

namespace welvane::test {

class Prompts : public SessionTest {
  protected:
    /// A run as a window starts it, as laid down; the box under question has its answer, all else is told by it.
    RunOutcome run() {
        app.run.targetFile = folder.path("out.las");
        RunRequest request;
        request.outputMode = OutputFile::Mode::Beside;
        return processMMM(app, session, request);
    }
};

TEST_F(Prompts, AFileWithoutAStepAsksWhetherToFill) {
    load(0, {.start = 1000, .stop = 1003, .step = 0});
    session.tables.setting(PrdRow::SampleRate) = "0.5";
    user.willAnswer(Answer::No);
    EXPECT_TRUE(run().completed);
    ASSERT_EQ(user.asked().size(), 1U);
    EXPECT_EQ(box().substr(0, 27), "Fill in Samples?: file1.las");
    EXPECT_EQ(user.asked()[0].safe(), Answer::No);
}

TEST_F(Prompts, AWrapThatNobodyNeedsIsAsked) {
    for (const auto& [answer, wrap] : {std::pair{Answer::No, " NO"}, {Answer::Yes, " YES"}}) {
        load(0, {"GR"});
        session.tables.setting(PrdRow::Wrap) = textOf(Wrap::Yes);
        user.willAnswer(answer);
        EXPECT_TRUE(run().completed);
        EXPECT_EQ(user.asked().back().title, "WRAP Yes Mode Un-Necessary!");
        EXPECT_EQ(user.asked().back().safe(), Answer::No);
        const std::string written = folder.read("out.las");
        EXPECT_NE(written.substr(written.find("WRAP."), 60).find(wrap), npos) << written;
        std::filesystem::remove(folder.path("out.las"));
    }
}

TEST_F(Prompts, ValuesThatDoNotFitAreTold) {
    load(0, {.start = 100, .stop = 101, .step = 0.5, .curves = "A. : A\n", .channels = 1});
    session.tables.setting(PrdRow::DataWidth) = "4";
    app.settings.format.dataWidth = 4;
    app.settings.format.dataDecimals = 2;
    user.willAnswer(Answer::Ok);
    EXPECT_TRUE(run().completed);
    EXPECT_EQ(user.asked().back().title, "Some Data Changed to Fit Format Width!");
    EXPECT_EQ(user.asked().back().buttons, Buttons::Ok);
}

TEST_F(Prompts, AColumnThatIsTooNarrowForTheStepIsAsked) {
    load(0, {.start = 100, .stop = 101, .step = 0.25, .curves = "A. : A\n", .channels = 1});
    app.settings.format.dataWidth = 3;
    user.willAnswer(Answer::Cancel);
    EXPECT_FALSE(run().completed);
    EXPECT_EQ(user.asked().at(0).text.find("The format specified for the channels is not wide enough"), 0U) << box(0);
    EXPECT_FALSE(std::filesystem::exists(folder.path("out.las")));
}

TEST_F(Prompts, AnErrorOfARunIsTold) {
    ProcessRequest request;
    request.listingOpen = true;
    request.runListing = []() -> bool { throw RunTimeFailure("overflow"); };
    user.willAnswer(Answer::Ok);
    const ProcessOutcome outcome = process(app, session, request);
    EXPECT_EQ(box(), ": processMMM error=overflow, #=6");
    EXPECT_FALSE(outcome.completed);
    EXPECT_EQ(outcome.refusal, "overflow");
}

TEST_F(Prompts, EachDialogHasItsTitleAndCancelsByAnEmptyAnswer) {
    Frame frame(app);
    frame.browser.folder = folder.path();
    FileBrowser browser(frame);
    ListingSession listing(app);
    const std::vector<std::pair<std::string, std::function<bool()>>> dialogs = {
        {"Select Source Folder", [&] { return browser.chooseSource(); }},
        {"Select Destination Folder", [&] { return browser.chooseDestination(); }},
        {"File Extension", [&] { return browser.chooseExtension(); }},
        {"Create New Folder", [&] { return browser.makeFolder(); }},
        {"Open Table", [&] { return !askTableFile(frame).empty(); }},
        {"Select Header File", [&] { return !askHeaderFile(frame).empty(); }},
        {"Specify Listing File Name", [&] { return chooseReportPath(app, listing); }},
        {"Save Session", [&] { return !askSessionToSave(frame).empty(); }},
        {"Save Wrapped or Unwrapped LAS", [&] { return !askWrapOutput(frame, "a.las").empty(); }},
        {"Open Session", [&] { return !askSessionToOpen(frame).empty(); }},
        {"Save Picture", [&] { return !askPicturePath(user, "log", PictureKind::Svg).empty(); }},
        {"Open LAS File", [&] { return browseSlotFile(frame, 0); }},
        {"Open Filter File", [&] { return doOpenFilter(app, session); }},
        {"Find ASCII file To Load", [&] { return openTVDFile(app, session).outcome.done; }},
        {"Save Inclinometry Data", [&] { return saveInclinometryData(app, session).done; }}};
    for (const auto& [title, gesture] : dialogs) {
        user.willType("");
        EXPECT_FALSE(gesture()) << title;
        EXPECT_EQ(user.askedForText().back(), title);
    }
    EXPECT_EQ(user.textPrompts().at(0).text, "Enter new file extension. (*.*, *.las)");
    EXPECT_EQ(user.textPrompts().at(1).defaultText, "data");
    EXPECT_EQ(user.asked().size(), 0U);
}

/// Breaks down at the first box, as a start without a screen may.
struct BreakingInterface : SilentInterface {
    std::vector<Prompt> asked;
    Answer ask(const Prompt& prompt) override {
        asked.push_back(prompt);
        noteMet(prompt);
        if (asked.size() == 1) throw RunTimeFailure("no screen");
        return prompt.safe();
    }
};

TEST(PromptsAtStart, AStartThatFailsIsToldAndStops) {
    MemoryPlatform platform;
    BreakingInterface user;
    App app(user, platform);
    EXPECT_FALSE(loadProcess(app));
    ASSERT_EQ(user.asked.size(), 2U);
    EXPECT_EQ(user.asked[1].title, "Error Initializing Welvane.");
    EXPECT_EQ(whyUnknown(user.asked[1]), "");
}

std::string textOfTree(const std::string& folder) {
    std::string text;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(WELVANE_SOURCE_DIR + folder)) {
        const std::string path = entry.path().string();
        if (path.ends_with(".cpp") || (folder == "/src" && path.ends_with(".h"))) text += TempFolder::readFile(path);
    }
    return text;
}

/// Titles that a source gives to a box or a dialog: named as such, or the first text of a question.
std::vector<std::string> titlesOf(const std::string& source) {
    std::vector<std::string> titles;
    for (
        const char* pattern :
        {R"re([tT]itle(?: =|\{) ?"([^"\\]+)")re",
         R"re((?:ask|askText|askFile|askFolder|showWarning)\((?:frame\.app\.user, |app\.user, |user, )?\s*\{?\s*"([^"\\]+)")re",
         R"re(Prompt \w+\{\s*(?:\.title = )?"([^"\\]+)")re"}) {
        const std::regex title(pattern);
        for (std::sregex_iterator found(source.begin(), source.end(), title), end; found != end; ++found)
            titles.push_back((*found)[1]);
    }
    return titles;
}

/// Titles of pictures and of the window, and of a section.
constexpr std::string_view notReached[] = {"Depth coverage", "Log plot", "~Ascii", "Welvane"};

TEST(PromptTitles, EveryBoxOfTheSourcesIsReachedByATest) {
    const std::string tests = textOfTree("/tests");
    const std::vector<std::string> titles = titlesOf(textOfTree("/src"));
    EXPECT_GT(titles.size(), 60U);
    for (const std::string& title : titles) {
        const bool leftOut = std::ranges::find(notReached, title) != std::end(notReached);
        EXPECT_TRUE(leftOut || tests.find("\"" + title) != npos) << "no test meets \"" << title << '"';
    }
}

}  // namespace welvane::test
