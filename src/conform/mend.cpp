#include "conform/mend.h"

#include <algorithm>

#include "conform/mend_data.h"
#include "conform/mend_header.h"
#include "shared/failure.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::size_t longestHeader = std::size_t{64} << 20U;

/// What stands where in a file: the header in blocks, the lines of the first ~A, and what cannot be moved behind it.
class FileMend {
  public:
    FileMend(std::string_view text, const Judgement& judged, const TextSink& sink, const std::function<bool()>& stopped)
        : text_(text), judged_(judged), sink_(sink), stopped_(stopped), data_(judged) {}

    bool perform() {
        if (!readHeader()) return false;
        HeaderMend(judged_, data_.wraps()).mend(blocks_, comments_);
        for (const HeaderBlock& block : blocks_) writeBlock(block);
        if (!dataTitle_.empty()) {
            sink_(dataTitle_ + "\r\n");
            if (!writeData()) return false;
        }
        for (const HeaderBlock& block : behind_) writeBlock(block);
        return true;
    }

  private:
    bool readHeader();
    void takeTitle(std::string_view title, std::string_view line);
    void takeDataLine(std::string_view line);
    bool isNames(std::string_view line) const;
    bool writeData();
    void writeBlock(const HeaderBlock& block) const;
    void keep(HeaderBlock& block, std::string_view line);

    std::string_view text_;
    const Judgement& judged_;
    const TextSink& sink_;
    const std::function<bool()>& stopped_;
    DataMend data_;
    std::vector<HeaderBlock> blocks_, behind_;  ///< the header; sections behind ~A that stay there
    std::vector<std::string> comments_;         ///< that stood among the data
    std::string dataTitle_;
    HeaderBlock* block_ = nullptr;
    bool inData_ = false, dataSeen_ = false, dataBegun_ = false, namesMoved_ = false;
    std::size_t held_ = 0;
};

void FileMend::keep(HeaderBlock& block, std::string_view line) {
    held_ += line.size() + sizeof(std::string);
    if (held_ > longestHeader) throw RunTimeFailure("its header is too long to be mended");
    block.lines.emplace_back(line);
}

void FileMend::takeTitle(std::string_view title, std::string_view line) {
    const char letter = sectionLetter(title);
    inData_ = letter == 'A' && !dataSeen_;
    if (inData_) {
        dataSeen_ = true;
        dataTitle_ = std::string(line);
        plainBytes(dataTitle_);
        const std::size_t tilde = dataTitle_.find('~');
        dataTitle_[tilde + 1] = upperChar(dataTitle_[tilde + 1]);
        return;
    }
    const auto isTwin = [letter](const HeaderBlock& block) { return block.letter == letter; };
    const bool twin = letter == 'A' || letter == '\0' || std::any_of(blocks_.begin(), blocks_.end(), isTwin);
    std::vector<HeaderBlock>& to = dataSeen_ && twin ? behind_ : blocks_;
    to.push_back({letter, std::string(line), {}});
    block_ = &to.back();
}

/// A line of names below a bare title goes onto it.
bool FileMend::isNames(std::string_view line) const {
    if (dataBegun_ || trimBreaks(dataTitle_).find_first_of(" \t") != npos) return false;
    const std::vector<Finding> found = judged_.findings.sorted();
    return std::any_of(found.begin(), found.end(), [&](const Finding& one) {
        return one.rule == Rule::D004 && one.mendable && one.what.starts_with("names") && line.starts_with(one.text);
    });
}

void FileMend::takeDataLine(std::string_view line) {
    if (isBlankLine(line)) return;
    if (isCommentLine(line, judged_.findings.version())) {
        held_ += line.size() + sizeof(std::string);
        if (held_ > longestHeader) throw RunTimeFailure("its comments are too long to be mended");
        comments_.emplace_back(line);
        plainBytes(comments_.back());
        return;
    }
    if (isNames(line)) {
        dataTitle_ = std::string(trimBreaks(dataTitle_)) + "  " + std::string(trimBreaks(line));
        plainBytes(dataTitle_);
        namesMoved_ = true;
        dataBegun_ = true;
        return;
    }
    dataBegun_ = true;
    if (data_.needsMeasure()) data_.measure(line);
}

bool FileMend::readHeader() {
    LineWalk walk(text_);
    while (walk.next()) {
        if (walk.number() % linesPerTurn == 0 && stopped_ && stopped_()) return false;
        const std::string_view title = titleIn(walk.text(), judged_.findings.version());
        if (!title.empty()) {
            takeTitle(title, walk.text());
        } else if (inData_) {
            takeDataLine(walk.text());
        } else {
            if (block_ == nullptr) {
                blocks_.emplace_back();
                block_ = &blocks_.back();
            }
            keep(*block_, walk.text());
        }
    }
    return true;
}

bool FileMend::writeData() {
    LineWalk walk(text_);
    bool inside = false, names = namesMoved_;
    while (walk.next()) {
        if (walk.number() % linesPerTurn == 0 && stopped_ && stopped_()) return false;
        const std::string_view line = walk.text();
        if (const std::string_view title = titleIn(line, judged_.findings.version()); !title.empty()) {
            if (inside) break;
            inside = sectionLetter(title) == 'A';
            continue;
        }
        if (!inside || isBlankLine(line) || isCommentLine(line, judged_.findings.version())) continue;
        if (names) {
            names = false;
            continue;
        }
        data_.write(line, sink_);
    }
    data_.finish(sink_);
    return true;
}

void FileMend::writeBlock(const HeaderBlock& block) const {
    if (!block.title.empty()) sink_(block.title + "\r\n");
    for (const std::string& line : block.lines) sink_(line + "\r\n");
}

/// Of 3.0 no line is changed but in how it ends.
bool mendBytes(std::string_view text, const TextSink& sink, const std::function<bool()>& stopped) {
    LineWalk walk(text);
    std::string out;
    while (walk.next()) {
        if (walk.number() % linesPerTurn == 0 && stopped && stopped()) return false;
        out.assign(walk.text());
        for (char& c : out)
            if (static_cast<unsigned char>(c) < 32 && c != '\t') c = ' ';
        sink(out.append("\r\n"));
    }
    return true;
}

}  // namespace

bool canMend(const Judgement& judged) {
    // What has no section is no log, whatever it is.
    if (judged.header.sections.empty()) return false;
    const std::vector<Finding> found = judged.findings.sorted();
    return std::any_of(found.begin(), found.end(), [](const Finding& one) { return one.mendable; });
}

bool mendText(std::string_view bytes, const Judgement& judged, const TextSink& sink,
              const std::function<bool()>& stopped) {
    if (bytes.starts_with(utf8Mark)) bytes.remove_prefix(utf8Mark.size());
    bytes = bytes.substr(0, bytes.find_last_not_of(endOfText) + 1);
    if (judged.version == StandardVersion::V30) return mendBytes(bytes, sink, stopped);
    return FileMend(bytes, judged, sink, stopped).perform();
}

}  // namespace welvane
