#include "convert/record_text.h"

#include <array>
#include <charconv>
#include <cmath>

#include "shared/csv.h"

namespace welvane {

namespace {

std::string csvRow(const std::vector<std::string>& fields) {
    std::string row;
    for (std::size_t field = 0; field < fields.size(); ++field) {
        if (field > 0) row += ',';
        appendCsvField(row, fields[field]);
    }
    return row.append(csvRowEnd);
}

std::string jsonText(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string quoted = "\"";
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\')
            quoted.append(1, '\\').append(1, c);
        else if (code < 0x20)
            quoted.append("\\u00").append(1, digits[code / 16]).append(1, digits[code % 16]);
        else
            quoted += c;
    }
    return quoted + '"';
}

}  // namespace

void appendNumber(std::string& text, double value) {
    // Between these a number without an exponent is what a person would write.
    const double size = std::abs(value);
    const bool plain = size == 0 || (size >= 1e-7 && size < 1e16);
    std::array<char, 40> digits;
    const auto [end, error] = plain ? std::to_chars(digits.begin(), digits.end(), value, std::chars_format::fixed)
                                    : std::to_chars(digits.begin(), digits.end(), value);
    text.append(digits.begin(), end);
}

RecordText::RecordText(RecordForm form, const std::vector<std::string>& names, const std::vector<std::string>& units)
    : form_(form), names_(names), units_(units) {
    for (std::size_t column = 0; column < names.size(); ++column) {
        const bool first = column == 0;
        leads_.push_back(form == RecordForm::Csv ? std::string(first ? "" : ",")
                                                 : (first ? "{" : ",") + jsonText(names[column]) + ":");
    }
}

std::string RecordText::head(bool withUnits) const {
    if (form_ == RecordForm::JsonLines) return {};
    return csvRow(names_) + (withUnits ? csvRow(units_) : std::string());
}

void RecordText::add(std::string& text, std::span<const double> values) const {
    for (std::size_t column = 0; column < leads_.size(); ++column) {
        text += leads_[column];
        if (!std::isnan(values[column]))
            appendNumber(text, values[column]);
        else if (form_ == RecordForm::JsonLines)
            text += "null";
    }
    text += form_ == RecordForm::Csv ? csvRowEnd : std::string_view("}\n");
}

}  // namespace welvane
