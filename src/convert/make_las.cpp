#include "convert/make_las.h"

#include <algorithm>
#include <cstring>

#include "convert/header_template.h"
#include "las/header_edit.h"
#include "las/header_line.h"
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

DepthScan scanDepths(App& app, const GenericTable& grd) {
    DepthScan scan;
    StepCheck steps;
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
        if (scan.textRow < 0 && number.length != cell.size() && !noNumber) scan.textRow = row;
        const double depth = noNumber ? lasNull : number.value;
        if (row == 0) scan.first = depth;
        scan.last = depth;
        steps.take(depth);
    }
    scan.step = steps.step();
    scan.varies = steps.varies();
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
    result.why = "The depth \"" + cell + "\"" + (line > 0 ? " in line " + std::to_string(line) : std::string()) +
                 " is not a number.";
    app.user.ask({.title = std::string(badDepthTitle), .text = result.why, .icon = Icon::Stop});
    return false;
}

std::string columnName(const GenericTable& grd, int column) {
    const std::string_view name = trim(grd.name(column));
    return name.empty() ? "CHAN" + std::to_string(column) : std::string(name);
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

bool findHeader(const App& app, const GenericTable& grd, const LasRequest& request, HeaderTexts& texts,
                std::string& why) {
    if (fileExists(request.headerFile)) {
        const auto read = readHeaderTexts(request.headerFile, why);
        if (!read) return false;
        texts = *read;
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

/// Prints the data rows.
class RowWriter {
  public:
    RowWriter(std::int16_t width, std::string nullText)
        : width_(static_cast<std::size_t>(std::max<std::int16_t>(width, 1))), null_(std::move(nullText)) {}

    void write(const std::vector<std::string_view>& cells, OutputFile& output) {
        std::size_t room = 2;
        for (const std::string_view cell : cells) room += std::max({width_, cell.size() + 1, null_.size() + 1});
        char* const start = output.reserve(room);
        char* target = start;
        for (const std::string_view cell : cells) target = writeCell(target, cell);
        *target++ = '\r';
        *target++ = '\n';
        output.advance(static_cast<std::size_t>(target - start));
    }
    std::int64_t textCells() const { return textCells_; }

  private:
    char* writeCell(char* target, std::string_view cell) {
        if (cell.empty() || isNoNumberText(cell)) cell = null_;
        const char first = cell.front();
        if (!isDigit(first) && first != '-' && first != '.' && first != '+') ++textCells_;
        const std::size_t blanks = cell.size() < width_ ? width_ - cell.size() : 1;
        std::memset(target, ' ', blanks);
        target += blanks;
        // A blank or control character inside a cell would make two fields of it.
        for (const char c : cell) *target++ = static_cast<unsigned char>(c) <= ' ' ? '_' : c;
        return target;
    }

    std::size_t width_;
    std::string null_;
    std::int64_t textCells_ = 0;
};

bool writeRows(App& app, const GenericTable& grd, const std::string& nullText, OutputFile& output, LasResult& result) {
    RowReader reader(grd);
    RowWriter writer(app.settings.format.dataWidth, nullText);
    for (std::int64_t row = 0; row < grd.dataRows(); ++row) {
        if (row % turnRows == 0 && !goesOn(app, "Writing the new file", row, grd.dataRows())) {
            result.cancelled = true;
            return false;
        }
        writer.write(reader.read(row), output);
    }
    result.textCells = writer.textCells();
    return true;
}

/// Corrects the depth lines, NULL and, where the header came from elsewhere, the units and WRAP.
void correctHeader(App& app, const std::string& path, const GenericTable& grd, const HeaderTexts& texts,
                   const std::string& nullText, const LasResult& result) {
    const auto edit = [&](std::string_view mnem, EditPart part, std::string_view text, char section) {
        editHeaderField(path, mnem, part, text, section, app.user);
    };
    edit("STRT", EditPart::Value, formatMask(result.firstDepth, depthDecimals), 'W');
    edit("STOP", EditPart::Value, formatMask(result.lastDepth, depthDecimals), 'W');
    edit("STEP", EditPart::Value, formatMask(result.step, depthDecimals), 'W');
    edit("NULL", EditPart::Value, nullText, 'W');
    const std::string_view unit = trim(grd.unit(1));
    for (const std::string_view mnem : {"STRT", "STOP", "STEP"}) {
        const HeaderField field = fieldOf(texts.well, mnem);
        if (!unit.empty() && !field.mnem.empty() && field.unit != unit) edit(mnem, EditPart::Unit, unit, 'W');
    }
    const HeaderField wrap = fieldOf(texts.version, "WRAP");
    if (!wrap.mnem.empty() && !sameText(wrap.value, "NO")) edit("WRAP", EditPart::Value, "NO", 'V');
}

void writeFile(App& app, const GenericTable& grd, const LasRequest& request, LasResult& result) {
    HeaderTexts texts;
    if (!findHeader(app, grd, request, texts, result.why)) return;
    const std::string nullText =
        trim(request.nullText).empty() ? std::string("-999.25") : std::string(trim(request.nullText));
    const CurveTexts curves = curveTexts(app, grd);
    OutputFile output(request.targetPath, request.mode);
    for (const std::string_view text : std::initializer_list<std::string_view>{texts.version, texts.well, curves.curves,
                                                                               texts.parameter, texts.other})
        if (!text.empty()) output.writeLine(text);
    output.writeLine(curves.dataTitle);
    if (!writeRows(app, grd, nullText, output, result)) return;
    if (!grd.readable()) throw RunTimeFailure("the table could not be read to its end");
    output.close();
    correctHeader(app, output.writtenPath(), grd, texts, nullText, result);
    output.commit();
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

CurveTexts curveTexts(const App& app, const GenericTable& grd) {
    CurveTexts texts;
    texts.curves = "~Curve Section";
    const FormatDefaults& format = app.settings.format;
    const auto width = static_cast<std::size_t>(std::max<std::int16_t>(format.dataWidth, 1));
    for (int column = 1; column < grd.columns(); ++column) {
        HeaderField field;
        field.mnem = columnName(grd, column);
        field.unit = grd.unit(column);
        field.value = apiCodeForMnem(app.reference, field.mnem);
        field.desc = descriptionForMnem(app.reference, field.mnem);
        texts.curves.append("\r\n").append(
            formatHeaderLine(field, format.dotColumn, format.colonColumn, format.valueColumn));
        texts.dataTitle += rightAligned(std::string_view(field.mnem).substr(0, width), width);
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
        DepthScan scan = scanDepths(app, grd);
        const bool depthStays = grd.used(1);
        // A depth column that is dropped below must be filled all the same; only what will be the depth must be
        // numbers.
        if (!depthStays) scan.textRow = -1;
        if (!depthsAreGood(app, grd, scan, result)) return result;
        dropUnused(grd);
        if (grd.columns() < 2) return refuse(insufficient);
        if (!depthStays) {
            scan = scanDepths(app, grd);
            if (!depthsAreGood(app, grd, scan, result)) return result;
        }
        if (scan.varies) tell(app, varyingStep);
        result.stepVaries = scan.varies;
        result.step = scan.step;
        result.firstDepth = scan.first;
        result.lastDepth = scan.last;
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
