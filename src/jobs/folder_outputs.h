#pragma once

#include <string>
#include <vector>

#include "jobs/refusal.h"

namespace welvane {

/// Where the output of one of many files goes, or why it has no place.
struct OutputPlace {
    std::string path;
    Reason why{};
};
/// Each file under its own name in a folder, which is made when missing. Of two files of one name the first has the
/// place; none is that of another input. Refusal where the folder cannot be made.
std::vector<OutputPlace> placesInFolder(const std::string& folder, const std::vector<std::string>& files);
/// Each file itself; one that is named again, be it by another name, has no place the second time.
std::vector<OutputPlace> ownPlaces(const std::vector<std::string>& files);

}  // namespace welvane
