#include "session/tvd.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// No number beyond it is a depth.
constexpr double widest = 3.4e38;
constexpr std::uint32_t tieColour = 0x80FFFF;
/// Rows that an empty table offers; more are made as a file needs them.
constexpr int offeredRows = 450;
constexpr std::array<TrdColumn, 4> valueColumns = {TrdColumn::Md, TrdColumn::Tvd, TrdColumn::Deviation,
                                                   TrdColumn::Azimuth};
/// Cell whose hidden data keeps the mark of a change.
constexpr int markRow = 0, markColumn = 1;

constexpr const char* tieTitle = "Tie Point Data Incomplete!";
constexpr const char* tieText = "You must enter a tie point MD, TVD and Deviation angle in first Tie Point row.";
constexpr const char* rowTitle = "TVD Data Table Incomplete!";

double number(const Table& trd, TableIndex row, TrdColumn which) {
    return val(trd.text(row, which));
}

bool blank(std::string_view cell) {
    return trim(cell).empty();
}
bool filled(const Table& trd, int row, TrdColumn which) {
    return !blank(trd.text(row, which));
}

/// Anything in columns 1 to 3: such a row counts.
bool rowCounts(const Table& trd, int row) {
    return filled(trd, row, TrdColumn::Md) || filled(trd, row, TrdColumn::Tvd) ||
           filled(trd, row, TrdColumn::Deviation);
}

double unitOf(const Table& trd) {
    return surveyUnit(trd) == SurveyUnit::Metres ? static_cast<double>(metresPerFoot) : 1;
}

float single(double value) {
    // A number beyond single precision is no depth; it reads as 0, as a text without a number does.
    return std::fabs(value) <= widest ? static_cast<float>(value) : 0;
}

SurveyRow surveyRow(const Table& trd, int row, double factor) {
    return {single(number(trd, row, TrdColumn::Md) / factor), single(number(trd, row, TrdColumn::Tvd) / factor),
            single(number(trd, row, TrdColumn::Deviation)), single(number(trd, row, TrdColumn::Azimuth))};
}

std::array<std::string, 4> cellTexts(const SurveyRow& row, double factor) {
    return {formatMask(row.md * factor, 2), formatMask(row.tvd * factor, 2), formatMask(row.deviation, 2),
            formatMask(row.azimuth, 2)};
}

bool tableReady(const Table& trd) {
    return trd.rows() >= firstSurveyRow && trd.columns() > at(TrdColumn::Azimuth);
}

/// Order of the survey rows by the number in column 1.
void sortByMeasuredDepth(Table& trd) {
    struct Key {
        int rank;  // 0 with a measured depth, 1 with something else, 2 empty
        double depth;
        int row;
    };
    std::vector<Key> keys;
    for (int row = firstSurveyRow; row < trd.rows(); ++row) {
        const bool hasDepth = filled(trd, row, TrdColumn::Md);
        keys.push_back({hasDepth              ? 0
                        : rowCounts(trd, row) ? 1
                                              : 2,
                        hasDepth ? number(trd, row, TrdColumn::Md) : 0, row});
    }
    std::stable_sort(keys.begin(), keys.end(), [](const Key& one, const Key& other) {
        return one.rank != other.rank ? one.rank < other.rank : one.depth < other.depth;
    });
    for (int place = 0; place < trd.columns(); ++place) {
        std::vector<SessionCell> cells;
        cells.reserve(keys.size());
        for (const Key& key : keys) cells.push_back(std::move(trd.cell(key.row, place)));
        for (std::size_t index = 0; index < cells.size(); ++index)
            trd.cell(firstSurveyRow + index, place) = std::move(cells[index]);
    }
}

}  // namespace

SurveyUnit surveyUnit(const Table& trd) {
    const bool metres = tableReady(trd) && sameText(trd.text(TrdRow::Unit, TrdColumn::Md), "M");
    return metres ? SurveyUnit::Metres : SurveyUnit::Feet;
}

void setSurveyUnit(Table& trd, SurveyUnit unit) {
    if (!tableReady(trd)) setupTVD(trd);
    for (const TrdColumn which : {TrdColumn::Md, TrdColumn::Tvd})
        trd.text(TrdRow::Unit, which) = unit == SurveyUnit::Metres ? "M" : "F";
}

void setupTVD(Table& trd) {
    const SurveyUnit unit = surveyUnit(trd);
    trd.clear();
    trd.resize(firstSurveyRow + offeredRows, 5);
    constexpr std::array<const char*, 4> names = {"MD", "TVD", "Deviation ", "Azimuth "};
    for (std::size_t index = 0; index < names.size(); ++index) {
        trd.text(TrdRow::Name, valueColumns[index]) = names[index];
        trd.text(TrdRow::Unit, valueColumns[index]) = "(Deg)";
        trd.text(tieRow, valueColumns[index]) = "0.00";
        trd.setBackColour(tieRow, valueColumns[index], tieColour);
    }
    setSurveyUnit(trd, unit);
    trd.text(tieRow, TrdColumn::Label) = "Tie Point >";
}

double TVD_C(double md1, double md2, double dev1, double dev2) {
    // Kept: only the depths are put in order, the angles stay with their places. Test: stepBackwardsSwapsTheDepthsOnly
    if (md1 > md2) std::swap(md1, md2);
    if (md1 == md2) return 0;
    // Kept: not quite pi / 180, which moves the fifth digit of a horizontal well. Test: constantDeviation
    constexpr double radians = 0.0174532778;
    const double length = md2 - md1;
    const double half = (dev2 - dev1) / 2 * radians;
    const double mean = (dev1 + dev2) / 2 * radians;
    if (std::fabs(half / radians) < 1.0) {
        // sin(half) / half as a series, which needs no division by a small angle.
        const double h2 = half * half;
        const double h4 = h2 * h2;
        return length * std::cos(mean) * (1 - h2 / 6 + h4 / 120);
    }
    return length * std::cos(mean) * std::sin(half) / half;
}

void copyTrdToInclinometry(Session& session) {
    Table& trd = session.tables.trd;
    session.inclinometry.rows.clear();
    if (!tableReady(trd)) return;
    const double factor = unitOf(trd);
    for (int row = tieRow; row < trd.rows() && session.inclinometry.rows.size() < InclinometryTable::capacity; ++row)
        if (rowCounts(trd, row)) session.inclinometry.rows.push_back(surveyRow(trd, row, factor));
    trd.data(markRow, markColumn).clear();
}

void copyInclinometryToTrd(Session& session) {
    Table& trd = session.tables.trd;
    if (!tableReady(trd)) setupTVD(trd);
    const double factor = unitOf(trd);
    int row = tieRow;
    for (const SurveyRow& survey : session.inclinometry.rows) {
        if (survey.md == static_cast<float>(lasNull)) return;
        if (row >= trd.rows()) trd.resize(row + 1, trd.columns());
        const auto texts = cellTexts(survey, factor);
        for (std::size_t index = 0; index < texts.size(); ++index) trd.text(row, valueColumns[index]) = texts[index];
        ++row;
    }
}

void sortGrd(Session& session) {
    Table& trd = session.tables.trd;
    if (!tableReady(trd)) setupTVD(trd);
    sortByMeasuredDepth(trd);
    copyTrdToInclinometry(session);
    // The way back goes row by row and leaves empty cells empty: a missing deviation has to be found, not read as 0.
    const double factor = unitOf(trd);
    std::size_t place = 0;
    for (int row = tieRow; row < trd.rows() && place < session.inclinometry.rows.size(); ++row) {
        if (!rowCounts(trd, row)) continue;
        const auto texts = cellTexts(session.inclinometry.rows[place++], factor);
        for (std::size_t index = 0; index < texts.size(); ++index)
            if (filled(trd, row, valueColumns[index])) trd.text(row, valueColumns[index]) = texts[index];
    }
}

bool buildTVDTable(Session& session, UserInterface& user) {
    sortGrd(session);
    Table& trd = session.tables.trd;
    if (!filled(trd, tieRow, TrdColumn::Md) || !filled(trd, tieRow, TrdColumn::Tvd) ||
        !filled(trd, tieRow, TrdColumn::Deviation)) {
        user.ask({tieTitle, tieText, Buttons::Ok, Icon::None, Answer::Ok});
        return false;
    }
    for (int row = firstSurveyRow; row < trd.rows(); ++row) {
        const bool hasDepth = filled(trd, row, TrdColumn::Md);
        const bool hasDeviation = filled(trd, row, TrdColumn::Deviation);
        if (!hasDepth && !hasDeviation) continue;
        if (!hasDepth || !hasDeviation) {
            // Kept: the rows behind are computed all the same, the next one from an empty TVD, that is from 0. Test:
            // incompleteRowIsTold
            user.ask({rowTitle,
                      "Incomplete data found at row " + std::to_string(row) +
                          ". You must have a Measured depth and Deviation for every row you want to use.",
                      Buttons::Ok, Icon::Stop, Answer::Ok});
            continue;
        }
        const double step = TVD_C(number(trd, row - 1, TrdColumn::Md), number(trd, row, TrdColumn::Md),
                                  number(trd, row - 1, TrdColumn::Deviation), number(trd, row, TrdColumn::Deviation));
        trd.text(row, TrdColumn::Tvd) = formatMask(number(trd, row - 1, TrdColumn::Tvd) + step, 2);
    }
    copyTrdToInclinometry(session);
    return true;
}

std::optional<SurveyFault> noNumberIn(const Table& trd) {
    for (int row = tieRow; tableReady(trd) && row < trd.rows(); ++row)
        for (const TrdColumn which : {TrdColumn::Md, TrdColumn::Tvd, TrdColumn::Deviation}) {
            const std::string& text = trd.text(row, which);
            if (blank(text) || (isNumeric(text) && std::fabs(val(text)) <= widest)) continue;
            return SurveyFault{row, at(which), "survey row " + std::to_string(row) + ": \"" + text + "\" is no number"};
        }
    return std::nullopt;
}

std::optional<SurveyFault> surveyFault(const Table& trd) {
    if (auto text = noNumberIn(trd)) return text;
    for (int row = tieRow; tableReady(trd) && row < trd.rows(); ++row) {
        if (!rowCounts(trd, row)) continue;
        const std::string where = "survey row " + std::to_string(row) + " has no ";
        if (!filled(trd, row, TrdColumn::Md)) return SurveyFault{row, at(TrdColumn::Md), where + "measured depth"};
        if (!filled(trd, row, TrdColumn::Tvd))
            return SurveyFault{row, at(TrdColumn::Tvd), where + "TVD: compute the TVD column"};
    }
    return std::nullopt;
}

void markTrdChanged(Table& trd) {
    if (tableReady(trd)) trd.data(markRow, markColumn) = "changed";
}

bool trdChanged(const Table& trd) {
    return tableReady(trd) && !trd.data(markRow, markColumn).empty();
}

void updateInclinometry(Session& session) {
    if (trdChanged(session.tables.trd)) copyTrdToInclinometry(session);
}

}  // namespace welvane
