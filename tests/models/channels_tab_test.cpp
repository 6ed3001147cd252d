#include "models/channels_tab.h"

#include "models/table_models.h"
#include "shared/files.h"
#include "shared/text.h"
#include "support/session_fixture.h"

namespace welvane::test {

class ChannelsTab : public AppTest {
  protected:
    ChannelsTab() : frame(app) { openArea(frame, WorkArea::Session); }
    std::string well(const std::string& name, const std::string& curves = "GR. : \nRHOB. : \n") {
        LasText las;
        las.curves = curves;
        las.channels = 2;
        return folder.writeLines(name, las.text());
    }
    const std::string& cell(TableIndex row, TableIndex column) {
        return frame.session.tables.outputs().text(row, column);
    }
    /// The menu of a cell as a person sees it: entries that cannot be chosen in brackets.
    Texts menu(TableIndex row, TableIndex column) {
        Texts texts;
        for (const MenuEntry& entry : openChannelMenu(frame, row, column))
            texts.push_back(entry.enabled ? entry.text : "(" + entry.text + ")");
        return texts;
    }

    bool problemsOf(const std::string& path) {
        const ProblemsModel list(frame.problems);
        for (std::int64_t row = 1; row < list.rows(); ++row)
            if (list.placeOf(row).path == path) return true;
        return false;
    }

    Frame frame;
};

TEST_F(ChannelsTab, EachCellHasItsMenu) {
    const Texts nothingLoaded = {"(&Add Channel)", "(&Delete Channel)", "(Delete &File)", "(View As Log (Tracewick))",
                                 "(&Shift and Clip)"};
    EXPECT_EQ(menu(SrdRow::Mnem, 1), nothingLoaded);
    ASSERT_EQ(dropFiles(frame, {well("a.las")}, linkRow(1, Link::Mnem)), 1U) << "the row's slot takes the file";
    struct Case {
        TableIndex row, column;
        Texts texts;
    };
    for (const Case& one :
         {Case{SrdRow::Use, 1, {"&All", "&None"}}, Case{SrdRow::Value, 1, {"Fill Empty VALUE", "(Fill Empty DESC)"}},
          Case{SrdRow::Description, 0, {"(Fill Empty VALUE)", "Fill Empty DESC"}}, Case{SrdRow::Mnem, 0, nothingLoaded},
          Case{linkRow(0, Link::Mnem), 0, nothingLoaded},
          Case{linkRow(1, Link::From),
               2,
               {"&Add Channel", "(&Delete Channel)", "Delete &File", "View As Log (Tracewick)", "&Shift and Clip"}},
          Case{linkRow(1, Link::Mnem),
               0,
               {"(&Add Channel)", "(&Delete Channel)", "Delete &File", "View As Log (Tracewick)",
                "(&Shift and Clip)"}}}) {
        EXPECT_EQ(menu(one.row, one.column), one.texts) << one.row << "," << one.column;
        EXPECT_EQ(frame.currentChannel, one.column);
    }
    EXPECT_EQ(frame.currentSlot, 1);
}

TEST_F(ChannelsTab, TheMenuActsOnTheCurrentCell) {
    dropFiles(frame, {well("b.las"), well("a.las", "GR. : \nNPHI. : \n")}, -1);
    const auto choose = [&](TableIndex row, TableIndex column, ChannelCommand command) {
        openChannelMenu(frame, row, column);
        runChannelCommand(frame, command);
    };
    const auto bands = channelBands(frame.session);
    EXPECT_EQ(bands[0].label, "File 1 :" + fileNameOf(bands[0].path));
    EXPECT_TRUE(endsWith(bands[0].path, "a.las")) << "several files come by their names";
    EXPECT_TRUE(bands[1].visible && !bands[2].visible);
    EXPECT_EQ(bands[1].firstColumn, 3);
    choose(SrdRow::Use, 1, ChannelCommand::UseNone);
    EXPECT_EQ(frame.session.tables.outputs().check(SrdRow::Use, 3), Check::Unchecked);
    frame.session.tables.output(SrdRow::Description, 3).clear();
    frame.session.tables.outputs().data(SrdRow::Description, 3) = "as it was";
    choose(SrdRow::Description, 1, ChannelCommand::FillDescription);
    EXPECT_EQ(cell(SrdRow::Description, 3), "as it was") << "the library knows nothing of it";
    frame.session.tables.outputs().data(SrdRow::Value, 3) = "99";
    choose(SrdRow::Value, 1, ChannelCommand::FillValue);
    EXPECT_EQ(cell(SrdRow::Value, 3), "99");
    app.settings.logProgram = "viewer";
    choose(linkRow(1, Link::To), 1, ChannelCommand::ViewLog);
    choose(linkRow(2, Link::To), 1, ChannelCommand::ViewLog);
    EXPECT_EQ(platform.opened, Texts{"viewer " + bands[1].path}) << "a free slot has no log";
    choose(SrdRow::Mnem, 1, ChannelCommand::Add);
    EXPECT_EQ(frame.currentChannel, 2);
    EXPECT_EQ(cell(SrdRow::Mnem, 2), "Added");
    EXPECT_EQ(menu(SrdRow::Mnem, 2)[1], "&Delete Channel");
    runChannelCommand(frame, ChannelCommand::Delete);
    EXPECT_EQ(cell(SrdRow::Mnem, 2), "NPHI");
    choose(linkRow(0, Link::Mnem), 4, ChannelCommand::DeleteFile);
    EXPECT_FALSE(frame.session.loaded(0));
    EXPECT_EQ(frame.session.tables.outputs().columns(), 3);
    EXPECT_EQ(frame.currentChannel, 2);
    choose(linkRow(3, Link::Mnem), 1, ChannelCommand::DeleteFile);
    EXPECT_TRUE(frame.session.loaded(1)) << "the row of a free slot takes nothing away";
}

TEST_F(ChannelsTab, MoreFilesThanThereIsRoomForAreNotOpenedByHalf) {
    dropFiles(frame, {well("a.las")}, -1);
    user.willAnswer(Answer::Ok);
    EXPECT_EQ(dropFiles(frame, {well("1.las"), well("2.las"), well("3.las"), well("4.las")}, -1), 0U);
    EXPECT_EQ(box(), "Too Many Files: 4 files were dropped, and there is room for 3. None was opened.");
    EXPECT_FALSE(frame.session.loaded(1));
    user.willAnswer(Answer::Ok);
    EXPECT_EQ(dropFiles(frame, {folder.path("gone.las"), well("2.las")}, 0), 1U) << "one that is gone keeps none back";
    EXPECT_EQ(box(), "File Not Loaded: " + folder.path("gone.las") + ": no such file");
}

TEST_F(ChannelsTab, TheBrowseButtonOfAFileRowOpensInItsSlot) {
    app.run.lasFile = folder.path("last.las");
    std::string lines = LasText{}.text();
    lines.replace(lines.find("  1.5"), 5, "  bad");
    const std::string bad = folder.writeLines("bad.las", lines);
    frame.session.rules = FigureRules::trueFigures;
    for (const std::string& path : {bad, std::string(), folder.path("gone.las"), well("good.las")}) {
        user.willType(path);
        if (path == folder.path("gone.las")) user.willAnswer(Answer::Ok);
        EXPECT_EQ(browseSlotFile(frame, 2), endsWith(path, "d.las")) << path;
        EXPECT_EQ(user.askedForText().back(), "Open LAS File");
        EXPECT_EQ(frame.session.slots[2].path, path.ends_with("good.las") ? path : bad) << "what was there stays";
        EXPECT_EQ(problemsOf(bad), !path.ends_with("good.las")) << "told as long as it is there";
    }
    EXPECT_EQ(user.filePrompts().at(0).folder, folder.path());
    EXPECT_EQ(box(), "File Not Loaded: " + folder.path("gone.las") + ": no such file");
    EXPECT_FALSE(browseSlotFile(frame, slotCount)) << "there is no such slot";
    EXPECT_TRUE(frame.history.undo(app, frame.session));
    EXPECT_EQ(frame.session.slots[2].path, bad);
}

TEST_F(ChannelsTab, WhatCannotBeOpenedIsToldAndListed) {
    frame.session.rules = FigureRules::asLaidDown;  // by true figures such line ends are no question
    const std::string unixEnds = folder.write("unix.las", LasText{}.text());
    struct Case {
        std::string path;
        Answer answer;
        const char* title;
    };
    for (const Case& one :
         {Case{folder.path(), Answer::Ok, "File Not Loaded"}, Case{unixEnds, Answer::No, "Unix Termination! "}}) {
        const std::size_t asked = user.asked().size();
        user.willAnswer(one.answer);
        EXPECT_FALSE(openInSession(frame, one.path)) << one.path;
        ASSERT_EQ(user.asked().size(), asked + 1) << "one box alone";
        EXPECT_EQ(user.asked().back().title, one.title);
        EXPECT_FALSE(frame.session.loaded(0));
        EXPECT_EQ(problemsOf(one.path), one.path == unixEnds) << "not one that is not there";
    }
    EXPECT_FALSE(frame.history.canUndo()) << "nothing came of it";
    user.willAnswer(Answer::Yes);
    EXPECT_TRUE(openInSession(frame, unixEnds));
    EXPECT_EQ(box(), "Unix Termination! : " + unixEnds + "Unix Termination.  is not usable as is. Repair Now? ");
    frame.session.rules = FigureRules::trueFigures;
    const Texts texts = {"", "no LAS\r\n", "~V\r\n~C\r\n~A\r\n", std::string("~V\0~A\r\n", 8)};
    for (const std::string& text : texts) {
        const std::string path = folder.write("empty" + std::to_string(text.size()) + ".las", text);
        makeCurrent(frame, linkRow(1, Link::Mnem), 0);
        EXPECT_TRUE(openInSession(frame, path)) << "it holds its slot";
        EXPECT_TRUE(problemsOf(path)) << text;
        EXPECT_EQ(frame.session.tables.outputs().columns(), 2) << "those of the first file";
        runChannelCommand(frame, ChannelCommand::DeleteFile);
        EXPECT_FALSE(problemsOf(path));
    }
}

TEST_F(ChannelsTab, AMovedChannelStaysWhatFunctionsRead) {
    dropFiles(frame, {well("a.las", "A. : \nB. : \n")}, -1);
    Table& outputs = frame.session.tables.outputs();
    outputs.data(SrdRow::Function, 1) = "10|1|0|0|1|2|A|was :B";
    EXPECT_FALSE(moveNewChannel(frame.session, 0, 1) || moveNewChannel(frame.session, 1, 3) ||
                 moveNewChannel(frame.session, 1, 1));
    EXPECT_TRUE(moveNewChannel(frame.session, 2, 1));
    EXPECT_EQ(cell(SrdRow::Mnem, 1), "B");
    EXPECT_EQ(outputs.data(SrdRow::Function, 2), "10|1|0|0|1|1|A|was :B");
    dropFiles(frame, {well("b.las", "C. : \nD. : \n")}, -1);
    struct Case {
        int from, to, reader;
        const char* source;
    };
    // Channel 4 reads channel 2 at first.
    for (const Case& one : {Case{1, 3, 4, "1"}, Case{3, 1, 4, "2"}, Case{4, 1, 1, "3"}, Case{1, 4, 4, "2"}}) {
        if (outputs.data(SrdRow::Function, 4).empty()) outputs.data(SrdRow::Function, 4) = "10|1|0|0|1|2|D|was :X";
        EXPECT_TRUE(moveNewChannel(frame.session, one.from, one.to));
        EXPECT_EQ(outputs.data(SrdRow::Function, one.reader), "10|1|0|0|1|" + std::string(one.source) + "|D|was :X")
            << one.from << " to " << one.to;
    }
}

TEST_F(ChannelsTab, AnInputChannelIsMovedAndCut) {
    dropFiles(frame, {well("a.las")}, -1);
    Session& session = frame.session;
    const int row = linkRow(0, Link::Mnem);
    EXPECT_EQ(channelAdjustment(session, row, 2)->channel, "RHOB");
    EXPECT_EQ(channelAdjustment(session, row, 2)->top, std::nullopt);
    EXPECT_FALSE(channelAdjustment(session, SrdRow::Mnem, 2) || channelAdjustment(session, row, 3) ||
                 channelAdjustment(session, linkRow(1, Link::Mnem), 2));
    EXPECT_TRUE(adjustChannel(session, row, 2, "-0.5", "1000.25", "").done);
    struct Case {
        const char *shift, *top, *bottom, *why;
    };
    for (const Case& one : {Case{"x", "", "", "\"x\" is not a number"}, Case{"1e39", "", "", "overflow"},
                            Case{"0", "1001", "1000", "the top, 1001, is not above the bottom, 1000"}}) {
        EXPECT_EQ(adjustChannel(session, row, 2, one.shift, one.top, one.bottom).why, one.why);
        EXPECT_EQ(channelAdjustment(session, row, 2)->shift, -0.5) << "nothing changed";
    }
    EXPECT_EQ(channelAdjustment(session, row, 2)->top, 1000.25);
    EXPECT_EQ(adjustChannel(session, row, 9, "1", "", "").why, "no channel is linked here");
}

TEST_F(ChannelsTab, TheFilterIsNamedInItsGrid) {
    CellTableModel model = filterModel(app, frame.session);
    EXPECT_EQ(model.setCheck(1, at(FrdColumn::Apply), true).why, "no filter is named");
    EXPECT_EQ(model.edit(1, at(FrdColumn::Path), folder.path("gone.fil")).why,
              folder.path("gone.fil") + ": no such file");
    const std::string path = folder.writeLines("f.fil", "~C\nGR. : | GR\n");
    EXPECT_EQ(model.pickList(1, at(FrdColumn::Path)), "...");
    EXPECT_TRUE(model.edit(1, at(FrdColumn::Path), path).done);
    EXPECT_EQ(platform.settings().get("filFile", ""), path);
    EXPECT_TRUE(model.setCheck(1, at(FrdColumn::Apply), true).done);
    EXPECT_TRUE(frame.session.tables.filterInUse());
    EXPECT_TRUE(model.edit(1, at(FrdColumn::Path), "").done);
    EXPECT_EQ(model.check(1, at(FrdColumn::Apply)), Check::Unchecked);
    EXPECT_FALSE(model.edit(0, at(FrdColumn::Path), path).done);
}

}  // namespace welvane::test
