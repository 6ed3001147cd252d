#pragma once

#include <functional>
#include <string>

#include "convert/record_text.h"
#include "jobs/true_input.h"

/// The channels of a LAS file as they stand, for other programs: no grid, nothing computed.
namespace welvane {

struct ReadRequest {
    std::string file{};
    std::string output{};  ///< "" hands the text to `print`
    RecordForm form = RecordForm::Csv;
    bool units = false;  ///< RecordForm::Csv has a second row, with the units
    ReadingChoices choices{};
};

struct ReadReport : JobReport {
    std::size_t records = 0, channels = 0;  ///< without the index
};
/// Reads the file through first, so that nothing comes out of one that cannot be read; then makes the text. Names are
/// distinct (a second GR is GR_1), texts are UTF-8, the channels that the data lack are empty. Refusal for data that
/// cannot be read, an output that cannot be written, a file that changed meanwhile.
ReadReport readRecords(Workbench& bench, const ReadRequest& request,
                       const std::function<void(std::string_view)>& print);

/// The same for a file that is known to be whole, telling nothing.
void writeRecords(Workbench& bench, const LasFile& file, const ReadRequest& request,
                  const std::function<void(std::string_view)>& print = {});

}  // namespace welvane
