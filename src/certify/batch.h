#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "certify/certify_file.h"
#include "shared/table.h"

/// The checker over a list of files, a verdict for each: the window of the command ID_Certify, without the window.
namespace welvane {

/// A row of CertifyTable: one file and the text of its log, empty until it ran.
struct CertifyRow {
    std::string path{}, log{};
    bool ran = false;  ///< its run came to a verdict
};
using CertifyTable = std::vector<CertifyRow>;

/// The selected entries of the file browser.
struct CertifySelection {
    std::string folder{};
    std::vector<std::string> names{};
};

/// Columns of crd.
enum class CrdColumn { File = 0, Verdict };

struct BatchCertification {
    CertifyTable files;
    /// crd: row 0 the heads ("File Names", the caption of the chosen option), a row per file under it. Lives as long as
    /// the window.
    Table crd;
    CheckKind kind = CheckKind::Basic;  ///< cOpt
    bool attemptRepair = false;         ///< fixChk
    bool saveLogs = false;              ///< svfChk
    double timeoutSeconds = 0;          ///< for each file; 0 waits for ever
    std::string logFolder;              ///< where the logs go; "" beside their files
    /// certText, the log of the row that was clicked, and its label.
    struct Details {
        std::string label = "Detailed Results";
        std::string text;
        std::uint32_t colour = 0;
        bool visible = false;
    } details;
};

/// Fills the list of files: the browser's selection when it is open, otherwise the current input alone; then setUpCrd.
void fillCr(BatchCertification& batch, const std::optional<CertifySelection>& browser, std::string_view lasFile);
/// The same from a list of paths.
void fillCr(BatchCertification& batch, const std::vector<std::string>& paths);
/// Sizes crd and fills its heads and its first column.
void setUpCrd(BatchCertification& batch);
/// A click on an option: the head of column 1 takes its caption.
void chooseCheck(BatchCertification& batch, CheckKind kind);

/// Runs the checker over all files in order. A log left by an earlier run is deleted first, so that a checker that
/// crashes gives no old verdict. True when all were run; a cancel leaves the rows that were done, the others stay empty
/// and white.
bool doBatchChecks(App& app, BatchCertification& batch);

/// A click on a row of crd: shows that file's log; nothing happens on the head, outside, or where there is no log.
void clickRow(BatchCertification& batch, int row);

/// The question of ID_Print, then the text to print: every file with its verdict and log, or the row `current` (of crd)
/// alone.
std::string printCertify(App& app, const BatchCertification& batch, int current);

}  // namespace welvane
