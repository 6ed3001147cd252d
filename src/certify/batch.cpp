#include "certify/batch.h"

#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr int fileColumn = static_cast<int>(CrdColumn::File);
constexpr int verdictColumn = static_cast<int>(CrdColumn::Verdict);
constexpr std::string_view startStatus = "Doing Corvant checks...";
constexpr std::string_view runStatus = "Running Corvant....";
constexpr std::string_view printTitle = "Print Certify Results";
constexpr std::string_view printText = "Do you want to print the certify results of all";
constexpr std::string_view printEnd = " files (Yes), or the currently selected file (No) ?";

int rowOf(std::size_t file) {
    return static_cast<int>(file) + 1;
}

void clearVerdicts(BatchCertification& batch) {
    for (std::size_t file = 0; file < batch.files.size(); ++file) {
        batch.files[file].log.clear();
        batch.files[file].ran = false;
        SessionCell& cell = batch.crd.cell(rowOf(file), verdictColumn);
        cell.text.clear();
        cell.backColour = whiteColour;
    }
    batch.details.visible = false;
}

std::string logPathOf(const BatchCertification& batch, const std::string& path) {
    const std::string beside = certifyLogPath(path);
    return batch.logFolder.empty() ? beside : withBackslash(batch.logFolder) + fileNameOf(beside);
}

void showVerdict(BatchCertification& batch, std::size_t file) {
    const Verdict verdict = verdictOf(batch.files[file].log);
    SessionCell& cell = batch.crd.cell(rowOf(file), verdictColumn);
    cell.text = std::string(verdictText(verdict));
    cell.backColour = verdictColour(verdict);
    batch.files[file].ran = true;
}

std::string printedRow(const CertifyRow& row) {
    std::string text =
        row.path + ": " + (row.ran ? std::string(verdictText(verdictOf(row.log))) : std::string()) + "\r\n";
    if (!row.log.empty()) text.append(row.log).append("\r\n");
    return text;
}

}  // namespace

void fillCr(BatchCertification& batch, const std::optional<CertifySelection>& browser, std::string_view lasFile) {
    std::vector<std::string> paths;
    if (!browser)
        paths.emplace_back(lasFile);
    else
        for (const std::string& name : browser->names) paths.push_back(withBackslash(browser->folder) + name);
    fillCr(batch, paths);
}

void fillCr(BatchCertification& batch, const std::vector<std::string>& paths) {
    batch.files.clear();
    for (const std::string& path : paths) batch.files.push_back({.path = path});
    setUpCrd(batch);
}

void setUpCrd(BatchCertification& batch) {
    batch.crd.clear();
    batch.crd.resize(rowOf(batch.files.size()), 2);
    batch.crd.text(0, fileColumn) = "File Names";
    chooseCheck(batch, batch.kind);
    for (std::size_t file = 0; file < batch.files.size(); ++file)
        batch.crd.text(rowOf(file), fileColumn) = batch.files[file].path;
}

void chooseCheck(BatchCertification& batch, CheckKind kind) {
    batch.kind = kind;
    batch.crd.text(0, verdictColumn) = std::string(checkCaption(kind));
}

bool doBatchChecks(App& app, BatchCertification& batch) {
    clearVerdicts(batch);
    if (batch.files.empty()) return true;
    RunState& run = app.run;
    run.statusText = std::string(startStatus);
    run.sourceLabel = batch.files.front().path;
    CertifyOptions options = certifyOptions(batch.kind, batch.attemptRepair, batch.saveLogs, app.settings.country);
    options.timeoutSeconds = batch.timeoutSeconds;
    for (std::size_t file = 0; file < batch.files.size(); ++file) {
        CertifyRow& row = batch.files[file];
        const std::string logPath = logPathOf(batch, row.path);
        run.sourceLabel = row.path;
        run.targetLabel = logPath;
        run.statusText = std::string(runStatus);
        run.progressFraction = static_cast<float>(file + 1) / static_cast<float>(batch.files.size());
        app.user.progress({run.statusText, static_cast<double>(run.progressFraction)});
        if (!run.commandMode) app.user.pumpEvents();
        if (!samePath(logPath, row.path)) removeFile(logPath);
        row.log = certifyFile(app, row.path, logPath, options, batch.files.front().path);
        if (run.cancelRequested) return false;
        showVerdict(batch, file);
    }
    return true;
}

void clickRow(BatchCertification& batch, int row) {
    if (row < 1 || row > static_cast<int>(batch.files.size())) return;
    const CertifyRow& file = batch.files[static_cast<std::size_t>(row - 1)];
    if (file.log.empty()) return;
    // Kept: only "Failed:" makes the text red, a log whose fault is called "Error:" is shown in green. Test:
    // clickShowsTheLog
    batch.details = {.label = "Detailed Results for :" + file.path,
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
        text = printedRow(batch.files[static_cast<std::size_t>(current - 1)]);
    }
    return text;
}

}  // namespace welvane
