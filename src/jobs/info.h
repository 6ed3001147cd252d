#pragma once

#include <string>
#include <vector>

#include "jobs/true_input.h"
#include "las/input_slot.h"
#include "las/tops.h"

/// What stands in a LAS file.
namespace welvane {

/// Facts of a file under the names that a slot has for them, as they are by true figures: depths of the first and the
/// last record, the unit and the name of its own index.
struct FileFacts {
    InputSlot slot;
    DepthHeader header;
    std::vector<HeaderField> channels;  ///< element 0 the index; those that the data lack too
    std::vector<std::string> sections;  ///< titles in their order
    std::size_t records = 0;
    IndexSpacing spacing;
};
/// Reads the whole file. Units of the index that contradict each other are a note. Refusal for what cannot be read.
FileFacts readFacts(Workbench& bench, const std::string& file, const ReadingChoices& choices);

/// The [TOPS] block of a file; empty when it has none in front of ~A. Refusal for a file that cannot be read.
std::vector<Top> listTops(Workbench& bench, const std::string& file);

}  // namespace welvane
