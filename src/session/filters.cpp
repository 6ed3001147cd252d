#include "session/filters.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <utility>

#include "las/sections.h"
#include "platform/mapped_file.h"
#include "platform/output_file.h"
#include "session/filter_source.h"
#include "session/loading.h"
#include "session/session_setup.h"
#include "shared/field_splitter.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view confirmTitle = "Please Confirm";
constexpr std::string_view removeText =
    "are you sure you want to remove the filter? All current file settings will be lost. ";
constexpr std::string_view applyText = "Are you sure you want to apply this filter to the currently loaded file(s)?";

/// A filter that was made with LF line ends, as a copy that the line reader can read; nothing for all others.
class ReadableCopy {
  public:
    ReadableCopy(App& app, const std::string& path) : path_(path) {
        const auto file = MappedFile::open(path);
        if (!file || file->bytes().find('\r') != npos || file->bytes().find('\n') == npos) return;
        const std::string copy = app.platform.scratchFolder() + "filter.fil";
        OutputFile target(copy, OutputFile::Mode::InPlace);
        target.write(replaceAll(file->bytes(), "\n", "\r\n"));
        target.close();
        path_ = copy;
        isCopy_ = true;
    }
    ReadableCopy(const ReadableCopy&) = delete;
    ReadableCopy& operator=(const ReadableCopy&) = delete;
    ~ReadableCopy() {
        if (isCopy_) removeFile(path_);
    }
    const std::string& path() const { return path_; }

  private:
    std::string path_;
    bool isCopy_ = false;
};

/// One application of a filter, with its steps in their order.
class FilterRun {
  public:
    FilterRun(App& app, Session& session, const FilterSource& source, std::string path, FailureList& skipped)
        : app_(app),
          session_(session),
          tables_(session.tables),
          source_(source),
          path_(std::move(path)),
          skipped_(skipped) {}

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
    void skip(std::string what, std::string why) { skipped_.add(std::move(what), std::move(why)); }
    void takeLimit(std::string_view mnem, PrdRow row);
    void takeNumber(std::string_view mnem, PrdRow row, std::string_view without);
    void takeFormat(std::string_view mnem, std::string_view text, PrdRow row, int least);
    bool columnsFit() const;
    std::vector<HeaderField> merged(const FilterSection& section, char letter) const;
    void resolve(Table& table);

    App& app_;
    Session& session_;
    SessionTables& tables_;
    const FilterSource& source_;
    std::string path_;
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
    takeNumber("NULL", PrdRow::Null, "-999.25");
}

void FilterRun::step() {
    std::string& rate = tables_.setting(PrdRow::SampleRate);
    std::string& unitCell = tables_.setting(PrdRow::DepthUnits);
    const HeaderField* const line = source_.well.find("STEP");
    const std::string unit = line == nullptr ? std::string() : upper(trim(line->unit));
    double length = val(source_.well.value("STEP"));
    std::string_view lengthUnit = unit.empty() ? std::string_view(unitCell) : std::string_view(unit);
    if (length == 0) {
        length = sampleRateNumber(rate, unitCell);
        lengthUnit = unitCell;
    }
    if (length != 0) rate = stepItemText(length, lengthUnit);
    if (unit.empty()) return;
    unitCell = unit;
    tables_.prd.data(at(PrdRow::DepthUnits), at(PrdColumn::Setting)) = unit;
}

void FilterRun::direction() {
    const double length = val(source_.well.value("STEP"));
    std::string& from = tables_.setting(PrdRow::From);
    std::string& to = tables_.setting(PrdRow::To);
    // Kept: the capital T, which the list of the row does not have. Test: stepAndDirection
    tables_.setting(PrdRow::Direction) = length < 0 ? "Deep To Shallow" : "Shallow to Deep";
    const auto isLimit = [](std::string_view text) { return text.find_first_of("<>=") != npos; };
    if (length == 0 || isLimit(from) || isLimit(to)) return;
    if (length < 0 ? val(from) < val(to) : val(from) > val(to)) from.swap(to);
}

void FilterRun::wrapAndVersion() {
    const std::string wrap = source_.version.value("WRAP");
    if (wrap.empty() || sameText(wrap, "NO"))
        tables_.setting(PrdRow::Wrap) = "No";
    else if (sameText(wrap, "YES"))
        tables_.setting(PrdRow::Wrap) = "Yes";
    else
        skip("WRAP", "\"" + wrap + "\" is neither YES nor NO");
    const double version = val(source_.version.value("VERS"));
    if (version == 1.2) tables_.setting(PrdRow::Vers) = "1.2";
    if (version == 2.0) tables_.setting(PrdRow::Vers) = "2.0";
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
        takeFormat("DVCP_FILTER", fields.field(static_cast<std::size_t>(number++)), row,
                   row == PrdRow::WellPlus ? 0 : 1);
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
    if (!source_.curve.found || !tables_.frd.checked(1, at(FrdColumn::UseCurve))) return;
    std::vector<FilterCurve> lines;
    for (const HeaderField& line : source_.curve.lines) lines.push_back(parseFilterCurve(line));
    applyFilterCurves(app_, session_, lines, true, skipped_);
}

/// Lines of the filter; a blank VALUE takes that of the line in slot 0's own file.
std::vector<HeaderField> FilterRun::merged(const FilterSection& section, char letter) const {
    std::vector<HeaderField> lines = section.lines;
    const std::vector<HeaderField> own =
        session_.loaded(0) ? readSectionLines(session_.slots[0].path, letter) : std::vector<HeaderField>();
    for (HeaderField& line : lines) {
        line.desc = std::string(trim(std::string_view(line.desc).substr(0, line.desc.find('|'))));
        if (!trim(line.value).empty()) continue;
        const auto same =
            std::find_if(own.begin(), own.end(), [&](const HeaderField& one) { return sameText(one.mnem, line.mnem); });
        if (same == own.end()) continue;
        // In a LAS 1.2 file the texts of ~Well stand behind the colon; getLasValue knows which.
        line.value = letter == 'W' ? std::string(trim(getLasValue(session_.slots[0].path, line.mnem, letter).text))
                                   : same->value;
    }
    return lines;
}

void FilterRun::parameters() {
    if (!tables_.frd.checked(1, at(FrdColumn::UseParameter)) || !source_.parameter.found || !session_.loaded(0)) return;
    fillParaGrid(session_, merged(source_.parameter, 'P'), 0);
    tables_.parg[0].setCaption(std::string(filterParametersCaption));
}

void FilterRun::wells() {
    if (source_.well.found) fillWellGrid(session_, merged(source_.well, 'W'));
}

void FilterRun::resolve(Table& table) {
    for (int row = 1; row < table.rows(); ++row) {
        SessionCell& cell = table.cell(row, at(FieldColumn::Value));
        const std::size_t close = cell.text.find(']');
        if (cell.text.empty() || cell.text.front() != '[' || close == npos) continue;
        cell.data = cell.text;
        const std::string reference = cell.text.substr(1, close - 1);
        cell.text = std::string(trim(applyFilterSpecial(session_, reference, 0, dirOf(path_))));
        if (cell.text.empty())
            skip(table.text(row, at(FieldColumn::Mnem)), "the reference [" + reference + "] leads nowhere");
    }
}

void FilterRun::references() {
    resolve(tables_.wrd);
    resolve(tables_.parg[0]);
}

void applyLoadedFilter(App& app, Session& session, const std::string& readable, const FilterSource& source,
                       FailureList& skipped) {
    session.multipleConnections = true;
    FilterRun run(app, session, source, session.filterFile, skipped);
    run.depths();
    sectionOrder(session, readable);
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

std::string stepItemText(double step, std::string_view depthUnit) {
    const bool feet = sameText(depthUnit, "F") || sameText(depthUnit, "FT");
    constexpr double factor = 0.3048;
    const double length = std::abs(step);
    const auto number = [](double value) {
        std::string text = formatMask(value, 4);
        return val(text) == value ? text : formatMask(value, 5);
    };
    return "\" " + number(feet ? length : length / factor) + " f (" + number(feet ? length * factor : length) + " m)";
}

void setFilterInUse(Session& session, const std::string& path) {
    session.filterFile = path;
    Table& table = session.tables.frd;
    table.text(1, at(FrdColumn::Path)) = path;
    for (const FrdColumn column : {FrdColumn::Apply, FrdColumn::UseCurve, FrdColumn::UseParameter})
        table.setCheck(1, at(column), Check::Checked);
    session.tables.setChecked(PrdRow::MergeParameters, false);
}

FilterReport openFilter(App& app, Session& session) {
    FilterReport report;
    const std::string path = session.filterFile;
    if (!fileExists(path)) {
        report.why = path.empty() ? std::string("no filter is named") : path + ": no such file";
        return report;
    }
    try {
        const ReadableCopy readable(app, path);
        FilterSource source;
        if (!source.read(readable.path(), report.why)) return report;
        if (!source.anySection()) {
            report.why = path + ": no section of a filter was found in it";
            return report;
        }
        // The tables change in a copy, so that a failure half way leaves none of them torn.
        Session next = session;
        const FormatDefaults formatBefore = app.settings.format;
        try {
            applyLoadedFilter(app, next, readable.path(), source, report.skipped);
        } catch (...) {
            app.settings.format = formatBefore;
            throw;
        }
        session = std::move(next);
        report.applied = true;
    } catch (const std::exception& error) {
        report.why = error.what();
    }
    return report;
}

bool doOpenFilter(App& app, Session& session, const std::string& title) {
    const FilePrompt prompt{title, "las Files (*.las;*.fil)|*.las;*.fil", dirOf(session.filterFile), "", false};
    const std::string chosen = app.user.askFile(prompt);
    if (chosen.empty()) return false;
    session.filterFile = chosen;
    session.tables.frd.text(1, at(FrdColumn::Path)) = chosen;
    app.platform.settings().put("filFile", chosen);
    return true;
}

bool filBut(App& app, Session& session, bool on) {
    SessionTables& tables = session.tables;
    const Prompt question{std::string(confirmTitle), std::string(on ? applyText : removeText), Buttons::OkCancel,
                          Icon::Question, Answer::Cancel};
    if (app.user.ask(question) != Answer::Ok) return !on;
    const auto setCaptions = [&](std::string_view settings, std::string_view parameters) {
        tables.prd.setCaption(std::string(settings));
        tables.parg[0].setCaption(std::string(parameters));
    };
    if (on) {
        session.filterFile = tables.frd.text(1, at(FrdColumn::Path));
        if (!openFilter(app, session).applied) return false;
        tables.frd.setCheck(1, at(FrdColumn::Apply), Check::Checked);
        setCaptions(filterSettingsCaption, filterParametersCaption);
        return true;
    }
    tables.frd.setCheck(1, at(FrdColumn::Apply), Check::Unchecked);
    if (!app.run.lasFile.empty()) session.slots[0].path = app.run.lasFile;
    Open4Files(app, session, 0);
    setCaptions(settingsCaption, parametersCaption);
    return false;
}

FilterReport loadAllSlots(App& app, Session& session, std::string_view trigger) {
    FilterReport report;
    if (trigger.empty()) return report;
    for (int slot = 0; slot < slotCount; ++slot)
        if (!session.slots[slot].path.empty()) Open4Files(app, session, slot);
    if (!session.tables.filterInUse()) return report;
    session.filterFile = session.tables.frd.text(1, at(FrdColumn::Path));
    return openFilter(app, session);
}

}  // namespace welvane
