#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// The lines that a repair drops, for the notes.
namespace welvane {

/// A line of a file, its number from 1.
struct NumberedLine {
    std::size_t number = 0;
    std::string text;  ///< cut where it is long
};

/// Header lines that share their line with a curve title: what stands in front of it.
std::vector<NumberedLine> linesBeforeCurveTitle(const std::string& path);

}  // namespace welvane
