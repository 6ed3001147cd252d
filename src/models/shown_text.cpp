#include "models/shown_text.h"

#include <algorithm>

#include "models/file_list.h"
#include "platform/mapped_file.h"
#include "shared/files.h"

namespace welvane {

ShownText readShownText(std::string_view path) {
    const auto file = MappedFile::open(path);
    if (!file) return {.why = std::string(path) + " cannot be read"};
    const std::string_view bytes = file->bytes();
    return {std::string(bytes.substr(0, ShownText::most)), bytes.size() > ShownText::most, {}};
}

std::string documentPath(const Platform& platform, std::string_view name) {
    for (const std::string& folder :
         {platform.programFolder() + "../", executableFolder() + "../../", executableFolder() + "../share/doc/welvane/",
          platform.programFolder() + "../doc/welvane/"})
        if (fileExists(folder + std::string(name))) return folder + std::string(name);
    return {};
}

std::vector<std::string> exampleWells(const Platform& platform) {
    const std::string list = documentPath(platform, "examples/kestrel-7-run1.las");
    if (list.empty()) return {};
    std::vector<std::string> paths;
    for (const std::string& name : listFolder(dirOf(list), "*.las").files) paths.push_back(dirOf(list) + name);
    return paths;
}

}  // namespace welvane
