#include "models/make_las_tab.h"

#include <memory>
#include <utility>

#include "convert/header_template.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

std::string templateText(const Frame& frame) {
    const StartupSettings& settings = frame.app.settings;
    return join(headerTemplate(settings.country, settings.units.depthUnit), "\n") + "\n";
}

}  // namespace

const std::array<DelimiterChoice, 5>& delimiterChoices() {
    static constexpr std::array<DelimiterChoice, 5> choices = {{{"Delimiter: guess", Delimiter::Guess},
                                                                {"Blanks", Delimiter::Blanks},
                                                                {"Tabs", Delimiter::Tab},
                                                                {"Commas", Delimiter::Comma},
                                                                {"Semicolons", Delimiter::Semicolon}}};
    return choices;
}

std::string askTableFile(Frame& frame) {
    return frame.app.user.askFile(
        {"Open Table", "Tables (*.txt;*.csv;*.asc;*.dat)|*.txt;*.csv;*.asc;*.dat", frame.browser.folder, "", false});
}

std::string askHeaderFile(Frame& frame) {
    return frame.app.user.askFile({"Select Header File", "las", dirOf(frame.headerFile), "", false});
}

EditOutcome takeTable(Frame& frame, const std::string& path, GenericTable&& grd, const TableLoadResult& result) {
    frame.problems.readTable(path, result);
    if (!result.done) return {false, result.why};
    struct Other {
        GenericTable grd;
        std::string path;
    };
    const auto other = std::make_shared<Other>(Other{std::exchange(frame.grd, std::move(grd)), frame.tablePath});
    frame.tablePath = path;
    frame.history.did(
        "Open table " + (path.empty() ? "of the clipboard" : fileNameOf(path)),
        [&frame, other] {
            std::swap(frame.grd, other->grd);
            std::swap(frame.tablePath, other->path);
        },
        static_cast<std::size_t>(other->grd.dataRows()) * sizeof(std::uint64_t));
    return {true, counted(frame.grd.dataRows(), "row") + " from line " + std::to_string(result.dataLine) + " on"};
}

void sortTable(Frame& frame) {
    if (frame.grd.dataRows() == 0) return;
    frame.grd.sortDepth();
    frame.history.forgetTurns();
    frame.history.cannotUndo("The rows of the table stay sorted; the table opened again has its own order");
}

std::size_t lineOfTableRow(const GenericTable& grd, std::int64_t row) {
    return row < grdHeadRows || row >= grd.rows() ? 0 : grd.lineNumber(row - grdHeadRows);
}

std::string tableHeaderText(const Frame& frame) {
    return frame.headerText.empty() ? templateText(frame) : frame.headerText;
}

void setTableHeaderText(Frame& frame, const std::string& text) {
    std::string now = text == templateText(frame) ? std::string() : text;
    if (now == frame.headerText) return;
    const auto other = std::make_shared<std::string>(std::exchange(frame.headerText, std::move(now)));
    frame.history.did(
        "Edit the header of the table", [&frame, other] { frame.headerText.swap(*other); }, other->size(),
        UndoHistory::Kind::Typing);
}

}  // namespace welvane
