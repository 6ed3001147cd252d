#include "models/make_las_tab.h"

#include "models/clipboard.h"
#include "models/table_models.h"
#include "support/session_fixture.h"

namespace welvane::test {

class MakeLasTab : public AppTest {
  protected:
    MakeLasTab() : frame(app) {
        app.settings.country = "Canada";
        openArea(frame, WorkArea::Session);
    }
    /// A table loaded as the tab's button does it.
    EditOutcome open(const std::string& path, LoadOptions options = {}) {
        GenericTable grd;
        const TableLoadResult result = loadTable(app, path, options, grd);
        return takeTable(frame, path, std::move(grd), result);
    }
    std::string column(int number) const {
        std::string text;
        for (std::int64_t row = grdHeadRows; row < frame.grd.rows(); ++row) text += frame.grd.cell(row, number) + " ";
        return text;
    }

    Frame frame;
    GenericTableModel model{frame.grd, &frame.history};
};

TEST_F(MakeLasTab, ARowIsMarkedAsTheFirstOfTheData) {
    const std::string path = folder.write("t.txt", "Report of 3 wells\n1 2 3\nrun 7\n100 5\n101 6\n102 7 8\n");
    user.willAnswer(Answer::Ok);
    EXPECT_EQ(open(path, {Delimiter::Blanks, 2}).why, "2 rows from line 2 on");
    EXPECT_EQ(frame.problems.size(), 1U) << "the lines that were skipped";
    EXPECT_EQ(lineOfTableRow(frame.grd, grdHeadRows), 2U);
    EXPECT_EQ(lineOfTableRow(frame.grd, grdHeadRows - 1), 0U) << "heads come from no line";
    EXPECT_EQ(lineOfTableRow(frame.grd, 99), 0U);
    user.willAnswer(Answer::Ok);
    EXPECT_EQ(open(path, {Delimiter::Blanks, 4}).why, "2 rows from line 4 on");
    EXPECT_EQ(box().substr(0, 47), "Lines Skipped!: A total of 1 lines were skipped");
    EXPECT_EQ(column(1), "100 101 ");
    EXPECT_EQ(frame.tablePath, path);
    const EditOutcome gone = open(folder.path("gone.txt"));
    EXPECT_FALSE(gone.done);
    EXPECT_NE(gone.why, "");
    EXPECT_EQ(column(1), "100 101 ") << "the table there was stays";
    EXPECT_EQ(frame.tablePath, path);
    EXPECT_EQ(frame.history.undoText(), "Open table t.txt");
    EXPECT_TRUE(frame.history.undo(app, frame.session));
    EXPECT_EQ(column(1), "1 102 ") << "the table before it";
}

TEST_F(MakeLasTab, EditsAreTakenBackUntilTheRowsAreSorted) {
    EXPECT_TRUE(open(folder.write("t.csv", "102,7\n100,5\n101,6\n")).done);
    EXPECT_TRUE(model.edit(at(GrdRow::Name), 2, "GR").done);
    EXPECT_EQ(frame.history.undoText(), "Edit row 1, column 2 of the table");
    EXPECT_EQ(pasteCells(model, grdHeadRows, 2, "8\nNaN\n").changed, 2U);
    EXPECT_TRUE(model.setCheck(at(GrdRow::Use), 2, false).done);
    EXPECT_TRUE(model.setCheck(at(GrdRow::Use), 2, false).done) << "off already: no step";
    EXPECT_EQ(column(2), "8 -999.25 6 ");
    EXPECT_TRUE(frame.history.undo(app, frame.session));
    EXPECT_TRUE(frame.grd.used(2));
    EXPECT_TRUE(frame.history.undo(app, frame.session));
    EXPECT_EQ(column(2), "7 5 6 ") << "a block is one step";
    EXPECT_TRUE(frame.history.redo(app, frame.session));
    EXPECT_EQ(column(2), "8 -999.25 6 ");
    sortTable(frame);
    EXPECT_EQ(column(1), "100 101 102 ");
    EXPECT_TRUE(frame.history.lastStays());
    EXPECT_EQ(frame.history.undoText(), "The rows of the table stay sorted; the table opened again has its own order");
    EXPECT_EQ(frame.history.steps(), 1U) << "steps of rows that stand elsewhere now are gone";
}

TEST_F(MakeLasTab, TheTemplateIsEditedUntilItSaysTheSameAgain) {
    const std::string text = tableHeaderText(frame);
    EXPECT_TRUE(text.starts_with("~Version Information\n VERS. "));
    EXPECT_NE(text.find(" PROV ."), npos) << "that of the region";
    EXPECT_EQ(frame.headerText, "");
    setTableHeaderText(frame, "~Version Information\n");
    EXPECT_EQ(tableHeaderText(frame), "~Version Information\n");
    app.settings.country = "Other";
    EXPECT_EQ(tableHeaderText(frame), "~Version Information\n") << "what a person wrote stays";
    setTableHeaderText(frame, "");
    EXPECT_NE(tableHeaderText(frame).find(" STAT ."), npos);
    app.settings.country = "Canada";
    setTableHeaderText(frame, text);
    EXPECT_EQ(frame.headerText, "") << "not edited: it follows the region";
    for (const char* typed : {"~V\n", "~Ve\n", "~Ver\n"}) setTableHeaderText(frame, typed);
    EXPECT_EQ(frame.history.undoText(), "Edit the header of the table");
    EXPECT_TRUE(frame.history.undo(app, frame.session));
    EXPECT_EQ(tableHeaderText(frame), text) << "what was there before the first letter";
    EXPECT_TRUE(frame.history.redo(app, frame.session));
    EXPECT_EQ(tableHeaderText(frame), "~Ver\n");
}

}  // namespace welvane::test
