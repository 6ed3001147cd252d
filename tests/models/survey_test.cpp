#include "models/survey.h"

#include "session/tvd.h"
#include "support/session_fixture.h"

namespace welvane::test {

using Survey = SessionTest;

TEST_F(Survey, ChosenFileIsKeptAsASetting) {
    const std::string path = folder.write("s.txt", "1 2 3 4\n");
    user.willType(path);
    EXPECT_TRUE(openTVDFile(app, session));
    EXPECT_EQ(user.askedForText().back(), "Find ASCII file To Load");
    EXPECT_EQ(session.tables.trd.text(TrdRow::Tie, TrdColumn::Azimuth), "4");
    Session later;
    openSession(app, later);
    EXPECT_EQ(later.tvdFile, path);
    user.willType("");
    EXPECT_FALSE(openTVDFile(app, later));
    user.willType(folder.path("copy.txt"));
    EXPECT_TRUE(saveInclinometryData(app, session));
    EXPECT_EQ(folder.read("copy.txt"), "1\t2\t3\t4\r\n");
    user.willType("");
    EXPECT_FALSE(saveInclinometryData(app, session));
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
