#pragma once

#include <string>
#include <string_view>

namespace welvane {

/// How a row of comma-separated values ends (RFC 4180).
inline constexpr std::string_view csvRowEnd = "\r\n";

/// Adds a field as RFC 4180 has it: in quotes where it holds a comma, a quote or a line break, each quote twice.
inline void appendCsvField(std::string& row, std::string_view field) {
    if (field.find_first_of(",\"\r\n") == std::string_view::npos) {
        row += field;
        return;
    }
    row += '"';
    for (const char c : field) row.append(c == '"' ? 2 : 1, c);
    row += '"';
}

}  // namespace welvane
