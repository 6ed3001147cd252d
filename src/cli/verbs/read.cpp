#include "jobs/read.h"

#include <memory>

#include "cli/reading_options.h"
#include "cli/verbs.h"
#include "shared/text.h"

namespace welvane {

namespace {

struct ReadChoices {
    ReadRequest request;
    bool csv = false, jsonLines = false;
};

ExitCode performRead(Console& console, const ReadChoices& choices) {
    ReadRequest request = choices.request;
    if (choices.jsonLines) request.form = RecordForm::JsonLines;
    const ReadReport report =
        readRecords(console.bench(), request, [&](std::string_view text) { console.print(text); });
    if (!request.output.empty())
        console.user().note(request.output + ": " + counted(static_cast<std::int64_t>(report.records), "record") +
                            " of " + counted(static_cast<std::int64_t>(report.channels), "channel"));
    return ExitCode::Done;
}

}  // namespace

VerbSyntax declareRead() {
    const auto choices = std::make_shared<ReadChoices>();
    VerbOptions options = {
        {"FILE", &choices->request.file, "", "A LAS file", {.required = true}},
        {"--csv", &choices->csv, "", "Comma-separated values, names in the first row (this is what you get)"},
        {"--json-lines", &choices->jsonLines, "", "A JSON object for each record, one a line", {.excludes = "--csv"}},
        {"--units", &choices->request.units, "", "Units in the second row", {.excludes = "--json-lines"}},
        {"-o,--output", &choices->request.output, "OUT", "The file to write, in place of the standard output"}};
    addReadingOptions(options, choices->request.choices);
    return {options, [choices](Console& console) { return performRead(console, *choices); },
            "No grid, nothing computed: every value as it stands, nothing for null."};
}

}  // namespace welvane
