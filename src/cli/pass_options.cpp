#include "cli/pass_options.h"

#include <CLI/CLI.hpp>

#include "cli/option_text.h"
#include "cli/session_options.h"
#include "cli/survey_file.h"
#include "cli/verbs.h"
#include "las/classify.h"
#include "las/sections.h"
#include "session/edit_rules.h"
#include "session/filters.h"
#include "session/loading.h"
#include "session/matching.h"
#include "session/session_setup.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr int settingColumn = static_cast<int>(PrdColumn::Setting), optionColumn = static_cast<int>(PrdColumn::Option),
              secondColumn = static_cast<int>(PrdColumn::SecondOption);

/// An option of one text: where it goes, and how the help shows it.
struct TextOption {
    const char* name;
    std::string PassChoices::*target;
    const char* form;
    const char* help;
};

void declareTexts(CLI::App& command, PassChoices& choices, const char* group,
                  std::initializer_list<TextOption> options) {
    for (const TextOption& option : options) {
        command.add_option(option.name, choices.*option.target, option.help)->type_name(option.form)->group(group);
    }
}

void declareLists(CLI::App& command, PassChoices& choices, const char* group) {
    struct ListOption {
        const char* name;
        std::vector<std::string> PassChoices::*target;
        const char* form;
        const char* help;
    };
    for (const ListOption& option : {ListOption{"--curve", &PassChoices::curves, "LINE",
                                                "One ~Curve line: rename, describe or compute a channel, "
                                                "e.g.\n\"DPHI.V/V : Porosity | FUN=BULKDEN2PORO,RHOB,2.65,1.0\""},
                                     ListOption{"--link", &PassChoices::links, "SLOT:CHANNEL>COLUMN[:FROM:TO]",
                                                "Feed an output column from an input channel by hand"},
                                     ListOption{"--apply-depths", &PassChoices::applyDepths, "SLOT:FROM:TO",
                                                "Depths from which an input feeds all its channels"},
                                     ListOption{"--shift", &PassChoices::shifts, "SLOT:CHANNEL:OFFSET",
                                                "Move an input channel in depth, positive down"},
                                     ListOption{"--clip", &PassChoices::clips, "SLOT:CHANNEL:TOP:BOTTOM",
                                                "Cut an input channel to an interval"}}) {
        command.add_option(option.name, choices.*option.target, option.help)
            ->type_name(option.form)
            ->expected(1)
            ->take_all()
            ->delimiter('\0')
            ->group(group);
    }
}

/// Sets one cell of prd by its edit rule.
void edit(Workbench& bench, Session& session, PrdRow row, std::string_view text, int column = settingColumn,
          int comboIndex = -1) {
    editProperty(bench.app(), session, {static_cast<int>(row), column, std::string(text), comboIndex});
}

/// How many of the first input's depth unit make one of `wanted`. Refusal where the unit table cannot tell.
double inputUnitsPer(Workbench& bench, const Session& session, const std::string& wanted) {
    const std::string& input = session.channels[0].empty() ? wanted : session.channels[0].front().field.unit;
    if (sameText(input, wanted)) return 1;
    const ReferenceTables& reference = bench.app().reference;
    if (!knownUnit(reference, input) || !knownUnit(reference, wanted))
        throw Refusal("--unit", "the unit table does not tell how \"" + input + "\" becomes \"" + wanted + "\"");
    return unitFactor(reference, input) / unitFactor(reference, wanted);
}

void setStepAndUnit(Workbench& bench, Session& session, const PassChoices& choices) {
    double inputUnits = 1;
    if (!choices.unit.empty()) {
        const std::string unit(needWord("--unit", choices.unit, {{"F", "F"}, {"M", "M"}, {"FT", "FT"}}));
        inputUnits = inputUnitsPer(bench, session, unit);
        // Not by the edit rule, which rounds the step in its new unit: the grid stays the input's own, sample for
        // sample.
        const auto row = static_cast<int>(PrdRow::DepthUnits);
        session.tables.prd.text(row, settingColumn) = session.tables.prd.data(row, settingColumn) = unit;
    }
    if (choices.step.empty()) return;
    // A list item of the properties' table has words in it; anything else is a number.
    const bool isItem = holdsText(choices.step, "\"") && holdsText(choices.step, "f");
    if (!isItem) needNumber("--step", choices.step);
    const double step = sampleRateNumber(choices.step, session.tables.setting(PrdRow::DepthUnits));
    if (step == 0) throw UsageFault("--step: a STEP of zero makes no LAS file");
    // A step is named in the unit of the output; the grid counts in the input's.
    edit(bench, session, PrdRow::SampleRate, inputUnits == 1 ? choices.step : formatMask(step * inputUnits, 4));
}

void setHeaderFile(Workbench& bench, Session& session, const std::vector<Input>& inputs, const std::string& header) {
    for (std::size_t slot = 0; slot < inputs.size(); ++slot) {
        if (header != std::to_string(slot + 1) && !samePath(header, inputs[slot].given)) continue;
        edit(bench, session, PrdRow::HeaderFile, inputs[slot].path, settingColumn, static_cast<int>(slot));
        return;
    }
    throw UsageFault("--header: '" + header + "' is not one of the inputs");
}

void setFormat(Workbench& bench, Session& session, const std::string& format) {
    constexpr std::string_view form = "DOT,VALUE,COLON,PLUS,WIDTH,DECIMALS";
    const std::vector<std::string> pieces = needPieces("--format", format, ',', 1, 6, form);
    for (std::size_t piece = 0; piece < pieces.size(); ++piece) {
        const std::string_view text = trim(pieces[piece]);
        if (text.empty()) continue;
        needNumber("--format", text);
        const double number = val(text);
        // A width or a column is never negative, and a line of the header has 254 characters at most.
        if (number < 0 || number > 1000) throw UsageFault("--format: " + std::string(text) + " is out of range");
        edit(bench, session, static_cast<PrdRow>(static_cast<int>(PrdRow::FormatDot) + static_cast<int>(piece)), text);
    }
}

void setPlainAscii(Workbench& bench, Session& session, const PassChoices& choices) {
    if (choices.ascii.empty()) {
        if (!choices.separator.empty()) throw UsageFault("--separator goes with --ascii");
        return;
    }
    checkProperty(bench.app(), session, PrdRow::PlainAscii, true);
    edit(bench, session, PrdRow::PlainAscii,
         needWord("--ascii", choices.ascii,
                  {{"No Header", "No Header"},
                   {"MNEM", "MNEM"},
                   {"MNEM.UNIT", "MNEM.UNIT"},
                   {"One line each", "One line each"}}),
         optionColumn);
    if (choices.separator.empty()) return;
    edit(bench, session, PrdRow::PlainAscii,
         needWord("--separator", choices.separator, {{"space", "Space"}, {"tab", "Tab"}, {"comma", "Comma"}}),
         secondColumn);
}

void setTvd(Workbench& bench, Session& session, const std::string& path) {
    if (path.empty()) return;
    const bool metres = sameText(session.tables.setting(PrdRow::DepthUnits), "M");
    readSurveyFile(bench, session, path, metres ? SurveyUnit::Metres : SurveyUnit::Feet);
    if (checkProperty(bench.app(), session, PrdRow::ApplyTvd, true).sortSurvey) sortGrd(session);
}

/// Rows that take a text by a word or as it stands.
void setTexts(Workbench& bench, Session& session, const PassChoices& choices) {
    for (const auto& [option, row, text] :
         {std::tuple{"--from", PrdRow::From, &choices.from}, {"--to", PrdRow::To, &choices.to}}) {
        if (text->empty()) continue;
        needLimit(option, *text);
        edit(bench, session, row, *text);
    }
    for (const auto& [option, row, text] :
         {std::tuple{"--offset", PrdRow::DepthOffset, &choices.offset}, {"--null", PrdRow::Null, &choices.null}}) {
        if (text->empty()) continue;
        needNumber(option, *text);
        edit(bench, session, row, *text);
    }
    struct WordOption {
        std::string_view option;
        PrdRow row;
        const std::string& text;
        Words words;
    };
    for (const WordOption& word :
         {WordOption{"--direction",
                     PrdRow::Direction,
                     choices.direction,
                     {{"shallow", "Shallow to Deep"}, {"deep", "Deep to Shallow"}}},
          WordOption{"--wrap", PrdRow::Wrap, choices.wrap, {{"yes", "Yes"}, {"no", "No"}}},
          WordOption{"--vers", PrdRow::Vers, choices.vers, {{"1.2", "1.2"}, {"2.0", "2.0"}, {"2", "2.0"}}},
          WordOption{"--fill",
                     PrdRow::NullFill,
                     choices.fill,
                     {{"none", "None"}, {"linear", "Linear"}, {"flat", "Flat Top"}}}}) {
        if (!word.text.empty()) edit(bench, session, word.row, needWord(word.option, word.text, word.words));
    }
}

void setProperties(Workbench& bench, Session& session, const std::vector<Input>& inputs, const PassChoices& choices) {
    App& app = bench.app();
    setStepAndUnit(bench, session, choices);
    setTexts(bench, session, choices);
    if (!choices.header.empty()) setHeaderFile(bench, session, inputs, choices.header);
    if (!choices.format.empty()) setFormat(bench, session, choices.format);
    // Not by the edit rule: that stores the choice for all later sessions.
    if (!choices.renameDuplicates.empty())
        session.tables.setChecked(PrdRow::RenameDuplicates,
                                  needYesOrNo("--rename-duplicates", choices.renameDuplicates));
    if (!choices.columnWidth.empty()) {
        const double width = needNumber("--column-width", choices.columnWidth);
        if (width < 1 || width > 32767) throw UsageFault("--column-width: " + choices.columnWidth + " is out of range");
        edit(bench, session, PrdRow::ParsingOptions, "Column width of:");
        edit(bench, session, PrdRow::ParsingOptions, choices.columnWidth, optionColumn);
    }
    if (choices.fillEmpty) checkProperty(app, session, PrdRow::FillEmpty, true);
    if (!choices.mergeParameters.empty())
        checkProperty(app, session, PrdRow::MergeParameters,
                      needYesOrNo("--merge-parameters", choices.mergeParameters));
    setPlainAscii(bench, session, choices);
    if (choices.keepDetails) checkProperty(app, session, PrdRow::KeepInputDetails, true);
    if (choices.smooth) checkProperty(app, session, PrdRow::DovranFilter, true);
    setTvd(bench, session, choices.tvd);
}

void tellSkipped(Workbench& bench, const FailureList& skipped) {
    for (const SkippedStep& step : skipped.first) bench.user().note(step.what + ": " + step.why);
    if (skipped.count > skipped.first.size())
        bench.user().note(std::to_string(skipped.count - skipped.first.size()) + " more like these");
}

void loadInputs(Workbench& bench, Session& session, const std::vector<Input>& inputs) {
    for (std::size_t slot = 0; slot < inputs.size(); ++slot) session.slots[slot].path = inputs[slot].path;
    for (std::size_t slot = 0; slot < inputs.size(); ++slot) {
        const LoadResult result = Open4Files(bench.app(), session, static_cast<int>(slot));
        if (result.status != LoadStatus::Loaded) throw Refusal(inputs[slot].given, result.why);
        for (const std::string& unit : result.unknownUnits) {
            if (!bench.app().reference.units.empty())
                bench.user().note(inputs[slot].given + ": the unit table does not know \"" + unit + "\"");
        }
    }
    bench.app().run.lasFile = inputs.front().path;
}

/// A header without its top or bottom would count as 0 there, and the samples would fall outside the grid unseen.
void needDepthRange(const std::vector<Input>& inputs, const PassChoices& choices) {
    for (const Input& input : inputs) {
        const DepthHeader header = getDepthHeader(input.path);
        if (choices.from.empty() && trim(header.strt().value).empty())
            throw Refusal(input.given, "no STRT in its ~Well section: --from has to name the top");
        if (choices.to.empty() && trim(header.stop().value).empty())
            throw Refusal(input.given, "no STOP in its ~Well section: --to has to name the bottom");
    }
}

}  // namespace

void declarePassOptions(CLI::App& command, PassChoices& choices) {
    using C = PassChoices;
    const char* group = "Grid";
    declareTexts(
        command, choices, group,
        {{"--from", &C::from, "DEPTH", "Top of the output: a depth, or a limit such as \">=1000\""},
         {"--to", &C::to, "DEPTH", "Bottom of the output, in the same way"},
         {"--step", &C::step, "STEP", "Sample rate"},
         {"--unit", &C::unit, "F|M|FT", "Depth unit of the output; --from, --to and --offset count in the input's"},
         {"--offset", &C::offset, "N", "Added to every depth written"},
         {"--direction", &C::direction, "shallow|deep", "Begin of the output: shallow or deep end"},
         {"--fill", &C::fill, "none|linear|flat", "How gaps of null are filled"},
         {"--tvd", &C::tvd, "SURVEY", "Write true vertical depths by this survey"}});
    group = "Channels";
    command.add_flag("--splice", choices.splice, "Join channels of the inputs that belong together")->group(group);
    declareTexts(command, choices, group,
                 {{"--select", &C::select, "A,B,C", "Keep these output channels, in this order"},
                  {"--filter", &C::filter, "FILE", "Shape the output by a filter file"}});
    declareLists(command, choices, group);
    group = "Layout";
    declareTexts(command, choices, group,
                 {{"--wrap", &C::wrap, "yes|no", "Wrapped data lines"},
                  {"--vers", &C::vers, "1.2|2.0", "LAS version"},
                  {"--null", &C::null, "N", "Null value"},
                  {"--format", &C::format, "DOT,VALUE,COLON,PLUS,WIDTH,DECIMALS",
                   "Columns of header lines and data; empty places keep theirs"},
                  {"--header", &C::header, "FILE", "Input whose header is taken (a path or 1 to 4)"},
                  {"--sections", &C::sections, "V,W,C,P,O", "Sections and their order"},
                  {"--merge-parameters", &C::mergeParameters, "yes|no", "Join the ~Parameter sections of the inputs"},
                  {"--rename-duplicates", &C::renameDuplicates, "yes|no", "Number channels of one name"},
                  {"--ascii", &C::ascii, "KIND", "Plain table: No Header, MNEM, MNEM.UNIT or One line each"},
                  {"--separator", &C::separator, "space|tab|comma", "Between the fields of --ascii"}});
    command.add_flag("--fill-empty", choices.fillEmpty, "Fill empty VALUE and DESC fields from the library")
        ->group(group);
    command.add_flag("--keep-details", choices.keepDetails, "Tell in the header what the inputs were")->group(group);
    command.add_flag("--smooth", choices.smooth, "Smooth the channels")->group(group);
    group = "Reading";
    declareTexts(command, choices, group,
                 {{"--column-width", &C::columnWidth, "N", "Data columns of fixed width, in place of blanks"}});
    command.add_flag("--loose", choices.loose, "Read data of no regular shape line by line")->group(group);
}

void prepareSession(Workbench& bench, Session& session, const std::vector<Input>& inputs, const PassChoices& choices) {
    App& app = bench.app();
    session = Session();
    openSession(app, session);
    // What was in use when a window was last closed is nothing to a verb.
    session.tables.frd.setCheck(1, static_cast<int>(FrdColumn::Apply), Check::Unchecked);
    session.loose = choices.loose;
    loadInputs(bench, session, inputs);
    needDepthRange(inputs, choices);
    if (choices.splice) spliceGuess(app, session);
    if (!choices.filter.empty()) {
        const Input filter = bench.openInput(choices.filter);
        // Files that it refers to are looked for beside it, so one in LF only is given by its own path: openFilter
        // reads it through a copy by itself.
        const bool isUnix = lineEndKind(choices.filter) == LineEnds::Unix;
        setFilterInUse(session, isUnix ? resolvePath(choices.filter) : filter.path);
        const FilterReport report = openFilter(app, session);
        if (!report.applied) throw Refusal(choices.filter, report.why);
        tellSkipped(bench, report.skipped);
    }
    if (!choices.curves.empty()) {
        const FilterReport report = applyCurveLines(app, session, choices.curves);
        if (!report.applied) throw Refusal("--curve", report.why);
        tellSkipped(bench, report.skipped);
    }
    setProperties(bench, session, inputs, choices);
    applyLinks(session, choices.links);
    applyDepthIntervals(session, choices.applyDepths);
    applyShifts(session, choices.shifts);
    applyClips(session, choices.clips);
    if (!choices.select.empty()) selectColumns(session, choices.select);
    if (!choices.sections.empty()) arrangeSections(session, choices.sections);
}

}  // namespace welvane
