#include "models/problems.h"

#include "models/clipboard.h"
#include "support/session_fixture.h"

namespace welvane::test {

class Problems : public SessionTest {
  protected:
    Problems() { session.rules = FigureRules::trueFigures; }
    std::string shown() const { return copyCells(model, {1, 0, 99, 3}); }
    ProblemList list;
    ProblemsModel model{list};
};

TEST_F(Problems, LoadsTellTheirNotesWithFileAndLine) {
    std::string text = LasText{}.text();
    text.replace(text.find("  1.5"), 5, "  bad");
    app.reference.units = {{"DEPTH", "M", 1, 0}};
    session.slots[0].path = folder.writeLines("a.las", text);
    const std::string path = session.slots[0].path;
    list.loaded(path, Open4Files(app, session, 0));
    EXPECT_NE(shown().find("a.las\t"), std::string::npos) << shown();
    std::int64_t row = 1;
    while (row < model.rows() && model.text(row, 2) != "GR") ++row;
    ASSERT_LT(row, model.rows()) << shown();
    EXPECT_EQ(model.placeOf(row).path, path);
    EXPECT_EQ(std::to_string(model.placeOf(row).line), model.text(row, 1));
    EXPECT_GT(model.placeOf(row).line, 1U);
    const std::size_t once = list.size();
    list.loaded(path, Open4Files(app, session, 0));
    EXPECT_EQ(list.size(), once) << "loaded again, told once";
    list.closed(path);
    EXPECT_EQ(list.size(), 0U);
}

TEST_F(Problems, EachSourceIsToldAndReplaced) {
    list.loaded("gone.las", {.status = LoadStatus::NoFile, .why = "no such file", .notes = {}});
    FilterReport filter;
    filter.applied = true;
    for (int step = 0; step < 102; ++step) filter.skipped.add("FUN", "unknown " + std::to_string(step));
    list.filtered("f.fil", filter);
    EXPECT_EQ(list.size(), 102U) << "the first hundred, and how many more";
    EXPECT_EQ(model.text(102, 3), "2 more like these");
    list.filtered("g.fil", {.applied = false, .why = "it holds no section", .skipped = {}, .tables = {}});
    ProcessOutcome run;
    run.items.push_back({"a.las", "out.las", {}});
    run.items[0].pass.notes = {{.kind = NoteKind::NoNumber, .channel = "GR", .line = 12, .count = 3, .text = "\"x\""}};
    run.items[0].pass.overflowCount = 2;
    run.leftOut = {{"t.txt", "it is no table of a report"}};
    run.refusal = "disk full";
    list.ran(run);
    TableLoadResult table;
    table.done = true;
    table.skipped = 1;
    list.readTable("t.csv", table);
    EXPECT_EQ(shown(),
              "gone.las\t\t\tno such file\r\n"
              "g.fil\t\t\tit holds no section\r\n"
              "out.las\t12\tGR\t\"\"\"x\"\" (3)\"\r\n"
              "out.las\t\t\t2 values too wide for the data column\r\n"
              "t.txt\t\t\tit is no table of a report\r\n"
              "\t\t\tdisk full\r\n"
              "t.csv\t\t\t1 line with another number of columns than the first\r\n");
    EXPECT_EQ(list.source(0), ProblemSource::Load);
    EXPECT_EQ(model.placeOf(0).path, "");
    list.ran({});
    EXPECT_EQ(list.size(), 3U) << "a run that went well takes the last one's away";
}

}  // namespace welvane::test
