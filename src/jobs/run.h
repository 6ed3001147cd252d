#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "certify/checker_log.h"
#include "engine/driver.h"
#include "engine/pass.h"
#include "jobs/pass_request.h"
#include "jobs/plot_input.h"
#include "jobs/workbench.h"

/// One file made of one to four.
namespace welvane {

struct RunFilesRequest {
    std::vector<std::string> files{};  ///< one to four; with `session` they take the place of its inputs, or none
    std::string output{};              ///< may be "" with `saveSession`: nothing is run
    std::string session{};             ///< begins where this saved session ended; the choices of `pass` go on top
    std::string saveSession{};         ///< keeps the session as it is before the run
    bool certify = false;              ///< run the checker on the output; its log stays beside it
    bool open = false;                 ///< open the output in its associated program
    PassRequest pass{};
};

/// What the checker said of an output.
struct OutputCheck {
    Verdict verdict = Verdict::CheckIncomplete;
    std::string log;
};

struct RunFilesReport : JobReport {
    std::vector<std::string> inputs;     ///< as they were named, or found for a saved session
    std::vector<ItemReport> items;       ///< what was written
    std::string depthUnit;               ///< of the output
    std::optional<OutputCheck> check{};  ///< with RunFilesRequest::certify
    bool opened = true;                  ///< false where no program could be started to open it
};
/// Runs the pass. The output takes its name when it is whole, and stays whatever the checker says of it. Refusal for
/// inputs that cannot be used, choices that cannot be followed, an output that cannot be written.
RunFilesReport runFiles(Workbench& bench, const RunFilesRequest& request);

/// The samples that runFiles would write, without writing; see previewOutput. The request names no output.
PlotInput sampleRun(Workbench& bench, const RunFilesRequest& request);

struct PlanReport : JobReport {
    PassPlan plan;
    std::string depthUnit;
};
/// What runFiles would do, without doing it; `output` may be "".
PlanReport planRun(Workbench& bench, const RunFilesRequest& request);

/// One pass as every job runs it: the output beside its name until it is whole, the filter applied before, inputs read
/// to their end unless `loose`.
RunRequest jobRun(const Workbench& bench, const PassRequest& request);
/// The pass of a prepared session onto an output, as LAS or as CSV. Refusal where CSV was asked for and cannot be
/// written.
RunOutcome passOnto(Workbench& bench, Session& session, const RunRequest& run, bool csv, const std::string& output);
/// An input as the request's rules want it opened.
Input openForPass(Workbench& bench, const std::string& file, const PassRequest& request);

}  // namespace welvane
