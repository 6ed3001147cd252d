#include "listing/run_value.h"

#include <algorithm>

#include "las/header_edit.h"
#include "las/sections.h"
#include "shared/failure.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr int fileColumn = static_cast<int>(VrdColumn::File);
constexpr int runColumn = static_cast<int>(VrdColumn::Run);
constexpr std::string_view changedTitle = "Run Changed!";
constexpr std::string_view changedText = "Update LAS file with this run value?";
constexpr std::string_view problemTitle = "Problem Replacing Value";
constexpr std::string_view noLineText =
    "Unable to replace RUN Value, as no RUN parameter exists in the ~P section. Edit manually and add RUN to the "
    "~Parameter section";
constexpr std::string_view otherText = "Unable to replace RUN Value. Edit manually. ";

/// The RUN line of the file's ~Parameter section.
const HeaderField* runLine(SectionTable& lines, std::string_view path) {
    if (readSection(lines, path, 'P') == 0) return nullptr;
    const auto found =
        std::find_if(lines.begin(), lines.end(), [](const HeaderField& line) { return sameText(line.mnem, "RUN"); });
    return found == lines.end() ? nullptr : &*found;
}

RunEdit tellProblem(App& app, std::string_view text, RunEdit result) {
    app.user.ask({.title = std::string(problemTitle), .text = std::string(text), .icon = Icon::Stop});
    return result;
}

}  // namespace

Table makeVrd(const std::vector<std::string>& files) {
    Table vrd(static_cast<int>(files.size()) + 1, 2);
    vrd.text(0, fileColumn) = "File Names";
    vrd.text(0, runColumn) = "RUN";
    SectionTable lines;
    for (std::size_t file = 0; file < files.size(); ++file) {
        const int row = static_cast<int>(file) + 1;
        vrd.text(row, fileColumn) = files[file];
        if (const HeaderField* line = runLine(lines, files[file])) vrd.text(row, runColumn) = line->value;
    }
    return vrd;
}

RunEdit editRun(App& app, std::string_view path, std::string_view newValue) {
    const Prompt question{.title = std::string(changedTitle),
                          .text = std::string(changedText),
                          .buttons = Buttons::YesNo,
                          .icon = Icon::Question,
                          .whenHeadless = Answer::No};
    if (app.user.ask(question) != Answer::Yes) return RunEdit::Declined;
    SectionTable lines;
    if (runLine(lines, path) == nullptr) return tellProblem(app, noLineText, RunEdit::NoRunLine);
    try {
        if (editHeaderField(path, "RUN", EditPart::Value, newValue, 'P', app.user) == EditResult::Done)
            return RunEdit::Done;
    } catch (const RunTimeFailure&) {
        return tellProblem(app, otherText, RunEdit::Failed);
    }
    return tellProblem(app, otherText, RunEdit::Failed);
}

RunEdit editRun(App& app, Table& vrd, int row, std::string_view newValue) {
    const RunEdit result = editRun(app, vrd.text(row, fileColumn), newValue);
    if (result == RunEdit::Done) vrd.text(row, runColumn) = std::string(newValue);
    return result;
}

}  // namespace welvane
