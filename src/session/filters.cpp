#include "session/filters.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <utility>

#include "las/index_unit.h"
#include "las/input_data.h"
#include "las/las_file.h"
#include "platform/output_file.h"
#include "session/choices.h"
#include "session/filter_source.h"
#include "session/loading.h"
#include "session/session_setup.h"
#include "session/step_text.h"
#include "shared/field_splitter.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// The filter, opened. One that was made with LF line ends is read through a copy that the line reader can read.
LasFilePointer openFilterFile(App& app, const std::string& path) {
    LasFilePointer file = openLasFile(path);
    if (file->bytes().find('\r') != npos || file->bytes().find('\n') == npos) return file;
    const std::string copy = app.platform.scratchFolder() + "filter.fil";
    OutputFile target(copy, OutputFile::Mode::InPlace);
    target.write(replaceAll(file->bytes(), "\n", "\r\n"));
    target.close();
    file->needWhole();
    return openLasFile(copy);
}

/// One application of a filter, with its steps in their order.
class FilterRun {
  public:
    FilterRun(App& app, Session& session, const FilterSource& source, std::string path, FigureRules rules,
              FilterReport& report)
        : app_(app),
          session_(session),
          tables_(session.tables),
          source_(source),
          path_(std::move(path)),
          rules_(rules),
          report_(report),
          skipped_(report.skipped) {}

    void depths() {
        takeLimit("STRT", PrdRow::From);
        takeLimit("STOP", PrdRow::To);
    }
    void step();
    void direction();
    void offsetAndNull();
    void wrapAndVersion();
    void headerColumns();
    void dataFormat();
    void curves();
    void parameters();
    void wells();
    void references();

  private:
    /// By true figures what a filter does not say stays the inputs' own.
    bool isTrue() const { return rules_ == FigureRules::trueFigures; }
    void skip(std::string what, std::string why) { skipped_.add(std::move(what), std::move(why)); }
    void takeLimit(std::string_view mnem, PrdRow row);
    void takeNumber(std::string_view mnem, PrdRow row, std::string_view without);
    void takeFormat(std::string_view mnem, std::string_view text, PrdRow row, int least);
    double inInputUnit(double step, std::string_view unit) const;
    bool columnsFit() const;
    std::vector<HeaderField> merged(const FilterSection& section, char letter) const;
    void resolve(Table& table);

    App& app_;
    Session& session_;
    SessionTables& tables_;
    const FilterSource& source_;
    std::string path_;
    FigureRules rules_;
    FilterReport& report_;
    FailureList& skipped_;
};

void FilterRun::takeLimit(std::string_view mnem, PrdRow row) {
    const std::string text = source_.well.value(mnem);
    if (text.empty()) return;
    const std::string number = withoutChar(withoutChar(withoutChar(text, '<'), '>'), '=');
    if (parseNumber(number).length == 0)
        skip(std::string(mnem), "\"" + text + "\" is not a number");
    else
        tables_.setting(row) = text;
}

void FilterRun::takeNumber(std::string_view mnem, PrdRow row, std::string_view without) {
    const std::string text = source_.well.value(mnem);
    if (text.empty())
        tables_.setting(row) = without;
    else if (parseNumber(text).length == 0)
        skip(std::string(mnem), "\"" + text + "\" is not a number");
    else
        tables_.setting(row) = text;
}

void FilterRun::offsetAndNull() {
    takeNumber("DO_FILTER", PrdRow::DepthOffset, "0");
    takeNumber("NULL", PrdRow::Null, isTrue() ? tables_.setting(PrdRow::Null) : "-999.25");
}

/// A step in the unit that the grid counts in: that of the inputs, whatever the output's.
double FilterRun::inInputUnit(double step, std::string_view unit) const {
    const InputSlot& first = session_.slots[0];
    const IndexUnit from = readIndexUnit(unit);
    if (!first.data || !from.isLength() || !first.data->unit.isLength()) return step;
    return step * from.metres / first.data->unit.metres;
}

void FilterRun::step() {
    std::string& rate = tables_.setting(PrdRow::SampleRate);
    std::string& unitCell = tables_.setting(PrdRow::DepthUnits);
    const HeaderField* const line = source_.well.find("STEP");
    const std::string unit = line == nullptr ? std::string() : upper(trim(line->unit));
    double length = val(source_.well.value("STEP"));
    std::string_view lengthUnit = unit.empty() ? std::string_view(unitCell) : std::string_view(unit);
    if (length == 0) {
        length = isTrue() ? 0 : stepNumber(rate, unitCell);
        lengthUnit = unitCell;
    }
    if (length != 0)
        rate = isTrue() ? stripZeros(formatMask(std::abs(inInputUnit(length, lengthUnit)), 12))
                        : stepItemText(length, lengthUnit);
    if (unit.empty()) return;
    unitCell = unit;
    tables_.prd.data(PrdRow::DepthUnits, PrdColumn::Setting) = unit;
}

void FilterRun::direction() {
    const double length = val(source_.well.value("STEP"));
    if (length == 0 && isTrue()) return;
    std::string& from = tables_.setting(PrdRow::From);
    std::string& to = tables_.setting(PrdRow::To);
    // Kept: the capital T, which the list of the row does not have. Test: stepAndDirection
    constexpr std::string_view deepToShallow = "Deep To Shallow";
    tables_.setting(PrdRow::Direction) = length < 0 ? deepToShallow : textOf(Direction::ShallowToDeep);
    const auto isLimit = [](std::string_view text) { return text.find_first_of("<>=") != npos; };
    if (length == 0 || isLimit(from) || isLimit(to)) return;
    if (length < 0 ? val(from) < val(to) : val(from) > val(to)) from.swap(to);
}

void FilterRun::wrapAndVersion() {
    const std::string wrap = source_.version.value("WRAP");
    if (const auto choice = wrap.empty() ? Wrap::No : decode<Wrap>(wrap))
        tables_.setting(PrdRow::Wrap) = textOf(*choice);
    else
        skip("WRAP", "\"" + wrap + "\" is neither YES nor NO");
    if (const auto version = versionOf(val(source_.version.value("VERS"))))
        tables_.setting(PrdRow::Vers) = textOf(*version);
}

/// A field of a format line; one that is no 16-bit number of at least `least` leaves its row.
void FilterRun::takeFormat(std::string_view mnem, std::string_view text, PrdRow row, int least) {
    if (trim(text).empty()) return;
    attempt(skipped_, std::string(mnem).c_str(), [&] {
        const std::int16_t value = strictInt16(text);
        if (value < least) throw RunTimeFailure(std::string(text) + " is too small");
        setFormatRow(app_, session_, row, value);
    });
}

bool FilterRun::columnsFit() const {
    const FormatDefaults& format = app_.settings.format;
    const int dot = format.dotColumn, value = format.valueColumn, colon = format.colonColumn;
    return dot >= 4 && dot < value && value < colon && value > dot + 6;
}

void FilterRun::headerColumns() {
    FieldSplitter fields;
    const std::string text = source_.well.value("DVCP_FILTER");
    fields.setText(text);
    int number = 1;
    for (const PrdRow row : {PrdRow::FormatDot, PrdRow::FormatValue, PrdRow::FormatColon, PrdRow::WellPlus})
        takeFormat("DVCP_FILTER", fields.field(static_cast<std::size_t>(number++)), row, 0);
    if (columnsFit()) return;
    setFormatRow(app_, session_, PrdRow::FormatDot, 6);
    setFormatRow(app_, session_, PrdRow::FormatValue, 15);
    setFormatRow(app_, session_, PrdRow::FormatColon, 60);
}

void FilterRun::dataFormat() {
    const std::string text = source_.well.value("FMT_FILTER");
    FieldSplitter fields(text.find('.') == npos ? " " : ".");
    fields.setText(text);
    takeFormat("FMT_FILTER", fields.field(1), PrdRow::DataWidth, 1);
    takeFormat("FMT_FILTER", fields.field(2), PrdRow::DataDecimals, 0);
}

void FilterRun::curves() {
    if (!source_.curve.found || !tables_.frd.checked(1, FrdColumn::UseCurve)) return;
    std::vector<FilterCurve> lines;
    for (const HeaderField& line : source_.curve.lines) lines.push_back(parseFilterCurve(line));
    applyFilterCurves(session_, lines, true, rules_, skipped_);
}

/// Lines of the filter; a blank VALUE takes that of the line in slot 0's own file.
std::vector<HeaderField> FilterRun::merged(const FilterSection& section, char letter) const {
    std::vector<HeaderField> lines = section.lines;
    const LasFile* const file = session_.loaded(0) ? session_.slots[0].file.get() : nullptr;
    SectionTable own;
    if (file != nullptr) own = file->section(letter, lettersAsTheyStand).value_or(SectionTable());
    for (HeaderField& line : lines) {
        line.desc = std::string(trim(std::string_view(line.desc).substr(0, line.desc.find('|'))));
        if (!trim(line.value).empty()) continue;
        const auto same =
            std::find_if(own.begin(), own.end(), [&](const HeaderField& one) { return sameText(one.mnem, line.mnem); });
        if (same == own.end()) continue;
        // In a LAS 1.2 file the texts of ~Well stand behind the colon; getLasValue knows which.
        line.value = letter == 'W' ? std::string(trim(file->value(line.mnem, letter).text)) : same->value;
    }
    return lines;
}

void FilterRun::parameters() {
    if (!tables_.frd.checked(1, FrdColumn::UseParameter) || !source_.parameter.found || !session_.loaded(0)) return;
    fillParaGrid(session_, merged(source_.parameter, 'P'), 0);
    tables_.parg[0].setCaption(std::string(filterParametersCaption));
}

void FilterRun::wells() {
    if (source_.well.found) fillWellGrid(session_, merged(source_.well, 'W'));
}

void FilterRun::resolve(Table& table) {
    for (int row = 1; row < table.rows(); ++row) {
        SessionCell& cell = table.cell(row, FieldColumn::Value);
        const std::size_t close = cell.text.find(']');
        if (cell.text.empty() || cell.text.front() != '[' || close == npos) continue;
        cell.data = cell.text;
        const std::string reference = cell.text.substr(1, close - 1);
        cell.text = std::string(trim(applyFilterSpecial(session_, reference, 0, dirOf(path_), &report_.tables)));
        if (cell.text.empty())
            skip(table.text(row, FieldColumn::Mnem), "the reference [" + reference + "] leads nowhere");
    }
}

void FilterRun::references() {
    resolve(tables_.wrd);
    resolve(tables_.parg[0]);
}

void applyLoadedFilter(App& app, Session& session, const LasFile& filter, const FilterSource& source, FigureRules rules,
                       FilterReport& report) {
    session.multipleConnections = true;
    FilterRun run(app, session, source, session.filterFile, rules, report);
    run.depths();
    sectionOrder(session, &filter);
    run.step();
    run.direction();
    run.offsetAndNull();
    run.wrapAndVersion();
    run.headerColumns();
    run.dataFormat();
    run.curves();
    run.parameters();
    run.wells();
    run.references();
}

}  // namespace

void setFilterInUse(Session& session, const std::string& path) {
    session.filterFile = path;
    Table& table = session.tables.frd;
    table.text(1, FrdColumn::Path) = path;
    for (const FrdColumn column : {FrdColumn::Apply, FrdColumn::UseCurve, FrdColumn::UseParameter})
        table.setCheck(1, column, Check::Checked);
    session.tables.setChecked(PrdRow::MergeParameters, false);
}

FilterReport openFilter(App& app, Session& session, FigureRules rules) {
    FilterReport report;
    const std::string path = session.filterFile;
    if (!fileExists(path)) {
        report.why = path.empty() ? std::string("no filter is named") : path + ": no such file";
        return report;
    }
    try {
        const LasFilePointer filter = openFilterFile(app, path);
        const FilterSource source(*filter);
        if (!source.anySection()) {
            report.why = path + ": no section of a filter was found in it";
            return report;
        }
        // The tables change in a copy, so that a failure half way leaves none of them torn.
        Session next = session;
        const FormatDefaults formatBefore = app.settings.format;
        try {
            applyLoadedFilter(app, next, *filter, source, rules, report);
            filter->needWhole();
            if (filter->path() != path) removeFile(filter->path());
        } catch (...) {
            app.settings.format = formatBefore;
            throw;
        }
        session = std::move(next);
        session.filterApplied = true;
        report.applied = true;
    } catch (const FileFailure& failure) {
        report.unreadable = true;
        report.why = failure.what();
    } catch (const std::exception& error) {
        report.why = error.what();
    }
    return report;
}

}  // namespace welvane
