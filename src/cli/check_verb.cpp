#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "cli/shown_text.h"
#include "cli/verbs.h"
#include "las/classify.h"
#include "las/header_line.h"
#include "las/limits.h"
#include "las/repair.h"
#include "platform/file_ends.h"
#include "platform/mapped_file.h"
#include "shared/any_line_reader.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

using Json = nlohmann::ordered_json;

/// What the header tells in passing.
struct HeaderGlance {
    std::string version, wrap, start, stop, unit;
    std::size_t curveLines = 0;  ///< the index among them
    /// Channels beside the index.
    std::size_t channels() const { return curveLines == 0 ? 0 : curveLines - 1; }
};

/// Everything that is told of one file.
struct Verdict {
    std::string path;
    StatusLine status;
    FileVerdict quickCheck = FileVerdict::Unusable;
    LineEnds ends = LineEnds::Undecided;
    LasTest lasTest = LasTest::ReadError;
    PlexmoreKind plexmore = PlexmoreKind::ReadError;
    bool hasLineFeed = false;  ///< at one of its ends
    bool curveTitleFault = false;
    std::string why;  ///< what else stands against it, or is worth a word
    HeaderGlance header;

    bool usable() const { return !status.red && quickCheckPasses && !curveTitleFault; }
    bool quickCheckPasses = true;  ///< false for what is shown in the normal colour and needs a repair all the same
};

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
void setStatus(Verdict& verdict, bool asciiTable) {
    if (verdict.lasTest == LasTest::WrongName && endsWith(verdict.path, ".csv")) {
        verdict.status = csvStatus;
    } else if (verdict.lasTest == LasTest::WrongName && asciiTable) {
        verdict.status = plexmoreAsciiStatus;
    } else {
        verdict.status = statusLine(verdict.quickCheck);
        verdict.quickCheckPasses = verdict.quickCheck != FileVerdict::Plexmore2;
    }
}

void judgeContent(Verdict& verdict, const FileEnds& ends) {
    verdict.ends = lineEndsOf(ends.head(), ends.tail());
    verdict.hasLineFeed = ends.head().find('\n') != npos || ends.tail().find('\n') != npos;
    verdict.plexmore = plexmoreKindOf(ends.head());
    verdict.lasTest = lasTestOf(verdict.path, ends.begin());
    if (verdict.lasTest == LasTest::NoSections && !ends.whole()) verdict.lasTest = quickLasTest(verdict.path);
    verdict.quickCheck = verdictOf(verdict.ends, verdict.lasTest, verdict.plexmore);
    setStatus(verdict, isPlexmoreAsciiTable(ends.head()));
    if (verdict.ends == LineEnds::Binary) {
        const std::size_t nul = ends.head().find('\0');
        verdict.why = "not a text file: byte " + std::to_string(nul + 1) + " is NUL";
        return;
    }
    if (ends.head().substr(0, byteOrderMark.size()) == byteOrderMark) verdict.why = "begins with a byte order mark";
    const bool likeLas = verdict.lasTest == LasTest::Passes || verdict.plexmore != PlexmoreKind::None;
    std::optional<MappedFile> mapped;
    if (likeLas && !ends.whole() && headerLength(ends.begin()) == npos) mapped = MappedFile::open(verdict.path);
    const std::string_view header = mapped ? mapped->bytes() : ends.begin();
    if (!likeLas) return;
    const std::string_view known = header.substr(0, headerLimit);
    verdict.curveTitleFault = sharesCurveTitle(known.substr(0, headerLength(known)));
    verdict.header = glanceAt(header);
}

Verdict judge(FileEnds& ends, const std::string& path) {
    Verdict verdict;
    verdict.path = path;
    verdict.why = ends.read(path);
    if (verdict.why.empty() && ends.size() > 0) {
        judgeContent(verdict, ends);
        return verdict;
    }
    const bool there = fileExists(path) || folderExists(path);
    verdict.ends = ends.size() == 0 && verdict.why.empty() ? LineEnds::Empty
                   : there                                 ? LineEnds::Undecided
                                                           : LineEnds::Missing;
    verdict.lasTest = verdict.why.empty() ? lasTestOf(path, {}) : quickLasTest(path);
    verdict.plexmore = verdict.why.empty() ? PlexmoreKind::None : PlexmoreKind::ReadError;
    verdict.quickCheck = FileVerdict::UnixTermination;
    verdict.status = there && !verdict.why.empty() ? statusLine(FileVerdict::Unusable) : missingStatus;
    if (verdict.why.empty()) verdict.why = "the file is empty";
    return verdict;
}

std::string_view endsText(const Verdict& verdict) {
    switch (verdict.ends) {
        case LineEnds::Good:
            return "CR LF";
        case LineEnds::Unix:
            return verdict.hasLineFeed ? "LF only" : "no line feed";
        case LineEnds::Undecided:
            return "mixed line ends";
        case LineEnds::Missing:
        case LineEnds::Empty:
        case LineEnds::Binary:
            break;
    }
    return {};
}

std::string asText(const Verdict& verdict) {
    std::string text = shownText(verdict.path) + ": " + std::string(verdict.status.text);
    auto add = [&, first = true](std::string_view part) mutable {
        if (!part.empty()) text.append(first ? "; " : ", ").append(part);
        first = first && part.empty();
    };
    const HeaderGlance& header = verdict.header;
    if (verdict.plexmore != PlexmoreKind::ReadError) add(endsText(verdict));
    if (!header.version.empty()) add("LAS " + shownText(header.version));
    if (!header.wrap.empty())
        add(sameText(header.wrap, "YES")  ? "wrapped"
            : sameText(header.wrap, "NO") ? "not wrapped"
                                          : "WRAP " + shownText(header.wrap));
    if (header.curveLines > 0)
        add(std::to_string(header.channels()) + (header.channels() == 1 ? " channel" : " channels"));
    if (!header.start.empty() || !header.stop.empty())
        add(shownText(header.start + " to " + header.stop + (header.unit.empty() ? "" : " " + header.unit)));
    if (verdict.curveTitleFault) add("its curve title stands on a ~Well line (repair --curve-title)");
    add(shownText(verdict.why));
    return text + "\n";
}

Json asJson(const Verdict& verdict) {
    const auto code = [](auto value) { return static_cast<int>(value); };
    const auto orNull = [](const std::string& text) { return text.empty() ? Json() : Json(utf8Text(text)); };
    const auto number = [](const std::string& text) { return text.empty() ? Json() : Json(val(text)); };
    const HeaderGlance& header = verdict.header;
    return {{"path", utf8Text(verdict.path)},
            {"status", verdict.status.text},
            {"usable", verdict.usable()},
            {"quickCheck", code(verdict.quickCheck)},
            {"lineEndKind", code(verdict.ends)},
            {"quickLasTest", code(verdict.lasTest)},
            {"plexmoreKind", code(verdict.plexmore)},
            {"curveTitleFault", verdict.curveTitleFault},
            {"why", orNull(verdict.why)},
            {"lasVersion", orNull(header.version)},
            {"wrap", orNull(header.wrap)},
            {"channels", header.channels()},
            {"start", number(header.start)},
            {"stop", number(header.stop)},
            {"depthUnit", orNull(header.unit)}};
}

ExitCode performCheck(Workbench& bench, const std::vector<std::string>& named) {
    const std::vector<std::string> files = bench.expandLists(named);
    const bool json = bench.options().json;
    FileEnds ends;
    Json all = Json::array();
    std::size_t usable = 0;
    const ExitCode code = bench.forEach(files, [&](const std::string& file) {
        const Verdict verdict = judge(ends, file);
        if (json)
            all.push_back(asJson(verdict));
        else
            bench.print(asText(verdict));
        usable += verdict.usable() ? 1U : 0U;
        return verdict.usable() ? ExitCode::Done : ExitCode::Negative;
    });
    if (json && !all.empty()) bench.print((files.size() == 1 ? all.front() : all).dump(2) + "\n");
    if (json && files.size() != 1 && all.empty()) bench.print("[]\n");
    if (!json) {
        const std::size_t bad = files.size() - usable;
        bench.print(std::to_string(files.size()) + (files.size() == 1 ? " file: " : " files: ") +
                    std::to_string(usable) + " usable, " + std::to_string(bad) + " not\n");
    }
    return code;
}

}  // namespace

VerbRun declareCheck(CLI::App& command) {
    const auto files = std::make_shared<std::vector<std::string>>();
    command.add_option("FILE", *files, "Files of any kind; @LIST or - for a list of paths")->required()->type_name("");
    return [files](Workbench& bench) { return performCheck(bench, *files); };
}

}  // namespace welvane
