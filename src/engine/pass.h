#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "engine/matrix.h"
#include "functions/functions.h"
#include "platform/output_file.h"
#include "session/session.h"
#include "shared/failure.h"

/// The pass: turns one loaded session into one output file.
namespace welvane {

enum class PassResult : std::int16_t {
    Done = -1,     ///< the file is finished
    Stopped = 0,   ///< ended early, or refused before anything was written
    Cancelled = 1  ///< ended early with the cancel flag set
};

/// How gaps of null are closed.
enum class NullFill : std::int16_t { Linear = 0, FlatTop = 1, None = 2 };

/// The output's depth grid, in the depth unit of the input files. Sample i, from 1, lies at start + (i - 1) * step.
struct PassGrid {
    double start = 0, stop = 0;  ///< start is never above stop
    double step = 0;             ///< positive, rounded to four decimals
    std::int32_t sampleCount = 0;
    int direction = 1;                           ///< +1 writes from the top down, -1 from the bottom up
    std::int32_t firstIndex = 0, lastIndex = 0;  ///< of the writing loop
    double depthOffset = 0;                      ///< added to every written depth
    int stepDecimals = 0;                        ///< decimals that the step needs
};

/// What the caller asks of one pass.
struct PassOptions {
    std::string outputPath;
    bool noInputRun = false;  ///< slot 0 alone, as it stands: no rate check, fill, clip or offset, no header source
    OutputFile::Mode outputMode = OutputFile::Mode::InPlace;
    /// An input whose reading breaks off refuses the pass, in place of going on with what was read.
    bool wholeInputs = false;
    /// A depth unit other than the input's is carried through: STEP is written in it and depths keep the decimals of
    /// the data. Without it both keep the form that they have in the input's unit.
    bool exactDepthUnit = false;
};

/// What one pass tells of itself.
struct PassReport {
    PassResult result = PassResult::Stopped;
    std::string refusal;      ///< why nothing was written; "" when something was
    FailureList failures;     ///< steps that were skipped
    std::string brokenInput;  ///< where and why the reading of an input broke off, "" when all were read to their end
    std::size_t overflowCount = 0;  ///< values too wide for their column
    std::int32_t records = 0;
    int columns = 0;  ///< written data columns, the depth not counted
    std::string firstDepth, lastDepth;
    bool applyTvd = false;  ///< the depth column was written as true vertical depth
};

/// A curve of the output: entry 0 is the depth.
struct OutputCurve {
    std::string mnem, unit, apiCode, description;
};
using OutputCurveTable = std::vector<OutputCurve>;

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
    double depthDivisor = 1;     ///< what depths are divided by on their way into the wanted unit
    int headerSlot = 0;
    std::int16_t fixedColumnWidth = 0;  ///< 0: columns are cut at blanks
    std::int16_t wrapPerLine = 0;       ///< data values per line; 0 is WRAP NO
    std::int32_t wrapLines = 0;         ///< lines of values per record
    float nullValue = 0;
    NullFill nullFillMode = NullFill::None;
    Matrix inputMatrix, outputMatrix;
    FunctionState functionState;
    std::string headerSource;
    std::vector<std::string> headerCurveNames;  ///< mnemonics of the header source's ~Curve section
    OutputCurveTable curveTable;
    std::string titleLine;  ///< mnemonics of the written channels, one data column each

    FormatDefaults& format() { return app.settings.format; }
    SessionTables& tables() { return session.tables; }
    bool cancelled() const { return app.run.cancelRequested.load(std::memory_order_relaxed); }
};

/// The heart of the program. Fills context.report; the result stands there too. A run that stops early leaves the file
/// as far as it was written (written beside: leaves the old file).
PassResult doitmastnew(PassContext& context);

/// What a pass would do, without doing it.
struct PassPlan {
    std::string refusal;  ///< "" when the pass could run
    PassGrid grid;
    struct Channel {
        std::string mnem, unit, sources;  ///< sources: "slot 1 GR 1000 to 1200, ..."
        std::string function;             ///< "" when none
    };
    std::vector<Channel> channels;
    std::uint64_t memoryNeeded = 0;  ///< bytes of the two matrices
};
PassPlan planPass(App& app, Session& session);

}  // namespace welvane
