#include "jobs/info.h"

#include "las/data_access.h"

namespace welvane {

namespace {

/// What the header alone tells, and what a slot knows of the shape of the data.
FileFacts factsOf(const LasFile& file) {
    FileFacts facts;
    facts.header = file.depthHeader();
    fillInputSlot(file, facts.slot);
    facts.slot.lasVersion = lasVersionOf(file);
    // Places are counted in the file, a slot's in its text.
    const std::int64_t mark = file.encoding() == TextEncoding::MarkedUtf8 ? 3 : 0;
    facts.slot.dataStart += mark;
    facts.slot.lastLine += mark;
    const auto& titles = file.text().titles();
    facts.sections.assign(titles.begin(), titles.end());
    return facts;
}

}  // namespace

FileFacts readFacts(Workbench& bench, const std::string& file, const ReadingChoices& choices) {
    const LasFilePointer opened = openTrue(file);
    WholeReading read = readThrough(bench, *opened, file, choices.reading(bench.app().run));
    FileFacts facts = readingOf(file, [&] { return factsOf(*opened); });
    InputSlot& slot = facts.slot;
    slot.path = file;
    slot.wrap = read.shape.wrapped ? "YES" : "NO";
    slot.wordsPerStep = static_cast<std::int32_t>(read.shape.columns);
    slot.firstDepth = read.spacing.first;
    slot.lastDepth = read.spacing.last;
    facts.spacing = read.spacing;
    facts.records = read.records;
    facts.channels = std::move(read.names.channels);
    slot.indexName = facts.channels.front().mnem;
    slot.depthUnit = shownUnit(unitAsTold(*opened, file, choices.indexUnit, read.notes));
    readingOf(file, [&] { opened->needWhole(); });
    tellNotes(bench, file, read.notes);
    return facts;
}

std::vector<Top> listTops(Workbench&, const std::string& file) {
    const LasFilePointer opened = openTrue(file);
    return readingOf(file, [&] {
        std::vector<Top> tops = readTops(*opened);
        opened->needWhole();
        return tops;
    });
}

}  // namespace welvane
