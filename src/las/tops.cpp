#include "las/tops.h"

#include "las/limits.h"
#include "shared/field_splitter.h"
#include "shared/line_reader.h"
#include "shared/text.h"

namespace welvane {

std::vector<Top> readTops(const LasFile& file) {
    std::vector<Top> tops;
    LineReader header = file.text().headerLines();
    std::string_view line;
    do {
        if (!header.next(line)) return tops;
        line = trimLeft(line);
        if (beginsWith(line, "~A")) return tops;
    } while (!beginsWith(line, "[TOPS]"));
    FieldSplitter splitter("|");
    while (tops.size() < rowLimit && header.next(line)) {
        line = trimLeft(line);
        if (beginsWith(line, "[") || beginsWith(line, "~")) break;
        if (line.find('|') == npos) continue;
        splitter.setText(line);
        tops.push_back({std::string(trimBreaks(splitter.field(1))), std::string(trimBreaks(splitter.field(2)))});
    }
    return tops;
}

}  // namespace welvane
