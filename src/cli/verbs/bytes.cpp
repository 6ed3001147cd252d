#include <memory>
#include <optional>

#include "cli/shown_text.h"
#include "cli/verbs.h"
#include "platform/mapped_file.h"
#include "texttools/byte_view.h"

namespace welvane {

namespace {

struct BytesChoices {
    std::string file;
    std::uint64_t page = 1;
    bool codes = false, findBadEnds = false;
};

std::string pageOf(std::uint64_t offset) {
    return std::to_string(offset / bytePageLength + 1);
}

ExitCode listBadEnds(Console& console, const std::string& file) {
    const BadEnds found = findBadEnds(console.app(), file);
    console.user().bar().clear();
    if (found.cancelled) return ExitCode::Interrupted;
    if (!found.readable) throw Refusal(file, "cannot be read to its end");
    if (found.count == 0) {
        console.print("No Isolated Line Feeds (ASCII 10) found.\n");
        return ExitCode::Done;
    }
    std::string text;
    for (const std::uint64_t offset : found.offsets)
        text += "Isolated Line Feed (ASCII 10) found at byte " + std::to_string(offset) + " (page " + pageOf(offset) +
                ")\n";
    if (found.count > found.offsets.size())
        text += "and " + std::to_string(found.count - found.offsets.size()) + " more\n";
    console.print(text + std::to_string(found.count) + " in all\n");
    return ExitCode::Negative;
}

ExitCode performBytes(Console& console, const BytesChoices& choices) {
    std::string why;
    if (!MappedFile::open(choices.file, &why)) throw Refusal(choices.file, why);
    if (choices.findBadEnds) return listBadEnds(console, choices.file);
    ByteViewState view;
    if (!openByteView(view, choices.file)) throw Refusal(choices.file, "cannot be read");
    if (view.length == 0) {
        console.print(shownText(view.tag()) + "\nThe file is empty.\n");
        return ExitCode::Done;
    }
    if (!goToPage(view, choices.page)) {
        const std::string pages = std::to_string(view.pageCount());
        throw Refusal(choices.file, "there is no page " + std::to_string(choices.page) + "; it has " + pages +
                                        (pages == "1" ? " page" : " pages"));
    }
    console.print(shownText(view.tag()) + "\nPage " + std::to_string(choices.page) + " of " +
                  std::to_string(view.pageCount()) + ", bytes " + std::to_string(view.pageStart) + " to " +
                  std::to_string(view.pageStart + view.pageLength() - 1) + " of " + std::to_string(view.length) + "\n" +
                  renderPage(view, choices.codes));
    return ExitCode::Done;
}

}  // namespace

VerbSyntax declareBytes() {
    const auto choices = std::make_shared<BytesChoices>();
    return {{{"FILE", &choices->file, "", "A file of any kind", {.required = true, .anyBytes = true}},
             {"--page", &choices->page, "N", "Which page of 400 bytes, from 1"},
             {"--codes", &choices->codes, "", "Show the ASCII codes beside the text"},
             {"--find-bad-ends", &choices->findBadEnds, "",
              "List the line feeds without a carriage return before them; exit status 1 when there are any"}},
            [choices](Console& console) { return performBytes(console, *choices); }};
}

}  // namespace welvane
