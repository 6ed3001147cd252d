#include "convert/header_template.h"

#include <array>

#include "convert/table_text.h"
#include "platform/mapped_file.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::size_t colonPlace = 56;
constexpr std::size_t valuePlace = 19;
/// Most that is taken over from a header file.
constexpr std::size_t longestHeader = std::size_t{16} << 20;

struct TemplateLine {
    std::string_view start, value, end;
};

std::string laidOut(const TemplateLine& line) {
    std::string text(line.start);
    text.resize(valuePlace, ' ');
    text.append(line.value);
    text.resize(colonPlace, ' ');
    return text.append(line.end);
}

std::string* sectionOf(HeaderTexts& texts, std::string_view title) {
    switch (title.size() > 1 ? upperChar(title[1]) : '\0') {
        case 'V':
            return &texts.version;
        case 'W':
            return &texts.well;
        case 'P':
            return &texts.parameter;
        case 'O':
            return &texts.other;
        default:
            return nullptr;
    }
}

}  // namespace

std::vector<std::string> headerTemplate(std::string_view country, std::string_view depthUnit) {
    const std::string unit(depthUnit);
    std::vector<std::string> lines = {
        "~Version Information",
        " VERS.             2.00                :CWLS LOG ASCII STANDARD - VERSION 2.00",
        " WRAP.             NO                  :One line per depth step",
        "~WELL INFORMATION BLOCK",
        "#MNEM.UNIT          DATA                                DESCRIPTION",
        "#---------   -----------------------------------        ------------  ",
        " STRT ." + unit + "           100.00000                            :START DEPTH",
        " STOP ." + unit + "          1000.00000                            :STOP DEPTH",
        " STEP ." + unit + "             0.5                                :STEP LENGTH",
        " NULL .           -999.25000                            :Null value",
    };
    constexpr std::array<TemplateLine, 4> common = {{{" COMP .", "", ":Company"},
                                                     {" WELL .", "", ":Well"},
                                                     {" FLD  .", "", ":Field"},
                                                     {" LOC  .", "", ":Location"}}};
    constexpr std::array<TemplateLine, 3> canada = {
        {{" PROV .", "", ":Province"}, {" UWI  .", "", ":Unique Well ID"}, {" LIC  .", "", ":License Number"}}};
    constexpr std::array<TemplateLine, 4> elsewhere = {{{" STAT .", "", ":State"},
                                                        {" CNTY .", "", ":County"},
                                                        {" CTRY .", "", ":Country"},
                                                        {" API  .", "", ":API Number"}}};
    constexpr std::array<TemplateLine, 2> last = {
        {{" DATE .", "", ":Run Date"}, {" SRVC .", "Ostrandmeyer Verdaine", ":SERVICE COMPANY"}}};
    const auto append = [&lines](const auto& block) {
        for (const TemplateLine& line : block) lines.push_back(laidOut(line));
    };
    append(common);
    if (sameText(country, "Canada"))
        append(canada);
    else
        append(elsewhere);
    append(last);
    return lines;
}

HeaderTexts headerTextsOf(std::string_view text) {
    HeaderTexts texts;
    std::string* section = nullptr;
    std::size_t taken = 0;
    TableLines lines(text);
    for (std::string_view line; taken < longestHeader && lines.next(line);) {
        const std::string_view title = trimLeft(line);
        if (beginsWith(title, "~A")) break;
        if (beginsWith(title, "~")) {
            section = sectionOf(texts, title);
            // A second section of the same letter adds its lines, not its title.
            if (section != nullptr && section->empty()) *section = std::string(trimRight(title));
        } else if (section != nullptr) {
            section->append("\r\n").append(line);
            taken += line.size();
        }
    }
    for (std::string* one : {&texts.version, &texts.well, &texts.parameter, &texts.other})
        while (one->ends_with("\r\n")) one->resize(one->size() - 2);
    return texts;
}

std::optional<HeaderTexts> readHeaderTexts(std::string_view path, std::string& why) {
    const auto file = MappedFile::open(path, &why);
    if (!file) return std::nullopt;
    HeaderTexts texts;
    if (isText(file->bytes())) texts = headerTextsOf(file->bytes());
    if (texts.version.empty() && texts.well.empty()) {
        why = "the header file " + std::string(path) + " has neither a ~Version nor a ~Well section";
        return std::nullopt;
    }
    return texts;
}

}  // namespace welvane
