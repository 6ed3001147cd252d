#include <memory>

#include "cli/file_document.h"
#include "cli/shown_text.h"
#include "cli/text_table.h"
#include "cli/verbs.h"
#include "jobs/batch_tally.h"
#include "shared/numbers.h"
#include "shared/text.h"
#include "shared/utf8.h"

namespace welvane {

namespace {

Json asList(const std::vector<TalliedFile>& files) {
    Json list = Json::array();
    for (const TalliedFile& file : files) {
        Json entry = fileEntry(file.path);
        entry.add("why", utf8Text(file.why));
        list.push(std::move(entry));
    }
    return list;
}

void showAsJson(FileDocument& document, const BatchTally& tally) {
    for (const LogTally& log : tally.logs) {
        if (!log.fault.reason.none()) {
            document.add(refusedEntry(log.path, log.fault));
            continue;
        }
        document.add(fileEntry(log.path, {{"part", log.part},
                                          {"files", log.files},
                                          {"written", log.written},
                                          {"failed", log.failed},
                                          {"missing", log.missing},
                                          {"samples", log.samples},
                                          {"seconds", log.seconds}}));
    }
    Json parts = Json::array();
    for (const std::string& part : tally.missingParts) parts.push(part);
    document.close({{"total", Json::object({{"files", tally.files},
                                            {"written", tally.written},
                                            {"failed", tally.failed.size()},
                                            {"missing", tally.missing},
                                            {"twice", tally.twice.size()}})},
                    {"missingParts", std::move(parts)},
                    {"failed", asList(tally.failed)},
                    {"missing", asList(tally.named)},
                    {"twice", asList(tally.twice)}},
                   tally.notes);
}

std::string asTable(const BatchTally& tally) {
    TextTable table("llrrrrr");
    table.add({"Log", "Part", "Files", "Written", "Failed", "Missing", "Seconds"});
    double seconds = 0;
    for (const LogTally& log : tally.logs) {
        if (!log.fault.reason.none()) continue;
        seconds += log.seconds;
        table.add({shownText(log.path), log.part.empty() ? "-" : shownText(log.part), std::to_string(log.files),
                   std::to_string(log.written), std::to_string(log.failed), std::to_string(log.missing),
                   formatMask(log.seconds, 3)});
    }
    table.add({"Total of " + counted(tally.logs.size(), "log"), "", std::to_string(tally.files),
               std::to_string(tally.written), std::to_string(tally.failed.size()), std::to_string(tally.missing),
               formatMask(seconds, 3)});
    std::string text = table.text("");
    const auto tell = [&text](std::string_view head, const std::vector<TalliedFile>& files) {
        for (const TalliedFile& file : files)
            text.append(head).append(shownText(file.path)).append(": ").append(shownText(file.why)).append("\n");
    };
    for (const std::string& part : tally.missingParts) text += "missing: part " + shownText(part) + " has no log\n";
    tell("missing: ", tally.named);
    tell("failed: ", tally.failed);
    tell("twice: ", tally.twice);
    return text;
}

ExitCode performBatchReport(Console& console, BatchTallyRequest request) {
    request.inputs = console.expandLists(request.inputs);
    return fillDocument(console, [&](FileDocument& document) {
        const BatchTally tally = tallyBatchLogs(console.bench(), request);
        bool good = tally.whole();
        for (const LogTally& log : tally.logs) {
            if (!log.fault.reason.none()) console.say(log.fault);
            good = good && log.fault.reason.none();
        }
        if (console.options().json)
            showAsJson(document, tally);
        else
            console.print(asTable(tally));
        return good ? ExitCode::Done : ExitCode::Negative;
    });
}

}  // namespace

VerbSyntax declareBatchReport() {
    const auto request = std::make_shared<BatchTallyRequest>();
    return {{{"LOG", &request->logs, "", "Logs that batch --log wrote", {.required = true}},
             {"--inputs", &request->inputs, "FILE",
              "The inputs of the whole batch, named as for batch, so that missing ones can be told by name"}},
            [request](Console& console) { return performBatchReport(console, *request); }};
}

}  // namespace welvane
