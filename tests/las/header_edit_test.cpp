#include "las/header_edit.h"

#include <gtest/gtest.h>

#include "shared/failure.h"
#include "support/las_maker.h"
#include "support/scripted_interface.h"
#include "support/temp_folder.h"

namespace welvane {
namespace {

using test::ScriptedInterface;
using test::TempFolder;
using test::withLineEnds;

TEST(HeaderEdit, fieldsOfALine) {
    const struct {
        const char *name, *before, *mnem;
        EditPart part;
        const char* text;
        char section;
        const char* after;  // nullptr: refused
    } cases[] = {
        {"value keeps its column", "~W\n STRT.M        1670.0000      : START\n", "STRT", EditPart::Value, "1500.5",
         'W', "~W\n STRT.M        1500.5         :START \n"},
        {"unit", "~W\n STRT.M        1670.0000      : START\n", "STRT", EditPart::Unit, "FT", 'W',
         "~W\n STRT.FT       1670.0000      :START \n"},
        {"description", "~W\n STRT.M        1670.0000      : START\n", "STRT", EditPart::Desc, "TOP", 'w',
         "~W\n STRT.M        1670.0000      :TOP   \n"},
        {"whole header, case ignored", "~W\n STRT.M        1670.0000      : START\n", " strt ", EditPart::Value, "1", 0,
         "~W\n STRT.M        1              :START \n"},
        {"a longer line moves what is behind it", "~V\n~W\n WELL.   OAK         : NAME\n~A\n", "WELL", EditPart::Value,
         "A MUCH LONGER NAME", 'W', "~V\n~W\n WELL.   A MUCH LONGER NAME  :NAME\n~A\n"},
        {"last colon, and the value behind the dot", "~W\n1.M 1 12:30      : AT\n~A\n", "1", EditPart::Desc, "ON", 0,
         "~W\n1.M 1 12:30      :ON \n~A\n"},
        {"column of a missing value in ~W", "~W\nUWI .                    : ID\n", "UWI", EditPart::Value, "X", 'W',
         "~W\n UWI.          X         :ID \n"},
        {"and in another section", "~C\nGR  .GAPI                : RAY\n", "GR", EditPart::Value, "Y", 'C',
         "~C\n  GR.GAPI       Y        :RAY \n"},
        {"the first line that begins so gives way to a longer one",
         "~P\nRUN1.   1           : ONE\nRUN .   1           : RUN\n~A\n", "RUN", EditPart::Value, "A VERY LONG VALUE",
         'P', "~P\n RUN.   A VERY LONG VALUE  :RUN\nRUN .   1           : RUN\n~A\n"},
        {"no mnemonic", "~W\n STRT.M        1670.0000      : START\n", "", EditPart::Value, "x", 'W', nullptr},
        {"no such section known", "~W\n STRT.M        1670.0000      : START\n", "STRT", EditPart::Value, "x", 'X',
         nullptr},
        {"no such section here", "~W\n STRT.M        1670.0000      : START\n", "STRT", EditPart::Value, "x", 'O',
         nullptr},
        {"line of another section", "~W\n~P\n BHT.M         1670.0000      : T\n", "BHT", EditPart::Value, "x", 'W',
         nullptr},
        {"line behind ~A", "~W\n~A\n BHT.M         1670.0000      : T\n", "BHT", EditPart::Value, "x", 0, nullptr},
        {"a tilde ends the section", "~W\n# ~\n STRT.M        1670.0000      : START\n", "STRT", EditPart::Value, "x",
         'W', nullptr},
    };
    for (const auto& row : cases) {
        std::string header = withLineEnds(row.before), shortLine = "old";
        const HeaderEdit edit{row.mnem, row.part, row.section, row.text};
        EXPECT_EQ(editHeaderText(header, edit, shortLine), row.after ? EditResult::Done : EditResult::Refused)
            << row.name;
        EXPECT_EQ(header, withLineEnds(row.after ? row.after : row.before)) << row.name;
        EXPECT_EQ(shortLine, "") << row.name;
    }
}

TEST(HeaderEdit, aShortLineIsRefusedWithABox) {
    const TempFolder folder;
    const std::string path = folder.writeLines("b.las", "~V\nVERS. 2.0 : x\n");
    ScriptedInterface user;
    user.willAnswer(Answer::Ok);
    EXPECT_EQ(editHeaderField(path, "VERS", EditPart::Value, "x", 'V', user), EditResult::Refused);
    EXPECT_EQ(user.asked().at(0).title, "Header Line Too Short to edit");
    EXPECT_EQ(user.asked().at(0).text,
              "VERS. 2.0 : x\r\n\r\nis too short for reliable editing. Increase the Format positions for the Dot, "
              "Value and Colon on the "
              "properties tab (try 6, 15 and 50) and try again. ");
    EXPECT_EQ(folder.read("b.las"), "~V\r\nVERS. 2.0 : x\r\n");
}

TEST(HeaderEdit, inAFileAllElseStays) {
    const TempFolder folder;
    ScriptedInterface user;
    const std::string head = "~V\r\n~W\r\n WELL.   OAK         : NAME\rnext\nline\r\n", data = "~A\r\n1 2\n\r3 WELL.";
    const std::string path = folder.write("a.las", head + data);
    const auto edit = [&](const char* text) { return editHeaderField(path, "WELL", EditPart::Value, text, 'W', user); };
    ASSERT_EQ(edit("ELM"), EditResult::Done);
    EXPECT_EQ(folder.read("a.las"), "~V\r\n~W\r\n WELL.   ELM         :NAME \rnext\nline\r\n" + data);
    ASSERT_EQ(edit("A MUCH LONGER NAME"), EditResult::Done);
    EXPECT_EQ(folder.read("a.las"), "~V\r\n~W\r\n WELL.   A MUCH LONGER NAME  :NAME\rnext\nline\r\n" + data);

    EXPECT_EQ(editHeaderField(folder.path("none.las"), "WELL", EditPart::Value, "x", 'W', user), EditResult::Refused);
    EXPECT_THROW(editHeaderField("/dev/null", "WELL", EditPart::Value, "x", 'W', user), FileFailure);
}

}  // namespace
}  // namespace welvane
