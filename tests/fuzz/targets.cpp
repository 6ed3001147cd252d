#include "fuzz/targets.h"

#include <algorithm>

#include "engine/driver.h"
#include "las/channel_statistics.h"
#include "las/classify.h"
#include "las/data_access.h"
#include "las/header_line.h"
#include "las/rebuild.h"
#include "las/repair.h"
#include "las/sections.h"
#include "las/statistics.h"
#include "las/tops.h"
#include "las/wrap.h"
#include "reference/reference_tables.h"
#include "session/filters.h"
#include "session/loading.h"
#include "session/session_setup.h"
#include "shared/line_reader.h"
#include "support/memory_platform.h"
#include "support/temp_folder.h"

namespace welvane::fuzz {

namespace {

/// Made once: a run takes microseconds, a folder more than that.
struct Place {
    test::TempFolder folder;
    test::MemoryPlatform platform;
    SilentInterface silent;

    Place() { platform.memory = std::uint64_t{8} << 20; }
    std::string input(std::string_view bytes) const { return folder.write("in.las", bytes); }
    std::string output() const { return folder.path("out.las"); }
};

Place& place() {
    static Place only;
    return only;
}

/// A sound well for the roads on which another file is the foreign one.
constexpr std::string_view soundWell =
    "~Version\r\nVERS. 2.0 : LAS\r\nWRAP. NO : One line\r\n~Well\r\nSTRT.M 100 : Start\r\nSTOP.M 104 : Stop\r\n"
    "STEP.M 1 : Step\r\nNULL. -999.25 : Null\r\nWELL. Heron 4 : Well\r\n~Curve\r\nDEPT.M : Depth\r\nGR.GAPI : Gamma\r\n"
    "RHOB.G/C3 : Density\r\n~Parameter\r\nBHT.DEGC 50 : Temperature\r\n~Ascii\r\n100 1 2\r\n101 3 -999.25\r\n102 5 "
    "6\r\n"
    "103 7 8\r\n104 9 10\r\n";

void runHeader(std::string_view bytes) {
    LineReader lines(bytes);
    for (std::string_view line; lines.next(line);) {
        HeaderField field;
        lineKind(line);
        countWords(line);
        if (parseHeaderLine(line, field)) formatHeaderLine(field, 6, 60, 15);
        isNotTitleLine(line, {"DEPT", "GR"});
    }
    const std::string path = place().input(bytes);
    const LasFile file(path);
    for (const char letter : {'V', 'W', 'C', 'P', 'O', 'A'}) {
        file.section(letter);
        file.section(letter, {.unitApart = true});
        file.section(letter, lettersAsTheyStand);
        file.sectionText(letter);
        file.value("NULL", letter);
    }
    file.value("STRT");
    file.depthHeader();
    readSlotChannels(file);
    readTops(file);
    judgeFile(path);
    isPlexmoreAscii(path);
    fixCurveTitle(path, place().output());
}

void runLayout(std::string_view bytes) {
    const std::string path = place().input(bytes);
    const LasFile file(path);
    DataShape shape = file.shape();
    for (const DataLayout layout : {DataLayout::OneLine, DataLayout::Wrapped}) {
        shape.layout = layout;
        locateDataEnds(file.text(), shape);
    }
    locateDataEnds(file.text(), {.layout = DataLayout::OneLine, .bytesPerStep = 30, .wordsPerStep = 3});
    InputSlot slot;
    fillInputSlot(file, slot);
    RunState run;
    std::string wrap;
    convertWrap(file, place().output(), wrap, run, place().silent);
}

void runPass(std::string_view bytes) {
    App app(place().silent, place().platform);
    app.run.commandMode = true;
    Session session;
    openSession(app, session);
    // Data of no regular shape is read too, line by line.
    session.loose = bytes.size() % 2 == 1;
    session.slots[0].path = place().input(bytes);
    Open4Files(app, session, 0);
    app.run.targetFile = place().output();
    processMMM(app, session, {});
}

void runRebuild(std::string_view bytes) {
    const std::string path = place().input(bytes);
    RunState run;
    RebuildSettings settings;
    for (const RebuildKind kind : {RebuildKind::Plexmore2, RebuildKind::Other})
        rewriteLas(path, place().output(), kind, settings, run, place().silent);
    repairLineEnds(path, place().output(), run, place().silent);
}

void runFilter(std::string_view bytes) {
    App app(place().silent, place().platform);
    app.run.commandMode = true;
    Session session;
    openSession(app, session);
    session.slots[0].path = place().input(soundWell);
    Open4Files(app, session, 0);
    setFilterInUse(session, place().folder.write("filter.fil", bytes));
    openFilter(app, session, FigureRules::asLaidDown);
    app.run.targetFile = place().output();
    RunRequest request;
    request.filterApplied = true;
    processMMM(app, session, request);
}

void runReference(std::string_view bytes) {
    const std::string path = place().folder.write("reference.ini", bytes);
    ReferenceTables tables;
    readUnits(tables, path);
    readCurves(tables, path);
    readParameters(tables, path);
    for (const Curve& curve : tables.curves) {
        apiCodeForMnem(tables, curve.mnem);
        if (&curve - tables.curves.data() > 20) break;
        descriptionForMnem(tables, curve.mnem);
        groupMembers(tables, curve.mnem);
        unitForMnem(tables, curve.mnem, true);
    }
    if (!tables.units.empty()) unitGroupMembers(tables, tables.units.front().externalUnit);
    writeUnits(tables, place().folder.path("units.ini"));
    writeCurves(tables, place().folder.path("curves.ini"));
}

void runStatistics(std::string_view bytes) {
    const LasFile file(place().input(bytes));
    RunState run;
    for (const std::string_view formation : {"", "Top"}) {
        LasStatistics statistics;
        readLasStatistics(file, formation, statistics, run, place().silent);
        const LasFile whole(file.path(), FigureRules::trueFigures);
        RunTurn turn(run, place().silent, whole.bytes().size());
        try {
            readTrueStatistics(whole, {.how = {.loose = true}, .formation = std::string(formation)}, "x.las", turn);
        } catch (const RunTimeFailure&) {  // refused
        }
    }
}

}  // namespace

const std::vector<Target>& targets() {
    static const std::vector<Target> all = {
        {"header", runHeader},        {"layout", runLayout}, {"pass", runPass},
        {"rebuild", runRebuild},      {"filter", runFilter}, {"reference", runReference},
        {"statistics", runStatistics}};
    return all;
}

const Target* findTarget(std::string_view name) {
    const auto found =
        std::find_if(targets().begin(), targets().end(), [name](const Target& target) { return target.name == name; });
    return found == targets().end() ? nullptr : &*found;
}

}  // namespace welvane::fuzz
