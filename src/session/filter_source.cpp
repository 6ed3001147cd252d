#include "session/filter_source.h"

#include <algorithm>
#include <optional>

#include "las/sections.h"
#include "platform/mapped_file.h"
#include "shared/line_reader.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// No header is longer; a file of gigabytes given as a filter is not searched to its end.
constexpr std::size_t headerLimit = std::size_t{64} << 20U;
constexpr std::size_t rowLimit = 200'000;

FilterSection readFilterSection(std::string_view bytes, char letter) {
    FilterSection section;
    LineReader file(bytes);
    section.found = seekSection(file, letter) != 0;
    if (!section.found) return section;
    HeaderField fields;
    for (std::string_view line; section.lines.size() < rowLimit && file.next(line);) {
        line = trim(line);
        if (beginsWith(line, "~")) break;
        if (lineKind(line) == LineKind::Data && parseHeaderLine(line, fields)) section.lines.push_back(fields);
    }
    return section;
}

}  // namespace

const HeaderField* FilterSection::find(std::string_view mnem) const {
    const auto line =
        std::find_if(lines.begin(), lines.end(), [&](const HeaderField& one) { return sameText(one.mnem, mnem); });
    return line == lines.end() ? nullptr : &*line;
}

std::string FilterSection::value(std::string_view mnem) const {
    const HeaderField* const line = find(mnem);
    return line == nullptr ? std::string() : std::string(trim(line->value));
}

bool FilterSource::read(std::string_view path, std::string& why) {
    const auto file = MappedFile::open(path, &why);
    if (!file) return false;
    const std::string_view bytes = file->bytes().substr(0, headerLimit);
    version = readFilterSection(bytes, 'V');
    well = readFilterSection(bytes, 'W');
    curve = readFilterSection(bytes, 'C');
    parameter = readFilterSection(bytes, 'P');
    return true;
}

}  // namespace welvane
