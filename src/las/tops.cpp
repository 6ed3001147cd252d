#include "las/tops.h"

#include "las/limits.h"
#include "platform/mapped_file.h"
#include "shared/field_splitter.h"
#include "shared/line_reader.h"
#include "shared/text.h"

namespace welvane {

std::vector<Top> readTops(std::string_view path) {
    std::vector<Top> tops;
    const auto mapped = MappedFile::open(path);
    if (!mapped) return tops;
    LineReader file(mapped->bytes().substr(0, headerLimit));
    std::string_view line;
    do {
        if (!file.next(line)) return tops;
        line = trimLeft(line);
        if (beginsWith(line, "~A")) return tops;
    } while (!beginsWith(line, "[TOPS]"));
    FieldSplitter splitter("|");
    while (tops.size() < rowLimit && file.next(line)) {
        line = trimLeft(line);
        if (beginsWith(line, "[") || beginsWith(line, "~")) break;
        if (line.find('|') == npos) continue;
        splitter.setText(line);
        tops.push_back({std::string(trimBreaks(splitter.field(1))), std::string(trimBreaks(splitter.field(2)))});
    }
    return tops;
}

}  // namespace welvane
