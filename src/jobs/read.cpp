#include "jobs/read.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

#include "platform/output_file.h"
#include "shared/distinct_names.h"
#include "shared/files.h"
#include "shared/text.h"
#include "shared/utf8.h"

namespace welvane {

namespace {

constexpr std::size_t blockBytes = std::size_t{1} << 16;

/// Names and units of the columns, those that the data lack too.
struct Heads {
    std::vector<std::string> names, units;

    explicit Heads(const ColumnNames& columns) {
        for (const HeaderField& field : columns.channels) {
            names.push_back(utf8Text(trim(field.mnem)));
            units.push_back(utf8Text(trim(field.unit)));
        }
        makeDistinct(names, FigureRules::trueFigures);
    }
};

/// Where the text goes, in blocks.
class Sink {
  public:
    explicit Sink(std::function<void(std::string_view)> write) : write_(std::move(write)) {}
    std::string& text() { return text_; }
    void pour(std::size_t least) {
        if (text_.size() < least) return;
        write_(text_);
        text_.clear();
    }

  private:
    std::function<void(std::string_view)> write_;
    std::string text_;
};

void pourRecords(Workbench& bench, const LasFile& file, const ReadRequest& request, Sink& sink) {
    ChannelReader reader(file, request.choices.reading(bench.app().run));
    const Heads heads(reader.names());
    const RecordText text(request.form, heads.names, heads.units);
    sink.text() = text.head(request.units);
    RunState& run = bench.app().run;
    run.statusText = "Writing the records of " + fileNameOf(request.file);
    const WorkInHand work(bench.user(), {.bytes = file.bytes().size()});
    RunTurn turn(run, bench.user(), file.bytes().size());
    std::vector<double> values(heads.names.size(), std::numeric_limits<double>::quiet_NaN());
    for (RecordBlock block; reader.next(block);) {
        const std::size_t known = std::min(block.columns, values.size());
        for (std::size_t record = 0; record < block.records; ++record) {
            std::copy_n(block.record(record), known, values.begin());
            text.add(sink.text(), values);
            sink.pour(blockBytes);
        }
        if (!turn.goesOn(reader.place())) throw Refusal(request.file, "stopped");
    }
    sink.pour(0);
    file.needWhole();
}

}  // namespace

void writeRecords(Workbench& bench, const LasFile& file, const ReadRequest& request,
                  const std::function<void(std::string_view)>& print) {
    std::optional<OutputFile> output;
    if (!request.output.empty()) output.emplace(request.output, bench.outputMode());
    Sink sink(output ? [&](std::string_view text) { output->write(text); } : print);
    readingOf(request.file, [&] { pourRecords(bench, file, request, sink); });
    if (output) output->commit();
}

ReadReport readRecords(Workbench& bench, const ReadRequest& request,
                       const std::function<void(std::string_view)>& print) {
    const LasFilePointer file = openTrue(request.file);
    if (!request.output.empty()) bench.checkOutput(request.output, {{request.file, request.file}});
    const WholeReading whole = readThrough(bench, *file, request.file, request.choices.reading(bench.app().run));
    tellNotes(bench, request.file, whole.notes);
    writeRecords(bench, *file, request, print);
    ReadReport report;
    report.records = whole.records;
    report.channels = whole.names.channels.size() - 1;
    report.notes = bench.takeNotes();
    return report;
}

}  // namespace welvane
