#include "las/rebuild.h"

#include <algorithm>
#include <array>
#include <exception>

#include "las/data_words.h"
#include "las/header_edit.h"
#include "las/las_file.h"
#include "las/rebuild_header.h"
#include "las/run_turn.h"
#include "platform/output_file.h"
#include "shared/failure.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::size_t badLinesKept = 100;

/// Writes the data lines of the source in even columns.
class DataRebuild {
  public:
    DataRebuild(OutputFile& target, const FormatDefaults& format, std::size_t curves)
        : target_(target),
          width_(static_cast<std::size_t>(std::max<int>(format.dataWidth, 1))),
          decimals_(format.dataDecimals),
          words_(curves) {}

    /// False for a line whose number of values is not that of the curves; it is not written.
    bool takeLine(std::string_view line) {
        std::size_t count = 0;
        for (std::string_view word = nextDataWord(line); !word.empty(); word = nextDataWord(line)) {
            if (count < words_.size()) words_[count] = word;
            ++count;
        }
        if (count != words_.size()) return false;
        const double depth = val(words_[0]);
        writeValue(depth, false);
        for (std::size_t index = 1; index < words_.size(); ++index) writeField(words_[index]);
        target_.writeLine({});
        if (written_ == 0) first_ = depth;
        last_ = depth;
        ++written_;
        return true;
    }

    std::size_t written() const { return written_; }
    double first() const { return first_; }
    double last() const { return last_; }

  private:
    void writeField(std::string_view word) {
        // The platform writes its null a thousand times too large.
        if (word.find("-999250.") != npos || !writeValue(val(word), true)) writeValue(lasNull, false);
    }

    /// Right-aligned in the column. With `mustFit`, a text that would touch its neighbour is not written; false then.
    bool writeValue(double value, bool mustFit) {
        char* const room = target_.reserve(width_ + formatMaskCapacity(decimals_));
        const std::size_t length = formatMaskTo(room, value, decimals_);
        if (mustFit && length + 1 > width_) return false;
        const std::size_t blanks = width_ > length ? width_ - length : 0;
        std::copy_backward(room, room + length, room + blanks + length);
        std::fill_n(room, blanks, ' ');
        target_.advance(blanks + length);
        return true;
    }

    OutputFile& target_;
    std::size_t width_;
    int decimals_;
    std::vector<std::string_view> words_;
    std::size_t written_ = 0;
    double first_ = 0, last_ = 0;
};

std::string dataTitle(const std::vector<HeaderField>& curves, std::int16_t width) {
    std::string title = "~Ascii     ";
    const auto columnWidth = static_cast<std::size_t>(std::max<std::int16_t>(width, 1));
    for (const HeaderField& curve : curves)
        title += rightAligned(std::string_view(curve.mnem).substr(0, columnWidth), columnWidth);
    return title;
}

/// The target's name; another one is asked for where it is the source's. Empty: none was given.
std::string chooseTarget(std::string_view source, std::string_view target, UserInterface& user) {
    const auto same = [source](std::string_view name) { return samePath(source, name) || sameText(source, name); };
    if (!same(target)) return std::string(target);
    std::string other = user.askFile({"Save LAS", "las", dirOf(target), fileNameOf(target), true});
    if (other.empty() || !same(other)) return other;
    user.ask({"Duplicate Filename", "Must supply different file name or different path for new file. Try again.",
              Buttons::Ok, Icon::Stop, Answer::Ok});
    return {};
}

bool rebuildData(const LasText& source, std::size_t start, DataRebuild& data, RebuildResult& result, RunTurn& turn) {
    std::size_t number = lineNumberAt(source.bytes(), start - 1);
    LineReader lines = source.lines(start);
    for (std::string_view line; lines.next(line);) {
        ++number;
        if (!turn.goesOn(lines.position())) return false;
        if (firstDataWord(line).empty() || data.takeLine(line)) continue;
        ++result.badLines;
        if (result.firstBadLines.size() < badLinesKept) result.firstBadLines.push_back(number);
    }
    result.linesWritten = data.written();
    return true;
}

/// The header tells the depths that were really written.
void correctDepths(const std::string& path, const LasText& source, const DataRebuild& data, int decimals) {
    if (data.written() == 0) return;
    SilentInterface silent;
    const auto edit = [decimals](std::string_view mnem, double value) {
        return HeaderEdit{mnem, EditPart::Value, 'W', formatMask(value, decimals)};
    };
    const std::array<HeaderEdit, 3> edits = {edit("STOP", data.last()), edit("STRT", data.first()),
                                             edit("STEP", rebuiltStep(source, data.first(), data.last()))};
    editHeaderFields(path, edits, silent);
}

void rebuild(const LasFile& file, RebuildKind kind, const RebuildSettings& settings, RebuildResult& result,
             RunState& run, UserInterface& user) {
    const LasText& source = file.text();
    const std::vector<HeaderField> curves = rebuildCurves(source, settings);
    if (curves.empty()) return;
    const auto start = source.seekSection('A');
    if (!start) return;

    OutputFile output(result.target, OutputFile::Mode::Beside);
    output.write(rebuildHeader(source, fileNameOf(result.target), kind, settings, curves, user));
    output.writeLine(dataTitle(curves, settings.format.dataWidth));
    file.willReadAll();
    RunTurn turn(run, user, file.bytes().size());
    DataRebuild data(output, settings.format, curves.size());
    if (!rebuildData(source, *start, data, result, turn)) {
        result.result = StepResult::Cancelled;
        return;
    }
    file.needWhole();
    output.close();
    correctDepths(output.writtenPath(), source, data, settings.format.dataDecimals);
    output.commit();
    result.result = StepResult::Done;
}

}  // namespace

RebuildResult rewriteLas(std::string_view source, std::string_view target, RebuildKind kind,
                         const RebuildSettings& settings, RunState& run, UserInterface& user) {
    RebuildResult result;
    try {
        const LasFile file(source);
        result.target = chooseTarget(source, target, user);
        if (result.target.empty()) {
            result.result = StepResult::Cancelled;
            return result;
        }
        rebuild(file, kind, settings, result, run, user);
    } catch (const std::exception&) {
        result.result = StepResult::Failed;
    }
    if (result.result == StepResult::Done && result.badLines > 0)
        user.ask(
            {"Bad Lines found and Discarding",
             std::to_string(result.badLines) +
                 " bad lines were discarded during processing! Visually inspect and repair the original and try again!",
             Buttons::Ok, Icon::Warning, Answer::Ok});
    return result;
}

}  // namespace welvane
