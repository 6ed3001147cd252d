#pragma once

#include <set>
#include <string>
#include <vector>

#include "conform/judgement.h"
#include "conform/library_hints.h"

namespace welvane {

/// Judges the lines of 1.2 and 2.0 above and behind the data: sections, their order, and each line by itself.
class HeaderJudge {
  public:
    HeaderJudge(Judgement& judged, const ReferenceTables* library)
        : judged_(judged), hints_(judged.findings, library) {}

    /// A title, of ~A too.
    void title(std::string_view title, std::string_view line, std::size_t number);
    /// Any other line that stands in no ~A section.
    void line(std::string_view line, std::size_t number);
    /// What can be told once all was seen: sections and lines that are missing, ~Well by itself.
    void finish();

  private:
    void judgeTwice(const SeenSection& seen, std::string_view line);
    void judgeOrder(const SeenSection& seen, std::string_view line);
    void judgeFields(const HeaderFields& fields);
    void judgeColons(const HeaderFields& fields);
    void judgeUnit(const HeaderFields& fields);
    void takeVersion(const HeaderFields& fields);
    void takeWell(const HeaderFields& fields);
    void takeCurve(const HeaderFields& fields);
    void takeOnce(HeaderFields& place, const HeaderFields& fields);

    Findings& findings() { return judged_.findings; }
    bool is12() const { return judged_.findings.version() == StandardVersion::V12; }

    Judgement& judged_;
    LibraryHints hints_;
    SeenSection current_{};
    bool repeated_ = false;  ///< the current section stands there for the second time
    bool dataSeen_ = false;
    std::set<std::string, std::less<>> curveNames_;
};

/// The rules of ~Version and ~Well that look at values, with what the data say.
void judgeVersion(Judgement& judged);
void judgeWell(Judgement& judged);
void judgeAgainstData(Judgement& judged);

/// The words that stand in the place of a title for a text line of ~Well ("COMPANY"), without case and blanks around.
bool isPlainTitle(std::string_view mnem, std::string_view text);
/// The title that the line of a mnemonic has by itself.
std::string_view plainTitleOf(std::string_view mnem);

}  // namespace welvane
