#include "jobs/batch.h"

#include <memory>

#include "cli/json.h"
#include "cli/pass_options.h"
#include "cli/shown_text.h"
#include "cli/text_table.h"
#include "cli/verbs.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

struct BatchChoices {
    BatchRequest request;
    PassTexts pass;
};

std::string_view nameOf(BatchVerdict verdict) {
    switch (verdict) {
        case BatchVerdict::Written:
            return "written";
        case BatchVerdict::Failed:
            return "failed";
        case BatchVerdict::Stopped:
            return "stopped";
    }
    return "";
}

struct BatchTotal {
    std::size_t written = 0, failed = 0, stopped = 0;
    std::int64_t channels = 0, samples = 0;
    double seconds = 0;
};

BatchTotal totalOf(const std::vector<BatchItem>& items) {
    BatchTotal total;
    for (const BatchItem& item : items) {
        ++(item.verdict == BatchVerdict::Written  ? total.written
           : item.verdict == BatchVerdict::Failed ? total.failed
                                                  : total.stopped);
        total.channels += item.channels;
        total.samples += item.samples;
        total.seconds += item.seconds;
    }
    return total;
}

Json asJson(const std::vector<BatchItem>& items, const BatchTotal& total, std::size_t left) {
    Json files = Json::array();
    for (const BatchItem& item : items) {
        files.push(Json::object({{"path", utf8Text(item.path)},
                                 {"output", utf8Text(item.output)},
                                 {"verdict", nameOf(item.verdict)},
                                 {"why", utf8Text(faultText(item.fault))},
                                 {"channels", item.channels},
                                 {"samples", item.samples},
                                 {"seconds", item.seconds}}));
    }
    return Json::object({{"files", files},
                         {"total", Json::object({{"files", items.size() + left},
                                                 {"written", total.written},
                                                 {"failed", total.failed},
                                                 {"stopped", total.stopped},
                                                 {"notReached", left},
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
    for (const auto& [count, word] :
         {std::pair{total.failed, " failed"}, {total.stopped, " stopped"}, {left, " not reached"}})
        if (count != 0) verdict += ", " + std::to_string(count) + word;
    table.add({"Total of " + counted(items.size() + left, "file"), std::to_string(total.channels),
               std::to_string(total.samples), formatMask(total.seconds, 3), verdict});
    return table.text("");
}

BatchRequest requestOf(Console& console, const BatchChoices& choices) {
    BatchRequest request = choices.request;
    request.pass = passRequest(choices.pass);
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
    const BatchReport report =
        runBatch(console.bench(), request, [&console](const BatchItem& item) { tellFailure(console, item); });
    const BatchTotal total = totalOf(report.items);
    console.print(console.options().json ? asJson(report.items, total, report.left).dump(2) + "\n"
                                         : asTable(report.items, total, report.left));
    return total.written == request.files.size() ? ExitCode::Done : ExitCode::Negative;
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
    addPassOptions(options, choices->pass);
    return {options, [choices](Console& console) { return performBatch(console, *choices); }};
}

}  // namespace welvane
