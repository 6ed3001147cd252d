#include "cli/verbs.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "program_in_folder.h"

namespace welvane {
namespace {

using test::ProgramRun;
using Json = nlohmann::json;

struct Verbs : test::ProgramInFolder {};

TEST_F(Verbs, usageHelpAndVersion) {
    struct Case {
        std::vector<std::string> arguments;
        int status;
        const char *out, *err;  ///< what each stream holds; "" nothing at all
    };
    for (const Case& row :
         {Case{{"--version"}, 0, "welvane ", ""}, Case{{"--help"}, 0, "Verbs:", ""},
          Case{{"help", "run"}, 0, "--splice", ""}, Case{{"run", "--help"}, 0, "--dry-run", ""},
          Case{{}, 2, "", "Verbs:"}, Case{{"help", "nothing"}, 2, "", "no verb 'nothing'"},
          Case{{"run"}, 2, "", "welvane: "}, Case{{"info", "a.las", "--bogus"}, 2, "", "--bogus"},
          Case{{"info", "a.las", "--yes", "--no"}, 2, "", "excludes"},
          Case{{"run", "a.las"}, 2, "", "no output is named"}, Case{{"none.las", "/Output=c.las"}, 0, "", ""}}) {
        const ProgramRun done = run(row.arguments);
        const std::string name = row.arguments.empty() ? "no argument" : row.arguments.back();
        EXPECT_EQ(done.status, row.status) << name << done.err;
        EXPECT_TRUE(*row.out == '\0' ? done.out.empty() : done.out.find(row.out) != std::string::npos) << name << "\n"
                                                                                                       << done.out;
        EXPECT_TRUE(*row.err == '\0' ? done.err.empty() : done.err.find(row.err) != std::string::npos) << name << "\n"
                                                                                                       << done.err;
    }
    for (const Verb& verb : verbTable()) EXPECT_EQ(run({std::string(verb.name), "--help"}).status, 0) << verb.name;
}

TEST_F(Verbs, infoGivesTheFactsOfAFile) {
    write("a.las", test::sampleLas({"GR", "RHOB"}, 100, 5));
    const ProgramRun text = run({"info", "a.las"});
    EXPECT_EQ(text.status, 0);
    EXPECT_NE(text.out.find("100 to 104 M, step 1"), std::string::npos) << text.out;
    EXPECT_NE(text.out.find("Channel RHOB"), std::string::npos) << text.out;

    const Json one = Json::parse(run({"info", "a.las", "--json"}).out);
    EXPECT_EQ(one["path"], "a.las");
    EXPECT_EQ(one["stop"], 104);
    EXPECT_EQ(one["wrap"], "NO");
    EXPECT_EQ(one["wordsPerStep"], 3);
    EXPECT_EQ(one["sections"].size(), 4u);
    EXPECT_EQ(one["channels"][2]["mnem"], "RHOB");

    folder.write("list", "a.las\n\n./a.las\r\n");
    const ProgramRun many = run({"info", "@list", "none.las", "--json"});
    EXPECT_EQ(many.status, 1) << "one file of three is not there";
    EXPECT_EQ(Json::parse(many.out).size(), 2u);
    EXPECT_EQ(many.err, "welvane: none.las: No such file or directory\n");
}

TEST_F(Verbs, jsonIsUtf8WhateverTheFileHolds) {
    std::string text = test::sampleLas({"GR"}, 100, 5);
    text.replace(text.find("Channel GR"), 10, "Temp\xE9rature\t");
    write("a.las", text);
    const ProgramRun done = run({"info", "a.las", "--json"});
    EXPECT_EQ(done.status, 0) << done.err;
    EXPECT_EQ(Json::parse(done.out)["channels"][1]["desc"].get<std::string>().substr(0, 12), "Temp\xC3\xA9rature");
}

TEST_F(Verbs, settingsAreKeptAndCorrected) {
    EXPECT_EQ(run({"settings", "get", "formatdef"}).out, "6|15|60|50|13|5\n");
    const ProgramRun set = run({"settings", "set", "FORMATDEF", "6|15|60|50|4|5"});
    EXPECT_EQ(set.status, 0);
    EXPECT_EQ(set.err, "welvane: formatdef: 6|15|60|50|4|5 is kept as 6|15|60|50|13|5\n");
    EXPECT_EQ(run({"settings", "set", "country", "canada", "--quiet"}).err, "");
    EXPECT_EQ(Json::parse(run({"settings", "--json"}).out)["country"], "Canada");
    EXPECT_EQ(run({"settings", "set", "minPrice", "much"}).status, 1);
    EXPECT_EQ(run({"settings", "get", "bogus"}).status, 2);
}

}  // namespace
}  // namespace welvane
