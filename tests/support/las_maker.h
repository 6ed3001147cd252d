#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "shared/numbers.h"

namespace welvane::test {

/// The text with another line end in place of each "\n".
inline std::string withLineEnds(std::string_view text, std::string_view lineEnd = "\r\n") {
    std::string result;
    for (const char c : text) result += c == '\n' ? lineEnd : std::string_view(&c, 1);
    return result;
}

/// The one maker of small LAS texts. A file of version 2.0 in metres with the null -999.25 and no channels is what it
/// begins with; text() has "\n" line ends (TempFolder::writeLines makes them CR LF), bytes() any others.
class LasMaker {
  public:
    LasMaker& version(std::string text) { return set(version_, std::move(text)); }
    LasMaker& unit(std::string text) { return set(unit_, std::move(text)); }
    LasMaker& null(std::string text) { return set(null_, std::move(text)); }
    /// The depth lines, when they are not to tell of the rows.
    LasMaker& depths(std::string start, std::string stop, std::string step) {
        start_ = std::move(start);
        stop_ = std::move(stop);
        return set(step_, std::move(step));
    }
    /// A whole line more in ~Well, ~Parameter or behind it.
    LasMaker& well(const std::string& line) { return set(well_, well_ + line + "\n"); }
    LasMaker& parameter(const std::string& line) { return set(parameters_, parameters_ + line + "\n"); }
    LasMaker& section(const std::string& lines) { return set(sections_, sections_ + lines + "\n"); }
    LasMaker& curve(const std::string& mnem, const std::string& unitText = "GAPI", const std::string& value = "",
                    const std::string& desc = "") {
        curves_ += " " + mnem + "." + unitText + "   " + (value.empty() ? "     " : value) + " : " +
                   (desc.empty() ? "Channel " + mnem : desc) + "\n";
        return *this;
    }
    /// A record: the depth, and the words behind it as they stand.
    LasMaker& row(double depth, const std::string& words) {
        rows_.emplace_back(depth, words);
        return *this;
    }
    /// Records of values that count up: sample i of column c (both from 0 and 1) is 10 * c + i.
    LasMaker& ramp(double start, double step, int samples, int columns) {
        for (int sample = 0; sample < samples; ++sample) {
            std::string words;
            for (int column = 1; column <= columns; ++column) words += "   " + std::to_string(10 * column + sample);
            row(start + sample * step, words);
        }
        return *this;
    }
    /// Each record on lines of `perLine` words behind its depth.
    LasMaker& wrapped(std::size_t perLine) {
        perLine_ = perLine;
        return *this;
    }

    std::string text() const {
        const double first = rows_.empty() ? 0 : rows_.front().first, last = rows_.empty() ? 0 : rows_.back().first;
        const double step = rows_.size() < 2 ? 1 : rows_[1].first - first;
        const auto depthLine = [this](const char* mnem, const std::string& given, double found, const char* desc) {
            return " " + std::string(mnem) + "." + unit_ + "      " + (given.empty() ? plainNumber(found) : given) +
                   " : " + desc + "\n";
        };
        std::string text = "~Version Information\n VERS.        " + version_ + " : CWLS LOG ASCII STANDARD - VERSION " +
                           version_ + "\n WRAP.        " +
                           (perLine_ == 0 ? " NO : One line per depth step" : "YES : Several lines per depth step") +
                           "\n~Well Information\n" + depthLine("STRT", start_, first, "First depth") +
                           depthLine("STOP", stop_, last, "Last depth") + depthLine("STEP", step_, step, "Step");
        if (!null_.empty()) text += " NULL.    " + null_ + " : Null value\n";
        text += well_ + "~Curve Information\n DEPT." + unit_ + "            : Depth\n" + curves_;
        if (!parameters_.empty()) text += "~Parameter Information\n" + parameters_;
        text += sections_ + "~Ascii\n";
        for (const auto& [depth, words] : rows_) text += record(depth, words);
        return text;
    }
    std::string bytes(std::string_view lineEnd = "\r\n") const { return withLineEnds(text(), lineEnd); }

  private:
    LasMaker& set(std::string& target, std::string text) {
        target = std::move(text);
        return *this;
    }
    std::string record(double depth, const std::string& words) const {
        const std::string index = "  " + plainNumber(depth);
        if (perLine_ == 0) return index + (words.starts_with(' ') ? "" : " ") + words + "\n";
        std::string lines = index;
        std::size_t count = 0;
        for (std::size_t place = 0; (place = words.find_first_not_of(' ', place)) != std::string::npos;) {
            const std::size_t end = std::min(words.find(' ', place), words.size());
            lines += (count++ % perLine_ == 0 ? "\n " : " ") + words.substr(place, end - place);
            place = end;
        }
        return lines + "\n";
    }

    std::string version_ = "2.0", unit_ = "M", null_ = "-999.25", start_, stop_, step_, well_, curves_, parameters_,
                sections_;
    std::vector<std::pair<double, std::string>> rows_;
    std::size_t perLine_ = 0;
};

}  // namespace welvane::test
