#pragma once

#include <string_view>
#include <vector>

#include "conform/data_tokens.h"
#include "conform/index_track.h"
#include "conform/judgement.h"

namespace welvane {

/// Judges the lines of ~A, one after the other, in memory that does not grow with them.
class DataJudge {
  public:
    /// `rest` is all that stands behind the title of ~A: its first lines tell how rows are laid out.
    DataJudge(Judgement& judged, std::string_view rest);

    void line(std::string_view line, std::size_t number);
    /// Once the section is over: what can be told of all rows.
    void finish();

  private:
    /// One line, cut.
    struct Cut {
        std::size_t count = 0;
        std::size_t pieces = 0;  ///< more cells, were run-on numbers parted
    };
    /// Where a column ends and how many decimals it has, in the first row.
    struct Column {
        std::size_t end = 0, decimals = 0;
    };

    bool isNamesLine(std::string_view line) const;
    Cut cut(std::string_view line, std::size_t number);
    void judgeOdd(const DataToken& token, std::string_view line, std::size_t number, Cut& cut);
    void judgeLayout(const DataToken& token, bool plain, std::size_t column, std::string_view line, std::size_t number);
    void judgeEmptyCells(std::string_view line, std::size_t number);
    void judgeLength(std::string_view line, std::size_t number);
    void judgeIndex(const DataToken& token, std::string_view line, std::size_t number);
    void judgeSpacing(IndexTrack::Kind kind, const DataToken& token, std::string_view line, std::size_t number);
    void endPlainRow(const Cut& cut, std::string_view line, std::size_t number);
    void endWrappedLine(const Cut& cut, std::string_view line, std::size_t number);
    bool beginsStep(std::string_view line) const;
    void endRow(std::size_t number);
    Findings& findings() { return judged_.findings; }

    Judgement& judged_;
    RowFacts& data_;
    const std::size_t columns_;  ///< lines of ~Curve; 0 where it does not stand in front
    const bool judgeWrapped_;    ///< rows go over several lines
    const std::array<std::uint8_t, 256>& kinds_;
    std::optional<Decimal> null_;
    std::string_view stepText_;
    IndexTrack track_;

    std::size_t blanks_ = 0, blankLine_ = 0;  ///< blank lines that no row has followed yet
    std::size_t lines_ = 0;
    std::string_view firstLine_;
    std::vector<Column> layout_;
    bool layoutTold_ = false, decimalsVary_ = false;
    TextPlace layoutPlace_{};
    std::string_view layoutText_;

    // Rows of one line: held against ~Curve and against the first row, as only the end tells which counts.
    std::size_t firstCount_ = 0, fitting_ = 0;
    Findings againstCurves_, againstFirst_;
    // Wrapped rows: cells of the step in hand, and the cells on each line of the first whole step.
    std::size_t have_ = 0, stepLine_ = 0, lineOfStep_ = 0;
    std::string_view stepText0_;
    std::vector<std::size_t> pattern_, current_;

    std::size_t roundedLine_ = 0, rounded_ = 0;
    std::string_view roundedText_;
};

}  // namespace welvane
