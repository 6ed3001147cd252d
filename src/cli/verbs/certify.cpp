#include "jobs/certify.h"

#include <array>
#include <cstdlib>
#include <memory>
#include <utility>

#include "cli/file_document.h"
#include "cli/shown_text.h"
#include "cli/verbs.h"
#include "platform/terminal.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr int mostJobs = 64;

struct CertifyChoices {
    CertifyRequest request;
    int jobs = 1;
    bool wrapChecks = false, inPlace = false;
};

Json asJson(const Certification& made) {
    Json entry = fileEntry(made.file, {{"verdict", verdictText(made.verdict)}, {"log", utf8Text(made.log)}});
    if (made.ownCheck) entry.add("checker", "welvane");
    return entry;
}

std::string asText(const Certification& made) {
    std::string text = padded(verdictText(made.verdict), verdictText(Verdict::CheckIncomplete).size());
    if (isTerminal(Stream::Output) && std::getenv("NO_COLOR") == nullptr)
        text = (verdictColour(made.verdict) == passedColour ? "\033[32m" : "\033[31m") + text + "\033[0m";
    text += "  " + shownName(made.file) + "\n";
    if (made.verdict != Verdict::Failed) return text;
    for (const std::string& line : firstFaults(made.log)) text += "    " + shownText(line) + "\n";
    return text;
}

/// Shows each file as it comes, so that nothing but the log in hand is kept.
class Printer {
  public:
    Printer(Console& console, FileDocument& document) : console_(console), document_(document) {}

    void add(const Certification& made) {
        ++counts_[static_cast<std::size_t>(made.verdict)];
        if (!made.why.none()) console_.say({.file = made.file, .reason = made.why});
        if (console_.options().json)
            document_.add(asJson(made), console_.bench().takeNotes());
        else
            console_.print(asText(made));
    }

    std::size_t count(Verdict verdict) const { return counts_[static_cast<std::size_t>(verdict)]; }

  private:
    Console& console_;
    FileDocument& document_;
    std::array<std::size_t, 3> counts_{};
};

CertifyRequest requestOf(Console& console, const CertifyChoices& choices) {
    CertifyRequest request = choices.request;
    if (request.repair && !choices.inPlace)
        throw UsageFault("--repair lets the checker change the files; --in-place allows it");
    if (!(request.timeout >= 0)) throw UsageFault("--timeout: not a number of seconds");
    request.files = console.expandLists(request.files);
    if (request.files.empty()) throw UsageFault("no input is named");
    if (choices.wrapChecks) request.kind = CheckKind::Wrap;
    request.workers = static_cast<std::size_t>(choices.jobs);
    return request;
}

ExitCode showVerdicts(Console& console, const CertifyRequest& request, FileDocument& document) {
    const std::size_t files = request.files.size();
    useChecker(console.bench(), request);
    Printer printer(console, document);
    const bool whole = certifyFiles(console.bench(), request, [&](const Certification& made) { printer.add(made); });
    if (!whole) return ExitCode::Negative;
    const std::size_t passed = printer.count(Verdict::Passed), failed = printer.count(Verdict::Failed);
    const std::size_t unfinished = printer.count(Verdict::CheckIncomplete);
    if (files > 1)
        console.user().note(counted(passed + failed + unfinished, "file") + ": " + std::to_string(passed) +
                            " passed, " + std::to_string(failed) + " failed, " + std::to_string(unfinished) +
                            " not checked to the end");
    return failed + unfinished == 0 ? ExitCode::Done : ExitCode::Negative;
}

ExitCode performCertify(Console& console, const CertifyChoices& choices) {
    const CertifyRequest request = requestOf(console, choices);
    return fillDocument(console, [&](FileDocument& document) { return showVerdicts(console, request, document); });
}

}  // namespace

VerbSyntax declareCertify() {
    const auto choices = std::make_shared<CertifyChoices>();
    return {{{"FILE",
              &choices->request.files,
              "",
              "Files to check; folders, @LIST for a list of paths, - for standard input",
              {.required = true}},
             {"--checker", &choices->request.checker, "PROG",
              "The checker's program and arguments in place of the setting cert_prog"},
             {"--jobs", &choices->jobs, "N", "Checkers that run at once (1)", {.least = 1, .most = mostJobs}},
             {"--timeout",
              &choices->request.timeout,
              "S",
              "Seconds that the checker gets for a file (600); 0 waits for ever",
              {.most = 1e7}},
             {"--region",
              &choices->request.region,
              "NAME",
              "Check by the rules of this region, canada or other, in place of the setting country",
              {.words = {"canada", "other"}, .anyCase = true}},
             {"--wrap-checks", &choices->wrapChecks, "", "Let the checker look at the wrapping too"},
             {"--repair", &choices->request.repair, "", "Let the checker repair what it can; needs --in-place"},
             {"--in-place", &choices->inPlace, "", "The files may be changed"},
             {"--save-logs", &choices->request.saveLogs, "", "Keep each log beside its file, with the extension log"}},
            [choices](Console& console) { return performCertify(console, *choices); }};
}

}  // namespace welvane
