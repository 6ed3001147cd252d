#include "engine/streaming.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

#include "engine/composition.h"
#include "engine/record_printer.h"
#include "engine/straight_lines.h"
#include "shared/ordered_work.h"
#include "shared/text.h"

namespace welvane {

/// One input by its stretches, and which of its columns each output channel is.
struct PassStream {
    StraightLines lines;
    std::vector<std::optional<int>> sources;  ///< nothing for a channel of nulls
};

namespace {

std::string whyNotOneInput(const PassContext& context) {
    const Session& session = context.session;
    for (int slot = 1; slot < slotCount; ++slot)
        if (session.loaded(slot)) return "several inputs are joined";
    if (!session.loaded(0) || session.channelCount(0) == 0) return "no input has channels";
    const InputSlot& input = session.slots[0];
    if (sameText(input.wrap, "YES")) return "the input is wrapped";
    if (!mayBeStraight(context, input)) return "columns are cut by position";
    for (const SlotChannel& channel : session.channels[0])
        if (channel.channelOffset != 0 || channel.channelTop != 0 || channel.channelBottom != 0)
            return "a channel is shifted or clipped";
    const bool resampled = input.step == 0 || std::abs(input.step) > std::abs(context.grid.step);
    return resampled || context.nullFillMode != NullFill::None ? "gaps are filled" : "";
}

bool hasFunctions(const SessionTables& tables) {
    const Table& outputs = tables.outputs();
    for (int column = 1; column < outputs.columns(); ++column) {
        const SessionCell& function = outputs.cell(SrdRow::Function, column);
        if (outputs.checked(SrdRow::Use, column) && !function.data.empty() && !sameText(function.text, noneText))
            return true;
    }
    return false;
}

/// Samples that a thread holds at a time, at most: what a stretch of text has in all but strange files.
bool stretchesAreSmall(const PassContext& context, const StraightLines& lines) {
    const auto columns = static_cast<std::uint64_t>(context.session.channelCount(0)) + 1;
    const std::uint64_t most = std::max<std::uint64_t>(context.app.run.workers.pieceBytes / 2, columns);
    for (std::size_t piece = 0; piece < lines.stretches(); ++piece)
        if (static_cast<std::uint64_t>(lines.samplesOf(piece).count()) * columns > most) return false;
    return true;
}

bool recordsFollow(const PassContext& context, const StraightLines& lines) {
    OrderedWork<StretchVerdict> work(
        context.app.run.workers.count, lines.stretches(),
        [&](std::size_t piece, StretchVerdict& verdict) { verdict.straight = lines.follow(piece); });
    while (const StretchVerdict* const verdict = work.next())
        if (!verdict->straight || context.cancelled()) return false;
    return true;
}

/// What one thread makes of a stretch.
struct StreamPiece {
    std::unique_ptr<double[]> samples;
    std::size_t capacity = 0;
    bool straight = true;
    std::int64_t records = 0;
    PrintedRecords text;

    double* room(std::size_t count) {
        if (capacity < count) {
            samples = std::make_unique_for_overwrite<double[]>(count);
            capacity = count;
        }
        return samples.get();
    }
};

/// Turns stretches into records, by as many threads as wish to.
class StreamPrinter {
  public:
    explicit StreamPrinter(const PassContext& context)
        : context_(context),
          stream_(*context.stream),
          columns_(static_cast<std::size_t>(context.session.channelCount(0))),
          printer_(context) {}

    void make(std::size_t number, StreamPiece& piece) const {
        const std::size_t stretch = inOrder() ? number : stream_.lines.stretches() - 1 - number;
        const StraightLines::Samples samples = stream_.lines.samplesOf(stretch);
        piece.text.clear();
        piece.records = samples.count();
        piece.straight = true;
        if (piece.records == 0) return;
        const auto count = static_cast<std::size_t>(piece.records);
        // One column more, of nulls.
        double* const room = piece.room((columns_ + 1) * count);
        SampleColumns columns;
        for (std::size_t column = 0; column < columns_; ++column) columns.push_back(room + column * count);
        double* const nulls = room + columns_ * count;
        std::fill_n(nulls, count, static_cast<double>(context_.nullValue));
        piece.straight = stream_.lines.read(stretch, columns, samples.first);
        if (!piece.straight) return;
        std::vector<const double*> printed;
        for (const OutputColumn& column : context_.outputColumns) {
            const std::optional<int>& source = stream_.sources.at(static_cast<std::size_t>(column.column) - 1);
            printed.push_back(source ? columns.at(static_cast<std::size_t>(*source)) : nulls);
        }
        const std::int64_t begin = context_.grid.direction < 0 ? samples.last : samples.first;
        printer_.print({printed, samples.first}, static_cast<std::int32_t>(begin),
                       static_cast<std::int32_t>(piece.records), piece.text);
    }

  private:
    /// Records are written in the order in which they stand.
    bool inOrder() const { return stream_.lines.direction() * context_.grid.direction >= 0; }

    const PassContext& context_;
    const PassStream& stream_;
    std::size_t columns_;
    RecordPrinter printer_;
};

}  // namespace

std::string whyInMemory(const PassContext& context) {
    if (!context.options.streamed) return "a preview shows all samples";
    if (context.options.rules == FigureRules::trueFigures) return "widths and decimals are those of all records";
    if (context.options.noInputRun) return "the input is taken as it stands";
    if (std::string why = whyNotOneInput(context); !why.empty()) return why;
    if (hasFunctions(context.session.tables)) return "channels are computed";
    if (context.session.tables.checked(PrdRow::DovranFilter)) return "channels are smoothed";
    return wholeLinks(context) ? "" : "a channel takes a part of its input's depths";
}

bool openStream(PassContext& context) {
    StraightLines lines(context, context.session.slots[0]);
    const auto sources = wholeLinks(context);
    if (!sources || lines.stretches() == 0 || !stretchesAreSmall(context, lines) || !recordsFollow(context, lines))
        return false;
    if (context.session.slots[0].file->damaged()) return false;
    context.stream = std::make_shared<PassStream>(PassStream{std::move(lines), *sources});
    context.outputMatrix = Matrix(countOutputChannels(context.tables()), 0);
    return true;
}

bool writeStream(PassContext& context, OutputFile& file) {
    RunState& run = context.app.run;
    run.statusText = "Writing ~Ascii section ...";
    const StreamPrinter printer(context);
    OrderedWork<StreamPiece> work(run.workers.count, context.stream->lines.stretches(),
                                  [&printer](std::size_t number, StreamPiece& piece) { printer.make(number, piece); });
    while (const StreamPiece* const piece = work.next()) {
        if (!piece->straight || context.session.slots[0].file->damaged())
            throw RunTimeFailure("the input was changed while it was read");
        file.write(piece->text.text());
        context.report.overflowCount += piece->text.overflows;
        context.report.records += static_cast<std::int32_t>(piece->records);
        run.progressFraction =
            static_cast<float>(context.report.records) / static_cast<float>(context.grid.sampleCount);
        if (context.cancelled()) return false;
        if (!run.commandMode) context.app.user.pumpEvents();
    }
    return true;
}

}  // namespace welvane
