#include "certify/batch.h"

#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view startStatus = "Doing Corvant checks...";
constexpr std::string_view runStatus = "Running Corvant....";

int rowOf(std::size_t file) {
    return static_cast<int>(file) + 1;
}

void clearVerdicts(BatchCertification& batch) {
    for (std::size_t file = 0; file < batch.files.size(); ++file) {
        batch.files[file].log.clear();
        batch.files[file].ran = false;
        SessionCell& cell = batch.crd.cell(rowOf(file), CrdColumn::Verdict);
        cell.text.clear();
        cell.backColour = whiteColour;
    }
}

void showVerdict(BatchCertification& batch, std::size_t file) {
    const Verdict verdict = verdictOf(batch.files[file].log);
    SessionCell& cell = batch.crd.cell(rowOf(file), CrdColumn::Verdict);
    cell.text = std::string(verdictText(verdict));
    cell.backColour = verdictColour(verdict);
    batch.files[file].ran = true;
}

}  // namespace

void fillCr(BatchCertification& batch, const std::vector<std::string>& paths) {
    batch.files.clear();
    for (const std::string& path : paths) batch.files.push_back({.path = path});
    setUpCrd(batch);
}

void setUpCrd(BatchCertification& batch) {
    batch.crd.clear();
    batch.crd.resize(rowOf(batch.files.size()), 2);
    batch.crd.text(0, CrdColumn::File) = "File Names";
    chooseCheck(batch, batch.kind);
    for (std::size_t file = 0; file < batch.files.size(); ++file)
        batch.crd.text(rowOf(file), CrdColumn::File) = batch.files[file].path;
}

void chooseCheck(BatchCertification& batch, CheckKind kind) {
    batch.kind = kind;
    batch.crd.text(0, CrdColumn::Verdict) = std::string(checkCaption(kind));
}

bool doBatchChecks(App& app, BatchCertification& batch) {
    clearVerdicts(batch);
    if (batch.files.empty()) return true;
    RunState& run = app.run;
    run.statusText = std::string(startStatus);
    run.sourceLabel = batch.files.front().path;
    const CertifyOptions options =
        certifyOptions(batch.kind, batch.attemptRepair, batch.saveLogs, app.settings.country);
    for (std::size_t file = 0; file < batch.files.size(); ++file) {
        CertifyRow& row = batch.files[file];
        const std::string logPath = certifyLogPath(row.path);
        run.sourceLabel = row.path;
        run.targetLabel = logPath;
        run.statusText = std::string(runStatus);
        run.progressFraction = static_cast<float>(file + 1) / static_cast<float>(batch.files.size());
        app.user.progress({run.statusText, static_cast<double>(run.progressFraction)});
        if (!run.commandMode) app.user.pumpEvents();
        if (!samePath(logPath, row.path)) removeFile(logPath);
        row.log = certifyFile(app, row.path, logPath, options, batch.files.front().path).log;
        if (run.cancelRequested) return false;
        showVerdict(batch, file);
    }
    return true;
}

}  // namespace welvane
