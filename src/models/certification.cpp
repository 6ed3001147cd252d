#include "models/certification.h"

#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view printTitle = "Print Certify Results";
constexpr std::string_view printText = "Do you want to print the certify results of all";
constexpr std::string_view printEnd = " files (Yes), or the currently selected file (No) ?";

std::string printedRow(const CertifyRow& row) {
    std::string text =
        row.path + ": " + (row.ran ? std::string(verdictText(verdictOf(row.log))) : std::string()) + "\r\n";
    if (!row.log.empty()) text.append(row.log).append("\r\n");
    return text;
}

}  // namespace

void fillCr(BatchCertification& batch, const BrowserState* browser, std::string_view lasFile) {
    std::vector<std::string> paths;
    if (browser == nullptr)
        paths.emplace_back(lasFile);
    else
        for (const std::string& name : browser->selected) paths.push_back(withBackslash(browser->folder) + name);
    fillCr(batch, paths);
}

void clickRow(CheckDetails& details, const BatchCertification& batch, int row) {
    if (row < 1 || row > static_cast<int>(batch.files.size())) return;
    const CertifyRow& file = batch.files[row - 1];
    if (file.log.empty()) return;
    // Kept: only "Failed:" makes the text red, a log whose fault is called "Error:" is shown in green. Test:
    // clickShowsTheLog
    details = {.label = "Detailed Results for :" + file.path,
               .text = file.log,
               .colour = holdsText(file.log, "Failed:") ? failedColour : passedColour,
               .visible = true};
}

std::string printCertify(App& app, const BatchCertification& batch, int current) {
    const Prompt question{
        .title = std::string(printTitle),
        .text = std::string(printText).append(strNumber(static_cast<double>(batch.files.size()))).append(printEnd),
        .buttons = Buttons::YesNo,
        .icon = Icon::Question,
        .whenHeadless = Answer::No};
    std::string text;
    if (app.user.ask(question) == Answer::Yes) {
        for (const CertifyRow& row : batch.files) text += printedRow(row);
    } else if (current >= 1 && current <= static_cast<int>(batch.files.size())) {
        text = printedRow(batch.files[current - 1]);
    }
    return text;
}

}  // namespace welvane
