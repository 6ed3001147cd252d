#include "las/channel_names.h"

#include <algorithm>

#include "las/limits.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// A line of ~Curve that is no comment.
struct CurveLine {
    HeaderField field;
    bool proper = true;  ///< a header line, with a mnemonic or without
};

HeaderField withoutMnemonic(std::string_view line) {
    HeaderField field;
    parseHeaderLine("X" + std::string(line), field);
    field.mnem.clear();
    return field;
}

/// A line that lacks its dot or its colon, or has the colon in front.
HeaderField fromHalfLine(std::string_view line) {
    HeaderField field;
    const std::size_t dot = line.find('.');
    const std::size_t colon = line.find(':');
    if (dot != npos && colon == npos) {
        const std::string whole = std::string(line) + " :";
        return parseHeaderLine(whole, field) ? field : withoutMnemonic(whole);
    }
    field.mnem = trim(line.substr(0, colon));
    if (colon != npos) field.desc = trim(line.substr(colon + 1));
    return field;
}

CurveLine readCurveLine(std::string_view line, LineKind kind) {
    if (kind == LineKind::DotFirst) return {withoutMnemonic(line), true};
    if (kind == LineKind::Other) return {fromHalfLine(line), false};
    CurveLine read;
    parseHeaderLine(line, read.field);
    return read;
}

std::vector<CurveLine> readCurveLines(const LasText& text) {
    std::vector<CurveLine> found;
    const auto start = text.seekSection('C');
    if (!start) return found;
    LineReader lines = text.headerLines(*start);
    for (std::string_view line; found.size() < rowLimit && lines.next(line);) {
        std::string flat(line);
        tabsToBlanks(flat);
        const std::string_view shown = trim(flat);
        const LineKind kind = lineKind(shown);
        if (kind == LineKind::Title) break;
        if (kind != LineKind::Comment && kind != LineKind::Blank) found.push_back(readCurveLine(shown, kind));
    }
    return found;
}

}  // namespace

std::string columnName(std::size_t column) {
    return "CH" + std::to_string(column + 1);
}

CurveLineCounts countCurveLines(const LasText& text) {
    const std::vector<CurveLine> lines = readCurveLines(text);
    const auto proper = std::count_if(lines.begin(), lines.end(), [](const CurveLine& line) { return line.proper; });
    return {static_cast<std::size_t>(proper), lines.size()};
}

ColumnNames nameColumns(const LasText& text, std::size_t columns) {
    std::vector<CurveLine> lines = readCurveLines(text);
    const auto proper = std::count_if(lines.begin(), lines.end(), [](const CurveLine& line) { return line.proper; });
    const bool all = static_cast<std::size_t>(proper) != columns;
    ColumnNames names;
    names.columns = columns;
    for (CurveLine& line : lines)
        if (all || line.proper) names.channels.push_back(std::move(line.field));
    names.curveLines = names.channels.size();
    if (names.channels.size() < columns) names.channels.resize(columns);
    for (std::size_t column = 0; column < names.channels.size(); ++column)
        if (names.channels[column].mnem.empty()) names.channels[column].mnem = columnName(column);
    return names;
}

}  // namespace welvane
