#pragma once

#include <string>

#include "jobs/workbench.h"

/// Repairs of a LAS file: its line ends, a curve title that shares a line, its whole header.
namespace welvane {

struct RepairRequest {
    std::string file{};
    std::string output{};  ///< "" repairs the file itself; a copy of it is kept beside it
    /// What is to be repaired; with none of them, what is found wrong.
    bool lineEnds = false, curveTitle = false, rebuild = false;

    bool inPlace() const { return output.empty(); }
    bool none() const { return !lineEnds && !curveTitle && !rebuild; }
};

struct RepairReport : JobReport {
    bool written = false;  ///< false for a file that needed no repair in its own place
    std::string target;    ///< the file that was written
    std::string kept;      ///< the copy of the file as it was; "" for none
};
/// Does the steps one after another, each from one file to the next, the last one onto the target; notes tell each of
/// them, and the lines that are not in the output any more. Whatever goes wrong, neither source nor target has changed.
/// Refusal for a file that cannot be repaired so.
RepairReport repairFile(Workbench& bench, const RepairRequest& request);

}  // namespace welvane
