#include "convert/generic_table.h"

#include <algorithm>

#include "shared/failure.h"
#include "shared/numbers.h"

namespace welvane {

namespace {

constexpr std::string_view cleanedNull = "-999.25";
constexpr std::string_view depthName = "DEPT";

[[noreturn]] void outside() {
    throw RunTimeFailure("subscript out of range");
}

std::string cleaned(std::string_view cell) {
    return std::string(isNoNumberText(cell) ? cleanedNull : cell);
}

std::string label(std::int64_t row) {
    switch (static_cast<GrdRow>(row)) {
        case GrdRow::Channels:
            return "Channels-->";
        case GrdRow::Name:
            return "Name";
        case GrdRow::Unit:
            return "Unit";
        case GrdRow::Use:
            return "Use?";
        default:
            return {};
    }
}

}  // namespace

const GenericTable::Column& GenericTable::head(int column) const {
    if (column < 1 || column >= columns()) outside();
    return columns_[static_cast<std::size_t>(column) - 1];
}

GenericTable::Column& GenericTable::head(int column) {
    return const_cast<Column&>(static_cast<const GenericTable*>(this)->head(column));
}

GenericTable::RowPlace GenericTable::place(std::int64_t row) const {
    if (row < grdHeadRows || row >= rows()) outside();
    return rows_[row - grdHeadRows];
}

const std::string* GenericTable::edited(RowPlace place, std::size_t source) const {
    if (edits_.empty()) return nullptr;
    const auto row = edits_.find(place);
    if (row == edits_.end()) return nullptr;
    for (const auto& [field, text] : row->second)
        if (field == source) return &text;
    return nullptr;
}

std::string GenericTable::cell(std::int64_t row, int column) const {
    if (row < 0 || row >= rows() || column < 0 || column >= columns()) outside();
    if (column == 0) return label(row);
    switch (static_cast<GrdRow>(std::min(row, grdHeadRows))) {
        case GrdRow::Channels:
            return "Chan #" + std::to_string(column);
        case GrdRow::Name:
            return name(column);
        case GrdRow::Unit:
            return unit(column);
        case GrdRow::Use:
            return used(column) ? "1" : "0";
        case GrdRow::FirstData:
            break;
    }
    return cleaned(RowReader(*this).cell(row - grdHeadRows, column));
}

void GenericTable::setCell(std::int64_t row, int column, std::string_view text) {
    Column& changed = head(column);
    switch (row < 0 ? GrdRow::Channels : static_cast<GrdRow>(std::min(row, grdHeadRows))) {
        case GrdRow::Channels:
            outside();
        case GrdRow::Name:
            changed.name = std::string(text);
            return;
        case GrdRow::Unit:
            changed.unit = normalUnit(text);
            return;
        case GrdRow::Use:
            changed.use = text == "1";
            return;
        case GrdRow::FirstData:
            break;
    }
    auto& edits = edits_[place(row)];
    const auto found =
        std::find_if(edits.begin(), edits.end(), [&changed](const auto& edit) { return edit.first == changed.source; });
    if (found == edits.end())
        edits.emplace_back(changed.source, trimSpace(text));
    else
        found->second = std::string(trimSpace(text));
}

void GenericTable::appendColumn(std::size_t source) {
    Column column;
    column.source = source;
    columns_.push_back(std::move(column));
}

void GenericTable::setUp(std::int64_t wantedRows, int wantedColumns, std::string_view depthUnit) {
    const bool wasEmpty = columns_.empty();
    while (columns() < wantedColumns) appendColumn(nextSource_++);
    while (!columns_.empty() && rows() < wantedRows) rows_.push_back(nextAdded_++);
    if (!wasEmpty || columns_.empty()) return;
    columns_.front().name = depthName;
    columns_.front().unit = std::string(depthUnit);
}

void GenericTable::dropColumn(int column) {
    head(column);
    columns_.erase(columns_.begin() + (column - 1));
}

void GenericTable::removeRow(std::int64_t row) {
    edits_.erase(place(row));
    rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(row - grdHeadRows));
}

void GenericTable::sortDepth(bool deepestFirst) {
    std::vector<std::pair<double, RowPlace>> order;
    order.reserve(rows_.size());
    const RowReader reader(*this);
    for (std::int64_t row = 0; row < dataRows(); ++row) order.emplace_back(val(reader.cell(row, 1)), rows_[row]);
    std::sort(order.begin(), order.end(), [deepestFirst](const auto& one, const auto& other) {
        if (one.first != other.first) return deepestFirst ? one.first > other.first : one.first < other.first;
        return one.second < other.second;
    });
    std::transform(order.begin(), order.end(), rows_.begin(), [](const auto& row) { return row.second; });
}

std::size_t GenericTable::lineNumber(std::int64_t dataRow) const {
    const RowPlace at = place(dataRow + grdHeadRows);
    return at >= addedRow ? 0 : TableLines(bytes()).numberAt(at);
}

RowReader::RowReader(const GenericTable& table) : table_(table), lines_(table.bytes()) {}

const std::vector<std::string_view>& RowReader::read(std::int64_t dataRow) {
    const GenericTable::RowPlace place = table_.rows_[dataRow];
    if (place >= GenericTable::addedRow)
        fields_.clear();
    else
        splitFields(lines_.lineAt(place), table_.delimiter_, fields_);
    const bool editedRow = !table_.edits_.empty() && table_.edits_.contains(place);
    cells_.clear();
    for (const GenericTable::Column& column : table_.columns_) {
        const std::string* const edit = editedRow ? table_.edited(place, column.source) : nullptr;
        if (edit != nullptr)
            cells_.emplace_back(*edit);
        else
            cells_.push_back(column.source < fields_.size() ? fields_[column.source] : std::string_view());
    }
    return cells_;
}

std::string_view RowReader::cell(std::int64_t dataRow, int column) const {
    const GenericTable::RowPlace place = table_.rows_[dataRow];
    const std::size_t source = table_.head(column).source;
    if (const std::string* const edit = table_.edited(place, source); edit != nullptr) return *edit;
    if (place >= GenericTable::addedRow) return {};
    FieldCursor cursor(lines_.lineAt(place), table_.delimiter_);
    std::string_view field;
    for (std::size_t number = 0; cursor.next(field); ++number)
        if (number == source) return field;
    return {};
}

}  // namespace welvane
