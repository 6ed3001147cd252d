#include "las/header_edit.h"

#include <gtest/gtest.h>

#include "las/well.h"
#include "support/scripted_interface.h"

namespace welvane {
namespace {

using test::ScriptedInterface;
using test::smallWell;
using test::TempFolder;

/// The line of the file that begins with `start`, its CR LF taken off.
std::string lineOf(const std::string& bytes, const std::string& start) {
    const std::size_t place = bytes.find("\n" + start) + 1;
    return bytes.substr(place, bytes.find('\r', place) - place);
}

TEST(HeaderEdit, sameLengthIsOverwrittenInPlace) {
    const struct {
        const char *name, *mnem;
        EditPart part;
        const char* text;
        char section;
        const char* line;
    } cases[] = {
        {"value keeps its column", "STRT", EditPart::Value, "1500.5", 'W', " STRT.M        1500.5         :START"},
        {"unit", "STRT", EditPart::Unit, "FT", 'W', " STRT.FT       1670.0000      :START"},
        {"description", "STRT", EditPart::Desc, "TOP", 'W', " STRT.M        1670.0000      :TOP"},
        {"whole header", "strt", EditPart::Value, "1", 0, " STRT.M        1             :START"},
    };
    for (const auto& row : cases) {
        const TempFolder folder;
        const std::string path = folder.writeLines("a.las", smallWell());
        const std::string before = folder.read("a.las");
        ScriptedInterface user;
        EXPECT_EQ(editHeaderField(path, row.mnem, row.part, row.text, row.section, user), EditResult::Done) << row.name;
        const std::string after = folder.read("a.las");
        EXPECT_EQ(after.size(), before.size()) << row.name;
        std::string expected = row.line;
        expected.resize(lineOf(before, " STRT").size(), ' ');
        if (row.part == EditPart::Value && row.section == 0) expected = " STRT.M        1              :START ";
        EXPECT_EQ(lineOf(after, " STRT"), expected) << row.name;
        const std::size_t end = before.find(" STOP");
        EXPECT_EQ(after.substr(end), before.substr(end)) << row.name;
    }
}

TEST(HeaderEdit, longerLineRewritesTheFile) {
    const TempFolder folder;
    const std::string path = folder.write("a.las", "~V\r\n~W\r\n WELL.   OAK         : NAME\rnext\nline\r\n~A\r\n1 2");
    ScriptedInterface user;
    ASSERT_EQ(editHeaderField(path, "WELL", EditPart::Value, "A MUCH LONGER NAME", 'W', user), EditResult::Done);
    EXPECT_EQ(folder.read("a.las"), "~V\r\n~W\r\n WELL.   A MUCH LONGER NAME  :NAME\rnext\nline\r\n~A\r\n1 2");
}

TEST(HeaderEdit, lastColonAndValueBehindTheDot) {
    const TempFolder folder;
    const std::string path = folder.writeLines("a.las", "~W\n1.M 1 12:30      : AT\n~A\n");
    ScriptedInterface user;
    ASSERT_EQ(editHeaderField(path, "1", EditPart::Desc, "ON", 0, user), EditResult::Done);
    EXPECT_EQ(folder.read("a.las"), "~W\r\n1.M 1 12:30      :ON \r\n~A\r\n");
}

TEST(HeaderEdit, columnOfAMissingValue) {
    const TempFolder folder;
    ScriptedInterface user;
    const std::string path =
        folder.writeLines("a.las", "~W\nUWI .                    : ID\n~C\nGR  .GAPI                : RAY\n");
    ASSERT_EQ(editHeaderField(path, "UWI", EditPart::Value, "X", 'W', user), EditResult::Done);
    ASSERT_EQ(editHeaderField(path, "GR", EditPart::Value, "Y", 'C', user), EditResult::Done);
    EXPECT_EQ(folder.read("a.las"), "~W\r\n UWI.          X         :ID \r\n~C\r\n  GR.GAPI       Y        :RAY \r\n");
}

TEST(HeaderEdit, refusals) {
    const TempFolder folder;
    const std::string path = folder.writeLines("a.las", smallWell());
    const std::string before = folder.read("a.las");
    ScriptedInterface user;
    const auto edit = [&](const std::string& file, const char* mnem, char section) {
        return editHeaderField(file, mnem, EditPart::Value, "x", section, user);
    };
    EXPECT_EQ(edit(folder.path("none.las"), "STRT", 'W'), EditResult::Refused);
    EXPECT_EQ(edit(path, "", 'W'), EditResult::Refused);
    EXPECT_EQ(edit(path, "STRT", 'X'), EditResult::Refused);
    EXPECT_EQ(edit(path, "STRT", 'O'), EditResult::Refused);
    EXPECT_EQ(edit(path, "BHT", 'W'), EditResult::Refused);
    EXPECT_EQ(edit(path, "UWI", 0), EditResult::Refused);

    user.willAnswer(Answer::Ok);
    const std::string shortLine = folder.writeLines("b.las", "~V\nVERS. 2.0 : x\n");
    EXPECT_EQ(edit(shortLine, "VERS", 'V'), EditResult::Refused);
    EXPECT_EQ(user.asked().at(0).title, "Header Line Too Short to edit");
    EXPECT_EQ(user.asked().at(0).text,
              "VERS. 2.0 : x\r\n\r\nis too short for reliable editing. Increase the Format positions for the Dot, "
              "Value and Colon on the "
              "properties tab (try 6, 15 and 50) and try again. ");
    EXPECT_EQ(folder.read("a.las"), before);
}

// The first line that begins with the mnemonic gives way, also when it is another one.
TEST(HeaderEdit, rewriteTakesTheFirstLineThatBeginsSo) {
    const TempFolder folder;
    const std::string path =
        folder.writeLines("a.las", "~P\nRUN1.   1           : ONE\nRUN .   1           : RUN\n~A\n");
    ScriptedInterface user;
    ASSERT_EQ(editHeaderField(path, "RUN", EditPart::Value, "A VERY LONG VALUE", 'P', user), EditResult::Done);
    EXPECT_EQ(folder.read("a.las"), "~P\r\n RUN.   A VERY LONG VALUE  :RUN\r\nRUN .   1           : RUN\r\n~A\r\n");
}

}  // namespace
}  // namespace welvane
