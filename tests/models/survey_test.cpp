#include "models/survey.h"

#include <filesystem>

#include "jobs/process.h"
#include "models/frame.h"
#include "models/table_models.h"
#include "session/tvd.h"
#include "support/session_fixture.h"

namespace welvane::test {

using Survey = SessionTest;

TEST_F(Survey, ChosenFileIsKeptAsASetting) {
    const std::string path = folder.write("s.txt", "1 2 3 4\n");
    user.willType(path);
    const SurveyOutcome opened = openTVDFile(app, session);
    EXPECT_TRUE(opened.outcome.done);
    EXPECT_EQ(opened.row, tieRow) << "where the view goes";
    EXPECT_EQ(user.askedForText().back(), "Find ASCII file To Load");
    EXPECT_EQ(session.tables.trd.text(TrdRow::Tie, TrdColumn::Azimuth), "4");
    Session later;
    openSession(app, later);
    EXPECT_EQ(later.tvdFile, path);
    user.willType("");
    EXPECT_EQ(openTVDFile(app, later).row, -1);
    user.willType(folder.path("copy.txt"));
    EXPECT_TRUE(saveInclinometryData(app, session).done);
    EXPECT_EQ(folder.read("copy.txt"), "1\t2\t3\t4\r\n");
    user.willType("");
    EXPECT_EQ(saveInclinometryData(app, session).why, "");
    user.willType(folder.path("none/copy.txt"));
    EXPECT_EQ(saveInclinometryData(app, session).why, "Not written: " + folder.path("none/copy.txt"));
    user.willType(folder.path("gone.txt"));
    EXPECT_EQ(openTVDFile(app, session).outcome.why,
              folder.path("gone.txt") + " could not be read: the table is empty");
}

TEST_F(Survey, TheViewGoesToWhatIsMissing) {
    struct Case {
        const char* table;
        int row, column;
    };
    // A row that lacks its depth is sorted behind the others.
    for (const Case& one :
         {Case{"0\t0\t0\t\n100\t\t5\t\n200\t\t6\t\n", -1, 0}, Case{"0\t\t0\t\n100\t\t5\t\n", 2, 2},
          Case{"0\t0\t0\t\n100\t\t\t\n200\t\t6\t\n", 3, 3}, Case{"0\t0\t0\t\n\t\t5\t\n200\t\t6\t\n", 4, 1}}) {
        setupTVD(session.tables.trd);
        pasteSurvey(session, 2, 1, one.table);
        if (one.row >= 0) user.willAnswer(Answer::Ok);
        const SurveyOutcome computed = computeSurvey(app, session);
        EXPECT_EQ(computed.row, one.row) << one.table;
        EXPECT_EQ(computed.column, one.column) << one.table;
    }
    EXPECT_EQ(box(0).substr(0, 27), "Tie Point Data Incomplete!:");
    EXPECT_EQ(box().substr(0, 63), "TVD Data Table Incomplete!: Incomplete data found at row 4. You");
}

TEST_F(Survey, OneThatTheBrowserOffersCanBeTakenBack) {
    Frame frame(app);
    openArea(frame, WorkArea::Session);
    frame.tab = SessionTab::Survey;
    frame.browser.folder = folder.path();
    folder.write("s.txt", "1 2 3 4\n");
    frame.browser.selected = {"s.txt"};
    selectionChanged(frame);
    const Table& trd = frame.session.tables.trd;
    EXPECT_EQ(trd.text(TrdRow::Tie, TrdColumn::Md), "1");
    EXPECT_EQ(frame.history.undoText(), "Open TVD File");
    EXPECT_TRUE(frame.history.undo(app, frame.session));
    EXPECT_EQ(trd.text(TrdRow::Tie, TrdColumn::Md), "0.00");
}

TEST_F(Survey, ABlockIsTakenWholeOrNotAtAll) {
    Table& trd = session.tables.trd;
    EXPECT_EQ(pasteSurvey(session, 3, 1, "100\t\"99\"\r\n200\t198\r\n").changed, 4U);
    EXPECT_EQ(trd.text(4, 2), "198");
    EXPECT_EQ(trd.text(3, 2), "99");
    const Table before = trd;
    std::string wide, tall;
    for (int cell = 0; cell < 200; ++cell) wide += "1\t";
    for (int row = 0; row < 5001; ++row) tall += "1\n";
    for (const std::string& block : {wide, tall}) {
        EXPECT_EQ(pasteSurvey(session, 3, 1, block).summary(),
                  "nothing was pasted: the block reaches beyond what a survey can hold");
        EXPECT_TRUE(trd == before);
    }
    EXPECT_FALSE(pasteSurvey(session, 1, 1, "F").clean());
    EXPECT_TRUE(trd == before);
    EXPECT_EQ(pasteSurvey(session, 460, 1, "1\t1\n2\t2\n").changed, 4U) << "it grows";
    EXPECT_EQ(trd.text(461, 1), "2");
}

TEST_F(Survey, WhatIsNoNumberIsRefusedAndMapsNoDepth) {
    session.rules = FigureRules::trueFigures;
    const PasteReport pasted = pasteSurvey(session, 2, 1, "MD\tTVD\tINC\r\n100\t\t5\r\n");
    EXPECT_EQ(pasted.refused.size(), 3U);
    EXPECT_EQ(pasted.changed, 2U);
    const Table& trd = session.tables.trd;
    EXPECT_EQ(trd.text(2, 1), "0.00") << "keeps what it held";
    EXPECT_EQ(surveyFault(trd)->why, "survey row 3 has no TVD: compute the TVD column");
    EXPECT_TRUE(computeSurvey(app, session).outcome.done);
    EXPECT_FALSE(surveyFault(trd));
    user.willType(folder.write("s.txt", "MD TVD INC\n1 2 3\n"));
    const SurveyOutcome opened = openTVDFile(app, session);
    EXPECT_EQ(opened.outcome.why, "survey row 2: \"MD\" is no number");
    EXPECT_EQ(opened.column, 1);
    const SurveyOutcome computed = computeSurvey(app, session);
    EXPECT_FALSE(computed.outcome.done);
    EXPECT_EQ(computed.row, tieRow);
    EXPECT_EQ(trd.text(3, 2), "2") << "nothing was computed";
}

TEST_F(Survey, ARunMapsNoDepthThroughAStationThatNobodyMeasured) {
    session.rules = FigureRules::trueFigures;
    app.settings.certifyAfter = app.settings.editAfter = false;
    load(0, {"GR"});
    propertiesModel(app, session).setCheck(at(PrdRow::ApplyTvd), at(PrdColumn::Setting), true);
    const auto run = [&] {
        Session copy = session;
        app.run.targetFile = folder.path("out.las");
        ProcessRequest request;
        request.sessionOpen = true;
        const ProcessOutcome outcome = process(app, copy, request);
        std::string told = outcome.refusal;
        for (const ItemReport& item : outcome.items)
            for (const Note& note : item.pass.notes)
                if (note.kind == NoteKind::Survey) told += note.text;
        const std::string written = std::filesystem::exists(app.run.targetFile) ? folder.read("out.las") : "";
        std::filesystem::remove(app.run.targetFile);
        return std::pair{told, written};
    };
    const auto [nothing, unmapped] = run();
    EXPECT_EQ(nothing, "the survey has no station: depths stay as they are");
    pasteSurvey(session, 2, 1, "1000\t1000\t0\r\n1010\t\t60\r\n");
    for (int told = 0; told < 2; ++told) user.willAnswer(Answer::Ok);
    EXPECT_EQ(run(), (std::pair<std::string, std::string>{"survey row 3 has no TVD: compute the TVD column", ""}));
    EXPECT_TRUE(computeSurvey(app, session).outcome.done);
    const auto [mapped, depths] = run();
    EXPECT_EQ(mapped, "");
    EXPECT_NE(depths, "");
    EXPECT_NE(depths, unmapped);
}

TEST_F(Survey, ClearingAsksAndSparesTheHeads) {
    Table& trd = session.tables.trd;
    pasteIntoTrd(trd, 2, 1, "1\t1\t0\t0\r\n2\t2\t0\t0\n");
    copyTrdToInclinometry(session);
    user.willAnswer(Answer::No);
    clearTrdSelection(trd, 0, 0, 3, 9, user);
    EXPECT_EQ(trd.text(3, 1), "2");
    EXPECT_FALSE(trdChanged(trd));
    user.willAnswer(Answer::Yes);
    clearTrdSelection(trd, 0, 0, 999, 9, user);
    EXPECT_EQ(box(), "Please Confirm!: Are you sure you want to clear the selected area of the grid?");
    EXPECT_EQ(user.asked().back().buttons, Buttons::YesNo);
    EXPECT_EQ(user.asked().back().safe(), Answer::No);
    EXPECT_EQ(trd.text(0, 1), "MD");
    for (const int row : {2, 3})
        for (int column = 1; column <= 4; ++column) EXPECT_EQ(trd.text(row, column), "");
    EXPECT_TRUE(trdChanged(trd));
}

}  // namespace welvane::test
