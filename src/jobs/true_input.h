#pragma once

#include <string>
#include <vector>

#include "jobs/workbench.h"
#include "las/index_spacing.h"
#include "las/index_unit.h"
#include "las/read_channels.h"

/// LAS files as the verbs that read figures open them: by FigureRules::trueFigures, with what is told of them.
namespace welvane {

/// How a person wants figures to be read.
struct ReadingChoices {
    bool loose = false;         ///< place what can be placed of records of another length
    bool decimalComma = false;  ///< a comma inside a number is its point
    std::string indexUnit{};    ///< the unit of the index, whatever the header says; "" for the header's

    ChannelReading reading(const RunState& run) const {
        return {.loose = loose, .decimalComma = decimalComma, .workers = run.workers};
    }
};

/// The file opened; Refusal for one that is not there or holds no text.
LasFilePointer openTrue(const std::string& file);

/// Why a file could not be read: the failure under way, told of that file. To be called where it was caught.
Fault faultOf(const std::string& file);
/// Does something with a file; whatever stands against that becomes a Refusal which names it.
template <class Body>
auto readingOf(const std::string& file, Body&& body) {
    try {
        return body();
    } catch (...) {
        throw Refusal(faultOf(file));
    }
}

/// What a file holds, known once all of it was read.
struct WholeReading {
    ColumnNames names{};
    RecordShape shape{};
    std::size_t records = 0;
    IndexSpacing spacing{};  ///< in the file's unit
    std::vector<Note> notes{};
};
/// Reads every record. Refusal for what cannot be read and when a person stopped it.
WholeReading readThrough(Workbench& bench, const LasFile& file, const std::string& name, const ChannelReading& how);

/// The unit of the file's index, `given` where a person said one, and what is to be told of it: a contradiction is a
/// note here, since nothing is computed with the unit.
IndexUnit unitAsTold(const LasFile& file, const std::string& name, const std::string& given, std::vector<Note>& notes);

/// Why a file with such notes is refused under FileRules::strict; no reason without notes.
Reason whyNotStrict(const std::vector<Note>& notes);
/// Keeps the notes for the report and tells them; Refusal instead where FileRules::strict has it.
void tellNotes(Workbench& bench, const std::string& file, const std::vector<Note>& notes);

}  // namespace welvane
