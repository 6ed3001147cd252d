#include "jobs/true_input.h"

#include "jobs/las_check.h"
#include "las/input_data.h"
#include "las/run_turn.h"
#include "shared/failure.h"
#include "shared/files.h"
#include "shared/numbers.h"

namespace welvane {

namespace {

Note noteNoStep(const std::vector<double>& depths, const std::vector<std::size_t>& lines, std::size_t misfit,
                const std::string& name) {
    const std::string where =
        misfit == 0 ? "" : ": " + plainNumber(depths[misfit]) + " stands behind " + plainNumber(depths[misfit - 1]);
    return {.kind = NoteKind::StepVaries,
            .file = name,
            .line = lines[misfit],
            .text = "its depths follow no one step" + where + "; a run has to be told one"};
}

}  // namespace

LasFilePointer openTrue(const std::string& file) {
    return readingOf(file, [&] {
        LasFilePointer opened = openLasFile(resolvePath(file), FigureRules::trueFigures);
        if (const std::string why = whyNoText(opened->bytes()); !why.empty()) throw Refusal(file, why);
        return opened;
    });
}

Fault faultOf(const std::string& file) {
    try {
        throw;
    } catch (const Refusal& refused) {
        return refused.fault;
    } catch (const DataRefusal& refused) {
        return {.file = file, .reason = {refused.what(), remedyFor(refused.help)}, .line = refused.line};
    } catch (const FileFailure& failure) {
        const bool own = failure.what() == resolvePath(file) + ": " + failure.reason();
        return {.file = file, .reason = {own ? failure.reason() : failure.what()}};
    } catch (const std::bad_alloc&) {
        return {.file = file, .reason = {"out of memory"}};
    } catch (const std::exception& failed) {
        return {.file = file, .reason = {failed.what()}};
    }
}

WholeReading readThrough(Workbench& bench, const LasFile& file, const std::string& name, const ChannelReading& how) {
    RunState& run = bench.app().run;
    run.statusText = "Reading " + fileNameOf(name);
    const std::size_t bytes = file.bytes().size();
    const WorkInHand work(bench.user(), {.bytes = bytes});
    RunTurn turn(run, bench.user(), bytes);
    return readingOf(name, [&] {
        ChannelReader reader(file, how);
        WholeReading read{.names = reader.names(), .shape = reader.shape()};
        file.willReadAll();
        std::vector<double> depths;
        std::vector<std::size_t> lines;
        for (RecordBlock block; reader.next(block);) {
            if (!turn.goesOn(reader.place())) throw Refusal(name, "stopped");
            for (std::size_t record = 0; record < block.records; ++record) depths.push_back(*block.record(record));
            lines.insert(lines.end(), block.lines.begin(), block.lines.end());
        }
        if (depths.empty()) throw Refusal(name, "no record behind its ~A line");
        file.needWhole();
        read.records = depths.size();
        read.notes = reader.notes(name);
        const DepthHeader header = file.depthHeader();
        read.spacing = judgeSpacing(depths, reader.facts().channels.front().decimals, header.step().value);
        for (Note& note : depthNotes(header, read.spacing, name)) read.notes.push_back(std::move(note));
        if (read.spacing.kind == IndexSpacing::Kind::Irregular)
            read.notes.push_back(noteNoStep(depths, lines, read.spacing.misfit, name));
        return read;
    });
}

IndexUnit unitAsTold(const LasFile& file, const std::string& name, const std::string& given, std::vector<Note>& notes) {
    const IndexUnitFound found =
        given.empty() ? findIndexUnit(file.text()) : IndexUnitFound{readIndexUnit(given), std::string()};
    if (!found.contradiction.empty())
        notes.push_back({.kind = NoteKind::Unit,
                         .file = name,
                         .text = "units of the index contradict each other: " + found.contradiction});
    for (Note& note : indexNotes(found.unit, name)) notes.push_back(std::move(note));
    return found.unit;
}

Reason whyNotStrict(const std::vector<Note>& notes) {
    if (notes.empty()) return {};
    const std::string more = notes.size() == 1 ? "" : ", and " + std::to_string(notes.size() - 1) + " more to tell";
    return {textOf(notes.front()) + more + " (--strict)"};
}

void tellNotes(Workbench& bench, const std::string& file, const std::vector<Note>& notes) {
    if (bench.rules().strict)
        if (Reason why = whyNotStrict(notes); !why.none()) throw Refusal(file, std::move(why));
    for (const Note& note : notes) bench.note(note);
}

}  // namespace welvane
