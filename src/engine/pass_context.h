#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engine/matrix.h"
#include "functions/functions.h"
#include "las/las_file.h"
#include "platform/output_file.h"
#include "session/choices.h"
#include "session/session.h"
#include "shared/failure.h"
#include "shared/figure_rules.h"

/// What the stages of a pass share: its options, grid, matrices and report.
namespace welvane {

enum class PassResult : std::int16_t {
    Done = -1,     ///< the file is finished
    Stopped = 0,   ///< ended early, or refused before anything was written
    Cancelled = 1  ///< ended early with the cancel flag set
};

/// The output's depth grid, in the depth unit of the input files. Sample i, from 1, lies at start + (i - 1) * step.
struct PassGrid {
    double start = 0, stop = 0;  ///< start is never above stop
    double step = 0;             ///< positive; as laid down rounded to four decimals
    std::int32_t sampleCount = 0;
    int direction = 1;                           ///< +1 writes from the top down, -1 from the bottom up
    std::int32_t firstIndex = 0, lastIndex = 0;  ///< of the writing loop
    double depthOffset = 0;                      ///< added to every written depth
    int stepDecimals = 0;                        ///< decimals that the step needs, by true figures that the depths do
};

/// What the caller asks of one pass.
struct PassOptions {
    std::string outputPath{};
    bool noInputRun = false;  ///< slot 0 alone, as it stands: no rate check, fill, clip or offset, no header source
    OutputFile::Mode outputMode = OutputFile::Mode::InPlace;
    /// An input whose reading breaks off refuses the pass, in place of going on with what was read.
    bool wholeInputs = false;
    FigureRules rules = FigureRules::asLaidDown;
    bool wrapSettled = false;  ///< WRAP was asked for by name, so whether it is needed is no question
    bool streamed = true;      ///< false: samples are held, the road that streaming is held against
    bool strict = false;       ///< a note refuses the pass before anything is written
};

/// What one pass tells of itself.
struct PassReport {
    PassResult result = PassResult::Stopped;
    std::string refusal;      ///< why nothing was written; "" when something was
    FailureList failures;     ///< steps that were skipped
    std::string brokenInput;  ///< where and why the reading of an input broke off, "" when all were read to their end
    bool inputLost = false;   ///< a part of that input could not be read at all: no pass goes on without it
    std::vector<Note> notes;  ///< by FigureRules::trueFigures, without the output's name
    std::size_t overflowCount = 0;  ///< values too wide for their column
    std::int32_t records = 0;
    int columns = 0;  ///< written data columns, the depth not counted
    std::string firstDepth, lastDepth;
    bool applyTvd = false;  ///< the depth column was written as true vertical depth
};

/// A curve of the output: entry 0 is the depth.
struct OutputCurve {
    std::string mnem;
    std::string inputUnit;  ///< what its samples come in
    std::string unit;       ///< what they are wanted in
    std::string apiCode, description;
};
using OutputCurveTable = std::vector<OutputCurve>;

/// One written column of samples.
struct OutputColumn {
    const double* samples;  ///< sample i at index i - 1
    double scale;           ///< a single's value
    int column;             ///< of srd(4)
    int width, decimals;    ///< characters, of which at least one stays blank
};

struct PassStream;

/// All that lives for one pass. Stages read what the stages before them left here.
struct PassContext {
    PassContext(App& process, Session& loaded, PassOptions wanted)
        : app(process), session(loaded), options(std::move(wanted)) {}

    App& app;
    Session& session;
    PassOptions options;
    PassReport report;

    PassGrid grid;
    bool applyTvd = false;
    float tvdUnitFactor = 1.0F;  ///< 0.3048 for metric files
    int headerSlot = 0;
    std::int16_t fixedColumnWidth = 0;  ///< 0: columns are cut at blanks
    std::int16_t wrapPerLine = 0;       ///< data values per line; 0 is WRAP NO
    std::int32_t wrapLines = 0;         ///< lines of values per record
    float nullValue = 0;
    NullFill nullFillMode = NullFill::None;
    Matrix inputMatrix, outputMatrix;
    std::shared_ptr<const PassStream> stream;  ///< in place of the samples of both matrices; see streaming.h
    FunctionState functionState;
    LasFilePointer headerSource;                ///< whose header goes out; nullptr when there is none
    std::vector<std::string> headerCurveNames;  ///< mnemonics of the header source's ~Curve section
    OutputCurveTable curveTable;
    std::string titleLine;  ///< mnemonics of the written channels, one data column each
    std::vector<OutputColumn> outputColumns;
    double depthDivisor = 1;  ///< what depths are divided by on their way into the wanted unit
    int depthWidth = 0;       ///< of the index column

    FormatDefaults& format() { return app.settings.format; }
    SessionTables& tables() { return session.tables; }
    bool cancelled() const { return app.run.cancelRequested.load(std::memory_order_relaxed); }
};

}  // namespace welvane
