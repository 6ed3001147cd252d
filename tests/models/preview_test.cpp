#include "models/preview.h"

#include <cmath>
#include <filesystem>
#include <thread>

#include "engine/driver.h"
#include "las/read_channels.h"
#include "models/table_models.h"
#include "session/matching.h"
#include "support/session_fixture.h"

namespace welvane::test {

class Preview : public SessionTest {
  protected:
    Preview() : preview(own, {}) {
        session.rules = FigureRules::trueFigures;
        app.run.targetFile = folder.path("out.las");
    }
    void wait() {
        for (preview.poll(app, session); preview.working(); preview.poll(app, session)) std::this_thread::yield();
    }
    /// What a run writes now, read back.
    std::vector<std::vector<double>> written() {
        Session copy = session;
        RunRequest run;
        run.outputMode = OutputFile::Mode::Beside;
        run.rules = session.rules;
        const RunOutcome outcome = processMMM(app, copy, run);
        EXPECT_TRUE(outcome.completed) << outcome.refusal;
        const LasFile file(app.run.targetFile, FigureRules::trueFigures);
        RunTurn turn(app.run, user, 1);
        return readChannels(file, {}, turn)->columns;
    }

    MemoryPlatform own;
    OutputPreview preview;
};

TEST_F(Preview, ShowsWhatARunWouldWriteAndWritesNothing) {
    load(0, {.start = 1000, .stop = 1003, .curves = "GR. : G\nRHOB. : R\n", .channels = 2});
    load(1, {.start = 1002, .stop = 1006, .curves = "GR. : G\n"});
    spliceGuess(app, session);
    setChannelShift(session, 1, 1, 0.5);
    session.tables.setting(PrdRow::SampleRate) = "0.25";
    session.tables.setting(PrdRow::NullFill) = "Linear";
    const SessionTables before = session.tables;
    wait();
    ASSERT_NE(preview.output(), nullptr) << preview.refusal();
    EXPECT_TRUE(preview.current());
    EXPECT_FALSE(std::filesystem::exists(app.run.targetFile));
    EXPECT_TRUE(session.tables == before);
    const std::vector<std::vector<double>> columns = written();
    ASSERT_EQ(preview.output()->columns.size(), columns.size());
    for (std::size_t column = 0; column < columns.size(); ++column)
        for (std::size_t sample = 0; sample < columns[column].size(); ++sample) {
            const double shown = preview.output()->columns[column].at(sample), file = columns[column][sample];
            EXPECT_TRUE(shown == file || (std::isnan(shown) && std::isnan(file))) << column << ", " << sample;
        }
    EXPECT_EQ(preview.output()->source.channels.at(1).mnem, "RHOB");
    EXPECT_EQ(preview.output()->source.title.at(0), "X-1");
}

TEST_F(Preview, AnEditPutsItOutOfDateUntilTheNextIsDone) {
    load(0, {"GR", "RHOB"});
    wait();
    ASSERT_NE(preview.output(), nullptr);
    CellTableModel model = newChannelsModel(app, session, [](auto&&...) { return std::nullopt; });
    for (int edit = 0; edit < 20; ++edit) {
        ASSERT_TRUE(model.edit(at(SrdRow::Mnem), 1, "GR" + std::to_string(edit)).done);
        preview.changed();
        EXPECT_FALSE(preview.current());
        EXPECT_NE(preview.output(), nullptr) << "the old one stays to be shown";
        preview.poll(app, session);
    }
    wait();
    EXPECT_EQ(preview.output()->source.channels.at(0).mnem, "GR19");
    session.tables.setting(PrdRow::SampleRate) = "0";
    preview.changed();
    wait();
    EXPECT_EQ(preview.output(), nullptr);
    EXPECT_NE(preview.refusal(), "");
    EXPECT_TRUE(preview.current());
    closeSlot(app, session, 0);
    preview.changed();
    wait();
    EXPECT_EQ(preview.refusal(), "no file is loaded");
}

}  // namespace welvane::test
