#include "jobs/las_check.h"

#include <cstring>
#include <optional>

#include "las/data_access.h"
#include "las/header_line.h"
#include "las/read_channels.h"
#include "las/sections.h"
#include "platform/mapped_file.h"
#include "shared/failure.h"
#include "shared/files.h"
#include "shared/line_reader.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// A line of 32767 columns of 30 characters has less than a million; one this long is no LAS line.
constexpr std::size_t longestLine = std::size_t{4} << 20;
constexpr std::size_t mostColumns = 32767;
/// Data lines that are looked at.
constexpr int linesLookedAt = 200;
constexpr std::size_t firstBlock = 4096;

/// What a walk over the header and the first data lines finds.
struct Walk {
    bool curveSection = false, dataSection = false, dataLine = false;
    std::size_t curveLines = 0;
    std::size_t longLine = 0;  ///< 1-based number of a line that is too long; 0 when there is none
};

Walk walkOver(const LasText& text) {
    Walk walk;
    LineReader lines = text.lines();
    bool inCurves = false;
    int dataLines = 0;
    std::size_t number = 0;
    for (std::string_view line; dataLines < linesLookedAt && lines.next(line);) {
        ++number;
        if (line.size() > longestLine) {
            walk.longLine = number;
            return walk;
        }
        if (walk.dataSection) {
            ++dataLines;
            walk.dataLine = walk.dataLine || !trimBreaks(line).empty();
            continue;
        }
        const std::string_view shown = trimBreaks(line);
        if (isTitle(shown, 'A')) walk.dataSection = true;
        if (!shown.empty() && shown.front() == '~') inCurves = isTitle(shown, 'C');
        walk.curveSection = walk.curveSection || inCurves;
        if (inCurves && lineKind(shown) == LineKind::Data) ++walk.curveLines;
    }
    return walk;
}

std::string numberText(std::size_t number) {
    return std::to_string(number);
}

}  // namespace

std::string whyUnreadable(std::string_view path) {
    std::string why;
    const std::optional<MappedFile> file = MappedFile::open(path, &why);
    return file ? whyNoText(file->bytes()) : why;
}

std::string whyNoText(std::string_view bytes) {
    if (bytes.empty()) return "the file is empty";
    // Space that a crashed writer took and never filled; the file can be larger than anyone would want to read.
    if (bytes.back() == '\0') {
        const std::size_t first = bytes.find('\0');
        return "byte " + numberText(first + 1) + ", in line " +
               numberText(lineNumberAt(bytes.substr(0, first + 1), first, LineRule::Any)) +
               ", is NUL, and so is the file's end: was it cut off while it was written?";
    }
    const std::size_t nul = bytes.substr(0, firstBlock).find('\0');
    if (nul != npos) return "not a text file: byte " + numberText(nul + 1) + " is NUL";
    return {};
}

Reason whyNoLas(const LasFile& file, bool loose) {
    const Walk walk = walkOver(file.text());
    if (walk.longLine != 0)
        return {"line " + numberText(walk.longLine) + " is longer than " + numberText(longestLine >> 20) + " MB"};
    if (walk.dataSection && !walk.curveSection) return {"no ~Curve section"};
    if (!walk.dataSection) return {whyNoData(file.text())};
    if (walk.curveLines == 0) return {"its ~Curve section names no channel"};
    if (walk.curveLines > mostColumns)
        return {numberText(walk.curveLines) + " channels, more than the " + numberText(mostColumns) +
                " that can be held"};
    if (!walk.dataLine) return {"no data behind its ~A line"};
    if (file.rules() == FigureRules::trueFigures) return {};
    if (trim(file.depthHeader().step().value).empty()) return {"no STEP in its ~Well section"};
    const DataShape& shape = file.shape();
    if (shape.layout != DataLayout::Undecided || loose) return {};
    const std::string ragged = "its data have no regular shape";
    if (shape.differingLineNumber == 0) return {ragged, Remedy::Loose};
    return {ragged + ": lines " + numberText(shape.firstLineNumber) + " and " + numberText(shape.differingLineNumber) +
                " differ in their number of values",
            Remedy::Loose};
}

bool hasLoneLineFeed(std::string_view bytes) {
    for (std::size_t place = bytes.find('\n'); place != npos; place = bytes.find('\n', place + 1)) {
        if (place == 0 || bytes[place - 1] != '\r') return true;
    }
    return false;
}

}  // namespace welvane
