#pragma once

#include <functional>
#include <string>
#include <vector>

#include "certify/certify_file.h"
#include "jobs/checker.h"
#include "jobs/workbench.h"

/// The external checker over many files, several at once.
namespace welvane {

struct CertifyRequest {
    std::vector<std::string> files{};
    std::string checker{};  ///< its program and arguments; "" for the setting, or the own check where it names none
    std::string region{};   ///< whose rules hold; "" for the setting country
    CheckKind kind = CheckKind::Basic;
    bool repair = false;               ///< the checker may change the files
    bool saveLogs = false;             ///< each log stays beside its file
    double timeout = checkerPatience;  ///< seconds for a file; 0 waits for ever
    std::size_t workers = 1;           ///< checkers that run at once
};

/// What came of one file.
struct Certification {
    std::string file{}, log{};
    Verdict verdict = Verdict::CheckIncomplete;
    bool ownCheck = false;  ///< no checker is set: held against the LAS standard by the program itself
    Reason why{};           ///< what there is to say of a check that did not come to its end, or was not begun
};

/// Notes that there is no checker, and who judges in its place.
void tellOwnCheck(Workbench& bench);
/// Puts the request's checker and region into use. Refusal when there is no such checker. Where none is named and none
/// is set, files are held against the LAS standard by the program itself, which a note tells; a repair is refused then.
void useChecker(Workbench& bench, const CertifyRequest& request);

/// The own check of one file, told as a log in the words by which logs are judged; with `keepLog` that stays beside the
/// file. Refusal for a file that cannot be read.
Certification certifyByRules(Workbench& bench, const std::string& file, bool keepLog);

/// Runs the checker in use over the files and hands out what came of each in their order; one that is named twice is
/// checked once, with a note: two checkers at one file would write one log and repair one text. False when a stop came
/// before the last. Refusal when it cannot be started.
bool certifyFiles(Workbench& bench, const CertifyRequest& request,
                  const std::function<void(const Certification&)>& take);

}  // namespace welvane
