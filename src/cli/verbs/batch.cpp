#include "jobs/batch.h"

#include <algorithm>
#include <memory>
#include <type_traits>
#include <variant>

#include "cli/file_document.h"
#include "cli/pass_options.h"
#include "cli/shown_text.h"
#include "cli/text_table.h"
#include "cli/verbs.h"
#include "platform/file_identity.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

struct BatchChoices {
    BatchRequest request;
    PassTexts pass;
    VerbOptions passOptions;
    int jobs = 0;
    bool unsynced = false;
    std::string part;
};

std::string_view nameOf(BatchVerdict verdict) {
    switch (verdict) {
        case BatchVerdict::Written:
            return "written";
        case BatchVerdict::Skipped:
            return "skipped";
        case BatchVerdict::Failed:
            return "failed";
        case BatchVerdict::Stopped:
            return "stopped";
    }
    return "";
}

struct BatchTotal {
    std::size_t written = 0, skipped = 0, failed = 0, stopped = 0;
    std::int64_t channels = 0, samples = 0;
    double seconds = 0;
};

BatchTotal totalOf(const std::vector<BatchItem>& items) {
    BatchTotal total;
    for (const BatchItem& item : items) {
        ++(item.verdict == BatchVerdict::Written   ? total.written
           : item.verdict == BatchVerdict::Skipped ? total.skipped
           : item.verdict == BatchVerdict::Failed  ? total.failed
                                                   : total.stopped);
        total.channels += item.channels;
        total.samples += item.samples;
        total.seconds += item.seconds;
    }
    return total;
}

Json entryOf(const BatchItem& item) {
    Json entry = fileEntry(item.path);
    if (!item.fault.reason.none()) entry.add("error", utf8Text(item.why()));
    entry.add({{"output", utf8Text(item.output)},
               {"verdict", nameOf(item.verdict)},
               {"channels", item.channels},
               {"samples", item.samples},
               {"seconds", item.seconds}});
    return entry;
}

void showAsJson(FileDocument& document, const BatchReport& report, const BatchTotal& total) {
    for (const BatchItem& item : report.items) document.add(entryOf(item), item.notes);
    document.close({{"total", Json::object({{"files", report.items.size() + report.left},
                                            {"written", total.written},
                                            {"skipped", total.skipped},
                                            {"failed", total.failed},
                                            {"stopped", total.stopped},
                                            {"notReached", report.left},
                                            {"channels", total.channels},
                                            {"samples", total.samples},
                                            {"seconds", total.seconds}})}});
}

std::string asTable(const std::vector<BatchItem>& items, const BatchTotal& total, std::size_t left) {
    TextTable table("lrrrl", TextTable::Ends::Kept);
    table.add({"File", "Channels", "Samples", "Seconds", "Verdict"});
    for (const BatchItem& item : items) {
        const bool written = item.verdict == BatchVerdict::Written;
        table.add({shownText(item.path), written ? std::to_string(item.channels) : "-",
                   written ? std::to_string(item.samples) : "-", formatMask(item.seconds, 3),
                   std::string(nameOf(item.verdict))});
    }
    std::string verdict = std::to_string(total.written) + " written";
    for (const auto& [count, word] : {std::pair{total.skipped, " skipped"},
                                      {total.failed, " failed"},
                                      {total.stopped, " stopped"},
                                      {left, " not reached"}})
        if (count != 0) verdict += ", " + std::to_string(count) + word;
    table.add({"Total of " + counted(items.size() + left, "file"), std::to_string(total.channels),
               std::to_string(total.samples), formatMask(total.seconds, 3), verdict});
    return table.text("");
}

/// What the choices are known by in a log: the options as typed, and the state of the files that they name.
std::string choicesKey(const BatchChoices& choices) {
    std::string text = WELVANE_VERSION;
    const auto add = [&text](std::string_view piece) {
        text += std::to_string(piece.size()).append(":").append(piece);
    };
    for (const VerbOption& option : choices.passOptions) {
        add(option.names);
        std::visit(
            [&](const auto* value) {
                using Value = std::remove_cvref_t<decltype(*value)>;
                if constexpr (std::is_same_v<Value, std::string>) {
                    add(*value);
                } else if constexpr (std::is_same_v<Value, std::vector<std::string>>) {
                    for (const std::string& one : *value) add(one);
                } else {
                    add(std::to_string(*value));
                }
            },
            option.place);
    }
    for (const std::string& file : {choices.pass.request.filter, choices.pass.request.tvd}) {
        if (file.empty()) continue;
        const FileIdentity now = identifyFile(resolvePath(file)).value_or(FileIdentity{});
        add(std::to_string(now.size) + " " + std::to_string(now.changed));
    }
    std::uint64_t hash = 14695981039346656037U;
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
    std::string key(16, '0');
    for (std::size_t digit = key.size(); digit-- > 0; hash >>= 4U) key[digit] = "0123456789abcdef"[hash & 15U];
    return key;
}

BatchShare shareOf(const std::string& text) {
    if (text.empty()) return {};
    const std::size_t slash = text.find('/');
    const auto number = [](std::string_view digits) {
        const bool sound =
            !digits.empty() && digits.size() <= 6 && digits.find_first_not_of("0123456789") == std::string_view::npos;
        return sound ? static_cast<std::size_t>(std::stoul(std::string(digits))) : 0;
    };
    BatchShare share{number(std::string_view(text).substr(0, slash)),
                     slash == std::string::npos ? 0 : number(std::string_view(text).substr(slash + 1))};
    if (share.index == 0 || share.index > share.count)
        throw UsageFault("--part: '" + text + "' is no share such as 2/8");
    return share;
}

BatchRequest requestOf(Console& console, const BatchChoices& choices) {
    BatchRequest request = choices.request;
    request.pass = passRequest(choices.pass);
    request.workers = choices.jobs > 0 ? static_cast<std::size_t>(choices.jobs) : coreCount();
    request.synced = !choices.unsynced;
    request.share = shareOf(choices.part);
    if (request.resume && request.log.empty()) throw UsageFault("--resume needs --log, which tells what is done");
    if (!request.log.empty()) request.choicesKey = choicesKey(choices);
    request.files = console.expandLists(request.files);
    if (request.files.empty()) throw UsageFault("no input is named");
    if (request.pass.splice) throw UsageFault("--splice joins several inputs; a batch takes one at a time");
    return request;
}

/// A refusal names its file already.
void tellFailure(Console& console, const BatchItem& item) {
    if (item.verdict != BatchVerdict::Failed) return;
    const std::string why = faultText(item.fault);
    console.user().say(why.starts_with(item.path) ? why : item.path + ": " + why);
}

ExitCode performBatch(Console& console, const BatchChoices& choices) {
    const BatchRequest request = requestOf(console, choices);
    if (choices.jobs > 0) console.bench().app().run.workers.count = request.workers;
    return fillDocument(console, [&](FileDocument& document) {
        const BatchReport report =
            runBatch(console.bench(), request, [&console](const BatchItem& item) { tellFailure(console, item); });
        const BatchTotal total = totalOf(report.items);
        if (console.options().json)
            showAsJson(document, report, total);
        else
            console.print(asTable(report.items, total, report.left));
        return total.written + total.skipped == report.items.size() + report.left ? ExitCode::Done : ExitCode::Negative;
    });
}

}  // namespace

VerbSyntax declareBatch() {
    const auto choices = std::make_shared<BatchChoices>();
    VerbOptions options = {{"FILE",
                            &choices->request.files,
                            "",
                            "LAS files; folders, @LIST for a list of paths, - for standard input",
                            {.required = true}},
                           {"--out-dir",
                            &choices->request.folder,
                            "DIR",
                            "Folder of the outputs, each under its input's name; made when missing",
                            {.required = true}}};
    constexpr std::string_view group = "Many files";
    constexpr double mostJobs = 64;
    addOptions(options, group,
               {{"--jobs",
                 &choices->jobs,
                 "N",
                 "Files that are worked on at once (as many as there are cores)",
                 {.least = 1, .most = mostJobs}},
                {"--log", &choices->request.log, "FILE", "One JSON line for each input as it ends"},
                {"--resume", &choices->request.resume, "",
                 "Skip what the log tells as written from the same input with the same options"},
                {"--part", &choices->part, "I/N", "Only the I-th of N shares of the files"},
                {"--no-sync", &choices->unsynced, "", "Do not wait until the disk has the outputs"}});
    addPassOptions(choices->passOptions, choices->pass);
    options.insert(options.end(), choices->passOptions.begin(), choices->passOptions.end());
    return {options, [choices](Console& console) { return performBatch(console, *choices); }};
}

}  // namespace welvane
