#include "models/survey.h"

#include <algorithm>

#include "session/tvd.h"
#include "shared/files.h"

namespace welvane {

bool openTVDFile(App& app, Session& session) {
    const std::string path = app.user.askFile(
        {"Find ASCII file To Load", "txt", dirOf(session.tvdFile), fileNameOf(session.tvdFile), false});
    if (path.empty()) return false;
    session.tvdFile = path;
    app.platform.settings().put("tvdFile", path);
    return readTVDFile(path, session, app.user);
}

bool saveInclinometryData(App& app, Session& session) {
    const std::string path = app.user.askFile({"Save Inclinometry Data", "txt", dirOf(session.tvdFile), "", true});
    return !path.empty() && saveTVDFile(path, session);
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

}  // namespace welvane
