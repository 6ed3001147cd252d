#include "jobs/folder_outputs.h"

#include <filesystem>
#include <system_error>
#include <unordered_map>
#include <unordered_set>

#include "shared/files.h"

namespace welvane {

std::vector<OutputPlace> placesInFolder(const std::string& folder, const std::vector<std::string>& files) {
    std::error_code error;
    if (!folderExists(folder)) std::filesystem::create_directories(resolvePath(folder), error);
    if (error) throw Refusal(folder, error.message());
    std::unordered_set<std::string> inputs;
    for (const std::string& file : files) inputs.insert(onlyPath(file));
    std::unordered_map<std::string, const std::string*> taken;
    std::vector<OutputPlace> places;
    for (const std::string& file : files) {
        OutputPlace place{withBackslash(folder) + fileNameOf(file)};
        const auto [other, isNew] = taken.emplace(place.path, &file);
        if (inputs.contains(onlyPath(place.path)))
            place.why = {"its output " + place.path + " is one of the inputs"};
        else if (!isNew)
            place.why = {"its output " + place.path + " is already that of " + *other->second};
        places.push_back(std::move(place));
    }
    return places;
}

std::vector<OutputPlace> ownPlaces(const std::vector<std::string>& files) {
    std::unordered_map<std::string, const std::string*> known;
    std::vector<OutputPlace> places;
    for (const std::string& file : files) {
        const auto [other, isNew] = known.emplace(onlyPath(file), &file);
        places.push_back({file});
        if (!isNew) places.back().why = {"is named already, as " + *other->second};
    }
    return places;
}

}  // namespace welvane
