#include "engine/grid.h"

#include <cmath>

#include "engine/composition.h"
#include "engine/depth_limit.h"
#include "engine/layout.h"
#include "engine/streaming.h"
#include "engine/true_grid.h"
#include "las/wrap.h"
#include "session/choices.h"
#include "session/step_text.h"
#include "session/tvd.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

const char* const narrowTitle = "Format Too Narrow!";

bool stop(PassContext& context, std::string why) {
    context.report.refusal = std::move(why);
    return false;
}

bool stepIsZero(PassContext& context) {
    if (!context.app.run.commandMode) context.app.user.ask(zeroStepPrompt());
    context.tables().setting(PrdRow::SampleRate).clear();
    context.app.run.cancelRequested = true;
    return stop(context, "the step is zero: name one other than 0");
}

/// False when the question was answered with Cancel.
bool acceptFormatChange(PassContext& context, const std::string& text) {
    if (context.app.run.commandMode) return true;
    if (context.app.user.ask({narrowTitle, text, Buttons::OkCancel, Icon::Stop, Answer::Ok}) == Answer::Ok) return true;
    context.app.run.cancelRequested = true;
    return stop(context, "the data format is too narrow for the step, and widening it was declined");
}

bool checkFormat(PassContext& context) {
    PassGrid& grid = context.grid;
    // Kept: a grid that ends at or above zero skips the whole check and so writes its depths without decimals.
    if (grid.stop <= 0) return true;
    const std::string digits = stripZeros(formatMask(grid.step, 9));
    const std::size_t dot = digits.find('.');
    grid.stepDecimals = dot == npos ? 0 : static_cast<int>(digits.size() - dot - 1);
    // Kept: it is the step that is measured here, not the depth, so a deep log in a narrow column passes.
    const int neededWidth = grid.stepDecimals + 1 + static_cast<int>(formatMask(grid.step, 1).find('.')) + 1;

    FormatDefaults& format = context.format();
    if (format.dataDecimals < grid.stepDecimals) {
        const std::string text = "The specified number of decimal places (" + std::to_string(format.dataDecimals) +
                                 "), cannot display the full precision of the specified STEP (" +
                                 plainNumber(grid.step) + ").  Press OK to make this change and continue.";
        if (!acceptFormatChange(context, text)) return false;
        format.dataDecimals = toInt16(grid.stepDecimals);
        context.tables().setting(PrdRow::DataDecimals) = std::to_string(format.dataDecimals);
    }
    if (format.dataWidth < neededWidth) {
        const std::string text =
            "The format specified for the channels is not wide enough to contain the depth numbers. Please increase "
            "the Total Width to "
            "accomodate the depth range and precision of the STEP to at least " +
            std::to_string(neededWidth) + " total width and " + std::to_string(grid.stepDecimals) +
            " decimals. Press OK to make this change and continue.";
        if (!acceptFormatChange(context, text)) return false;
        // Kept: the box promises a wider column, dataWidth does not change. Test:
        // PassGridTest.narrowFormatKeepsDataWidth
        context.tables().setting(PrdRow::DataWidth) = std::to_string(format.dataWidth);
        context.tables().setting(PrdRow::DataDecimals) = std::to_string(format.dataDecimals);
    }
    return true;
}

int findHeaderSlot(const PassContext& context) {
    const std::string& wanted = context.session.tables.setting(PrdRow::HeaderFile);
    for (int slot = 0; slot < slotCount; ++slot)
        if (sameText(context.session.slots[slot].path, wanted)) return slot;
    return 0;
}

std::int16_t columnWidth(PassContext& context) {
    if (decode<Parsing>(context.tables().setting(PrdRow::ParsingOptions)) == Parsing::Auto) return 0;
    std::int16_t width = 0;
    attempt(context.report.failures, "column width",
            [&] { width = toInt16(val(context.tables().option(PrdRow::ParsingOptions))); });
    return width;
}

void readOptions(PassContext& context) {
    SessionTables& tables = context.tables();
    context.grid.depthOffset = val(tables.setting(PrdRow::DepthOffset));
    const std::int16_t width = context.format().dataWidth;
    context.wrapPerLine = 0;
    if (decode<Wrap>(tables.setting(PrdRow::Wrap)) == Wrap::Yes && width > 0)
        context.wrapPerLine = static_cast<std::int16_t>(wrapLineLength / width);
    attempt(context.report.failures, "null value",
            [&] { context.nullValue = toSingle(val(tables.setting(PrdRow::Null))); });
    context.nullFillMode = decode<NullFill>(tables.setting(PrdRow::NullFill)).value_or(NullFill::None);
}

/// Bounds memory before it is taken, where samples are held.
bool boundGrid(PassContext& context) {
    PassGrid& grid = context.grid;
    const double steps = std::abs((grid.start - grid.stop) / grid.step);
    if (!(steps < 2147483647.0 - 1))
        return stop(context, "the grid from " + plainNumber(grid.start) + " to " + plainNumber(grid.stop) + " by " +
                                 plainNumber(grid.step) + " has more samples than 32 bits can count");
    grid.sampleCount = std::abs(roundToEven((grid.start - grid.stop) / grid.step)) + 1;
    return whyInMemory(context).empty() || memorySuffices(context);
}

}  // namespace

bool memorySuffices(PassContext& context) {
    const PassGrid& grid = context.grid;
    const std::uint64_t needed = matrixBytes(context);
    // Asking the system costs more than a small pass does, and what is this small is always there.
    constexpr std::uint64_t smallNeed = 4 << 20;
    if (needed <= smallNeed) return true;
    const std::uint64_t available = context.app.platform.freeMemory();
    if (available != 0 && needed > available)
        return stop(context, "the grid of " + std::to_string(grid.sampleCount) + " samples needs " +
                                 std::to_string(needed >> 20) + " MB of memory, " + std::to_string(available >> 20) +
                                 " MB are free");
    return true;
}

std::uint64_t matrixBytes(const PassContext& context) {
    const auto inputs = static_cast<std::uint64_t>(context.session.columnBase(slotCount));
    const auto outputs = static_cast<std::uint64_t>(countOutputChannels(context.session.tables));
    return (inputs + outputs) * static_cast<std::uint64_t>(context.grid.sampleCount) * sizeof(double);
}

namespace {

/// By true figures no depth is mapped through a station that nobody measured.
bool surveyIsWhole(PassContext& context) {
    const SessionTables& tables = context.tables();
    if (!tables.checked(PrdRow::ApplyTvd)) return true;
    if (const auto fault = surveyFault(tables.trd)) return stop(context, fault->why);
    const std::vector<SurveyRow>& stations = context.session.inclinometry.rows;
    if (stations.empty() || (stations.size() == 1 && stations.front().md == 0))
        context.report.notes.push_back(
            {.kind = NoteKind::Survey, .text = "the survey has no station: depths stay as they are"});
    return true;
}

}  // namespace

bool deriveGrid(PassContext& context) {
    SessionTables& tables = context.tables();
    PassGrid& grid = context.grid;
    if (tables.checked(PrdRow::ApplyTvd)) updateInclinometry(context.session);
    if (context.options.rules == FigureRules::trueFigures && !surveyIsWhole(context)) return false;
    context.applyTvd = tables.checked(PrdRow::ApplyTvd) && !context.session.inclinometry.rows.empty();
    const SlotChannels& channels = context.session.channels[0];
    const bool isTrue = context.options.rules == FigureRules::trueFigures;
    const bool carriedThrough = isTrue && !channels.empty();
    const bool metric = carriedThrough ? beginsWith(channels.front().field.unit, "M")
                                       : decode<DepthUnit>(tables.setting(PrdRow::DepthUnits)) == DepthUnit::M;
    context.tvdUnitFactor = metric ? metresPerFoot : 1.0F;
    context.headerSlot = findHeaderSlot(context);

    const InputSlot& first = context.session.slots[0];
    context.fixedColumnWidth = columnWidth(context);
    const std::string &rate = tables.setting(PrdRow::SampleRate), &unit = tables.setting(PrdRow::DepthUnits);
    grid.step = isTrue ? std::abs(stepNumber(rate, unit)) : gridStep(rate, unit);
    if (grid.step == 0) return stepIsZero(context);
    if (isTrue) {
        if (!deriveTrueGrid(context)) return false;
    } else {
        grid.start = depthLimit(tables.setting(PrdRow::From), first.start);
        grid.stop = depthLimit(tables.setting(PrdRow::To), first.stop);
        if (grid.start > grid.stop) std::swap(grid.start, grid.stop);
        if (!checkFormat(context)) return false;
    }
    readOptions(context);
    if (!boundGrid(context)) return false;

    grid.firstIndex = 1;
    grid.lastIndex = grid.sampleCount;
    if (decode<Direction>(tables.setting(PrdRow::Direction)) == Direction::DeepToShallow) {
        grid.direction = -1;
        std::swap(grid.firstIndex, grid.lastIndex);
    }
    return true;
}

}  // namespace welvane
