#include "models/search.h"

#include "support/app_fixture.h"

namespace welvane {
namespace {

using Search = test::AppTest;

TEST_F(Search, commandChecksInOrder) {
    const std::string source = folder.write("a.las", "a\r\nb\r\n");
    SearchRequest request{.form = SearchForm::Codes, .sourcePath = source};
    user.willAnswer(Answer::Ok);
    EXPECT_FALSE(goSearRep(app, request));
    EXPECT_EQ(box(0),
              "Nothing to Do!: There is nothing specifed to search for and/or replace. Specify something then click "
              "replace again.");

    EXPECT_EQ(searchLabel(SearchForm::Text), "Search for this Text...");
    EXPECT_EQ(replaceLabel(SearchForm::Codes), "and replace with ASCII these codes");
    request.search = "wrong";
    user.willType("");
    EXPECT_TRUE(goSearRep(app, request).cancelled) << "the target is asked for before the codes are looked at";
    EXPECT_EQ(user.askedForText().back(), "Specify File to Save");

    user.willType(folder.path("A.LAS"));
    user.willAnswer(Answer::Ok);
    EXPECT_FALSE(goSearRep(app, request));
    EXPECT_EQ(box(1),
              "Replace File is Same as Search File: Do not replace your original file! Specify a different name!");

    user.willType(folder.path("b.las"));
    user.willAnswer(Answer::Ok);
    EXPECT_FALSE(goSearRep(app, request));
    EXPECT_EQ(user.asked()[2].title, "INVALID CHARACTERS");

    request.search = "13 10";
    user.willType(folder.path("b.las"));
    const SearchReplaceResult done = goSearRep(app, request);
    EXPECT_TRUE(done);
    EXPECT_EQ(done.replacements, 2U);
    EXPECT_EQ(folder.read("b.las"), "ab");

    request = {.form = SearchForm::Text, .sourcePath = source, .search = "13 10", .replacement = ""};
    user.willType(folder.path("c.las"));
    EXPECT_TRUE(goSearRep(app, request));
    EXPECT_EQ(folder.read("c.las"), "a\r\nb\r\n");
}

}  // namespace
}  // namespace welvane
