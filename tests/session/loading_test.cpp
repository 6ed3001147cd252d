#include "session/loading.h"

#include "shared/files.h"
#include "support/session_fixture.h"

namespace welvane::test {

using Loading = SessionTest;

TEST_F(Loading, OneFileFillsTheTables) {
    LasText las;
    las.curves = "GR.GAPI 30 310 : Gamma Ray\nrhob.G/C3 : Density\n";
    las.channels = 2;
    las.start = 1000.25;
    las.stop = 1001.25;
    const SlotLoadResult result = load(0, las);
    EXPECT_EQ(result.status, LoadStatus::Loaded) << result.why;
    EXPECT_EQ(outputs(), (Texts{"GR", "rhob"})) << "letters stand as in the file";
    EXPECT_EQ(cell(SrdRow::Number, 2), "2");
    EXPECT_EQ(cell(SrdRow::InputUnit, 1), "GAPI");
    EXPECT_EQ(cell(SrdRow::Unit, 1), "GAPI");
    EXPECT_EQ(cell(SrdRow::Value, 1), "30 310");
    EXPECT_EQ(session.tables.outputs().data(SrdRow::Description, 1), "Gamma Ray");
    EXPECT_EQ(link(0, 2), (Texts{"rhob", "2", "1000.25", "1001.25"}));
    EXPECT_EQ(cell(linkRow(0, Link::Mnem), 0), "File 1 :file1.las");
    EXPECT_EQ(session.tables.outputs().data(linkRow(0, Link::Mnem), 0), session.slots[0].path);
    EXPECT_EQ(setting(PrdRow::From), "1000.25");
    EXPECT_EQ(setting(PrdRow::SampleRate), "0.5000");
    EXPECT_EQ(setting(PrdRow::DepthUnits), "M");
    EXPECT_EQ(setting(PrdRow::Direction), "Shallow to Deep");
    EXPECT_EQ(setting(PrdRow::Wrap), "No");
    EXPECT_EQ(setting(PrdRow::Vers), "2.0");
    EXPECT_EQ(setting(PrdRow::Null), "-999.25");
    EXPECT_EQ(setting(PrdRow::HeaderFile), session.slots[0].path);
    EXPECT_FALSE(session.tables.checked(PrdRow::MergeParameters));
    EXPECT_EQ(session.tables.parg[0].text(1, FieldColumn::Mnem), "BHT");
    EXPECT_EQ(session.tables.parg[0].text(1, FieldColumn::Value), "85");
    EXPECT_EQ(session.tables.wrd.rows(), 7) << "heads, five lines and a spare row";
    EXPECT_EQ(session.tables.wrd.text(5, FieldColumn::Desc), "WELL NAME");
    EXPECT_EQ(session.tables.parLst[1], Texts{"BHT"});
    EXPECT_EQ(session.tables.fsL[1], "1001.2500");
    EXPECT_FALSE(session.tables.parg[1].visible());
}

TEST_F(Loading, ChannelsOfAllSlotsShareOneNumbering) {
    load(0, {"GR", "RHOB"});
    LasText coarse;
    coarse.stop = 1010;
    coarse.step = 1;
    load(2, {"GR", "SP", "DT"}, coarse);
    EXPECT_EQ(outputs(), (Texts{"GR", "RHOB", "GR", "SP", "DT"}));
    EXPECT_EQ(link(0, 3), (Texts{"", "", "", ""}));
    EXPECT_EQ(link(2, 4), (Texts{"SP", "2", "1000", "1010"}));
    EXPECT_EQ(session.channels[2][3].channelDataColumn, 4);
    EXPECT_EQ(setting(PrdRow::SampleRate), "1.0000") << "of the file opened last";
    EXPECT_EQ(setting(PrdRow::To), "1010");
    EXPECT_FALSE(session.tables.checked(PrdRow::MergeParameters)) << "slot 1 is free";
    for (const Table& table : session.tables.srd) EXPECT_EQ(table.columns(), 6);
    load(1, {"PEF"});
    EXPECT_TRUE(session.tables.checked(PrdRow::MergeParameters));
    EXPECT_EQ(outputs(), (Texts{"GR", "RHOB", "PEF", "GR", "SP", "DT"}));
    EXPECT_EQ(session.channels[2][3].channelDataColumn, 5);
    closeSlot(app, session, 0);
    EXPECT_EQ(outputs(), (Texts{"PEF", "GR", "SP", "DT"}));
    EXPECT_EQ(session.channels[2][3].channelDataColumn, 3);
}

TEST_F(Loading, AFileThatIsNotThereFreesItsSlot) {
    session.slots[1].path = folder.path("missing.las");
    EXPECT_EQ(Open4Files(app, session, 1).status, LoadStatus::NoFile);
    EXPECT_TRUE(session.slots[1].path.empty());
    load(0, {"GR"});
    removeFile(session.slots[0].path);
    EXPECT_EQ(Open4Files(app, session, 0).status, LoadStatus::NoFile);
    EXPECT_EQ(session.tables.outputs().columns(), 1);
}

TEST_F(Loading, TheBrowsersFileIsTakenOnlyOutsideCommandMode) {
    app.run.lasFile = writeLas("browser.las", {});
    app.run.commandMode = true;
    EXPECT_EQ(Open4Files(app, session, 0).status, LoadStatus::NoFile);
    app.run.commandMode = false;
    EXPECT_EQ(Open4Files(app, session, 0).status, LoadStatus::Loaded);
    EXPECT_EQ(session.slots[0].path, app.run.lasFile);
}

TEST_F(Loading, DepthsAreOrderedAndTheUnitIsShownAsACapital) {
    LasText las;
    las.start = 1001;
    las.stop = 1000;
    las.step = -0.5;
    las.unit = "ft";
    load(0, las);
    EXPECT_EQ(setting(PrdRow::From), "1000");
    EXPECT_EQ(setting(PrdRow::To), "1001");
    EXPECT_EQ(setting(PrdRow::Direction), "Deep to Shallow");
    EXPECT_EQ(setting(PrdRow::SampleRate), "0.5000");
    EXPECT_EQ(setting(PrdRow::DepthUnits), "F");
}

TEST_F(Loading, UnixLineEndsAreRepairedOnlyOnRequest) {
    const std::string original = LasText{}.text();
    const std::string path = folder.write("unix.las", original);
    session.slots[0].path = path;
    user.willAnswer(Answer::No);
    EXPECT_EQ(Open4Files(app, session, 0).status, LoadStatus::Declined);
    EXPECT_TRUE(session.slots[0].path.empty());
    EXPECT_EQ(box(0), "Unix Termination! : " + path + "Unix Termination.  is not usable as is. Repair Now? ");
    EXPECT_EQ(folder.read("unix.las"), original);
    session.slots[0].path = path;
    user.willAnswer(Answer::Yes);
    EXPECT_EQ(Open4Files(app, session, 0).status, LoadStatus::Loaded);
    EXPECT_EQ(folder.read("unix.las"), TempFolder::readFile(writeLas("good.las", {})));
    EXPECT_EQ(outputs(), Texts{"GR"});
}

TEST_F(Loading, DataWithoutARegularShapeLeavesNoChannels) {
    std::string text = LasText{}.text();
    text += "  1001.50  1\n  1002.00  1  2\n  1002.50  1  2  3\n  1003.00\n  1003.50  9\n";
    session.slots[0].path = folder.writeLines("odd.las", text);
    const SlotLoadResult result = Open4Files(app, session, 0);
    EXPECT_EQ(result.status, LoadStatus::WithoutChannels);
    EXPECT_EQ(result.firstLineNumber, 16U);
    EXPECT_EQ(result.differingLineNumber, 20U);
    EXPECT_TRUE(session.loaded(0));
    EXPECT_EQ(session.tables.outputs().columns(), 1);
    session.loose = true;
    const SlotLoadResult loose = Open4Files(app, session, 0);
    EXPECT_EQ(loose.status, LoadStatus::Loaded) << loose.why;
    EXPECT_EQ(outputs(), Texts{"GR"});
    EXPECT_EQ(session.slots[0].wrap, "NO");
    EXPECT_EQ(text.substr(0, 9), "~VERSION\n");
    EXPECT_GT(session.slots[0].dataStart, 1);
}

TEST_F(Loading, BadFilesLeaveASessionThatCanGoOn) {
    load(0, {"GR", "SP"});
    app.run.commandMode = true;  // no line end at all counts as a Unix file, and would be asked about
    for (const std::string& bytes :
         {std::string(), std::string(5000, '\0'), std::string("~A"), std::string("~V\r\n~W\r\n~C\r\n~A\r\n"),
          std::string(300000, '~'), std::string(200000, 'x')}) {
        session.slots[1].path = folder.write("bad.las", bytes);
        const SlotLoadResult result = Open4Files(app, session, 1);
        EXPECT_EQ(result.status, LoadStatus::WithoutChannels) << bytes.substr(0, 20);
        EXPECT_FALSE(result.why.empty());
        EXPECT_EQ(outputs(), (Texts{"GR", "SP"}));
    }
}

TEST_F(Loading, MoreColumnsThanSixteenBitsAreRefused) {
    load(0, {"GR"});
    LasText wide;
    wide.curves.clear();
    wide.channels = 32767;
    for (int channel = 1; channel <= wide.channels; ++channel) wide.curves += "C" + std::to_string(channel) + ".:\n";
    const SlotLoadResult result = load(1, wide);
    EXPECT_EQ(result.status, LoadStatus::Failed);
    EXPECT_EQ(result.why, "the files have 32768 channels together, more than 32766");
    EXPECT_EQ(outputs(), Texts{"GR"});
    EXPECT_FALSE(session.loaded(1));
}

TEST_F(Loading, SectionsKeepTheFilesOrder) {
    struct Case {
        std::string_view name, text;
        Texts names;
    };
    const Texts defaults = {"~Version Information",   "~Well Information",  "~Curve Information",
                            "~Parameter Information", "~Other Information", "~ASCII"};
    for (const Case& one :
         {Case{"order",
               "~Well\n~V  \n~C x y\n~A DEPTH GR\n",
               {"~Well", "~V", "~C x y", "~A DEPTH GR", defaults[4], defaults[5]}},
          Case{"eight", "~V\n~W\n~C\n~P\n~Tops\n~O\n~A\n", {"~V", "~W", "~C", "~P", "~Tops", defaults[5]}},
          Case{"six", "~V\n~W\n~C\n~P\n~O\n~A data\n", {"~V", "~W", "~C", "~P", "~O", "~A data"}},
          Case{"none", "x\n", defaults}}) {
        SCOPED_TRACE(one.name);
        sectionOrder(session, openLasFile(folder.writeLines("s.las", one.text)).get());
        Texts names;
        for (int column = 1; column <= 6; ++column) names.push_back(session.tables.ord.text(OrdRow::Name, column));
        EXPECT_EQ(names, one.names);
    }
    EXPECT_FALSE(session.tables.ord.checked(OrdRow::Include, 5));
}

TEST_F(Loading, UnknownUnitsAreNoted) {
    app.reference.units = {{"DEPTH", "M", 1, 0}, {"GAMMA", "GAPI", 1, 0}};
    LasText las;
    las.curves = "GR.GAPI : \nX.WHAT : \nY.what : \n";
    las.channels = 3;
    EXPECT_EQ(load(0, las).unknownUnits, Texts{"WHAT"});
}

}  // namespace welvane::test
