#include "session/filter_source.h"

#include <algorithm>
#include <utility>

#include "shared/text.h"

namespace welvane {

namespace {

FilterSection readFilterSection(const LasFile& file, char letter) {
    constexpr SectionReading how = {.letters = SectionReading::Letters::AsTheyStand,
                                    .end = SectionReading::End::TildeInFront};
    auto lines = file.section(letter, how);
    return {lines.has_value(), std::move(lines).value_or(SectionTable())};
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

FilterSource::FilterSource(const LasFile& file)
    : version(readFilterSection(file, 'V')),
      well(readFilterSection(file, 'W')),
      curve(readFilterSection(file, 'C')),
      parameter(readFilterSection(file, 'P')) {}

}  // namespace welvane
