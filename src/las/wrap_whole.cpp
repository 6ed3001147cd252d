#include "las/wrap_whole.h"

#include <algorithm>
#include <exception>

#include "las/data_words.h"
#include "las/read_channels.h"
#include "las/run_turn.h"
#include "las/wrap.h"
#include "platform/output_file.h"
#include "shared/failure.h"
#include "shared/settings.h"
#include "shared/text.h"

namespace welvane {

namespace {

class WrapWriter {
  public:
    WrapWriter(const LasFile& file, RunState& run, UserInterface& user, WholeWrap& result)
        : file_(file), turn_(run, user, 2 * file.bytes().size()), result_(result) {}

    void perform(std::string_view target, OutputFile::Mode mode) {
        findShape();
        file_.willReadAll();
        result_.result = StepResult::Cancelled;
        if (!eachRecord(0, [this](const std::vector<std::string_view>& words) { measure(words); })) return;
        OutputFile output(target, mode);
        LineReader header = file_.text().lines();
        copyWrapHeader(header, output, !result_.wrapped);
        const bool done = eachRecord(file_.bytes().size(), [&](const std::vector<std::string_view>& words) {
            result_.wrapped ? writeWrapped(words, output) : writePlain(words, output);
        });
        if (!done) return;
        file_.needWhole();
        output.close();
        if (result_.wrapped) needReadable(output.writtenPath());
        output.commit();
        result_.result = StepResult::Done;
    }

  private:
    void findShape() {
        const RecordShape shape = judgeRecords(file_.text(), false);
        if (shape.columns == 0) throw RunTimeFailure(whyNoData(file_.text()));
        if (countCurveLines(file_.text()).all == 0) throw RunTimeFailure("its ~Curve section names no channel");
        if (shape.delimiter != ' ')
            throw RunTimeFailure(std::string("its values are parted by ") +
                                 (shape.delimiter == ',' ? "commas" : "single tabs") + ", which no wrapped file has");
        if (isUtf16(file_.encoding()))
            result_.notes.push_back({.kind = NoteKind::File, .text = "is UTF-16; the new file is UTF-8"});
        values_ = shape.columns;
        result_.wrapped = !shape.wrapped;
        widths_.resize(values_);
        start_ = file_.text().seekSection('A').value_or(0);
    }

    /// Hands each record's words on; false when stopped. `done` is what was read before.
    template <class Take>
    bool eachRecord(std::size_t done, Take&& take) {
        LineReader lines = file_.text().lines(start_);
        std::size_t number = lineNumberAt(file_.bytes(), start_, file_.text().lineRule()) - 1;
        std::vector<std::string_view> words;
        for (std::string_view line; lines.next(line);) {
            ++number;
            if (!turn_.goesOn(done + lines.position())) return false;
            if (firstDataWord(line).empty()) continue;
            for (std::string_view word = nextDataWord(line); !word.empty(); word = nextDataWord(line))
                words.push_back(word);
            if (words.size() > values_ || (result_.wrapped && words.size() < values_))
                throw RunTimeFailure("the record that ends in line " + std::to_string(number) + " has " +
                                     counted(words.size(), "value") + ", not " + std::to_string(values_));
            if (words.size() < values_) continue;
            take(words);
            words.clear();
        }
        if (!words.empty()) takeCut(words, number, done == 0, take);
        return true;
    }

    template <class Take>
    void takeCut(std::vector<std::string_view>& words, std::size_t number, bool tell, Take&& take) {
        null_ = std::string(trim(file_.value("NULL").text));
        if (null_.empty()) null_ = "-999.25";
        if (tell)
            result_.notes.push_back({.kind = NoteKind::Dropped,
                                     .line = number,
                                     .count = values_ - words.size(),
                                     .text = "the last record is cut; null is written for what it lacks"});
        words.resize(values_, null_);
        take(words);
    }

    void measure(const std::vector<std::string_view>& words) {
        for (std::size_t column = 0; column < values_; ++column)
            widths_[column] = std::max(widths_[column], words[column].size());
        for (std::size_t column = 1; column < values_; ++column) widest_ = std::max(widest_, words[column].size());
    }

    static void writeAligned(OutputFile& output, std::string_view word, std::size_t width) {
        char* const room = output.reserve(width);
        const std::size_t blanks = width - word.size();
        std::fill_n(room, blanks, ' ');
        std::copy(word.begin(), word.end(), room + blanks);
        output.advance(width);
    }

    void writePlain(const std::vector<std::string_view>& words, OutputFile& output) const {
        for (std::size_t column = 0; column < values_; ++column)
            writeAligned(output, words[column], widths_[column] + 1);
        output.writeLine({});
    }

    void writeWrapped(const std::vector<std::string_view>& words, OutputFile& output) const {
        const std::size_t width = widest_ + 1, perLine = std::max<std::size_t>(1, wrapLineLength / width);
        output.writeLine(words.front());
        for (std::size_t column = 1; column < values_; ++column) {
            writeAligned(output, words[column], width);
            if (column % perLine == 0 || column + 1 == values_) output.writeLine({});
        }
    }

    /// What this program itself would not take for the same records is not written.
    void needReadable(const std::string& path) const {
        const DataShape shape = LasFile(path).shape();
        if (shape.layout == DataLayout::Wrapped && static_cast<std::size_t>(shape.wordsPerStep) == values_) return;
        throw RunTimeFailure("it has too few channels or records to be read again when wrapped");
    }

    const LasFile& file_;
    RunTurn turn_;
    WholeWrap& result_;
    std::size_t values_ = 0, widest_ = 0, start_ = 0;
    std::vector<std::size_t> widths_;
    std::string null_;
};

}  // namespace

WholeWrap wrapWhole(const LasFile& source, std::string_view target, RunState& run, UserInterface& user,
                    OutputFile::Mode mode) {
    WholeWrap result;
    try {
        WrapWriter(source, run, user, result).perform(target, mode);
    } catch (const FileFailure&) {
        throw;
    } catch (const std::exception& failed) {
        result.result = StepResult::Failed;
        result.why = failed.what();
    }
    return result;
}

}  // namespace welvane
