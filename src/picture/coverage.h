#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "picture/drawing.h"
#include "session/session.h"

/// How the depth ranges of up to four files lie against each other: one bar per file, nothing of the logs.
namespace welvane {

/// What is drawn of a file. Depths in one unit for all files.
struct CoverageFile {
    std::string path;
    double top = 0, bottom = 0;
};
using CoverageFiles = std::array<std::optional<CoverageFile>, slotCount>;

/// The bar of a file, in the user scale: x 0 to 40, y in depth.
struct CoverageBox {
    int slot = 0;
    double left = 0, right = 0, top = 0, bottom = 0;
};
/// A line across the whole width at the top or the bottom of a file.
struct CoverageLine {
    int slot = 0;
    double x1 = 0, x2 = 0, depth = 0;
    bool isTop = false;
};
struct Coverage {
    static constexpr double width = 40;
    double shallowest = 0, deepest = 0;  ///< the picture's top, and what lies its height below
    std::vector<CoverageLine> lines;     ///< beneath the boxes; two for each file
    std::vector<CoverageBox> boxes;
    bool empty() const { return boxes.empty(); }
};

/// Lines and boxes of the files that there are, in the order of the slots.
Coverage drawVisual(const CoverageFiles& files);
/// The loaded slots of a session, by their headers, each in its file's own unit.
CoverageFiles coverageFiles(const Session& session);

/// A depth as labels show it, "1000.0488".
std::string coverageDepth(double depth);
/// "File 1 Top" or "File 1 Bottom".
std::string coverageTip(int slot, bool isTop);

/// The coverage as a picture with a depth axis, a label at each top and bottom, names and legend; each box and line is
/// a group that tells what it is. `unit` is that of the depths. A coverage of nothing says so.
Drawing coverageDrawing(const Coverage& coverage, const CoverageFiles& files, const std::string& unit, double width,
                        double height);

}  // namespace welvane
