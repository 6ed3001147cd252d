#include "models/curve_library.h"

#include <gtest/gtest.h>

#include "shared/failure.h"
#include "shared/text.h"
#include "support/app_fixture.h"

namespace welvane {
namespace {

using Texts = std::vector<std::string>;

constexpr const char* curvesText =
    "[GAMMA|30 001 00 00|GAPI|GAPI]\nGR. :GAMMA RAY\nGRC. :GAMMA RAY, CORRECTED\nSGR. :SPECTRAL\n\n"
    "[DENSITY|42 350 02 00|K/M3|G/C3]\nRHOB. :BULK DENSITY\n";
constexpr const char* unitsText =
    "#[] line contains unit group name and internal unit symbol with | separator\n"
    "#Each line in the section contains External unit | Factor to divide external to get internal and | Offset\n"
    "#eg. 2650 KG/M3 / 1000 gives the internal 2.65 G/C3\n"
    "#each section can have 10 units max. An others are ignored\n"
    "[Depth|F]\nF| 1| 0\nM| 0.3048| 0\n\n[Density|G/C3]\nKG/M3| 1000| 0\n";

class Library : public test::AppTest {
  protected:
    Library() {
        app.settings.curvesPath = folder.writeLines("curves.ini", curvesText);
        app.settings.unitsPath = folder.writeLines("units.ini", unitsText);
        readCurves(app.reference, app.settings.curvesPath);
        readUnits(app.reference, app.settings.unitsPath);
    }
    std::string saved(const char* name) { return replaceAll(folder.read(name), "\r\n", "\n"); }
    /// Every row names a group, and its name stands once.
    void expectOrder() {
        std::size_t members = 0;
        for (const LibraryPart part : {LibraryPart::Curves, LibraryPart::Units})
            for (const std::string& group : groupNames(app.reference, part))
                members += membersOfGroup(app.reference, part, group).size();
        EXPECT_EQ(members, app.reference.curves.size() + app.reference.units.size());
    }
    static Texts column(const Table& table, int number) {
        Texts texts;
        for (int row = 0; row < table.rows(); ++row) texts.push_back(table.text(row, number));
        return texts;
    }
};

TEST_F(Library, showsGroupsAndTheirRows) {
    CurveLibrary library(app);
    EXPECT_EQ(column(library.lrd(), 0), (Texts{"Group Name", "GAMMA", "DENSITY"}));
    EXPECT_EQ(column(library.ugd(), 1), (Texts{"Internal Units", "F", "G/C3"}));
    EXPECT_EQ(library.crd().rows(), 1);
    library.showCurvesOfGroup(1);
    library.showUnitsOfGroup(1);
    EXPECT_EQ(column(library.crd(), 0), (Texts{"Channel Name", "GR", "GRC", "SGR"}));
    EXPECT_EQ(column(library.urd(), 1), (Texts{"Factor", "1", "0.3048"}));
    EXPECT_EQ(library.curveHelp(2),
              "Known Channels: GRC\nDescription: GAMMA RAY, CORRECTED\nMember of Channel group GAMMA");
    library.showCurvesOfGroup(9);
    EXPECT_EQ(library.crd().rows(), 1);
    EXPECT_FALSE(library.changed());
}

TEST_F(Library, editsKeepEveryRowInAGroup) {
    CurveLibrary library(app);
    library.showCurvesOfGroup(1);
    library.showUnitsOfGroup(1);
    CellTableModel groups = library.lrdModel(), curves = library.crdModel(), units = library.urdModel();
    EXPECT_TRUE(groups.edit(1, 0, " GAMMA RAY ").done);
    EXPECT_EQ(library.shownGroup(LibraryPart::Curves), "GAMMA RAY");
    EXPECT_EQ(curves.rows(), 4) << "the rows went along";
    EXPECT_EQ(curves.pickList(1, 2), "GAMMA RAY|DENSITY");
    EXPECT_TRUE(curves.edit(3, 2, "density").done);
    EXPECT_EQ(groupMembers(app.reference, "SGR"), (Texts{"RHOB", "SGR"}));
    EXPECT_TRUE(curves.edit(1, 0, "GR1").done);
    EXPECT_TRUE(units.edit(2, 1, "0.304800").done);
    EXPECT_TRUE(library.addRow(LibraryPart::Units, "KM").done);
    EXPECT_TRUE(units.edit(3, 1, "0.0003048").done);
    EXPECT_TRUE(library.moveRow(LibraryPart::Units, 3, -9).done);
    EXPECT_EQ(column(library.urd(), 0), (Texts{"External Unit", "KM", "F", "M"}));
    EXPECT_TRUE(library.deleteRow(LibraryPart::Curves, 2).done);
    EXPECT_TRUE(library.addGroup(LibraryPart::Curves, "SONIC").done);
    EXPECT_TRUE(library.moveGroup(LibraryPart::Curves, 3, -1).done);
    EXPECT_EQ(column(library.lrd(), 0), (Texts{"Group Name", "GAMMA RAY", "SONIC", "DENSITY"}));
    user.willAnswer(Answer::No);
    EXPECT_FALSE(library.deleteGroup(LibraryPart::Curves, 3).done);
    EXPECT_EQ(box(), "Delete Group?: The group \"DENSITY\" has 2 curves. Delete them too?");
    user.willAnswer(Answer::Yes);
    EXPECT_TRUE(library.deleteGroup(LibraryPart::Curves, 3).done);
    EXPECT_TRUE(library.deleteGroup(LibraryPart::Curves, 2).done) << "an empty group is no question";
    expectOrder();
    EXPECT_TRUE(library.changed());
    ASSERT_TRUE(library.save());
    EXPECT_FALSE(library.changed());
    EXPECT_EQ(saved("curves.ini"), "[GAMMA RAY|30 001 00 00|GAPI|GAPI]\nGR1. :GAMMA RAY\n");
    EXPECT_NE(saved("units.ini").find("[Depth|F]\nKM| 0.0003048| 0\nF| 1| 0\nM| 0.3048| 0\n\n[Density|G/C3]\n"), npos);
}

TEST_F(Library, aGroupOfUnitsTakesItsUnitsAlong) {
    CurveLibrary library(app);
    library.showUnitsOfGroup(1);
    CellTableModel groups = library.ugdModel(), units = library.urdModel();
    EXPECT_TRUE(groups.edit(1, at(UgdColumn::Name), "Length").done);
    EXPECT_EQ(library.shownGroup(LibraryPart::Units), "Length");
    EXPECT_EQ(units.rows(), 3);
    EXPECT_EQ(units.pickList(1, at(UrdColumn::Group)), "Length|Density");
    EXPECT_TRUE(groups.edit(1, at(UgdColumn::InternalUnit), "M").done);
    EXPECT_EQ(groups.edit(2, at(UgdColumn::Name), "length").why, "there is a unit group \"length\" already");
    EXPECT_TRUE(units.edit(2, at(UrdColumn::Group), "Density").done);
    EXPECT_EQ(units.rows(), 2);
    ASSERT_TRUE(library.save());
    EXPECT_NE(saved("units.ini").find("[Length|M]\n"), npos);
}

TEST_F(Library, whatCannotBeIsRefusedWithNothingChanged) {
    CurveLibrary library(app);
    library.showCurvesOfGroup(1);
    library.showUnitsOfGroup(1);
    CellTableModel groups = library.lrdModel(), curves = library.crdModel(), units = library.urdModel();
    const struct {
        TableModel& table;
        int row, column;
        const char *text, *why;
    } cases[] = {
        {groups, 1, 0, "density", "there is a curve group \"density\" already"},
        {groups, 1, 0, "  ", "a curve group needs a name"},
        {groups, 1, 2, "K|M3", "a curve group cannot hold one of |: \"K|M3\""},
        {groups, 1, 0, "A\nB", "a curve group cannot hold one of |: \"A\nB\""},
        {curves, 1, 0, "rhob", "\"rhob\" stands in the group \"DENSITY\" already"},
        {curves, 1, 0, "G.R", "a curve cannot hold one of .:|: \"G.R\""},
        {curves, 1, 0, "~GR", "\"~GR\" cannot be the name of a curve"},
        {curves, 1, 0, "#GR", "\"#GR\" cannot be the name of a curve"},
        {curves, 1, 2, "NONE", "there is no curve group \"NONE\""},
        {units, 1, 1, "0", "the factor of a unit cannot be 0"},
        {units, 1, 1, "x", "\"x\" is not a number"},
        {units, 1, 0, "kg/m3", "\"kg/m3\" stands in the group \"Density\" already"},
        {units, 0, 0, "x", "this cell takes no edit"},
    };
    for (const auto& row : cases) {
        const EditOutcome outcome = row.table.edit(row.row, row.column, row.text);
        EXPECT_FALSE(outcome.done) << row.text;
        EXPECT_EQ(outcome.why, row.why) << row.text;
    }
    EXPECT_FALSE(library.deleteRow(LibraryPart::Curves, 0).done);
    EXPECT_FALSE(library.addRow(LibraryPart::Curves, "GRC").done);
    library.showCurvesOfGroup(0);
    EXPECT_FALSE(library.addRow(LibraryPart::Curves, "NEW").done) << "no group is shown";
    EXPECT_FALSE(library.changed());
    expectOrder();
    ASSERT_TRUE(library.save());
    EXPECT_EQ(saved("curves.ini"), curvesText);
    EXPECT_EQ(saved("units.ini"), unitsText);
}

TEST_F(Library, channelsOfALasFileJoinTheirGroups) {
    const std::string las = folder.writeLines(
        "well.las",
        "~V\n VERS. 2.0 :\n~C\n DEPT.M : DEPTH\n RHOZ.K/M3 42 : STANDARD\n GR.GAPI : GAMMA\n ECGR. : MORE\n~A\n");
    CurveLibrary library(app);
    user.willType("");
    EXPECT_FALSE(library.openLASLibAdd());
    EXPECT_EQ(user.filePrompts().back().title, "Open LAS To Add to Library");
    EXPECT_TRUE(library.addGroup(LibraryPart::Curves, "SONIC").done);
    user.willType(las);
    ASSERT_TRUE(library.openLASLibAdd());
    EXPECT_FALSE(library.changed()) << "opening saves first";
    EXPECT_NE(saved("curves.ini").find("[SONIC|||]"), npos);
    EXPECT_EQ(library.ard().caption(), "LAS Channels from :" + las);
    EXPECT_EQ(column(library.ard(), 1), (Texts{"Channel Name", "DEPT", "RHOZ", "GR", "ECGR"}));
    EXPECT_EQ(column(library.ard(), 5), (Texts{"Channel Group", "<none>", "<none>", "<none>", "<none>"}));

    CellTableModel ard = library.ardModel();
    EXPECT_EQ(ard.pickList(2, 5), "<none>|GAMMA|DENSITY|SONIC");
    EXPECT_FALSE(ard.edit(2, 5, "NOWHERE").done);
    EXPECT_FALSE(ard.edit(2, 3, "7").done);
    EXPECT_TRUE(ard.edit(2, 5, "DENSITY").done);
    EXPECT_TRUE(ard.edit(3, 5, "DENSITY").done);
    user.willAnswer(Answer::Ok);
    const LibraryAdditions additions = library.addToLibrary();
    ASSERT_EQ(additions.added.size(), 1U);
    EXPECT_EQ(additions.added[0].mnem, "RHOZ");
    EXPECT_EQ(box(), "Not Added: GR: \"GR\" stands in the group \"GAMMA\" already\n");
    EXPECT_TRUE(library.changed());
    library.showCurvesOfGroup(2);
    EXPECT_EQ(column(library.crd(), 1), (Texts{"Channel Desc", "BULK DENSITY", "STANDARD"}));

    user.willType(folder.path("none.las"));
    user.willAnswer(Answer::Ok);
    EXPECT_FALSE(library.openLASLibAdd());
    EXPECT_EQ(box(), "No Channels: " + folder.path("none.las") + ": No such file or directory");
}

TEST_F(Library, leavingAsksForChangesOnly) {
    CurveLibrary library(app);
    EXPECT_TRUE(library.leave());
    library.addGroup(LibraryPart::Curves, "SONIC");
    user.willAnswer(Answer::No);
    EXPECT_TRUE(library.leave());
    EXPECT_EQ(
        box(),
        "Save Changes?: Changes were made to either Channels or Units that should saved. Do you want to save them "
        "before quitting this window?");
    EXPECT_EQ(user.asked().back().safe(), Answer::No);
    EXPECT_EQ(groupNames(app.reference, LibraryPart::Curves), (Texts{"GAMMA", "DENSITY"}));
    library.addGroup(LibraryPart::Units, "Time");
    user.willAnswer(Answer::Yes);
    EXPECT_TRUE(library.leave());
    EXPECT_NE(saved("units.ini").find("[Time|]"), npos);
}

TEST_F(Library, aFileThatCannotBeWrittenIsToldAndNothingIsLost) {
    app.settings.curvesPath = folder.path("gone/curves.ini");
    CurveLibrary library(app);
    library.addGroup(LibraryPart::Curves, "SONIC");
    user.willAnswer(Answer::Yes);
    user.willAnswer(Answer::Ok);
    EXPECT_FALSE(library.leave());
    EXPECT_EQ(box(), "Can't Save Library: " + app.settings.curvesPath + ": not saved: No such file or directory");
    EXPECT_TRUE(library.changed());
    EXPECT_EQ(library.lrd().text(3, 0), "SONIC");
}

TEST_F(Library, aGroupThatStandsTwiceIsSavedOnce) {
    app.settings.curvesPath = folder.writeLines("twice.ini", "[A|1|M|F]\nX. :1\n[B|2||]\n[a|3||]\nY. :2\n");
    readCurves(app.reference, app.settings.curvesPath);
    CurveLibrary library(app);
    ASSERT_TRUE(library.save());
    EXPECT_EQ(saved("twice.ini"), "[A|1|M|F]\nX. :1\nY. :2\n\n[B|2||]\n");
}

}  // namespace
}  // namespace welvane
