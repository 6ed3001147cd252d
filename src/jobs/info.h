#pragma once

#include <string>
#include <vector>

#include "jobs/workbench.h"
#include "las/input_slot.h"
#include "las/tops.h"

/// What stands in a LAS file.
namespace welvane {

/// Facts of a file as a slot holds them, its channels (element 0 the index), the titles of its sections in order.
struct FileFacts {
    InputSlot slot;
    SlotChannels channels;
    std::vector<std::string> sections;
};
/// Refusal for what no slot could load; with `loose`, data of no regular shape is accepted.
FileFacts readFacts(Workbench& bench, const std::string& file, bool loose);

/// The [TOPS] block of a file; empty when it has none in front of ~A. Refusal for a file that cannot be read.
std::vector<Top> listTops(Workbench& bench, const std::string& file);

}  // namespace welvane
