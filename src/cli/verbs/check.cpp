#include "jobs/check.h"

#include <memory>

#include "cli/file_results.h"
#include "cli/reading_options.h"
#include "cli/shown_text.h"
#include "cli/verbs.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

std::string_view endsText(const FileCheck& check) {
    switch (check.ends) {
        case LineEnds::Good:
            return "CR LF";
        case LineEnds::Unix:
            return check.hasLineFeed ? "LF only" : "no line feed";
        case LineEnds::Undecided:
            return "mixed line ends";
        case LineEnds::Missing:
        case LineEnds::Empty:
        case LineEnds::Binary:
            break;
    }
    return {};
}

std::string asText(const FileCheck& check) {
    std::string text = shownText(check.path) + ": " + std::string(check.status.text);
    auto add = [&, first = true](std::string_view part) mutable {
        if (!part.empty()) text.append(first ? "; " : ", ").append(part);
        first = first && part.empty();
    };
    const HeaderGlance& header = check.header;
    if (check.plexmore != PlexmoreKind::ReadError) add(endsText(check));
    if (!header.version.empty()) add("LAS " + shownText(header.version));
    if (!header.wrap.empty())
        add(sameText(header.wrap, "YES")  ? "wrapped"
            : sameText(header.wrap, "NO") ? "not wrapped"
                                          : "WRAP " + shownText(header.wrap));
    if (header.curveLines > 0)
        add(std::to_string(header.channels()) + (header.channels() == 1 ? " channel" : " channels"));
    if (!header.start.empty() || !header.stop.empty())
        add(shownText(header.start + " to " + header.stop + (header.unit.empty() ? "" : " " + header.unit)));
    if (check.curveTitleFault) add("its curve title stands on a ~Well line (repair --curve-title)");
    add(shownText(check.why));
    if (!check.refused.none()) add(shownText(faultText({.reason = check.refused})));
    return text + "\n";
}

Json asJson(const FileCheck& check) {
    const auto code = [](auto value) { return static_cast<int>(value); };
    const auto orNull = [](const std::string& text) { return text.empty() ? Json() : Json(utf8Text(text)); };
    const auto number = [](const std::string& text) { return text.empty() ? Json() : Json(val(text)); };
    const HeaderGlance& header = check.header;
    return fileEntry(check.path, {{"status", check.status.text},
                                  {"usable", check.usable()},
                                  {"quickCheck", code(check.quickCheck)},
                                  {"lineEndKind", code(check.ends)},
                                  {"quickLasTest", code(check.lasTest)},
                                  {"plexmoreKind", code(check.plexmore)},
                                  {"curveTitleFault", check.curveTitleFault},
                                  {"why", orNull(check.refused.none() ? check.why : check.refused.text)},
                                  {"records", check.records},
                                  {"lasVersion", orNull(header.version)},
                                  {"wrap", orNull(header.wrap)},
                                  {"channels", header.channels()},
                                  {"start", number(header.start)},
                                  {"stop", number(header.stop)},
                                  {"depthUnit", orNull(header.unit)}});
}

struct CheckChoices {
    std::vector<std::string> files;
    ReadingChoices reading;
    int jobs = 0;
};

ExitCode performCheck(Console& console, const CheckChoices& choices) {
    const std::vector<std::string> files = console.expandLists(choices.files);
    std::size_t usable = 0;
    const FileWork<FileCheck> work = [&](Workbench& bench, const std::string& file, std::size_t) {
        return checkFile(bench, file, choices.reading);
    };
    FileFace<FileCheck> face;
    face.json = [](const std::string&, const FileCheck& check) { return asJson(check); };
    face.text = [](const std::string&, const FileCheck& check) { return asText(check); };
    face.good = [&usable](const FileCheck& check) {
        usable += check.usable() ? 1U : 0U;
        return check.usable();
    };
    const ExitCode code = showEachFile(console, files, work, face, choices.jobs);
    if (!console.options().json) {
        const std::size_t bad = files.size() - usable;
        console.print(std::to_string(files.size()) + (files.size() == 1 ? " file: " : " files: ") +
                      std::to_string(usable) + " usable, " + std::to_string(bad) + " not\n");
    }
    return code;
}

}  // namespace

VerbSyntax declareCheck() {
    const auto choices = std::make_shared<CheckChoices>();
    VerbOptions options = {{"FILE",
                            &choices->files,
                            "",
                            "Files of any kind; folders, @LIST for a list of paths, - for standard input",
                            {.required = true}}};
    addReadingOptions(options, choices->reading);
    addJobsOption(options, choices->jobs);
    return {options, [choices](Console& console) { return performCheck(console, *choices); }};
}

}  // namespace welvane
