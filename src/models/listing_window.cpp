#include "models/listing_window.h"

#include <optional>
#include <utility>

#include "las/header_edit.h"
#include "las/las_file.h"
#include "listing/listing_options.h"
#include "listing/price.h"
#include "shared/failure.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view cancelTitle = "Cancel Pressed";
constexpr std::string_view cancelText = "Multi-well listing cancelled by user. Listing file may be incomplete.";
constexpr std::string_view changedTitle = "Run Changed!";
constexpr std::string_view changedText = "Update LAS file with this run value?";
constexpr std::string_view problemTitle = "Problem Replacing Value";
constexpr std::string_view noLineText =
    "Unable to replace RUN Value, as no RUN parameter exists in the ~P section. Edit manually and add RUN to the "
    "~Parameter section";
constexpr std::string_view otherText = "Unable to replace RUN Value. Edit manually. ";

/// VALUE of the RUN line of the file's ~Parameter section; nothing without such a line.
std::optional<std::string> runValue(std::string_view path) {
    if (!fileExists(path)) return std::nullopt;
    for (HeaderField& line : openLasFile(path)->section('P').value_or(SectionTable()))
        if (sameText(line.mnem, "RUN")) return std::move(line.value);
    return std::nullopt;
}

RunEdit tellProblem(App& app, std::string_view text, RunEdit result) {
    app.user.ask({.title = std::string(problemTitle), .text = std::string(text), .icon = Icon::Stop});
    return result;
}

}  // namespace

Table makeVrd(const std::vector<std::string>& files) {
    Table vrd(static_cast<int>(files.size()) + 1, 2);
    vrd.text(0, VrdColumn::File) = "File Names";
    vrd.text(0, VrdColumn::Run) = "RUN";
    for (std::size_t file = 0; file < files.size(); ++file) {
        const int row = static_cast<int>(file) + 1;
        vrd.text(row, VrdColumn::File) = files[file];
        vrd.text(row, VrdColumn::Run) = runValue(files[file]).value_or("");
    }
    return vrd;
}

ListingSession::ListingSession(App& app) : ord(makeListingOrd(app)), vrd(makeVrd({})) {}

bool chooseReportPath(App& app, ListingSession& session) {
    const std::string last = app.platform.settings().get("mwLFile", "");
    const std::string chosen =
        app.user.askFile({"Specify Listing File Name", "txt", dirOf(last), fileNameOf(last), true});
    if (chosen.empty()) return false;
    session.reportPath = chosen;
    app.platform.settings().put("mwLFile", chosen);
    return true;
}

ListingResult runListing(App& app, ListingSession& session, ListingRequest request) {
    if (request.reportPath.empty()) request.reportPath = session.reportPath;
    app.platform.settings().put("listdef", optionsText(session.ord));
    ListingResult result;
    try {
        result = propertyListing(app, readListingOptions(session.ord), request, session.srd);
    } catch (const std::exception& error) {
        result.why = error.what();
        return result;
    }
    session.listingPath = result.listingPath;
    if (result.cancelled) {
        app.user.ask({.title = std::string(cancelTitle), .text = std::string(cancelText), .icon = Icon::Information});
        return result;
    }
    setPriceValue(session.ord, PriceRow::CurveFeet, formatMask(totalForPrice(session.ord, result.totals), 1));
    CalcPrice(session.ord);
    return result;
}

RunEdit editRun(App& app, std::string_view path, std::string_view newValue) {
    const Prompt question{.title = std::string(changedTitle),
                          .text = std::string(changedText),
                          .buttons = Buttons::YesNo,
                          .icon = Icon::Question,
                          .whenHeadless = Answer::No};
    if (app.user.ask(question) != Answer::Yes) return RunEdit::Declined;
    try {
        if (!runValue(path)) return tellProblem(app, noLineText, RunEdit::NoRunLine);
        if (editHeaderField(path, "RUN", EditPart::Value, newValue, 'P', app.user) == EditResult::Done)
            return RunEdit::Done;
    } catch (const RunTimeFailure&) {
        return tellProblem(app, otherText, RunEdit::Failed);
    }
    return tellProblem(app, otherText, RunEdit::Failed);
}

RunEdit editRun(App& app, Table& vrd, int row, std::string_view newValue) {
    const RunEdit result = editRun(app, vrd.text(row, VrdColumn::File), newValue);
    if (result == RunEdit::Done) vrd.text(row, VrdColumn::Run) = std::string(newValue);
    return result;
}

}  // namespace welvane
