#include "jobs/check.h"

#include <optional>

#include "las/header_line.h"
#include "las/index_unit.h"
#include "las/limits.h"
#include "las/repair.h"
#include "platform/file_ends.h"
#include "platform/mapped_file.h"
#include "shared/any_line_reader.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr StatusLine emptyStatus = {"Empty File", true};
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// Length of the header: up to the first "~A"; npos without one.
std::size_t headerLength(std::string_view bytes) {
    for (std::size_t place = bytes.find('~'); place != npos && place + 1 < bytes.size();
         place = bytes.find('~', place + 1))
        if (upperChar(bytes[place + 1]) == 'A') return place;
    return npos;
}

/// curveTitleFaultIn for a header that is mostly sound: only lines that hold "~C" are looked at in full.
bool sharesCurveTitle(std::string_view header) {
    for (std::size_t place = header.find('~'); place != npos && place + 1 < header.size();
         place = header.find('~', place + 1)) {
        if (upperChar(header[place + 1]) != 'C') continue;
        const std::size_t before = header.rfind('\r', place);
        const std::string_view line = header.substr(before == npos ? 0 : before + 1);
        if (curveTitleFaultIn(line.substr(0, line.find('\r')))) return true;
    }
    return false;
}

void takeHeaderLine(std::string_view text, HeaderGlance& glance) {
    const auto valueOf = [text](std::string& value, std::string* unit) {
        HeaderField field;
        if (!value.empty() || !parseHeaderLine(text, field)) return;
        value = std::move(field.value);
        if (unit != nullptr) *unit = std::move(field.unit);
    };
    // Most lines are none of the four.
    const char first = upperChar(text.front());
    if (first != 'V' && first != 'W' && first != 'S') return;
    const std::string mnem = getMnemField(text);
    if (sameText(mnem, "VERS"))
        valueOf(glance.version, nullptr);
    else if (sameText(mnem, "WRAP"))
        valueOf(glance.wrap, nullptr);
    else if (sameText(mnem, "STRT"))
        valueOf(glance.start, nullptr);
    else if (sameText(mnem, "STOP"))
        valueOf(glance.stop, &glance.unit);
}

/// Lines of any end: the header of a file with bad line ends is worth a look too.
HeaderGlance glanceAt(std::string_view bytes) {
    HeaderGlance glance;
    if (bytes.substr(0, byteOrderMark.size()) == byteOrderMark) bytes.remove_prefix(byteOrderMark.size());
    AnyLineReader lines(bytes.substr(0, headerLimit));
    bool inCurves = false;
    for (std::string_view line; lines.next(line);) {
        const std::string_view text = trimBreaks(line);
        if (text.empty() || text.front() == '#') continue;
        if (text.front() == '~') {
            const char letter = text.size() > 1 ? upperChar(text[1]) : '\0';
            if (letter == 'A') break;
            inCurves = letter == 'C';
        } else if (inCurves) {
            if (lineKind(text) == LineKind::Data) ++glance.curveLines;
        } else {
            takeHeaderLine(text, glance);
        }
    }
    return glance;
}

/// The status of a file that could be read, by its name and its verdict, as the browser shows it.
void setStatus(FileCheck& check, bool asciiTable) {
    if (check.lasTest == LasTest::WrongName && endsWith(check.path, ".csv")) {
        check.status = csvStatus;
    } else if (check.lasTest == LasTest::WrongName && asciiTable) {
        check.status = plexmoreAsciiStatus;
    } else {
        check.status = statusLine(check.quickCheck);
        check.quickCheckPasses = check.quickCheck != FileVerdict::Plexmore2;
    }
}

void judgeContent(FileCheck& check, const FileEnds& ends) {
    check.ends = lineEndsOf(ends.head(), ends.tail());
    check.hasLineFeed = ends.head().find('\n') != npos || ends.tail().find('\n') != npos;
    check.plexmore = plexmoreKindOf(ends.head());
    check.lasTest = lasTestOf(check.path, ends.begin());
    if (check.lasTest == LasTest::NoSections && !ends.whole()) check.lasTest = quickLasTest(check.path);
    check.quickCheck = verdictOf(check.ends, check.lasTest, check.plexmore);
    setStatus(check, isPlexmoreAsciiTable(ends.head()));
    if (check.ends == LineEnds::Binary) return;
    if (ends.head().substr(0, byteOrderMark.size()) == byteOrderMark) check.why = "begins with a byte order mark";
    const bool likeLas = check.lasTest == LasTest::Passes || check.plexmore != PlexmoreKind::None;
    std::optional<MappedFile> mapped;
    if (likeLas && !ends.whole() && headerLength(ends.begin()) == npos) mapped = mapFile(check.path);
    const std::string_view header = mapped ? mapped->bytes() : ends.begin();
    if (!likeLas) return;
    const std::string_view known = header.substr(0, headerLimit);
    check.curveTitleFault = sharesCurveTitle(known.substr(0, headerLength(known)));
    check.header = glanceAt(header);
}

/// By its ends and its header alone.
FileCheck glanceAtFile(const std::string& path) {
    FileEnds ends;
    FileCheck check;
    check.path = path;
    check.refused.text = ends.read(path);
    const bool empty = check.refused.none() && ends.size() == 0;
    if (check.refused.none() && !empty) {
        judgeContent(check, ends);
        if (check.lasTest == LasTest::ReadError || check.plexmore == PlexmoreKind::ReadError)
            check.refused.text = "it could not be read to its end";
        return check;
    }
    const bool there = fileExists(path) || folderExists(path);
    check.ends = empty ? LineEnds::Empty : there ? LineEnds::Undecided : LineEnds::Missing;
    check.lasTest = empty ? lasTestOf(path, {}) : quickLasTest(path);
    check.plexmore = empty ? PlexmoreKind::None : PlexmoreKind::ReadError;
    check.quickCheck = FileVerdict::UnixTermination;
    check.status = empty ? emptyStatus : there ? statusLine(FileVerdict::Unusable) : missingStatus;
    return check;
}

void readAll(Workbench& bench, const ReadingChoices& choices, FileCheck& check) {
    const LasFilePointer file = openTrue(check.path);
    std::vector<Note> notes = readingOf(check.path, [&] {
        const IndexUnit unit = chooseIndexUnit(file->text(), choices.indexUnit);
        return indexNotes(unit, check.path);
    });
    const WholeReading read = readThrough(bench, *file, check.path, choices.reading(bench.app().run));
    notes.insert(notes.end(), read.notes.begin(), read.notes.end());
    tellNotes(bench, check.path, notes);
    check.records = read.records;
}

}  // namespace

FileCheck checkFile(Workbench& bench, const std::string& path, const ReadingChoices& choices) {
    FileCheck check = glanceAtFile(path);
    if (!check.refused.none()) return check;
    try {
        readAll(bench, choices, check);
    } catch (...) {
        if (bench.stopWanted()) throw;
        check.refused = faultOf(path).reason;
    }
    return check;
}

}  // namespace welvane
