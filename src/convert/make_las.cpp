#include "convert/make_las.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "convert/header_template.h"
#include "las/depth_spacing.h"
#include "las/header_edit.h"
#include "las/header_line.h"
#include "las/header_text.h"
#include "shared/distinct_names.h"
#include "shared/failure.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

struct Box {
    std::string_view title, text;
    Icon icon;
};
constexpr Box insufficient{"Insufficient Data to Convert",
                           "You must have at least 2 columns and one row of data to create a new LAS file. ",
                           Icon::Stop};
constexpr Box emptyDepth{"Empty Depth Sample",
                         "One or more of the depth entries (column 1) are empty. All Depths must have numeric values. "
                         "Remove empty rows, and "
                         "fill in missing depths, then try again.",
                         Icon::Stop};
constexpr Box varyingStep{
    "STEP Not Constant!",
    "The depth interval between depths is not constant. If you don't expect this, try sorting the depth. The STEP will "
    "be written as 0 (= variable STEP) for now. ",
    Icon::Warning};
constexpr std::string_view badDepthTitle = "Depth Is No Number";

constexpr int depthDecimals = 4;
/// Rows between two looks at cancelRequested.
constexpr std::int64_t turnRows = 1024;
/// Lines below this length cannot be edited in place.
constexpr std::size_t editableLength = 20;
constexpr std::string_view dataTitleStart = "~Ascii";
/// A longer number is written with the digits that a double holds.
constexpr std::size_t longestNumber = 60;

void tell(App& app, const Box& box) {
    app.user.ask({.title = std::string(box.title), .text = std::string(box.text), .icon = box.icon});
}

bool goesOn(App& app, std::string_view status, std::int64_t row, std::int64_t rows) {
    app.run.progressFraction = static_cast<float>(static_cast<double>(row) / static_cast<double>(rows));
    app.user.progress({status, static_cast<double>(app.run.progressFraction)});
    if (!app.run.commandMode) app.user.pumpEvents();
    return !app.run.cancelRequested;
}

/// What one look down the depth column finds.
struct DepthScan {
    std::int64_t emptyRow = -1, textRow = -1;  ///< first data row with such a cell
    double first = 0, last = 0, step = 0;
    bool varies = false;
    bool cancelled = false;
    std::string firstText, lastText, stepText;  ///< as the header tells them
};

/// Compares the differences of successive depths in the mask "0.0000" with the first one.
class StepCheck {
  public:
    void take(double depth) {
        if (depth == lasNull) return;
        if (known_) compare(depth - before_);
        before_ = depth;
        known_ = true;
    }
    double step() const { return varies_ ? 0 : val(std::string_view(first_, firstLength_)); }
    bool varies() const { return varies_; }

  private:
    void compare(double difference) {
        if (varies_ || (firstLength_ > 0 && difference == difference_)) return;
        char* const text = firstLength_ == 0 ? first_ : other_;
        const std::size_t length = formatMaskTo(text, difference, depthDecimals);
        difference_ = difference;
        if (firstLength_ == 0) {
            firstLength_ = length;
            varies_ = val(std::string_view(first_, length)) == 0;  // a depth that repeats is no step
        } else {
            varies_ = std::string_view(first_, firstLength_) != std::string_view(other_, length);
        }
    }
    char first_[formatMaskCapacity(depthDecimals)];
    char other_[formatMaskCapacity(depthDecimals)];
    std::size_t firstLength_ = 0;
    double before_ = 0, difference_ = 0;
    bool known_ = false, varies_ = false;
};

/// What all depths have in common by true figures.
class DepthFigures {
  public:
    void take(std::string_view cell, double depth) {
        decimals_ = std::max(decimals_, decimalsOf(cell));
        depths_.push_back(depth);
        if (depths_.size() == 1) first_ = cell;
        last_ = cell;
    }
    void tell(DepthScan& scan) const {
        scan.firstText = first_;
        scan.lastText = last_;
        scan.stepText = regularStep(depths_, decimals_);
        scan.varies = scan.stepText.empty() && depths_.size() > 1;
        if (scan.stepText.empty()) scan.stepText = "0";
        scan.step = val(scan.stepText);
    }

  private:
    std::vector<double> depths_;
    std::size_t decimals_ = 0;
    std::string first_, last_;
};

void tellAsLaidDown(const StepCheck& steps, DepthScan& scan) {
    scan.step = steps.step();
    scan.varies = steps.varies();
    scan.firstText = formatMask(scan.first, depthDecimals);
    scan.lastText = formatMask(scan.last, depthDecimals);
    scan.stepText = formatMask(scan.step, depthDecimals);
}

DepthScan scanDepths(App& app, const GenericTable& grd, FigureRules rules) {
    DepthScan scan;
    StepCheck steps;
    DepthFigures figures;
    const bool trueFigures = rules == FigureRules::trueFigures;
    const RowReader reader(grd);
    for (std::int64_t row = 0; row < grd.dataRows(); ++row) {
        if (row % turnRows == 0 && !goesOn(app, "Checking the depths", row, grd.dataRows())) {
            scan.cancelled = true;
            return scan;
        }
        const std::string_view cell = reader.cell(row, 1);
        if (cell.empty()) {
            scan.emptyRow = row;
            return scan;
        }
        const ParsedNumber number = parseNumber(cell);
        const bool noNumber = isNoNumberText(cell);
        const bool badDepth =
            number.length != cell.size() && (trueFigures || !noNumber);  // by true figures no depth is a null
        const bool nullDepth = trueFigures && number.value == lasNull;
        if (scan.textRow < 0 && (badDepth || nullDepth)) scan.textRow = row;
        const double depth = noNumber ? lasNull : number.value;
        if (row == 0) scan.first = depth;
        scan.last = depth;
        if (trueFigures)
            figures.take(cell, depth);
        else
            steps.take(depth);
    }
    if (trueFigures)
        figures.tell(scan);
    else
        tellAsLaidDown(steps, scan);
    return scan;
}

/// Refuses a depth column that cannot be written; true when it can.
bool depthsAreGood(App& app, const GenericTable& grd, const DepthScan& scan, LasResult& result) {
    result.cancelled = scan.cancelled;
    if (scan.cancelled) return false;
    if (scan.emptyRow >= 0) {
        tell(app, emptyDepth);
        result.why = emptyDepth.text;
        if (const std::size_t line = grd.lineNumber(scan.emptyRow); line > 0)
            result.why += " (line " + std::to_string(line) + ")";
        return false;
    }
    if (scan.textRow < 0) return true;
    const std::size_t line = grd.lineNumber(scan.textRow);
    std::string cell(RowReader(grd).cell(scan.textRow, 1).substr(0, 60));
    const bool null = val(cell) == lasNull;
    result.decimalComma = isDecimalComma(cell);
    result.why = "The depth \"" + cell + "\"" + (line > 0 ? " in line " + std::to_string(line) : std::string()) +
                 (null                  ? " is the null value."
                  : result.decimalComma ? " has a decimal comma."
                                        : " is not a number.");
    app.user.ask({.title = std::string(badDepthTitle), .text = result.why, .icon = Icon::Stop});
    return false;
}

/// The lines that are corrected after writing must be long enough for that.
std::string withEditableLines(const std::string& section, const FormatDefaults& format, int extraColon) {
    std::string result;
    for (const std::string& piece : split(section, '\n')) {
        const std::string_view line =
            piece.ends_with('\r') ? std::string_view(piece).substr(0, piece.size() - 1) : std::string_view(piece);
        HeaderField field;
        if (!result.empty()) result += "\r\n";
        const bool edited =
            line.size() < editableLength && lineKind(line) == LineKind::Data && parseHeaderLine(line, field) &&
            (sameText(field.mnem, "STRT") || sameText(field.mnem, "STOP") || sameText(field.mnem, "STEP") ||
             sameText(field.mnem, "NULL") || sameText(field.mnem, "WRAP"));
        if (edited)
            result += formatHeaderLine(field, format.dotColumn, format.colonColumn + extraColon, format.valueColumn);
        else
            result += line;
    }
    return result;
}

/// Field of a section's text by its mnemonic.
HeaderField fieldOf(const std::string& section, std::string_view mnem) {
    HeaderField field;
    for (const std::string& line : split(section, '\n'))
        if (lineKind(line) == LineKind::Data && parseHeaderLine(std::string_view(line), field) &&
            sameText(field.mnem, mnem))
            return field;
    return {};
}

/// A line put behind the title of a section.
void addLine(std::string& section, const HeaderField& field, const FormatDefaults& format, int extraColon) {
    const std::size_t end = std::min(section.find("\r\n"), section.size());
    section.insert(
        end, "\r\n" + formatHeaderLine(field, format.dotColumn, format.colonColumn + extraColon, format.valueColumn));
}

/// By true figures: what a header from elsewhere lacks of what every file needs. It is written as 1.2 or 2.0, whatever
/// it says.
void completeHeader(HeaderTexts& texts, const HeaderTexts& stock, const std::string& unit,
                    const FormatDefaults& format) {
    if (texts.version.empty()) texts.version = stock.version;
    if (texts.well.empty()) texts.well = stock.well;
    if (fieldOf(texts.version, "WRAP").mnem.empty())
        addLine(texts.version, {"WRAP", "", "NO", "One line per depth step"}, format, 0);
    const std::string version = fieldOf(texts.version, "VERS").value;
    if (version.empty())
        addLine(texts.version, {"VERS", "", "2.0", "CWLS LOG ASCII STANDARD - VERSION 2.0"}, format, 0);
    const auto need = [&](const char* mnem, const std::string& lineUnit, const char* desc) {
        if (fieldOf(texts.well, mnem).mnem.empty())
            addLine(texts.well, {mnem, lineUnit, "0", desc}, format, format.wellExtraColon);
    };
    need("NULL", "", "Null value");
    need("STEP", unit, "STEP LENGTH");
    need("STOP", unit, "STOP DEPTH");
    need("STRT", unit, "START DEPTH");
}

bool findHeader(const App& app, const GenericTable& grd, const LasRequest& request, HeaderTexts& texts,
                std::string& why) {
    if (fileExists(request.headerFile)) {
        const auto read = readHeaderTexts(request.headerFile, why);
        if (!read) return false;
        texts = *read;
        const std::string& unit = grd.unit(1);
        if (request.rules == FigureRules::trueFigures)
            completeHeader(texts, headerTextsOf(join(headerTemplate(app.settings.country, unit), "\r\n")), unit,
                           app.settings.format);
    } else if (!trimBreaks(request.headerText).empty()) {
        texts = headerTextsOf(request.headerText);
    } else {
        const std::string& unit = grd.unit(1).empty() ? app.settings.units.depthUnit : grd.unit(1);
        texts = headerTextsOf(join(headerTemplate(app.settings.country, unit), "\r\n"));
    }
    const FormatDefaults& format = app.settings.format;
    texts.version = withEditableLines(texts.version, format, 0);
    texts.well = withEditableLines(texts.well, format, format.wellExtraColon);
    return true;
}

/// Widths of the columns: that of the format settings, by true figures at least a blank and the name.
std::vector<std::size_t> columnWidths(const App& app, const std::vector<std::string>& names, FigureRules rules) {
    const auto width = static_cast<std::size_t>(std::max<std::int16_t>(app.settings.format.dataWidth, 1));
    std::vector<std::size_t> widths(names.size(), width);
    if (rules == FigureRules::asLaidDown) return widths;
    for (std::size_t column = 0; column < names.size(); ++column)
        widths[column] = std::max(width, names[column].size() + 1);
    // The title's own word stands in front of the first name.
    widths.front() = std::max(widths.front(), dataTitleStart.size() + names.front().size() + 1);
    return widths;
}

/// Prints the data rows.
class RowWriter {
  public:
    RowWriter(std::vector<std::size_t> widths, std::string nullText, FigureRules rules)
        : widths_(std::move(widths)), null_(std::move(nullText)), rules_(rules), noNumbers_(widths_.size()) {}

    /// RunTimeFailure for a decimal comma by true figures.
    void write(const std::vector<std::string_view>& cells, std::int64_t row, OutputFile& output) {
        std::size_t room = 2;
        for (std::size_t column = 0; column < cells.size(); ++column)
            room += std::max({widths_[column], cells[column].size() + 1, null_.size() + 1});
        char* const start = output.reserve(room);
        char* target = start;
        for (std::size_t column = 0; column < cells.size(); ++column)
            target = writeCell(target, column, cellText(cells[column], column, row));
        *target++ = '\r';
        *target++ = '\n';
        output.advance(static_cast<std::size_t>(target - start));
    }
    std::int64_t textCells() const { return textCells_; }
    const std::vector<TextCells>& noNumbers() const { return noNumbers_; }

  private:
    std::string_view cellText(std::string_view cell, std::size_t column, std::int64_t row) {
        if (cell.empty() || isNoNumberText(cell)) return null_;
        if (rules_ == FigureRules::asLaidDown) {
            const char first = cell.front();
            if (!isDigit(first) && first != '-' && first != '.' && first != '+') ++textCells_;
            return cell;
        }
        const ParsedNumber number = parseNumber(cell);
        const bool isNumber =
            number.length == cell.size() && std::abs(number.value) < std::numeric_limits<double>::max();
        if (isNumber && cell.size() <= longestNumber) return cell;
        if (isNumber) return long_ = plainNumber(number.value);
        if (isDecimalComma(cell)) throw RunTimeFailure(std::string(cell.substr(0, 60)));
        TextCells& texts = noNumbers_[column];
        if (texts.count++ == 0) texts.firstRow = row;
        return null_;
    }

    char* writeCell(char* target, std::size_t column, std::string_view cell) const {
        const std::size_t blanks = cell.size() < widths_[column] ? widths_[column] - cell.size() : 1;
        std::memset(target, ' ', blanks);
        target += blanks;
        // A blank or control character inside a cell would make two fields of it.
        for (const char c : cell) *target++ = static_cast<unsigned char>(c) <= ' ' ? '_' : c;
        return target;
    }

    std::vector<std::size_t> widths_;
    std::string null_;
    FigureRules rules_;
    std::int64_t textCells_ = 0;
    std::vector<TextCells> noNumbers_;
    std::string long_;
};

bool writeRows(App& app, const GenericTable& grd, const LasRequest& request, const std::string& nullText,
               OutputFile& output, LasResult& result) {
    RowReader reader(grd);
    const std::vector<std::string> names = columnNames(grd, request.rules);
    RowWriter writer(columnWidths(app, names, request.rules), nullText, request.rules);
    for (std::int64_t row = 0; row < grd.dataRows(); ++row) {
        if (row % turnRows == 0 && !goesOn(app, "Writing the new file", row, grd.dataRows())) {
            result.cancelled = true;
            return false;
        }
        try {
            writer.write(reader.read(row), row, output);
        } catch (const RunTimeFailure& comma) {
            result.decimalComma = true;
            result.why = "The cell \"" + std::string(comma.what()) + "\" in line " +
                         std::to_string(grd.lineNumber(row)) + " has a decimal comma.";
            return false;
        }
    }
    result.textCells = writer.textCells();
    for (std::size_t column = 0; column < names.size(); ++column) {
        TextCells texts = writer.noNumbers()[column];
        if (texts.count == 0) continue;
        texts.channel = names[column];
        result.noNumbers.push_back(std::move(texts));
    }
    return true;
}

/// Corrects the depth lines, NULL and, where the header came from elsewhere, the units and WRAP. Returns the lines that
/// were too short for it.
std::vector<std::string> correctHeader(std::string& header, const GenericTable& grd, const HeaderTexts& texts,
                                       const std::string& nullText, const LasResult& result) {
    std::vector<std::string> shortLines;
    const auto edit = [&](std::string_view mnem, EditPart part, std::string_view text, char section) {
        std::string shortLine;
        editHeaderText(header, {mnem, part, section, std::string(text)}, shortLine);
        if (!shortLine.empty()) shortLines.push_back(std::move(shortLine));
    };
    edit("STRT", EditPart::Value, result.firstText, 'W');
    edit("STOP", EditPart::Value, result.lastText, 'W');
    edit("STEP", EditPart::Value, result.stepText, 'W');
    edit("NULL", EditPart::Value, nullText, 'W');
    const std::string_view unit = trim(grd.unit(1));
    for (const std::string_view mnem : {"STRT", "STOP", "STEP"}) {
        const HeaderField field = fieldOf(texts.well, mnem);
        if (!unit.empty() && !field.mnem.empty() && field.unit != unit) edit(mnem, EditPart::Unit, unit, 'W');
    }
    const HeaderField wrap = fieldOf(texts.version, "WRAP");
    if (!wrap.mnem.empty() && !sameText(wrap.value, "NO")) edit("WRAP", EditPart::Value, "NO", 'V');
    // Sections of LAS 3.0 that are taken over read as those of 2.0.
    if (val(fieldOf(texts.version, "VERS").value) >= 3) edit("VERS", EditPart::Value, "2.0", 'V');
    return shortLines;
}

void writeFile(App& app, const GenericTable& grd, const LasRequest& request, LasResult& result) {
    HeaderTexts texts;
    if (!findHeader(app, grd, request, texts, result.why)) return;
    const std::string nullText =
        trim(request.nullText).empty() ? std::string("-999.25") : std::string(trim(request.nullText));
    const CurveTexts curves = curveTexts(app, grd, request.rules);
    HeaderText sections;
    for (const std::string_view text : std::initializer_list<std::string_view>{texts.version, texts.well, curves.curves,
                                                                               texts.parameter, texts.other})
        if (!text.empty()) sections.line(text);
    sections.line(curves.dataTitle);
    std::string header = sections.take();
    const std::vector<std::string> shortLines = correctHeader(header, grd, texts, nullText, result);
    OutputFile output(request.targetPath, request.mode);
    output.write(header);
    if (!writeRows(app, grd, request, nullText, output, result)) return;
    if (!grd.readable()) throw RunTimeFailure("the table could not be read to its end");
    output.commit();
    for (const std::string& line : shortLines) tellShortLine(line, app.user);
    result.rows = grd.dataRows();
    result.columns = grd.columns() - 1;
    result.done = true;
}

void dropUnused(GenericTable& grd) {
    for (int column = 1; column < grd.columns();) {
        if (grd.used(column))
            ++column;
        else
            grd.dropColumn(column);
    }
}

}  // namespace

std::vector<std::string> columnNames(const GenericTable& grd, FigureRules rules) {
    std::vector<std::string> names;
    for (int column = 1; column < grd.columns(); ++column) {
        const std::string_view name = trim(grd.name(column));
        names.push_back(name.empty() ? "CHAN" + std::to_string(column) : std::string(name));
    }
    if (rules == FigureRules::asLaidDown) return names;
    for (std::string& name : names) name = headerWord(name, ".:");
    makeDistinct(names, rules);
    return names;
}

CurveTexts curveTexts(const App& app, const GenericTable& grd, FigureRules rules) {
    CurveTexts texts;
    texts.curves = "~Curve Section";
    const FormatDefaults& format = app.settings.format;
    const std::vector<std::string> names = columnNames(grd, rules);
    const std::vector<std::size_t> widths = columnWidths(app, names, rules);
    for (std::size_t column = 0; column < names.size(); ++column) {
        HeaderField field;
        field.mnem = names[column];
        field.unit = grd.unit(static_cast<int>(column) + 1);
        if (rules == FigureRules::trueFigures) field.unit = headerWord(field.unit, ":");
        field.value = apiCodeForMnem(app.reference, field.mnem);
        field.desc = descriptionForMnem(app.reference, field.mnem);
        texts.curves.append("\r\n").append(
            formatHeaderLine(field, format.dotColumn, format.colonColumn, format.valueColumn));
        texts.dataTitle += rightAligned(std::string_view(field.mnem).substr(0, widths[column]), widths[column]);
    }
    if (texts.dataTitle.size() < dataTitleStart.size()) texts.dataTitle.resize(dataTitleStart.size(), ' ');
    texts.dataTitle.replace(0, dataTitleStart.size(), dataTitleStart);
    return texts;
}

LasResult makeLas(App& app, GenericTable& grd, const LasRequest& request) {
    LasResult result;
    const auto refuse = [&app, &result](const Box& box) {
        tell(app, box);
        result.why = box.text;
        return result;
    };
    try {
        if (grd.columns() - 1 < 2 || grd.dataRows() < 1) return refuse(insufficient);
        DepthScan scan = scanDepths(app, grd, request.rules);
        const bool depthStays = grd.used(1);
        // A depth column that is dropped below must be filled all the same; only what will be the depth must be
        // numbers.
        if (!depthStays) scan.textRow = -1;
        if (!depthsAreGood(app, grd, scan, result)) return result;
        dropUnused(grd);
        if (grd.columns() < 2) return refuse(insufficient);
        if (!depthStays) {
            scan = scanDepths(app, grd, request.rules);
            if (!depthsAreGood(app, grd, scan, result)) return result;
        }
        if (scan.varies) tell(app, varyingStep);
        result.stepVaries = scan.varies;
        result.step = scan.step;
        result.firstDepth = scan.first;
        result.lastDepth = scan.last;
        result.firstText = scan.firstText;
        result.lastText = scan.lastText;
        result.stepText = scan.stepText;
        writeFile(app, grd, request, result);
    } catch (const std::exception& error) {
        result.done = false;
        result.why = error.what();
    }
    return result;
}

LasResult tableToLas(App& app, std::string_view sourcePath, const LoadOptions& options, const LasRequest& request,
                     TableLoadResult* loaded) {
    LasResult result;
    GenericTable grd;
    if (samePath(sourcePath, request.targetPath)) {
        result.why = "the new file would replace its own table";
        return result;
    }
    const TableLoadResult load = loadTable(app, sourcePath, options, grd);
    if (loaded != nullptr) *loaded = load;
    if (!load.done) {
        result.cancelled = load.cancelled;
        result.why = load.why;
        return result;
    }
    app.run.sourceLabel = std::string(sourcePath);
    app.run.targetLabel = request.targetPath;
    return makeLas(app, grd, request);
}

}  // namespace welvane
