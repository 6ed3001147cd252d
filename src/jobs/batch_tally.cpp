#include "jobs/batch_tally.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>
#include <utility>

#include "jobs/batch_log.h"
#include "shared/numbers.h"

namespace welvane {

namespace {

/// What is known of one input, by one log or all.
struct Said {
    bool begun = false, written = false, failed = false;
    std::size_t log = 0;  ///< that told of it last
    std::string why{};
    std::vector<std::size_t> writers{};
};

/// The same input makes another file in another folder.
std::string keyOf(const BatchLogLine& line) {
    return std::string(line.path).append(1, '\0').append(line.output);
}
std::string pathOf(const std::string& key) {
    return key.substr(0, key.find('\0'));
}

class Tally {
  public:
    Tally(Workbench& bench, const BatchTallyRequest& request) : bench_(bench), request_(request) {}

    BatchTally take() {
        for (std::size_t log = 0; log < request_.logs.size(); ++log) {
            LogTally& tally = tally_.logs.emplace_back();
            tally.path = request_.logs[log];
            try {
                readLog(log);
            } catch (const FileFailure& failed) {
                tally.fault = {.file = tally.path, .reason = {failed.reason()}};
            }
            if (bench_.stopWanted()) throw Refusal(tally.path, "stopped");
        }
        judgeParts();
        judgeFiles();
        return std::move(tally_);
    }

  private:
    void readLog(std::size_t log);
    void takeHead(const LogTally& tally, const BatchLogLine& line, std::map<std::string, std::size_t>& parts);
    void judgeParts();
    void judgeFiles();

    Workbench& bench_;
    const BatchTallyRequest& request_;
    BatchTally tally_;
    std::unordered_map<std::string, Said> files_;
    std::set<std::string> parts_, options_;
    std::map<std::string, std::size_t> expected_;  ///< files of each share
};

void Tally::takeHead(const LogTally& tally, const BatchLogLine& line, std::map<std::string, std::size_t>& parts) {
    parts[line.part] = line.files;
    parts_.insert(line.part);
    // Logs of one share are of one batch; without shares each log is a batch of its own.
    expected_[line.part.empty() ? tally.path : line.part + " " + line.output] = line.files;
    options_.insert(line.options);
}

void Tally::readLog(std::size_t log) {
    LogTally& tally = tally_.logs[log];
    std::map<std::string, std::size_t> parts;
    std::unordered_map<std::string, Said> said;
    const std::size_t strange = readBatchLog(tally.path, [&](const BatchLogLine& line) {
        if (line.verdict == "batch") {
            takeHead(tally, line, parts);
            return;
        }
        Said& file = said[keyOf(line)];
        if (line.verdict == "written") {
            if (!file.written) tally.samples += line.samples;
            file.written = true;
        }
        file.begun = line.verdict == "begun";
        file.failed = line.verdict == "failed";
        file.why = line.why;
        tally.seconds += line.seconds;
    });
    if (parts.empty()) {
        tally.fault = {.file = tally.path, .reason = {"no log of a batch"}};
        return;
    }
    if (strange != 0)
        bench_.note({.kind = NoteKind::Skipped,
                     .file = tally.path,
                     .count = strange,
                     .text = "lines that are no lines of a log, such as one that was cut short"});
    for (const auto& [part, files] : parts) {
        tally.part += (tally.part.empty() ? "" : " ") + part;
        tally.files += files;
    }
    for (auto& [key, file] : said) {
        file.log = log;
        tally.written += file.written ? 1 : 0;
        tally.failed += !file.written && file.failed ? 1 : 0;
        Said& all = files_[key];
        if (file.written) all.writers.push_back(log);
        if (!all.written) {
            file.writers = std::move(all.writers);
            all = std::move(file);
        }
    }
    const std::size_t ended = tally.written + tally.failed;
    tally.missing = tally.files - std::min(ended, tally.files);
}

/// Shares of one division that no log tells of.
void Tally::judgeParts() {
    std::set<std::string> divisions;
    for (const std::string& part : parts_) divisions.insert(part.substr(std::min(part.find('/'), part.size())));
    const auto note = [&](const std::string& text) { bench_.note(NoteKind::Setting, "", text); };
    if (options_.size() > 1) note("the logs are of runs with different options, or of changed filters");
    if (divisions.size() > 1) {
        note("the logs are of different divisions into parts");
    } else if (divisions.size() == 1 && !divisions.begin()->empty()) {
        const std::string& division = *divisions.begin();
        const auto count = static_cast<std::size_t>(val(division.substr(1)));
        for (std::size_t index = 1; index <= count; ++index)
            if (const std::string part = std::to_string(index) + division; !parts_.contains(part))
                tally_.missingParts.push_back(part);
    }
}

void Tally::judgeFiles() {
    std::size_t ended = 0;
    const std::string begun = "begun and not ended";
    std::unordered_map<std::string, bool> known;  // whether it ended
    for (const auto& [key, file] : files_) {
        const std::string path = pathOf(key);
        tally_.written += file.written ? 1 : 0;
        if (!file.written && file.failed) tally_.failed.push_back({path, file.why});
        const bool hasEnded = file.written || file.failed;
        ended += hasEnded ? 1 : 0;
        if (!request_.inputs.empty())
            known[path] = known[path] || hasEnded;
        else if (!hasEnded)
            tally_.named.push_back({path, begun});
        if (file.writers.size() > 1) {
            std::string logs;
            for (const std::size_t log : file.writers) logs += (logs.empty() ? "" : ", ") + request_.logs[log];
            tally_.twice.push_back({path, logs});
        }
    }
    if (!request_.inputs.empty()) {
        tally_.files = request_.inputs.size();
        for (const std::string& path : request_.inputs) {
            const auto found = known.find(path);
            if (found == known.end() || !found->second)
                tally_.named.push_back({path, found == known.end() ? "not reached" : begun});
        }
        tally_.missing = tally_.named.size();
    } else {
        for (const auto& [share, files] : expected_) tally_.files += files;
        tally_.missing = tally_.files - std::min(ended, tally_.files);
    }
    const auto byPath = [](const TalliedFile& one, const TalliedFile& other) { return one.path < other.path; };
    for (std::vector<TalliedFile>* list : {&tally_.failed, &tally_.named, &tally_.twice})
        std::sort(list->begin(), list->end(), byPath);
}

}  // namespace

BatchTally tallyBatchLogs(Workbench& bench, const BatchTallyRequest& request) {
    BatchTally tally = Tally(bench, request).take();
    tally.notes = bench.takeNotes();
    return tally;
}

}  // namespace welvane
