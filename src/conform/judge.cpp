#include <algorithm>

#include "conform/data_judge.h"
#include "conform/header_judge.h"
#include "conform/line_ends_judge.h"
#include "conform/version3_judge.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view wideLittle = "\xFF\xFE", wideBig = "\xFE\xFF";
/// The VERS line is looked for in so much of a file.
constexpr std::size_t versionLimit = std::size_t{4} << 20U;

/// The text of VERS, of the first ~V section.
std::string_view versText(std::string_view bytes) {
    LineWalk walk(bytes.substr(0, versionLimit));
    bool inside = false;
    while (walk.next()) {
        const std::string_view title = titleIn(walk.text(), StandardVersion::V20);
        if (!title.empty()) {
            if (sectionLetter(title) == 'A') break;
            inside = sectionLetter(title) == 'V';
        } else if (inside && !isCommentLine(walk.text(), StandardVersion::V20)) {
            const HeaderFields fields = cutHeaderLine(walk.text(), walk.number());
            if (sameText(fields.mnem, "VERS")) return fields.value;
        }
    }
    return {};
}

std::optional<StandardVersion> versionOf(std::string_view bytes) {
    const auto number = decimalOf(versText(bytes));
    if (!number) return std::nullopt;
    if (sameValue(*number, {12, 1})) return StandardVersion::V12;
    if (sameValue(*number, {2, 0})) return StandardVersion::V20;
    if (sameValue(*number, {3, 0})) return StandardVersion::V30;
    return std::nullopt;
}

/// Walks one file of 1.2 or 2.0, handing each line to whoever judges it.
class FileWalk {
  public:
    FileWalk(std::string_view bytes, const JudgeOptions& options, Judgement& judged)
        : bytes_(bytes), options_(options), judged_(judged), header_(judged, options.library), walk_(bytes) {}

    void perform() {
        while (walk_.next()) {
            if (walk_.number() % linesPerTurn == 0 && options_.stopped && options_.stopped()) {
                judged_.stopped = true;
                return;
            }
            ends_.take(walk_.end(), walk_.number());
            take(walk_.text());
        }
        endData();
        ends_.judge(judged_.findings);
        header_.finish();
        judgeVersion(judged_);
        judgeWell(judged_);
        judgeAgainstData(judged_);
    }

  private:
    void take(std::string_view line) {
        const std::string_view title = titleIn(line, judged_.findings.version());
        if (title.empty()) {
            if (data_)
                data_->line(line, walk_.number());
            else if (!inOtherData_)
                header_.line(line, walk_.number());
            return;
        }
        endData();
        const bool again = judged_.header.section('A') != nullptr;
        header_.title(title, line, walk_.number());
        const bool data = sectionLetter(title) == 'A';
        inOtherData_ = data && again;
        if (data && !again) data_.emplace(judged_, bytes_.substr(std::min(walk_.behind(), bytes_.size())));
    }
    void endData() {
        if (data_) data_->finish();
        data_.reset();
    }

    std::string_view bytes_;
    const JudgeOptions& options_;
    Judgement& judged_;
    HeaderJudge header_;
    LineWalk walk_;
    std::optional<DataJudge> data_;
    bool inOtherData_ = false;
    EndCounts ends_;
};

/// The three bytes are told and passed over; places of the first line count from behind them.
std::string_view withoutMark(std::string_view bytes, Findings& findings) {
    if (!bytes.starts_with(utf8Mark)) return bytes;
    findings.add(Rule::F003, {1, 1}, utf8Mark, {}, true);
    return bytes.substr(utf8Mark.size());
}

/// An old mark of the end of a text, told at its place.
std::string_view withoutEndMark(std::string_view bytes, Findings& findings) {
    const std::size_t length = bytes.find_last_not_of(endOfText) + 1;
    if (length == bytes.size()) return bytes;
    const std::string_view text = bytes.substr(0, length);
    const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
    const std::size_t begin = text.rfind('\n') + 1;
    findings.add(Rule::F004, {lines, length - begin + 1}, bytes.substr(length), "byte 26 at the end of the file", true);
    return text;
}

/// UTF-16 of plain letters has a NUL in each pair of bytes.
bool looksWide(std::string_view bytes) {
    constexpr std::size_t looked = 128;
    const std::string_view head = bytes.substr(0, looked);
    const auto nuls = static_cast<std::size_t>(std::count(head.begin(), head.end(), '\0'));
    return head.size() >= 4 && nuls * 3 > head.size();
}

}  // namespace

Judgement judgeText(std::string_view bytes, const JudgeOptions& options) {
    Judgement judged{.findings = Findings(options.most)};
    if (!options.name.empty() && !endsWith(options.name, ".las")) judged.findings.add(Rule::F001, {1, 1}, options.name);
    if (bytes.starts_with(wideLittle) || bytes.starts_with(wideBig)) {
        judged.findings.add(Rule::F003, {1, 1}, bytes.substr(0, 2), "the byte order mark of UTF-16");
        judged.remark = "it is UTF-16, nothing else was judged";
        return judged;
    }
    if (looksWide(bytes)) {
        judged.findings.add(Rule::F004, {1, bytes.find('\0') + 1}, {},
                            "it is UTF-16 without a byte order mark, or no text");
        judged.remark = "nothing else was judged";
        return judged;
    }
    std::string_view text = bytes.starts_with(utf8Mark) ? bytes.substr(utf8Mark.size()) : bytes;
    judged.version = versionOf(text);
    judged.findings.judgeBy(judged.version.value_or(StandardVersion::V20));
    text = withoutEndMark(withoutMark(bytes, judged.findings), judged.findings);
    if (judged.version == StandardVersion::V30)
        judgeVersion3(text, options, judged);
    else
        FileWalk(text, options, judged).perform();
    return judged;
}

}  // namespace welvane
