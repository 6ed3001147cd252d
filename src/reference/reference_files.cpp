#include <array>
#include <exception>
#include <functional>
#include <map>
#include <optional>

#include "las/header_line.h"
#include "platform/mapped_file.h"
#include "platform/output_file.h"
#include "reference/reference_tables.h"
#include "shared/any_line_reader.h"
#include "shared/failure.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

/// The three reference files: reading and writing.
namespace welvane {

namespace {

/// A reference file has some tens of kilobytes. A file that is something else (a picture, a disk image) may not fill
/// memory: lines that are too long to be meant are passed over, and reading ends at too many bytes or rows.
constexpr std::size_t longestLine = 1000;
constexpr std::size_t mostBytes = 16U << 20;
constexpr std::size_t mostRows = 50'000;

/// Hands out the lines that count, trimmed: no blank ones, no comments.
class ReferenceLines {
  public:
    explicit ReferenceLines(std::string_view bytes) : reader_(bytes.substr(0, mostBytes)) {}

    bool next(std::string_view& line) {
        while (!repeat_) {
            if (!reader_.next(line_)) return false;
            line_ = trim(line_);
            if (!line_.empty() && line_.front() != '#' && line_.size() <= longestLine) break;
        }
        repeat_ = false;
        line = line_;
        return true;
    }
    /// The line handed out last comes once more.
    void back() { repeat_ = true; }

  private:
    AnyLineReader reader_;
    std::string_view line_;
    bool repeat_ = false;
};

using TakeLines = std::function<bool(ReferenceLines&)>;

/// Opens the file and hands its lines to `take`; false when it is not there or is cut off at a limit. FileFailure when
/// it is there and cannot be read.
bool readLines(std::string_view path, const TakeLines& take) {
    if (!fileExists(path)) return false;
    const MappedFile file = mapFile(path);
    bool whole = false;
    try {
        ReferenceLines lines(file.bytes());
        whole = take(lines) && file.bytes().size() <= mostBytes;
    } catch (const std::exception&) {
        return false;
    }
    needWhole(file, path);
    return whole;
}

/// The fields of "[a|b|...]", each trimmed; false for any other line.
template <std::size_t count>
bool bracketFields(std::string_view line, std::array<std::string, count>& fields) {
    if (line.size() < 2 || line.front() != '[' || line.back() != ']') return false;
    const std::vector<std::string> pieces = split(line.substr(1, line.size() - 2), '|');
    for (std::size_t index = 0; index < count; ++index)
        fields[index] = index < pieces.size() ? std::string(trim(pieces[index])) : std::string();
    return true;
}

/// Walks a file of groups: `openGroup` is given each bracket line's fields, `takeLine` each line of a group. Lines
/// outside a group are passed over; a "[" line without "]" ends a group and opens none. False when one of them finds
/// its table full.
template <std::size_t count>
bool walkGroups(ReferenceLines& lines, const std::function<bool(std::array<std::string, count>&)>& openGroup,
                const std::function<bool(std::string_view)>& takeLine) {
    std::array<std::string, count> fields;
    for (std::string_view line; lines.next(line);) {
        if (!bracketFields(line, fields)) continue;
        if (!openGroup(fields)) return false;
        while (lines.next(line)) {
            if (line.front() == '[') {
                lines.back();
                break;
            }
            if (!takeLine(line)) return false;
        }
    }
    return true;
}

template <class Row>
bool addRow(std::vector<Row>& rows, Row row) {
    if (rows.size() >= mostRows) return false;
    rows.push_back(std::move(row));
    return true;
}

/// Indexes of the rows of each group, by the group's name in upper case.
template <class Row>
std::map<std::string, std::vector<std::size_t>> rowsByGroup(const std::vector<Row>& rows) {
    std::map<std::string, std::vector<std::size_t>> result;
    for (std::size_t index = 0; index < rows.size(); ++index) result[upper(rows[index].group)].push_back(index);
    return result;
}

bool writeWhole(std::string_view path, std::string* why, const std::function<void(OutputFile&)>& body) {
    try {
        OutputFile file(path, OutputFile::Mode::Beside);
        body(file);
        file.commit();
        return true;
    } catch (const FileFailure& failure) {
        if (why != nullptr) *why = failure.reason();
    } catch (const std::exception& error) {
        if (why != nullptr) *why = error.what();
    }
    return false;
}

constexpr std::array<std::string_view, 4> unitsHead = {
    "#[] line contains unit group name and internal unit symbol with | separator",
    "#Each line in the section contains External unit | Factor to divide external to get internal and | Offset",
    "#eg. 2650 KG/M3 / 1000 gives the internal 2.65 G/C3",
    // Kept: nothing holds a group to ten units. Test: units of a hundred are read and written whole.
    "#each section can have 10 units max. An others are ignored"};

}  // namespace

bool readUnits(ReferenceTables& tables, std::string_view unitsPath) {
    tables.units.clear();
    tables.unitGroups.clear();
    return readLines(unitsPath, [&](ReferenceLines& lines) {
        return walkGroups<2>(
            lines,
            [&](auto& head) {
                return addRow(tables.unitGroups, UnitGroup{head[0], head[1]});
            },
            [&](std::string_view line) {
                if (line.find('|') == npos) return true;
                const std::vector<std::string> fields = split(line, '|');
                Unit unit{tables.unitGroups.back().group, std::string(trim(fields[0])), val(fields[1]), 0};
                if (fields.size() > 2) unit.offset = val(fields[2]);
                return addRow(tables.units, std::move(unit));
            });
    });
}

bool readCurves(ReferenceTables& tables, std::string_view curvesPath) {
    tables.curves.clear();
    tables.curveGroups.clear();
    return readLines(curvesPath, [&](ReferenceLines& lines) {
        return walkGroups<4>(
            lines,
            [&](auto& head) {
                return addRow(tables.curveGroups, CurveGroup{head[0], head[1], head[2], head[3]});
            },
            [&](std::string_view line) {
                if (lineKind(line) != LineKind::Data) return true;
                const std::string_view mnem = trim(line.substr(0, line.find('.')));
                const std::string_view desc = trim(line.substr(line.find(':') + 1));
                return addRow(tables.curves,
                              Curve{tables.curveGroups.back().group, std::string(mnem), std::string(desc)});
            });
    });
}

bool readParameters(ReferenceTables& tables, std::string_view paraPath) {
    tables.parameters.clear();
    return readLines(paraPath, [&](ReferenceLines& lines) {
        for (std::string_view line; lines.next(line);) {
            HeaderField field;
            if (!parseHeaderLine(std::string_view(upper(line)), field)) continue;
            Parameter parameter{field.mnem, field.unit, field.value, field.desc, {}};
            const std::size_t bar = field.desc.find('|');
            if (bar != npos) {
                parameter.searchText =
                    field.mnem + " " + std::string(trim(std::string_view(field.desc).substr(bar + 1)));
                parameter.desc = trim(std::string_view(field.desc).substr(0, bar));
            }
            if (!addRow(tables.parameters, std::move(parameter))) return false;
        }
        return true;
    });
}

bool writeUnits(const ReferenceTables& tables, std::string_view unitsPath, std::string* why) {
    return writeWhole(unitsPath, why, [&](OutputFile& file) {
        for (const std::string_view line : unitsHead) file.writeLine(line);
        const auto members = rowsByGroup(tables.units);
        for (const UnitGroup& group : tables.unitGroups) {
            if (&group != &tables.unitGroups.front()) file.writeLine("");
            file.writeLine("[" + group.group + "|" + group.internalUnit + "]");
            const auto found = members.find(upper(group.group));
            if (found == members.end()) continue;
            for (const std::size_t index : found->second) {
                const Unit& unit = tables.units[index];
                file.writeLine(unit.externalUnit + "|" + strNumber(unit.factor) + "|" + strNumber(unit.offset));
            }
        }
    });
}

bool writeCurves(const ReferenceTables& tables, std::string_view curvesPath, std::string* why) {
    return writeWhole(curvesPath, why, [&](OutputFile& file) {
        const auto members = rowsByGroup(tables.curves);
        for (const CurveGroup& group : tables.curveGroups) {
            if (&group != &tables.curveGroups.front()) file.writeLine("");
            file.writeLine("[" + group.group + "|" + group.uniqueValue + "|" + group.canadianUnit + "|" +
                           group.otherUnit + "]");
            const auto found = members.find(upper(group.group));
            if (found == members.end()) continue;
            for (const std::size_t index : found->second)
                file.writeLine(tables.curves[index].mnem + ". :" + tables.curves[index].desc);
        }
    });
}

}  // namespace welvane
