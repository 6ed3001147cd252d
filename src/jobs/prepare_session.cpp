#include "jobs/prepare_session.h"

#include "jobs/channel_choices.h"
#include "jobs/las_check.h"
#include "jobs/survey.h"
#include "jobs/true_input.h"
#include "las/input_data.h"
#include "las/sections.h"
#include "session/filters.h"
#include "session/loading.h"
#include "session/matching.h"
#include "session/property_edits.h"
#include "session/session_setup.h"
#include "session/step_text.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// Sets one cell of prd by its edit rule.
void edit(Workbench& bench, Session& session, PrdRow row, std::string_view text, PrdColumn column = PrdColumn::Setting,
          int item = -1) {
    setProperty(bench.app(), session, row, column, std::string(text), item);
}

/// Sets a property to a choice of its list; nothing keeps it.
template <class Choice>
void choose(Workbench& bench, Session& session, PrdRow row, const std::optional<Choice>& choice,
            PrdColumn column = PrdColumn::Setting) {
    if (choice) edit(bench, session, row, textOf(*choice), column);
}

/// Sets a property to a number or a limit as it was given; nothing keeps it.
template <class Given>
void give(Workbench& bench, Session& session, PrdRow row, const std::optional<Given>& given) {
    if (given) edit(bench, session, row, given->text());
}

/// How many of the first input's depth unit make one of `wanted`. Refusal where the unit table cannot tell.
double inputUnitsPer(Workbench& bench, const Session& session, const std::string& wanted) {
    const std::string& input = session.channels[0].empty() ? wanted : session.channels[0].front().field.unit;
    if (sameText(input, wanted)) return 1;
    if (session.rules == FigureRules::trueFigures) {
        const IndexUnit from = readIndexUnit(input), to = readIndexUnit(wanted);
        if (from.isLength() && to.isLength()) return to.metres / from.metres;
        throw refusedChoice("unit", "an index in \"" + input + "\" cannot become \"" + wanted + "\"");
    }
    const ReferenceTables& reference = bench.app().reference;
    if (!knownUnit(reference, input) || !knownUnit(reference, wanted))
        throw refusedChoice("unit", "the unit table does not tell how \"" + input + "\" becomes \"" + wanted + "\"");
    return unitFactor(reference, input) / unitFactor(reference, wanted);
}

void setStepAndUnit(Workbench& bench, Session& session, const PassRequest& request) {
    double inputUnits = 1;
    if (request.unit) {
        const std::string unit(textOf(*request.unit));
        inputUnits = inputUnitsPer(bench, session, unit);
        // Not by the edit rule, which rounds the step in its new unit: the grid stays the input's own, sample for
        // sample.
        constexpr PrdRow row = PrdRow::DepthUnits;
        session.tables.prd.text(row, PrdColumn::Setting) = session.tables.prd.data(row, PrdColumn::Setting) = unit;
    }
    if (request.step.empty()) return;
    // A list item of the properties' table has words in it; anything else is a number.
    const bool isItem = holdsText(request.step, "\"") && holdsText(request.step, "f");
    if (!isItem && !isNumeric(request.step)) throw senselessChoice("step", "'" + request.step + "' is not a number");
    const double step = stepNumber(request.step, session.tables.setting(PrdRow::DepthUnits));
    if (step == 0) throw senselessChoice("step", "a STEP of zero makes no LAS file");
    const int decimals = session.rules == FigureRules::trueFigures ? 12 : 4;
    // A step is named in the unit of the output; the grid counts in the input's.
    edit(bench, session, PrdRow::SampleRate, inputUnits == 1 ? request.step : formatMask(step * inputUnits, decimals));
}

void setHeaderFile(Workbench& bench, Session& session, const std::vector<Input>& inputs, const std::string& header) {
    for (std::size_t slot = 0; slot < inputs.size(); ++slot) {
        if (header != std::to_string(slot + 1) && !samePath(header, inputs[slot].given)) continue;
        edit(bench, session, PrdRow::HeaderFile, inputs[slot].path, PrdColumn::Setting, static_cast<int>(slot));
        return;
    }
    throw senselessChoice("header", "'" + header + "' is not one of the inputs");
}

void setFormat(Workbench& bench, Session& session, const PassRequest& request) {
    for (std::size_t place = 0; place < request.format.size(); ++place) {
        const std::optional<GivenNumber>& number = request.format[place];
        if (!number) continue;
        // A width or a column is never negative, and a line of the header has 254 characters at most.
        if (number->value() < 0 || number->value() > 1000)
            throw senselessChoice("format", number->text() + " is out of range");
        edit(bench, session, static_cast<PrdRow>(at(PrdRow::FormatDot) + static_cast<int>(place)), number->text());
    }
}

void setPlainAscii(Workbench& bench, Session& session, const PassRequest& request) {
    if (!request.plain) {
        if (request.separator) throw senselessChoice("separator", "there is no plain table without its heads");
        return;
    }
    checkProperty(bench.app(), session, PrdRow::PlainAscii, true);
    choose(bench, session, PrdRow::PlainAscii, request.plain, PrdColumn::Option);
    choose(bench, session, PrdRow::PlainAscii, request.separator, PrdColumn::SecondOption);
}

void setColumnWidth(Workbench& bench, Session& session, const GivenNumber& width) {
    if (width.value() < 1 || width.value() > 32767)
        throw senselessChoice("column-width", width.text() + " is out of range");
    edit(bench, session, PrdRow::ParsingOptions, textOf(Parsing::ColumnWidth));
    edit(bench, session, PrdRow::ParsingOptions, width.text(), PrdColumn::Option);
}

/// `indexUnit` is the depth unit of the inputs: a survey knows nothing of the output's.
void setTvd(Workbench& bench, Session& session, const PassRequest& request, const std::string& indexUnit) {
    const bool metres = decode<DepthUnit>(indexUnit) == DepthUnit::M;
    const SurveyUnit unit = request.tvdUnit.value_or(metres ? SurveyUnit::Metres : SurveyUnit::Feet);
    readSurveyFile(bench, session, request.tvd, unit);
    tellOwnUnit(bench, session, request.tvd, request.tvdUnit);
    checkProperty(bench.app(), session, PrdRow::ApplyTvd, true);
}

void setProperties(Workbench& bench, Session& session, const std::vector<Input>& inputs, const PassRequest& request,
                   const std::string& indexUnit) {
    App& app = bench.app();
    setStepAndUnit(bench, session, request);
    give(bench, session, PrdRow::From, request.from);
    give(bench, session, PrdRow::To, request.to);
    give(bench, session, PrdRow::DepthOffset, request.offset);
    give(bench, session, PrdRow::Null, request.null);
    choose(bench, session, PrdRow::Direction, request.direction);
    choose(bench, session, PrdRow::Wrap, request.wrap);
    choose(bench, session, PrdRow::Vers, request.version);
    choose(bench, session, PrdRow::NullFill, request.fill);
    if (!request.header.empty()) setHeaderFile(bench, session, inputs, request.header);
    setFormat(bench, session, request);
    // Not by the edit rule: that stores the choice for all later sessions.
    if (request.renameDuplicates) session.tables.setChecked(PrdRow::RenameDuplicates, *request.renameDuplicates);
    if (request.columnWidth) setColumnWidth(bench, session, *request.columnWidth);
    if (request.fillEmpty) checkProperty(app, session, PrdRow::FillEmpty, true);
    if (request.mergeParameters) checkProperty(app, session, PrdRow::MergeParameters, *request.mergeParameters);
    setPlainAscii(bench, session, request);
    if (request.keepDetails) checkProperty(app, session, PrdRow::KeepInputDetails, true);
    if (request.smooth) checkProperty(app, session, PrdRow::DovranFilter, true);
    if (!request.tvd.empty()) setTvd(bench, session, request, indexUnit);
}

void tellSkipped(Workbench& bench, const FailureList& skipped) {
    for (const SkippedStep& step : skipped.first) bench.note(NoteKind::Skipped, "", step.what + ": " + step.why);
    if (skipped.count <= skipped.first.size()) return;
    const std::size_t more = skipped.count - skipped.first.size();
    bench.note({.kind = NoteKind::Skipped, .count = more, .text = std::to_string(more) + " more like these"});
}

/// As laid down a run goes on without an input and without its channels; why was told when it was opened.
bool mayBeMissed(FigureRules rules, LoadStatus status) {
    return rules == FigureRules::asLaidDown && (status == LoadStatus::NoFile || status == LoadStatus::WithoutChannels);
}

void loadInputs(Workbench& bench, Session& session, const std::vector<Input>& inputs, const std::vector<int>& slots) {
    for (std::size_t place = 0; place < inputs.size(); ++place) {
        InputSlot& slot = session.slots[slots[place]];
        slot.path = inputs[place].path;
        slot.file = inputs[place].file;
    }
    for (std::size_t place = 0; place < inputs.size(); ++place) {
        const SlotLoadResult result = Open4Files(bench.app(), session, slots[place]);
        std::vector<Note> notes = result.notes;
        if (result.status != LoadStatus::Loaded && !mayBeMissed(session.rules, result.status))
            throw Refusal(inputs[place].given, result.why, remedyFor(result.help));
        for (const std::string& unit : result.unknownUnits)
            if (!bench.app().reference.units.empty())
                notes.push_back({.kind = NoteKind::Unit, .text = "the unit table does not know \"" + unit + "\""});
        for (Note& note : notes) note.file = inputs[place].given;
        tellNotes(bench, inputs[place].given, notes);
    }
    bench.app().run.lasFile = inputs.front().path;
}

/// Names by which a well is known, where an input has another one than the first.
void tellOtherWells(Workbench& bench, const std::vector<Input>& inputs) {
    for (const char* mnem : {"WELL", "UWI", "API"}) {
        const std::string first(trim(inputs.front().file->value(mnem, 'W').text));
        for (std::size_t slot = 1; slot < inputs.size() && !first.empty(); ++slot) {
            const std::string other(trim(inputs[slot].file->value(mnem, 'W').text));
            if (other.empty() || sameText(first, other)) continue;
            tellNotes(bench, inputs[slot].given,
                      {{.kind = NoteKind::File,
                        .file = inputs[slot].given,
                        .text = std::string(mnem) + " is " + other + ", in " + fileNameOf(inputs.front().given) + " " +
                                first}});
        }
    }
}

/// Where the records of an input follow no step, somebody has to say onto what they shall go.
void needSpacing(const Session& session, const std::vector<Input>& inputs, const PassRequest& request,
                 const std::vector<int>& slots) {
    if (!request.step.empty()) return;
    for (std::size_t place = 0; place < inputs.size(); ++place) {
        const InputData& data = *session.slots[slots[place]].data;
        if (data.spacing.kind != IndexSpacing::Kind::Irregular) continue;
        const std::size_t misfit = data.spacing.misfit;
        const std::vector<double>& depths = data.depths();
        throw Refusal(inputs[place].given,
                      "line " + std::to_string(data.channels.lines[misfit]) + ": its depths follow no one step: " +
                          plainNumber(depths[misfit]) + " stands behind " + plainNumber(depths[misfit - 1]),
                      Remedy::Step);
    }
}

/// Without its groups channels of other names are not known to be the same.
void noteMissingGroups(Workbench& bench) {
    if (!bench.app().reference.curves.empty()) return;
    const std::string& path = bench.app().settings.curvesPath;
    const std::string what = path.empty() ? "curves.ini is not in " + bench.app().platform.programFolder()
                                          : path + " holds no group of curves";
    bench.note(NoteKind::File, "", what + "; channels are joined by their names alone");
}

void applyFilter(Workbench& bench, Session& session, const std::string& path) {
    if (const std::string why = whyUnreadable(path); !why.empty()) throw Refusal(path, why);
    // Files that it refers to are looked for beside it. One whose lines end in LF openFilter reads through a copy.
    setFilterInUse(session, resolvePath(path));
    const FilterReport report = openFilter(bench.app(), session, session.rules);
    if (!report.applied) throw Refusal(path, report.why);
    for (const std::string& table : report.tables) bench.willRead(table);
    tellSkipped(bench, report.skipped);
}

void applyCurves(Workbench& bench, Session& session, const std::vector<std::string>& lines) {
    const FilterReport report = applyCurveLines(session, lines, session.rules);
    if (!report.applied) throw refusedChoice("curve", report.why);
    tellSkipped(bench, report.skipped);
}

}  // namespace

void prepareSession(Workbench& bench, Session& session, const std::vector<Input>& inputs, const PassRequest& request,
                    const SessionStart& start) {
    App& app = bench.app();
    // What the headless line decides without asking is a part of what was laid down.
    app.run.commandMode = request.rules == FigureRules::asLaidDown;
    session = Session();
    openSession(app, session);
    // What was in use when a window was last closed is nothing to a job.
    session.tables.frd.setCheck(1, FrdColumn::Apply, Check::Unchecked);
    session.loose = request.loose;
    session.rules = request.rules;
    session.decimalComma = request.decimalComma;
    session.indexUnit = request.indexUnit;
    std::vector<int> slots = start.slots;
    while (slots.size() < inputs.size()) slots.push_back(static_cast<int>(slots.size()));
    loadInputs(bench, session, inputs, slots);
    const std::string indexUnit = session.tables.setting(PrdRow::DepthUnits);
    if (request.rules == FigureRules::trueFigures) {
        if (!start.settled) needSpacing(session, inputs, request, slots);
        tellOtherWells(bench, inputs);
    }
    if (start.loaded) start.loaded();
    if (request.splice) {
        noteMissingGroups(bench);
        spliceGuess(app, session);
    }
    if (!request.filter.empty()) applyFilter(bench, session, request.filter);
    if (!request.curves.empty()) applyCurves(bench, session, request.curves);
    setProperties(bench, session, inputs, request, indexUnit);
    applyLinks(session, request.links);
    applyInputDepths(session, request.applyDepths);
    applyShifts(session, request.shifts);
    applyClips(session, request.clips);
    if (!request.select.empty()) selectColumns(session, request.select);
    if (!request.sections.empty()) arrangeSections(session, request.sections);
    session.sectionsNamed = session.sectionsNamed || !request.sections.empty();
}

}  // namespace welvane
