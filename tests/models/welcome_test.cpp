#include "models/welcome.h"

#include <filesystem>

#include "support/session_fixture.h"

namespace welvane::test {
namespace {

/// A program whose data stand in a folder of the test, with the examples beside it.
class InstalledPlatform : public MemoryPlatform {
  public:
    explicit InstalledPlatform(const TempFolder& folder) : data_(folder.path("data") + "/") {
        std::filesystem::create_directory(data_);
    }
    std::string programFolder() const override { return data_; }

  private:
    std::string data_;
};

class Welcome : public testing::Test {
  protected:
    void example(const std::string& name, const std::string& curves) {
        std::filesystem::create_directory(folder.path("examples"));
        LasText las;
        las.curves = curves;
        folder.writeLines("examples/" + name, las.text());
    }
    TempFolder folder, target;
    InstalledPlatform platform{folder};
    ScriptedInterface user;
    App app{user, platform};
    Frame frame{app};
};

TEST_F(Welcome, TheExampleWellsAreCopiedAndJoined) {
    user.willAnswer(Answer::Ok);
    EXPECT_FALSE(openExamples(frame));
    EXPECT_EQ(user.asked().back().text, "The example wells were not installed with the program.");
    example("kestrel-7-run1.las", "GR. : \n");
    example("kestrel-7-run2.las", "GR. : \n");
    example("other.las", "SP. : \n");
    user.willType("");
    EXPECT_FALSE(openExamples(frame)) << "cancelled";
    EXPECT_EQ(user.askedForText().back(), "Copy the example wells into this folder");
    user.willType(target.path("none"));
    user.willAnswer(Answer::Ok);
    EXPECT_FALSE(openExamples(frame));
    EXPECT_EQ(user.asked().back().title, "Example Wells");
    EXPECT_EQ(user.asked().back().text, target.path("none/kestrel-7-run1.las") + " could not be written");
    EXPECT_FALSE(frame.isOpen(WorkArea::Session));
    user.willType(target.path());
    EXPECT_TRUE(openExamples(frame));
    EXPECT_TRUE(std::filesystem::exists(target.path("other.las")));
    EXPECT_EQ(frame.session.tables.outputs().text(linkRow(1, Link::Mnem), 1), "GR") << "two runs, joined";
    EXPECT_FALSE(frame.session.loaded(2));
    EXPECT_EQ(frame.browser.folder, target.path());
    EXPECT_EQ(frame.history.undoText(), "Splice");
}

TEST_F(Welcome, WhatIsDroppedOnTheWindowGoesToItsPart) {
    example("a.las", "GR. : \n");
    const std::string path = folder.path("examples/a.las");
    frame.running = true;
    dropOnFrame(frame, {path});
    EXPECT_FALSE(openFromList(frame, path) || frame.isOpen(WorkArea::Session)) << "not beside a run";
    frame.running = false;
    frame.browser.selected = {"old.las"};
    dropOnFrame(frame, {path, folder.path("examples")});
    EXPECT_EQ(frame.browser.folder, folder.path("examples") + "/") << "a folder is gone to";
    EXPECT_TRUE(frame.browser.selected.empty());
    EXPECT_FALSE(frame.isOpen(WorkArea::Session));
    app.run.lasFile = path;
    dropOnFrame(frame, {path});
    EXPECT_TRUE(frame.session.loaded(0));
    EXPECT_FALSE(frame.session.loaded(1)) << "the current file does not come along";
    EXPECT_TRUE(openFromList(frame, path));
    EXPECT_TRUE(frame.session.loaded(1));
    user.willAnswer(Answer::Ok);
    EXPECT_FALSE(openFromList(frame, folder.path("gone.las")));
}

}  // namespace
}  // namespace welvane::test
