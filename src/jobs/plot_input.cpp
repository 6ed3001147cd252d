#include "jobs/plot_input.h"

#include <algorithm>
#include <numeric>

#include "jobs/true_input.h"
#include "las/run_turn.h"
#include "picture/axis.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// Records one behind the other become columns.
void addBlock(const RecordBlock& block, std::vector<std::vector<double>>& columns) {
    columns.resize(std::max(columns.size(), block.columns));
    for (std::size_t column = 0; column < block.columns; ++column) {
        std::vector<double>& target = columns[column];
        const std::size_t before = target.size();
        target.resize(before + block.records);
        for (std::size_t record = 0; record < block.records; ++record)
            target[before + record] = block.values[record * block.columns + column];
    }
}

void readColumns(Workbench& bench, ChannelReader& reader, const std::string& shownName, PlotInput& input,
                 std::size_t bytes) {
    RunTurn turn(bench.app().run, bench.user(), bytes);
    RecordBlock block;
    while (reader.next(block)) {
        addBlock(block, input.columns);
        if (!turn.goesOn(reader.place())) throw Refusal("", "stopped");
    }
    if (input.columns.empty() || input.columns.front().empty()) throw Refusal(shownName, "no data behind ~A");
}

/// By increasing index: a file from the bottom up is turned round, one out of order is sorted, which is told.
void putInOrder(Workbench& bench, const std::string& shownName, std::vector<std::vector<double>>& columns) {
    const std::vector<double>& index = columns.front();
    if (std::is_sorted(index.begin(), index.end())) return;
    if (std::is_sorted(index.rbegin(), index.rend())) {
        for (std::vector<double>& column : columns) std::reverse(column.begin(), column.end());
        return;
    }
    std::vector<std::size_t> order(index.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return index[a] < index[b]; });
    for (std::vector<double>& column : columns) {
        std::vector<double> sorted;
        sorted.reserve(order.size());
        for (const std::size_t place : order) sorted.push_back(column[place]);
        column = std::move(sorted);
    }
    bench.note(NoteKind::StepVaries, shownName, "the index goes to and fro; drawn in its order");
}

std::string wellText(const LasText& header, std::string_view mnem) {
    return std::string(trim(getLasValue(header, mnem, 'W').text));
}

/// The well's name, and a line of what else tells it from others.
std::vector<std::string> titleOf(const LasText& header) {
    std::vector<std::string> title;
    if (const std::string well = wellText(header, "WELL"); !well.empty()) title.push_back(well);
    std::vector<std::string> rest;
    for (const char* mnem : {"COMP", "FLD", "LOC", "UWI", "API", "DATE"})
        if (const std::string text = wellText(header, mnem); !text.empty()) rest.push_back(text);
    if (!title.empty() && !rest.empty()) title.push_back(join(rest, "  |  "));
    return title;
}

void lookInto(PlotInput& input, const ColumnNames& names) {
    PlotSource& source = input.source;
    source.depths = input.columns.front();
    source.channels.clear();
    for (std::size_t column = 1; column < input.columns.size(); ++column)
        source.channels.push_back({names.channels[column].mnem, names.channels[column].unit, input.columns[column]});
}

std::string extentOf(const PlotInput& input) {
    const PlotSource& source = input.source;
    return shortNumber(source.depths.front()) + " to " + shortNumber(source.depths.back()) +
           (source.indexUnit.empty() ? "" : " " + source.indexUnit) + ", " + counted(source.depths.size(), "sample");
}

/// What the header tells of the columns.
void describe(PlotInput& input, const LasText& header, const ColumnNames& names, const std::string& shownName) {
    const IndexUnitFound found = findIndexUnit(header);
    if (!found.contradiction.empty()) throw Refusal(shownName, found.contradiction);
    input.unit = found.unit;
    input.source = {.name = fileNameOf(shownName),
                    .extent = {},
                    .title = titleOf(header),
                    .indexName = names.channels.empty() ? "" : names.channels.front().mnem,
                    .indexUnit = found.unit.text,
                    .depths = {},
                    .channels = {}};
    lookInto(input, names);
    input.source.extent = extentOf(input);
}

PlotInput readOpened(Workbench& bench, const LasFile& file, const std::string& shownName, const ChannelReading& how) {
    PlotInput input;
    ChannelReader reader(file, how);
    readColumns(bench, reader, shownName, input, file.bytes().size());
    for (const Note& note : reader.notes(shownName)) bench.note(note);
    file.needWhole();
    putInOrder(bench, shownName, input.columns);
    describe(input, file.text(), reader.names(), shownName);
    return input;
}

}  // namespace

PlotInput readPlotInput(Workbench& bench, const std::string& file, const std::string& shownName,
                        const ChannelReading& how) {
    const LasFilePointer opened = openTrue(file);
    return readingOf(shownName, [&] { return readOpened(bench, *opened, shownName, how); });
}

PlotInput plotInputOf(const LasText& header, std::vector<std::vector<double>> columns, const std::string& shownName) {
    PlotInput input;
    input.columns = std::move(columns);
    if (input.columns.empty() || input.columns.front().empty()) throw Refusal(shownName, "no data behind ~A");
    describe(input, header, nameColumns(header, input.columns.size()), shownName);
    return input;
}

std::optional<double> indexFactor(const IndexUnit& unit, const IndexUnit& wanted) {
    if (unit.kind == IndexUnitKind::Unknown || wanted.kind == IndexUnitKind::Unknown) return 1;
    if (unit.isLength() != wanted.isLength()) return std::nullopt;
    return unit.isLength() && !sameIndexUnit(unit, wanted) ? unit.metres / wanted.metres : 1;
}

void convertIndex(PlotInput& input, const IndexUnit& wanted) {
    const std::optional<double> factor = indexFactor(input.unit, wanted);
    if (!factor)
        throw Refusal(input.source.name,
                      "its index is in \"" + input.unit.text + "\", that of the first file in \"" + wanted.text + "\"");
    if (*factor == 1) return;
    for (double& depth : input.columns.front()) depth *= *factor;
    input.source.indexUnit = wanted.text;
    input.source.extent = extentOf(input);
}

}  // namespace welvane
