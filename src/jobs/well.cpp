#include "jobs/well.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "las/data_access.h"
#include "las/index_spacing.h"
#include "las/input_data.h"
#include "las/run_turn.h"
#include "las/source_header.h"
#include "shared/distinct_names.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"
#include "shared/utf8.h"

namespace welvane {

namespace {

HeaderField inUtf8(const HeaderField& field) {
    return {utf8Text(trim(field.mnem)), utf8Text(trim(field.unit)), utf8Text(trim(field.value)),
            utf8Text(trim(field.desc))};
}

/// ~Well of LAS 1.2 tells names first and values behind the colon, but for the lines that hold numbers.
bool isTurned(const HeaderField& field) {
    return !sameText(field.mnem, "STRT") && !sameText(field.mnem, "STOP") && !sameText(field.mnem, "STEP") &&
           !sameText(field.mnem, "NULL");
}

WellSection sectionOf(const SourceSection& source, bool turned) {
    WellSection section{.title = utf8Text(source.title.text), .letter = source.letter};
    const bool hasFields = source.letter == 'V' || source.letter == 'W' || source.letter == 'P';
    for (const SourceLine& line : source.lines) {
        if (line.text.starts_with('#')) continue;
        const auto kept = hasFields ? keptField(line.text, turned) : std::nullopt;
        if (!kept) {
            section.text.push_back(utf8Text(line.text));
            continue;
        }
        HeaderField field = inUtf8(kept->field);
        if (turned && isTurned(field)) std::swap(field.value, field.desc);
        section.lines.push_back(std::move(field));
    }
    return section;
}

void takeHeader(const LasFile& file, WellData& well) {
    well.version = std::string(trim(lasVersionOf(file)));
    const bool early = !well.version.empty() && val(well.version) < 2;
    for (const SourceSection& section : readSourceHeader(file.bytes()).sections)
        if (section.letter != 'C' && section.letter != 'A')
            well.sections.push_back(sectionOf(section, early && section.letter == 'W'));
}

void takeChannels(ChannelData& data, WellData& well) {
    std::vector<std::string> names;
    for (const HeaderField& field : data.names.channels) names.push_back(utf8Text(trim(field.mnem)));
    makeDistinct(names, FigureRules::trueFigures);
    const std::size_t records = data.facts.records;
    for (std::size_t column = 0; column < names.size(); ++column) {
        WellChannel channel{.field = inUtf8(data.names.channels[column])};
        channel.field.mnem = names[column];
        if (column < data.columns.size()) channel.values = std::move(data.columns[column]);
        channel.values.resize(records, std::numeric_limits<double>::quiet_NaN());
        well.channels.push_back(std::move(channel));
    }
}

ChannelData readData(Workbench& bench, const LasFile& file, const std::string& name, const ChannelReading& how) {
    RunState& run = bench.app().run;
    run.statusText = "Reading " + fileNameOf(name);
    const std::size_t bytes = file.bytes().size();
    const WorkInHand work(bench.user(), {.bytes = bytes});
    RunTurn turn(run, bench.user(), bytes);
    std::optional<ChannelData> data = readChannels(file, how, turn);
    if (!data) throw Refusal(name, "stopped");
    if (data->facts.records == 0) throw Refusal(name, "no record behind its ~A line");
    return std::move(*data);
}

}  // namespace

WellData readWell(Workbench& bench, const std::string& file, const ReadingChoices& choices) {
    const LasFilePointer opened = openTrue(file);
    WellData well;
    std::vector<Note> notes;
    readingOf(file, [&] {
        ChannelData data = readData(bench, *opened, file, choices.reading(bench.app().run));
        well.nullValue = data.null.value;
        well.wrapped = judgeRecords(opened->text(), choices.decimalComma).wrapped;
        notes = std::move(data.notes);
        for (Note& note : notes) note.file = file;
        const DepthHeader header = opened->depthHeader();
        const IndexSpacing spacing =
            judgeSpacing(data.columns.front(), data.facts.channels.front().decimals, header.step().value);
        for (Note& note : depthNotes(header, spacing, file)) notes.push_back(std::move(note));
        well.indexUnit = shownUnit(unitAsTold(*opened, file, choices.indexUnit, notes));
        takeHeader(*opened, well);
        takeChannels(data, well);
    });
    tellNotes(bench, file, notes);
    well.notes = bench.takeNotes();
    return well;
}

}  // namespace welvane
