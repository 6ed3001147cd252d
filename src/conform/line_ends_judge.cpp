#include "conform/line_ends_judge.h"

#include <algorithm>

namespace welvane {

namespace {

/// The place of the first character of a kind, from 1; 0 for none.
template <class Kind>
std::size_t columnOf(std::string_view line, Kind kind) {
    const auto found = std::find_if(line.begin(), line.end(), kind);
    return found == line.end() ? 0 : static_cast<std::size_t>(found - line.begin()) + 1;
}

}  // namespace

void EndCounts::judge(Findings& findings) const {
    const auto count = [this](LineEnd end) { return counts_[static_cast<std::size_t>(end)]; };
    const std::size_t good = count(LineEnd::CrLf), lf = count(LineEnd::Lf), cr = count(LineEnd::Cr);
    const std::size_t odd = count(LineEnd::Odd), all = good + lf + cr + odd;
    if (all == good) return;
    if (cr == all) return findings.add(Rule::F007, {1, 1}, "", std::to_string(all) + " lines end in CR alone", true);
    if (lf == all) {
        // A platform's own end is lawful in 3.0.
        if (findings.version() == StandardVersion::V30) return;
        return findings.add(Rule::F006, {1, 1}, "", std::to_string(all) + " lines end in LF alone", true);
    }
    findings.add(Rule::F006, {firstOther(), 1}, "",
                 "line ends are mixed: " + std::to_string(good) + " CR LF, " + std::to_string(lf) + " LF, " +
                     std::to_string(cr) + " CR, " + std::to_string(odd) + " CR CR LF",
                 true);
}

/// The first line that ends otherwise than the first line of all; that one where all end alike.
std::size_t EndCounts::firstOther() const {
    std::size_t begin = 0, place = 0;
    for (std::size_t kind = 0; kind < counts_.size(); ++kind)
        if (counts_[kind] != 0 && (begin == 0 || first_[kind] < begin)) begin = first_[kind];
    for (std::size_t kind = 0; kind < counts_.size(); ++kind)
        if (counts_[kind] != 0 && first_[kind] != begin && (place == 0 || first_[kind] < place)) place = first_[kind];
    return place == 0 ? begin : place;
}

void judgeHeaderBytes(Findings& findings, std::string_view line, std::size_t number) {
    if (std::all_of(line.begin(), line.end(), [](char c) { return c >= 32 && c <= 126; })) return;
    const auto byte = [](char c) { return static_cast<unsigned char>(c); };
    if (const std::size_t column = columnOf(line, [&](char c) { return byte(c) > 126; }); column != 0)
        findings.add(Rule::F002, {number, column}, line);
    if (const std::size_t column = columnOf(line, [&](char c) { return byte(c) < 32 && c != '\t'; }); column != 0)
        findings.add(Rule::F004, {number, column}, line, {}, true);
    if (const std::size_t column = columnOf(line, [](char c) { return c == '\t'; }); column != 0)
        findings.tally(Rule::F005, {number, column}, line, {}, true);
}

}  // namespace welvane
