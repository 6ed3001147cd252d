#include "jobs/repair_lines.h"

#include <algorithm>
#include <functional>

#include "las/header_line.h"
#include "las/limits.h"
#include "las/repair.h"
#include "platform/mapped_file.h"
#include "shared/line_reader.h"
#include "shared/text.h"

namespace welvane {

namespace {

NumberedLine numbered(std::size_t number, std::string_view line) {
    constexpr std::size_t longest = 120;
    const std::string_view text = trimBreaks(line);
    return {number, std::string(text.substr(0, longest)) + (text.size() > longest ? "..." : "")};
}

/// Lines in front of ~A, each with its number from 1.
void eachHeaderLine(std::string_view bytes, const std::function<void(std::size_t, std::string_view)>& take) {
    LineReader lines(bytes.substr(0, headerLimit));
    std::size_t number = 0;
    for (std::string_view line; lines.next(line) && !holdsText(line, "~A");) take(++number, line);
}

}  // namespace

std::vector<NumberedLine> linesBeforeCurveTitle(const std::string& path) {
    std::vector<NumberedLine> found;
    const MappedFile file = mapFile(path);
    eachHeaderLine(file.bytes(), [&](std::size_t number, std::string_view line) {
        const std::string faulty = std::string(line) + "\r\n";
        if (curveTitleFaultIn(faulty)) found.push_back(numbered(number, line.substr(0, findText(line, "~C"))));
    });
    return found;
}

}  // namespace welvane
