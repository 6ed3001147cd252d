#include "jobs/certify.h"

#include <filesystem>
#include <unordered_set>

#include "jobs/conform.h"
#include "jobs/each_file.h"
#include "platform/output_file.h"
#include "shared/files.h"
#include "shared/numbers.h"

namespace welvane {

namespace {

namespace fs = std::filesystem;

Reason howItEnded(const ProcessResult& ended, const CertifyRequest& request, bool hasLog) {
    if (ended.timedOut) return {"the checker was ended after " + plainNumber(request.timeout) + " s", Remedy::Timeout};
    if (ended.signal != 0) return {"the checker was ended by signal " + std::to_string(ended.signal)};
    if (hasLog) return {};
    return {"the checker left no log" +
            (ended.exitCode == 0 ? std::string() : ", exit status " + std::to_string(ended.exitCode))};
}

/// The files without those that were named before, under whatever path.
std::vector<std::string> eachOnce(Workbench& bench, const std::vector<std::string>& named) {
    std::unordered_set<std::string> known;
    std::vector<std::string> files;
    for (const std::string& file : named) {
        if (known.insert(onlyPath(file)).second)
            files.push_back(file);
        else
            bench.note(NoteKind::File, file, "named twice; checked once");
    }
    return files;
}

/// What stands against each file before anything runs: it is not there, or the log to be kept would replace another
/// file.
std::vector<Reason> reasonsAgainst(const Workbench& bench, const CertifyRequest& request,
                                   const std::vector<std::string>& files) {
    std::unordered_set<std::string> taken;
    if (request.saveLogs)
        for (const std::string& file : files) taken.insert(onlyPath(file));
    std::vector<Reason> reasons;
    for (const std::string& file : files) {
        Reason& why = reasons.emplace_back();
        if (folderExists(file))
            why.text = "Is a directory";
        else if (!fileExists(file))
            why.text = "No such file or directory";
        if (!why.none() || !request.saveLogs) continue;
        const std::string log = certifyLogPath(file);
        try {
            bench.checkOutput(log, {});
            if (!taken.insert(onlyPath(log)).second)
                why.text = "its log " + log + " is one of the inputs or the log of another";
        } catch (const Refusal& refused) {
            why = {std::string("its log ") + refused.what(), refused.fault.reason.remedy};
        } catch (const std::exception& failed) {
            why.text = std::string("its log ") + failed.what();
        }
    }
    return reasons;
}

std::string ownLog(const ConformReport& report) {
    std::string log = "Held against LAS " + std::string(versionText(report.findings.version())) + " by welvane\r\n";
    for (const Finding& found : report.findings.sorted()) {
        const std::string_view weight = found.severity == Severity::Error ? "Error: " : severityText(found.severity);
        log.append(weight).append(found.severity == Severity::Error ? "" : " ");
        log +=
            "line " + std::to_string(found.place.line) + ": " + std::string(ruleOf(found.rule).id) + ", " + found.what;
        log += (found.count > 1 ? " (" + std::to_string(found.count) + ")" : "") + "\r\n";
    }
    for (const ConformRule& rule : conformRules())
        if (const std::size_t more = report.findings.notKept(rule.rule); more != 0)
            log += std::to_string(more) + " more of " + std::string(rule.id) + "\r\n";
    return log + (report.has(Severity::Error) ? "" : "Passed\r\n");
}

/// One run of the checker. Refusal when it cannot be started at all.
Certification checkOne(Workbench& bench, const CertifyRequest& request, const std::string& file, std::size_t item) {
    App& app = bench.app();
    CertifyOptions options = certifyOptions(request.kind, request.repair, request.saveLogs, app.settings.country);
    options.timeoutSeconds = request.timeout;
    std::string log = certifyLogPath(file), folder;
    if (!request.saveLogs) {
        // What stands beside the file under the log's name may be the user's own.
        folder = app.platform.scratchFolder() + std::to_string(item) + "/";
        fs::create_directory(folder);
        log = folder + fileNameOf(log);
    }
    if (!samePath(log, file)) removeFile(log);
    CheckerRun run = certifyFile(app, file, log, options, file);
    if (!folder.empty()) fs::remove_all(folder);
    if (!run.ended.started && !app.run.cancelRequested)
        throw Refusal(checkerArguments(app.settings.certProgram).front(),
                      "the checker could not be started: " + (run.ended.why.empty() ? "not found" : run.ended.why));
    Certification made;
    made.log = std::move(run.log);
    made.why = howItEnded(run.ended, request, !made.log.empty());
    return made;
}

/// The same; a failure on the way is told of this file alone.
Certification checkOrTell(Workbench& bench, const CertifyRequest& request, const std::string& file, std::size_t item) {
    try {
        if (noCheckerSet(bench.app().settings.certProgram)) return certifyByRules(bench, file, request.saveLogs);
        return checkOne(bench, request, file, item);
    } catch (const Refusal& refused) {
        // A file that cannot be read is told of that file alone; a checker that does not start, of all.
        if (bench.stopWanted() || !noCheckerSet(bench.app().settings.certProgram)) throw;
        return {.ownCheck = true, .why = refused.fault.reason};
    } catch (const std::exception& failed) {
        return {.why = {failed.what()}};
    }
}

}  // namespace

void tellOwnCheck(Workbench& bench) {
    bench.note(NoteKind::File, "", "no checker is set; files are held against the LAS standard by welvane itself");
}

void useChecker(Workbench& bench, const CertifyRequest& request) {
    StartupSettings& settings = bench.app().settings;
    if (!request.checker.empty()) settings.certProgram = request.checker;
    if (!request.region.empty()) settings.country = request.region;
    if (!noCheckerSet(settings.certProgram)) return needChecker(settings.certProgram);
    if (request.repair) throw Refusal("", "no checker is set that could repair files", Remedy::Checker);
    tellOwnCheck(bench);
}

Certification certifyByRules(Workbench& bench, const std::string& file, bool keepLog) {
    const ConformReport report = conformFile(bench, {.file = file});
    Certification made{.file = file, .ownCheck = true};
    made.log = ownLog(report);
    made.verdict = report.has(Severity::Error) ? Verdict::Failed : Verdict::Passed;
    if (!keepLog) return made;
    OutputFile log(certifyLogPath(file), bench.outputMode());
    log.write(made.log);
    log.commit();
    return made;
}

bool certifyFiles(Workbench& bench, const CertifyRequest& request,
                  const std::function<void(const Certification&)>& take) {
    const std::vector<std::string> files = eachOnce(bench, request.files);
    const std::vector<Reason> against = reasonsAgainst(bench, request, files);
    const WorkInHand work(bench.user(), {});
    const auto count = static_cast<double>(files.size());
    std::size_t done = 0;
    const auto tellProgress = [&] {
        bench.user().progress({"Running the checker", static_cast<double>(done) / count});
    };
    tellProgress();
    return eachFile<Certification>(
        bench, files, request.workers,
        [&](Workbench& own, const std::string& file, std::size_t item) {
            Certification made =
                against[item].none() ? checkOrTell(own, request, file, item) : Certification{.why = against[item]};
            made.file = file;
            if (!made.ownCheck) made.verdict = verdictOf(made.log);
            return made;
        },
        [&](const FileResult<Certification>& result) {
            if (!result.report) throw Refusal(result.fault);
            take(*result.report);
            if (++done < files.size()) tellProgress();
        });
}

}  // namespace welvane
