#include "jobs/conform.h"

#include "conform/mend.h"
#include "jobs/true_input.h"
#include "las/repair.h"
#include "platform/mapped_file.h"
#include "platform/output_file.h"
#include "shared/files.h"

namespace welvane {

bool ConformReport::has(Severity least) const {
    for (const Severity severity : {Severity::Hint, Severity::Warning, Severity::Error})
        if (severity >= least && findings.count(severity) != 0) return true;
    return false;
}

namespace {

JudgeOptions optionsFor(Workbench& bench, const ConformRequest& request, std::string_view name) {
    return {.name = name, .most = request.most, .library = &bench.app().reference, .stopped = [&bench] {
                bench.user().pumpEvents();
                return bench.stopWanted();
            }};
}

Judgement judgeMapped(Workbench& bench, const ConformRequest& request, const MappedFile& file, std::string_view name) {
    file.willReadAll();
    const WorkInHand work(bench.user(), {.bytes = file.bytes().size()});
    Judgement judged = judgeText(file.bytes(), optionsFor(bench, request, name));
    if (judged.stopped) throw Refusal(request.file, "stopped");
    return judged;
}

ConformReport reportOf(Judgement judged) {
    ConformReport report;
    report.version = judged.version;
    report.findings = std::move(judged.findings);
    report.remark = std::move(judged.remark);
    return report;
}

void writeCopy(const std::string& path, std::string_view bytes) {
    OutputFile copy(path, OutputFile::Mode::New);
    copy.write(bytes);
    copy.commit();
}

/// The new text under its name, or nothing at all.
void writeMended(Workbench& bench, const ConformRequest& request, const MappedFile& file, const std::string& source,
                 const Judgement& judged, const std::string& target) {
    const bool inPlace = request.output.empty();
    OutputFile output(target, inPlace ? OutputFile::Mode::Beside : bench.outputMode());
    if (canMend(judged)) {
        const auto stopped = optionsFor(bench, request, source).stopped;
        const bool whole = mendText(
            file.bytes(), judged, [&](std::string_view text) { output.write(text); }, stopped);
        if (!whole) throw Refusal(request.file, "stopped");
    } else {
        output.write(file.bytes());
    }
    needWhole(file, source);
    output.commit();
}

std::vector<std::pair<Rule, std::size_t>> difference(const Findings& before, const Findings& after) {
    std::vector<std::pair<Rule, std::size_t>> gone;
    for (const ConformRule& rule : conformRules())
        if (before.count(rule.rule) > after.count(rule.rule))
            gone.emplace_back(rule.rule, before.count(rule.rule) - after.count(rule.rule));
    return gone;
}

}  // namespace

ConformReport conformFile(Workbench& bench, const ConformRequest& request) {
    return readingOf(request.file, [&] {
        const std::string path = resolvePath(request.file);
        const MappedFile file = mapFile(path);
        Judgement judged = judgeMapped(bench, request, file, request.file);
        needWhole(file, path);
        return reportOf(std::move(judged));
    });
}

ConformReport mendFile(Workbench& bench, const ConformRequest& request) {
    return readingOf(request.file, [&] {
        const std::string source = resolvePath(request.file);
        const bool inPlace = request.output.empty();
        if (!inPlace) bench.checkOutput(request.output, {{request.file, source}});
        Findings before(0);
        std::string kept;
        const std::string target = inPlace ? source : resolvePath(request.output);
        {
            const MappedFile file = mapFile(source);
            const Judgement judged = judgeMapped(bench, request, file, request.file);
            if (inPlace && !canMend(judged)) return reportOf(judged);
            before = judged.findings;
            if (inPlace) {
                kept = safetyCopyName(source, "original");
                writeCopy(kept, file.bytes());
            }
            try {
                writeMended(bench, request, file, source, judged, target);
            } catch (...) {
                if (!kept.empty()) removeFile(kept);
                throw;
            }
        }
        const MappedFile written = mapFile(target);
        ConformReport report = reportOf(judgeMapped(bench, request, written, target));
        report.mended = difference(before, report.findings);
        report.target = inPlace ? request.file : request.output;
        report.kept = kept;
        return report;
    });
}

}  // namespace welvane
