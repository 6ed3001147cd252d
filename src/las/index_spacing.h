#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace welvane {

/// How the depths of a file's records lie by FigureRules::trueFigures: what they follow themselves, whatever the header
/// says.
struct IndexSpacing {
    enum class Kind {
        Regular,   ///< each record one step behind the one before it
        Gaps,      ///< the same, but records are missing
        Irregular  ///< no step, or depths that go to and fro
    };
    Kind kind = Kind::Regular;
    double first = 0, last = 0;  ///< depths of the first and the last record
    double top = 0, bottom = 0;  ///< the smallest and the largest depth
    double step = 0;             ///< positive; 0 where there is none
    int direction = 1;           ///< -1 where the records go up
    bool ownStep = false;        ///< the data's own spacing: the STEP line is 0, missing or not followed
    std::size_t missing = 0;     ///< records that are not there (Gaps)
    std::size_t misfit = 0;      ///< number (from 0) of the first record that does not fit (Irregular)
    double off = 0;              ///< the most that a depth lies beside its grid
    std::size_t decimals = 0;    ///< that the depths have
};

/// Judges depths (at least one), of which the texts have `decimals` at most, against the text of the STEP line. A step
/// is followed when every depth lies where it says, as far as the rounding of depths lets it.
IndexSpacing judgeSpacing(const std::vector<double>& depths, std::size_t decimals, std::string_view headerStep);

}  // namespace welvane
