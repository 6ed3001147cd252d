// Streamed passes against the same ones with all samples in memory.
#include "engine/streaming.h"

#include <functional>
#include <random>

#include "engine/pass_fixture.h"

namespace welvane {
namespace {

using test::lasText;

class StreamingTest : public test::PassTest {
  protected:
    std::mt19937 source{31};

    int below(int limit) { return static_cast<int>(source() % static_cast<unsigned>(limit)); }

    struct Made {
        std::string bytes, refusal;
        bool streamed = false;
        std::size_t overflows = 0;
        std::int32_t records = 0;
    };
    Made made(bool streamed) {
        PassContext context(app, session, {.outputPath = folder.path("out.las"), .streamed = streamed});
        doitmastnew(context);
        return {folder.read("out.las"), context.report.refusal, context.stream != nullptr, context.report.overflowCount,
                context.report.records};
    }

    /// Records of three channels that go one way, with gaps, odd words, missing and surplus fields; one in so many does
    /// something else.
    std::string randomData(bool upward, int oneIn) {
        static const char* const words[] = {"-999.25", "abc", "1E3", "-0.000001", "600009999", "12.5x", "--"};
        std::string data;
        const bool ragged = below(4) == 0;
        double depth = upward ? 990 : 1040;
        for (int line = below(60) + 1; line > 0; --line) {
            depth += (upward ? 0.5 : -0.5) * (below(9) == 0 ? 4 : 1);
            std::string record = below(oneIn) == 0 ? "1011" : formatMask(depth, 4);
            for (int field = ragged && below(8) == 0 ? below(5) : 3; field > 0; --field)
                record += below(9) == 0 ? " " + std::string(words[below(7)])
                                        : "  " + formatMask((below(200000) - 100000) / 7.0, below(6));
            data += record + (below(10) == 0 ? "\n \n" : "\n");
        }
        return data;
    }
};

TEST_F(StreamingTest, writesTheBytesOfAPassInMemory) {
    int streams = 0;
    for (int round = 0; round < 300; ++round) {
        session = Session();
        openSession(app, session);
        const bool upward = below(2) == 0;
        const std::string step = std::string(upward ? "" : "-") + (below(3) == 0 ? "1" : "0.5");
        load(0,
             folder.writeLines("a.las", lasText("A.M :\nB.FT :\nC. :\n", randomData(upward, below(2) == 0 ? 1000 : 50),
                                                upward ? "1000" : "1020", upward ? "1020" : "1000", step)));
        if (below(3) == 0) session.tables.setting(PrdRow::Direction) = "Deep to Shallow";
        const bool loaded = session.loaded(0) && session.tables.outputs().columns() > 2;
        if (loaded && below(4) == 0) session.tables.outputs().text(SrdRow::Unit, 1) = "FT";
        if (loaded && below(4) == 0) session.tables.outputs().setCheck(SrdRow::Use, 2, Check::Unchecked);
        if (below(6) == 0) session.tables.setting(PrdRow::Wrap) = "YES";
        if (below(6) == 0) {
            session.tables.setChecked(PrdRow::PlainAscii, true);
            session.tables.secondOption(PrdRow::PlainAscii) = "Comma";
        }
        const Session before = session;
        app.run.workers = {1, std::size_t{1} << 20U};
        const Made held = made(false);
        ASSERT_FALSE(held.streamed);
        session = before;
        app.run.workers = {static_cast<std::size_t>(1 + below(3)), static_cast<std::size_t>(350 + below(1500))};
        const Made stream = made(true);
        ASSERT_EQ(stream.bytes, held.bytes) << round << "\n" << folder.read("a.las");
        EXPECT_EQ(stream.refusal, held.refusal);
        EXPECT_EQ(stream.overflows, held.overflows);
        EXPECT_EQ(stream.records, held.records);
        streams += stream.streamed ? 1 : 0;
    }
    EXPECT_GT(streams, 100);
    EXPECT_LT(streams, 290);
}

TEST_F(StreamingTest, asksThePlan) {
    std::string data;
    for (int line = 0; line < 20; ++line) data += std::to_string(1000 + line) + " 1 2\n";
    const std::string one = folder.writeLines("a.las", lasText("A.M :\nB. :\n", data, "1000", "1019", "1"));
    const std::string far =
        folder.writeLines("b.las", lasText("A.M :\nB. :\n", "1000 1 2\n60000 1 2\n", "1000", "60000", "1"));
    const struct {
        const char* why;
        std::function<void()> set;
    } cases[] = {{"", [] {}},
                 {"", [&] { session.tables.setting(PrdRow::To) = "1010"; }},
                 {"gaps are filled", [&] { session.tables.setting(PrdRow::NullFill) = "Linear"; }},
                 {"gaps are filled", [&] { session.tables.setting(PrdRow::SampleRate) = "0.5"; }},
                 {"channels are smoothed", [&] { session.tables.setChecked(PrdRow::DovranFilter, true); }},
                 {"a channel is shifted or clipped", [&] { session.channels[0][1].channelTop = 1005; }},
                 {"columns are cut by position",
                  [&] {
                      session.tables.setting(PrdRow::ParsingOptions) = "Column width of:";
                      session.tables.option(PrdRow::ParsingOptions) = "8";
                  }},
                 {"a channel takes a part of its input's depths",
                  [&] { session.tables.outputs().text(linkRow(0, Link::To), 1) = "1010"; }},
                 {"several inputs are joined", [&] { load(1, one); }}};
    for (const auto& row : cases) {
        session = Session();
        openSession(app, session);
        load(0, one);
        row.set();
        EXPECT_EQ(planPass(app, session, FigureRules::asLaidDown).whyInMemory, row.why);
        EXPECT_EQ(made(true).streamed, std::string(row.why).empty()) << row.why;
    }
    session = Session();
    openSession(app, session);
    load(0, far);
    app.run.workers = {2, 1000};
    EXPECT_FALSE(made(true).streamed) << "a gap of more samples than a thread is to hold";
}

}  // namespace
}  // namespace welvane
