#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace welvane {

/// What readCrnphi lists.
enum class CrnphiMode {
    Tools = 0,     ///< the head of each section, as it stands
    Diameters = 1  ///< a heading, then the data lines of the sections whose head holds the tool's name
};
inline constexpr std::string_view crnphiHeading = "Dia:   Low_Ø High_CR  High_Ø  Low_CR";

/// Lists the count-rate tables of crnphi.ini in the program's folder (which has its separator at the end). Empties the
/// list first; false when the file is missing, which is told to nobody.
bool readCrnphi(std::vector<std::string>& list, CrnphiMode mode, std::string_view toolName,
                std::string_view programFolder);

/// The five figures of one data line.
struct CrnphiRow {
    std::string diameter, lowPorosity, highCountRate, highPorosity, lowCountRate;
};
/// False, with nothing set, unless the line has exactly five fields.
bool splitCrnphiRow(std::string_view line, CrnphiRow& row);

}  // namespace welvane
