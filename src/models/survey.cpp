#include "models/survey.h"

#include <algorithm>

#include "models/table_models.h"
#include "session/tvd.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

using SurveyBlock = std::vector<std::vector<std::string>>;

bool emptyCell(const Table& trd, int row, TrdColumn column) {
    return trim(trd.text(row, column)).empty();
}

/// The first cell of the row that is empty and must not be; TrdColumn::Label for none.
TrdColumn missingCell(const Table& trd, int row) {
    const bool tie = row == tieRow;
    if (!tie && emptyCell(trd, row, TrdColumn::Md) == emptyCell(trd, row, TrdColumn::Deviation))
        return TrdColumn::Label;
    for (const TrdColumn column : {TrdColumn::Md, TrdColumn::Tvd, TrdColumn::Deviation})
        if ((tie || column != TrdColumn::Tvd) && emptyCell(trd, row, column)) return column;
    return TrdColumn::Label;
}

/// A block of blanks in this size, which makes the table grow for it.
std::string blanksFor(const SurveyBlock& block) {
    std::string text;
    for (const std::vector<std::string>& line : block) text += std::string(line.size() - 1, '\t') + "\n";
    return text;
}

bool fits(const Table& trd, int row, int column, const SurveyBlock& block) {
    std::size_t width = 0;
    for (const std::vector<std::string>& line : block) width = std::max(width, line.size());
    return static_cast<std::size_t>(trd.rows() - row) >= block.size() &&
           static_cast<std::size_t>(trd.columns() - column) >= width;
}

}  // namespace

SurveyOutcome computeSurvey(App& app, Session& session) {
    SurveyOutcome result;
    const Table& trd = session.tables.trd;
    if (const auto fault = noNumberIn(trd); fault && session.rules == FigureRules::trueFigures)
        return {{false, "nothing was computed: " + fault->why}, fault->row, fault->column};
    const int lastRow = buildTVDTable(session, app.user) ? trd.rows() - 1 : tieRow;
    for (int row = tieRow; row <= lastRow; ++row) {
        const TrdColumn missing = missingCell(trd, row);
        if (missing == TrdColumn::Label) continue;
        result.row = row;
        result.column = at(missing);
    }
    return result;
}

SurveyOutcome openTVDFile(App& app, Session& session) {
    const std::string path = app.user.askFile(
        {"Find ASCII file To Load", "txt", dirOf(session.tvdFile), fileNameOf(session.tvdFile), false});
    if (path.empty()) return {{false, ""}};
    session.tvdFile = path;
    app.platform.settings().put("tvdFile", path);
    const bool read = readTVDFile(path, session, app.user);
    if (const auto fault = noNumberIn(session.tables.trd)) return {{true, fault->why}, fault->row, fault->column};
    return {{read, read ? "" : path + " could not be read: the table is empty"}, tieRow, at(TrdColumn::Md)};
}

EditOutcome saveInclinometryData(App& app, const Session& session) {
    const std::string path = app.user.askFile({"Save Inclinometry Data", "txt", dirOf(session.tvdFile), "", true});
    if (path.empty()) return {false, ""};
    const bool saved = saveTVDFile(path, session);
    return {saved, (saved ? "Written: " : "Not written: ") + path};
}

void clearTrdSelection(Table& trd, int firstRow, int firstColumn, int lastRow, int lastColumn, UserInterface& user) {
    if (user.ask({"Please Confirm!", "Are you sure you want to clear the selected area of the grid?", Buttons::YesNo,
                  Icon::Question, Answer::No}) != Answer::Yes)
        return;
    for (int row = std::max(firstRow, at(TrdRow::Tie)); row <= std::min(lastRow, trd.rows() - 1); ++row)
        for (int place = std::max(firstColumn, 1); place <= std::min(lastColumn, trd.columns() - 1); ++place)
            trd.text(row, place).clear();
    markTrdChanged(trd);
}

PasteReport pasteSurvey(Session& session, int row, int column, std::string_view text) {
    Table& trd = session.tables.trd;
    PasteReport report;
    const SurveyBlock block = splitCells(text);
    if (row < tieRow || column < 1) {
        report.why = "nothing was pasted: the heads take no text";
        return report;
    }
    Table room = trd;
    pasteIntoTrd(room, row, column, blanksFor(block));
    if (!fits(room, row, column, block)) {
        report.why = "nothing was pasted: the block reaches beyond what a survey can hold";
        return report;
    }
    trd.resize(room.rows(), room.columns());
    CellTableModel model = surveyModel(session);
    return pasteCells(model, row, column, text);
}

}  // namespace welvane
