#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "conform/findings.h"
#include "conform/header_fields.h"
#include "conform/line_walk.h"
#include "reference/reference_tables.h"

/// What is known of a file once it was held against the rules. Views point into the file's bytes.
namespace welvane {

/// A section as it stands in the file.
struct SeenSection {
    std::string_view title;
    char letter = '\0';  ///< capital; NUL for a title without a name
    std::size_t line = 0;
};

/// The mandatory text lines of ~Well and the like, by their place in mandatoryTexts.
inline constexpr std::array<std::string_view, 13> wellTexts = {"COMP", "WELL", "FLD",  "LOC", "SRVC", "DATE", "PROV",
                                                               "CNTY", "STAT", "CTRY", "UWI", "API",  "LIC"};
/// The first of them that have to be there, whatever the country is.
inline constexpr std::size_t mandatoryTexts = 6;
/// Lines between two questions whether to go on.
inline constexpr std::size_t linesPerTurn = 4096;

struct CurveLine {
    std::string_view mnem, unit;
    std::size_t line = 0;
};

struct HeaderFacts {
    std::vector<SeenSection> sections;
    HeaderFields vers, wrap, dlm, strt, stop, step, null;
    std::array<HeaderFields, wellTexts.size()> texts{};
    std::vector<CurveLine> curves;
    std::size_t curveCount = 0;  ///< more than `curves` holds where there are more than anybody has

    const SeenSection* section(char letter) const {
        for (const SeenSection& seen : sections)
            if (seen.letter == letter) return &seen;
        return nullptr;
    }
    bool wrapped() const;
    /// The number of a line; nothing where it has none that could be computed with.
    static std::optional<Decimal> number(const HeaderFields& fields);
};

/// What the data are, whatever WRAP says.
enum class RowLayout { Unknown, Plain, Wrapped };

struct RowFacts {
    std::size_t rows = 0;
    RowLayout layout = RowLayout::Unknown;
    std::string_view firstIndex, lastIndex;  ///< as printed
    std::size_t firstLine = 0, lastLine = 0;
    int direction = 0;      ///< 1 deeper, -1 shallower, 0 where less than two rows tell
    bool constant = false;  ///< three rows or more, every difference the same
    Decimal spacing{};      ///< the first difference
    bool spacingKnown = false;
    bool comma = false;  ///< commas part the columns
};

struct Judgement {
    Findings findings;
    std::optional<StandardVersion> version{};  ///< as VERS tells it
    HeaderFacts header{};
    RowFacts data{};
    std::string remark{};  ///< what was not judged, "" for nothing
    bool stopped = false;
};

struct JudgeOptions {
    std::string_view name{};                   ///< the file's name; "" for one that has none
    std::size_t most = 10;                     ///< findings kept for each rule
    const ReferenceTables* library = nullptr;  ///< units and mnemonics that are known; none for no such hints
    std::function<bool()> stopped{};           ///< asked now and then
};

/// Holds a text against the rules in one walk. The text has to outlive what is returned. Lets nothing be thrown but
/// what `stopped` throws.
Judgement judgeText(std::string_view bytes, const JudgeOptions& options);

}  // namespace welvane
