#include <algorithm>
#include <array>
#include <cmath>
#include <exception>
#include <optional>

#include "platform/mapped_file.h"
#include "session/tvd.h"
#include "shared/any_line_reader.h"
#include "shared/field_splitter.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

/// Survey files, as read and as written, and the clipboard.
namespace welvane {

namespace {

constexpr const char* separators = "\t ,";
/// The last row that the inclinometry table can take.
constexpr int lastRow = tieRow + static_cast<int>(InclinometryTable::capacity) - 1;
/// A survey has a few columns and short lines; what is longer is cut, so that no file can widen the table without end.
constexpr std::size_t longestLine = 4000;
constexpr int mostColumns = 60;

constexpr const char* tooManyTitle = "Too Many Lines!";
constexpr const char* tooManyText =
    "There are more lines in the inclinometry data file than the TVD table can handle. Reduce the file to a max of 450 "
    "lines and try again. ";
constexpr const char* detectedTitle = "Tavir TVD Data File Detected!";
constexpr const char* detectedText =
    "\r\nFile was detected as a TAVIR inclinometry data file. Compute TVD depths now?\r\n"
    "(If you select No, review the data, then click 'Compute TVD' button before leaving the window)";

/// How the lines of a survey are cut.
enum class Cut {
    Words,  ///< at each run of tabs, blanks and commas
    Cells   ///< at each tab, else at each comma, so that an empty cell keeps its column; else into words
};

/// The lines of a survey that are not blank, each cut into fields.
class SurveyLines {
  public:
    SurveyLines(std::string_view bytes, Cut cut) : lines_(bytes), words_(separators), cut_(cut) {}

    bool next() {
        for (std::string_view line; lines_.next(line);) {
            if (trimBreaks(line).empty()) continue;
            // Not the tabs in front: an empty cell can stand there.
            line_ = trim(line.substr(0, longestLine));
            cutLine();
            return true;
        }
        return false;
    }
    std::string_view line() const { return line_; }
    std::size_t count() const { return fields_.size(); }
    /// Fields count from 1; "" where there is none.
    std::string_view field(std::size_t place) const {
        return place == 0 || place > fields_.size() ? std::string_view() : fields_[place - 1];
    }
    bool allNumbers() const {
        for (std::size_t place = 1; place <= count(); ++place)
            if (!isNumeric(field(place))) return false;
        return count() > 0;
    }
    /// The end mark: -1 in every field.
    bool isEnd() const {
        if (line_.find("-1") == npos || !allNumbers()) return false;
        for (std::size_t place = 1; place <= count(); ++place)
            if (val(field(place)) != -1) return false;
        return true;
    }

  private:
    void cutLine() {
        fields_.clear();
        const char separator = line_.find('\t') != npos ? '\t' : ',';
        if (cut_ == Cut::Cells && line_.find(separator) != npos && cutCells(separator)) return;
        fields_.clear();
        words_.setText(line_);
        for (std::size_t place = 1; place <= words_.count(); ++place) fields_.push_back(words_.field(place));
    }
    /// False where a cell holds several numbers, so that blanks part them as well.
    bool cutCells(char separator) {
        for (std::string_view rest = line_;;) {
            const std::size_t end = rest.find(separator);
            const std::string_view cell = trim(rest.substr(0, end));
            const std::size_t blank = cell.find(' ');
            if (blank != npos && isNumeric(cell.substr(0, blank)) && isNumeric(cell.substr(cell.rfind(' ') + 1)))
                return false;
            fields_.push_back(cell);
            if (end == npos) return true;
            rest.remove_prefix(end + 1);
        }
    }

    AnyLineReader lines_;
    FieldSplitter words_;
    std::vector<std::string_view> fields_;
    Cut cut_;
    std::string_view line_;
};

bool isTavirText(std::string_view bytes) {
    SurveyLines lines(bytes, Cut::Words);
    if (!lines.next() || lines.count() != 3) return false;
    const char letter = upperChar(lines.line().front());
    if (letter != 'M' && letter != 'F') return false;
    bool ends = false;
    while (lines.next()) ends = lines.isEnd();
    return ends;
}

std::string twoDecimals(std::string_view number) {
    return formatMask(val(number), 2);
}

void passOver(const SurveyLines& lines, SurveyReport& report) {
    if (report.passedOver++ == 0) report.firstPassedOver = std::string(lines.line());
}

/// Makes sure that the row is there.
void reachRow(Table& trd, int row) {
    if (row >= trd.rows()) trd.resize(std::min(std::max(row + 1, 2 * trd.rows()), lastRow + 1), trd.columns());
}

void readTavir(std::string_view bytes, Session& session, UserInterface& user, SurveyReport& report) {
    Table& trd = session.tables.trd;
    SurveyLines lines(bytes, Cut::Words);
    lines.next();
    trd.data(0, 0) = lines.field(1);
    setSurveyUnit(trd, sameText(lines.field(1).substr(0, 1), "F") ? SurveyUnit::Feet : SurveyUnit::Metres);
    trd.text(tieRow, TrdColumn::Md) = twoDecimals(lines.field(2));
    trd.text(tieRow, TrdColumn::Tvd) = twoDecimals(lines.field(3));
    int row = firstSurveyRow;
    while (lines.next() && !lines.isEnd()) {
        if (lines.count() != 3 || !lines.allNumbers()) {
            passOver(lines, report);
            continue;
        }
        if (row > lastRow) {
            report.tooMany = true;
            user.ask({tooManyTitle, tooManyText, Buttons::Ok, Icon::None, Answer::Ok});
            break;
        }
        reachRow(trd, row);
        trd.text(row, TrdColumn::Md) = twoDecimals(lines.field(1));
        trd.text(row, TrdColumn::Deviation) = lines.field(2);
        trd.text(row, TrdColumn::Azimuth) = lines.field(3);
        ++row;
    }
    if (row > firstSurveyRow)
        for (const TrdColumn which : {TrdColumn::Deviation, TrdColumn::Azimuth})
            trd.text(tieRow, which) = trd.text(firstSurveyRow, which);
    markTrdChanged(trd);
    // Without anybody to ask it is computed: a survey without its TVD column maps nothing.
    if (user.ask({detectedTitle, detectedText, Buttons::YesNo, Icon::Question, Answer::Yes}) == Answer::Yes)
        buildTVDTable(session, user);
}

void readPlainTable(std::string_view bytes, Table& trd) {
    SurveyLines lines(bytes, Cut::Cells);
    for (int row = tieRow; row <= lastRow && lines.next(); ++row) {
        reachRow(trd, row);
        const int count = std::min(static_cast<int>(lines.count()), mostColumns);
        if (count >= trd.columns()) trd.resize(trd.rows(), count + 1);
        for (int place = 1; place <= count; ++place)
            trd.text(row, place) = lines.field(static_cast<std::size_t>(place));
    }
    markTrdChanged(trd);
}

/// Opens the file and hands its bytes to `body`; false when it is not there or `body` fails. FileFailure when it is
/// there and cannot be read.
template <class Body>
bool withFile(std::string_view path, Body body) {
    if (!fileExists(path)) return false;
    const MappedFile file = mapFile(path);
    try {
        body(file.bytes());
    } catch (const std::exception&) {
        return false;
    }
    needWhole(file, path);
    return true;
}

/// Fields (from 1) of MD, TVD, deviation and azimuth in the lines of a people's file; 0 where there is none.
struct SurveyColumns {
    std::size_t md = 0, tvd = 0, deviation = 0, azimuth = 0;
};

bool isOneOf(std::string_view name, std::initializer_list<std::string_view> names) {
    return std::any_of(names.begin(), names.end(), [&](std::string_view one) { return sameText(one, name); });
}

/// The name in a head such as "MD (m)" or "Inc[deg]", and its unit.
struct Head {
    std::string_view name, unit;
};

Head headOf(std::string_view text) {
    const std::size_t open = text.find_first_of("([");
    if (open == npos) return {trim(text), {}};
    const std::string_view inside = text.substr(open + 1);
    return {trim(text.substr(0, open)), trim(inside.substr(0, inside.find_first_of(")]")))};
}

std::optional<SurveyUnit> depthUnitOf(std::string_view unit) {
    if (isOneOf(unit, {"M", "METRES", "METERS", "METRE", "METER"})) return SurveyUnit::Metres;
    if (isOneOf(unit, {"F", "FT", "FEET", "FOOT", "USFT", "FTUS"})) return SurveyUnit::Feet;
    return std::nullopt;
}

/// A line of heads names at least the measured depth, and the deviation or the vertical depth. `unit` takes that of the
/// depths where the heads tell it.
std::optional<SurveyColumns> headsOf(const SurveyLines& lines, std::optional<SurveyUnit>& unit) {
    SurveyColumns columns;
    std::optional<SurveyUnit> found;
    std::size_t column = 0;
    for (std::size_t place = 1; place <= lines.count(); ++place) {
        const Head head = headOf(lines.field(place));
        const bool unitAlone = head.name.empty() && !head.unit.empty();
        // Where blanks part the heads, the unit behind a name is a word of its own.
        if (!unitAlone) ++column;
        if (column == columns.md && columns.md != 0 && !found) found = depthUnitOf(head.unit);
        if (unitAlone) continue;
        const auto take = [&](std::size_t& slot) {
            if (slot == 0) slot = column;
        };
        if (isOneOf(head.name, {"MD", "DEPTH", "DEPT", "MDEPTH", "MEASURED DEPTH"})) take(columns.md);
        if (isOneOf(head.name, {"TVD"})) take(columns.tvd);
        if (isOneOf(head.name, {"INC", "INCL", "DEV", "DEVI", "DEVIATION", "INCLINATION", "DRIFT"}))
            take(columns.deviation);
        if (isOneOf(head.name, {"AZI", "AZIM", "AZIMUTH", "AZ", "HAZI", "AZIM_TN", "AZIM_GN"})) take(columns.azimuth);
        if (column == columns.md && !found) found = depthUnitOf(head.unit);
    }
    if (columns.md == 0 || (columns.deviation == 0 && columns.tvd == 0)) return std::nullopt;
    if (found) unit = found;
    return columns;
}

/// Those of a file without heads, which has so many columns of numbers.
SurveyColumns usualColumns(std::size_t count) {
    return count >= 4 ? SurveyColumns{1, 2, 3, 4} : SurveyColumns{1, 0, 2, count == 3 ? 3U : 0U};
}

/// Columns of numbers in the lines that begin with one.
std::size_t countColumns(std::string_view bytes) {
    std::size_t count = 0;
    for (SurveyLines lines(bytes, Cut::Cells); lines.next();) {
        if (!isNumeric(lines.field(1)) || lines.isEnd()) continue;
        for (std::size_t place = count + 1; place <= lines.count(); ++place)
            if (isNumeric(lines.field(place))) count = place;
    }
    return count;
}

/// A number that the table can hold.
bool isHeld(std::string_view field) {
    return isNumeric(field) && std::fabs(val(field)) < 3.4e38;
}

/// A station of a people's file, as its texts.
struct Station {
    double depth = 0;
    std::string_view md, tvd, deviation, azimuth;
};

void fillStations(const std::vector<Station>& stations, bool computed, Table& trd) {
    int row = tieRow;
    for (const Station& station : stations) {
        reachRow(trd, row);
        trd.text(row, TrdColumn::Md) = station.md;
        trd.text(row, TrdColumn::Deviation) = station.deviation;
        trd.text(row, TrdColumn::Azimuth) = station.azimuth;
        if (row == tieRow || !computed)
            trd.text(row, TrdColumn::Tvd) = isNumeric(station.tvd) ? station.tvd : station.md;
        ++row;
    }
}

bool readStations(std::string_view bytes, Table& trd, UserInterface& user, SurveyReport& report) {
    SurveyLines lines(bytes, Cut::Cells);
    std::optional<SurveyColumns> columns;
    std::optional<SurveyUnit> unit;
    const SurveyColumns usual = usualColumns(countColumns(bytes));
    std::vector<Station> stations;
    while (lines.next()) {
        if (lines.line().front() == '#' || lines.isEnd()) continue;
        if (const auto heads = headsOf(lines, unit)) {
            columns = heads;
            continue;
        }
        const SurveyColumns use = columns.value_or(usual);
        const std::size_t needed = use.deviation != 0 ? use.deviation : use.tvd;
        if (!isHeld(lines.field(use.md)) || !isHeld(lines.field(needed))) {
            passOver(lines, report);
            continue;
        }
        if (stations.size() == InclinometryTable::capacity) {
            report.tooMany = true;
            user.ask({tooManyTitle, tooManyText, Buttons::Ok, Icon::None, Answer::Ok});
            break;
        }
        stations.push_back({val(lines.field(use.md)), lines.field(use.md), lines.field(use.tvd),
                            lines.field(use.deviation), lines.field(use.azimuth)});
    }
    const auto shallower = [](const Station& one, const Station& other) { return one.depth < other.depth; };
    report.reordered = !std::is_sorted(stations.begin(), stations.end(), shallower);
    std::stable_sort(stations.begin(), stations.end(), shallower);
    report.computed = !columns || columns->deviation != 0;
    if (unit) setSurveyUnit(trd, *unit);
    fillStations(stations, report.computed, trd);
    return !stations.empty();
}

/// Stations of the table that was filled, and those among them that repeat the depth above. The tie point may repeat
/// the first station.
void countStations(const InclinometryTable& table, SurveyReport& report) {
    report.stations = table.rows.size();
    for (std::size_t row = 2; row < table.rows.size(); ++row)
        if (table.rows[row].md == table.rows[row - 1].md) ++report.repeated;
}

}  // namespace

bool isTavirTVD(std::string_view path) {
    bool isSurvey = false;
    withFile(path, [&](std::string_view bytes) { isSurvey = isTavirText(bytes); });
    return isSurvey;
}

bool readTVDFile(std::string_view path, Session& session, UserInterface& user) {
    setupTVD(session.tables.trd);
    markTrdChanged(session.tables.trd);
    return withFile(path, [&](std::string_view bytes) {
        SurveyReport nobodyAsks;
        if (isTavirText(bytes))
            readTavir(bytes, session, user, nobodyAsks);
        else
            readPlainTable(bytes, session.tables.trd);
    });
}

bool readSurvey(std::string_view path, Session& session, UserInterface& user, SurveyReport* report) {
    setupTVD(session.tables.trd);
    markTrdChanged(session.tables.trd);
    SurveyReport held;
    bool found = false;
    withFile(path, [&](std::string_view bytes) {
        if (isTavirText(bytes)) {
            SilentInterface computeAtOnce;
            readTavir(bytes, session, computeAtOnce, held);
            found = held.computed = true;
        } else {
            found = readStations(bytes, session.tables.trd, user, held);
            if (found && held.computed)
                buildTVDTable(session, user);
            else
                sortGrd(session);
        }
        if (found) countStations(session.inclinometry, held);
    });
    if (report != nullptr) *report = held;
    return found;
}

bool saveTVDFile(std::string_view path, const Session& session, OutputFile::Mode mode) {
    const Table& trd = session.tables.trd;
    const auto isEmpty = [&](int row) {
        for (int place = 1; place < trd.columns(); ++place)
            if (!trim(trd.text(row, place)).empty()) return false;
        return true;
    };
    try {
        OutputFile file(path, mode);
        for (int row = tieRow; row < trd.rows(); ++row) {
            if (isEmpty(row)) continue;
            std::string line;
            int last = trd.columns() - 1;
            while (trim(trd.text(row, last)).empty()) --last;
            for (int place = 1; place <= last; ++place) {
                line.append(place > 1 ? "\t" : "").append(trim(trd.text(row, place)));
            }
            file.writeLine(line);
        }
        file.commit();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

void pasteIntoTrd(Table& trd, int row, int columnPlace, std::string_view clipboard) {
    AnyLineReader lines(clipboard);
    for (std::string_view line; row >= tieRow && row <= lastRow && lines.next(line); ++row) {
        if (trd.columns() == 0) setupTVD(trd);
        reachRow(trd, row);
        int place = columnPlace;
        for (const std::string& cell : split(line.substr(0, longestLine), '\t')) {
            if (place >= mostColumns) break;
            if (place >= trd.columns()) trd.resize(trd.rows(), place + 1);
            if (place >= 1) trd.text(row, place) = trim(cell);
            ++place;
        }
    }
    markTrdChanged(trd);
}

}  // namespace welvane
