#pragma once

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
};

/// The list of files, none of them checked yet; then setUpCrd.
void fillCr(BatchCertification& batch, const std::vector<std::string>& paths);
/// Sizes crd and fills its heads and its first column.
void setUpCrd(BatchCertification& batch);
/// A click on an option: the head of column 1 takes its caption.
void chooseCheck(BatchCertification& batch, CheckKind kind);

/// Runs the checker over all files in order. A log left by an earlier run is deleted first, so that a checker that
/// crashes gives no old verdict. True when all were run; a cancel leaves the rows that were done, the others stay empty
/// and white.
bool doBatchChecks(App& app, BatchCertification& batch);

}  // namespace welvane
