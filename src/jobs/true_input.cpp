#include "jobs/true_input.h"

#include "jobs/las_check.h"
#include "las/run_turn.h"
#include "shared/failure.h"
#include "shared/files.h"

namespace welvane {

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
        return {.file = file, .reason = {refused.what(), remedyFor(refused.help)}};
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
        for (RecordBlock block; reader.next(block);) {
            if (!turn.goesOn(reader.place())) throw Refusal(name, "stopped");
            if (read.records == 0) read.first = *block.record(0);
            read.last = *block.record(block.records - 1);
            read.records += block.records;
        }
        if (read.records == 0) throw Refusal(name, "no record behind its ~A line");
        file.needWhole();
        read.notes = reader.notes(name);
        return read;
    });
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
