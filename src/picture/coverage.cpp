#include "picture/coverage.h"

#include <algorithm>

#include "picture/axis.h"
#include "session/loading.h"
#include "shared/files.h"
#include "shared/numbers.h"

namespace welvane {

namespace {

/// Left and right of the bar of each slot.
constexpr std::array<std::array<double, 2>, slotCount> barPlaces = {{{1, 9}, {10, 19}, {20, 29}, {30, 39}}};

constexpr double titleRoom = 40, nameRoom = 36, depthHeight = 16, depthText = 11, axisRoom = 64, rightRoom = 18,
                 footRoom = 40;

std::string fileName(int slot) {
    return "File " + std::to_string(slot + 1);
}

class CoveragePainter {
  public:
    CoveragePainter(const Coverage& coverage, const CoverageFiles& files, const std::string& unit, double width,
                    double height)
        : coverage_(coverage), files_(files), unit_(unit) {
        drawing_.width = width;
        drawing_.height = height;
        drawing_.title = "Depth coverage";
        // Bars keep off the frame: the labels of short ones stand above and below.
        plot_ = {axisRoom, titleRoom + nameRoom, width - rightRoom, height - footRoom};
        axis_ = {coverage.shallowest, coverage.deepest, plot_.top + depthHeight + 6, plot_.bottom - depthHeight - 6};
    }

    Drawing drawing() {
        drawing_.add(Label{{axisRoom, 26}, "Depth coverage", 16, Ink::Text, Anchor::Left, true});
        drawing_.add(Box{plot_, Ink::Panel});
        if (coverage_.empty()) {
            drawing_.add(Label{
                {plot_.middle(), (plot_.top + plot_.bottom) / 2}, "No file is loaded", 12, Ink::Faint, Anchor::Middle});
            return std::move(drawing_);
        }
        addAxis();
        for (const CoverageLine& line : coverage_.lines) addLine(line);
        for (const CoverageBox& box : coverage_.boxes) addBox(box);
        for (const CoverageBox& box : coverage_.boxes) addDepths(box);
        drawing_.add(Box{plot_, Ink::None, {Ink::Frame}});
        addFoot();
        return std::move(drawing_);
    }

  private:
    double x(double user) const { return plot_.left + user / Coverage::width * plot_.width(); }
    const CoverageFile& file(int slot) const { return *files_[slot]; }
    std::string withUnit(double depth) const { return coverageDepth(depth) + (unit_.empty() ? "" : " " + unit_); }

    void addAxis() {
        const double step = axis_.mainStep(44);
        Polyline grid{{}, {Ink::StrongGrid, 0.6}};
        const double perUnit = (axis_.bottom - axis_.top) / (axis_.lowerEdge - axis_.upperEdge);
        const double edge = (axis_.upperEdge - plot_.top - 4) * perUnit;
        for (const double depth : multiplesOf(step, axis_.top - edge, axis_.bottom + edge)) {
            const double y = axis_.place(depth);
            grid.pieces.push_back({{plot_.left - 4, y}, {plot_.right, y}});
            drawing_.add(Label{{plot_.left - 8, y + 3.5}, axisNumber(depth, step), 10, Ink::Faint, Anchor::Right});
        }
        if (!unit_.empty())
            drawing_.add(Label{
                {plot_.left - 8, plot_.top - 8}, fittedText(unit_, axisRoom - 12, 10), 10, Ink::Faint, Anchor::Right});
        drawing_.add(std::move(grid));
    }

    void addLine(const CoverageLine& line) {
        drawing_.add(GroupStart{coverageTip(line.slot, line.isTop) + ": " + withUnit(line.depth)});
        const double y = axis_.place(line.depth);
        drawing_.add(Line{{x(line.x1), y}, {x(line.x2), y}, {slotInk(line.slot)}});
        drawing_.add(GroupEnd{});
    }

    void addBox(const CoverageBox& box) {
        const CoverageFile& file = this->file(box.slot);
        drawing_.add(GroupStart{fileName(box.slot) + ": " + file.path + ", " + withUnit(box.top) + " to " +
                                withUnit(box.bottom)});
        // A file of a single depth is seen too.
        const double top = axis_.place(box.top), bottom = std::max(axis_.place(box.bottom), top + 2);
        drawing_.add(Box{{x(box.left), top, x(box.right), bottom}, slotInk(box.slot)});
        const double middle = (x(box.left) + x(box.right)) / 2, room = x(9.5) - x(0);
        drawing_.add(Label{{middle, plot_.top - 21}, fileName(box.slot), 11, slotInk(box.slot), Anchor::Middle, true});
        drawing_.add(
            Label{{middle, plot_.top - 8}, fittedText(fileNameOf(file.path), room, 9), 9, Ink::Text, Anchor::Middle});
        drawing_.add(GroupEnd{});
    }

    /// Top and bottom of a bar, upon it where it is long enough, else above and below.
    void addDepths(const CoverageBox& box) {
        const double top = axis_.place(box.top), bottom = std::max(axis_.place(box.bottom), top + 2);
        const bool inside = bottom - top > 2.5 * depthHeight;
        addDepth(box, true, inside ? top : top - depthHeight, inside);
        addDepth(box, false, inside ? bottom - depthHeight : bottom, inside);
    }
    void addDepth(const CoverageBox& box, bool isTop, double y, bool inside) {
        const std::string text = coverageDepth(isTop ? box.top : box.bottom);
        const double room = x(box.right) - x(box.left), middle = (x(box.left) + x(box.right)) / 2;
        const double usual = textWidth(text, depthText), size = std::min(1.0, room / (usual + 4)) * depthText;
        drawing_.add(GroupStart{coverageTip(box.slot, isTop)});
        // Beside a short bar the lines of other files pass behind the figures.
        const double half = usual * size / depthText / 2 + 3;
        if (!inside) drawing_.add(Box{{middle - half, y + 2, middle + half, y + depthHeight - 2}, Ink::Panel});
        const Ink ink = inside ? Ink::OnSlot : slotInk(box.slot);
        drawing_.add(Label{{middle, y + 12}, text, size, ink, Anchor::Middle, !inside});
        drawing_.add(GroupEnd{});
    }

    void addFoot() {
        const double y = plot_.bottom + 24;
        drawing_.add(GroupStart{"Shallowest"});
        drawing_.add(Label{{plot_.left, y}, "Min Top  " + withUnit(coverage_.shallowest), 11, Ink::Text});
        drawing_.add(GroupEnd{});
        drawing_.add(GroupStart{"Deepest"});
        drawing_.add(
            Label{{plot_.right, y}, "Max Bottom  " + withUnit(coverage_.deepest), 11, Ink::Text, Anchor::Right});
        drawing_.add(GroupEnd{});
    }

    const Coverage& coverage_;
    const CoverageFiles& files_;
    const std::string& unit_;
    Drawing drawing_;
    Area plot_;
    DepthAxis axis_;
};

}  // namespace

Coverage drawVisual(const CoverageFiles& files) {
    Coverage coverage;
    for (std::size_t index = 0; index < files.size(); ++index) {
        if (!files[index]) continue;
        const int slot = static_cast<int>(index);
        const double top = files[index]->top, bottom = files[index]->bottom;
        coverage.shallowest = coverage.empty() ? top : std::min(coverage.shallowest, top);
        coverage.deepest = coverage.empty() ? bottom : std::max(coverage.deepest, bottom);
        coverage.lines.push_back({slot, 0, Coverage::width, top, true});
        coverage.lines.push_back({slot, 0, Coverage::width, bottom, false});
        coverage.boxes.push_back({slot, barPlaces[index][0], barPlaces[index][1], top, bottom});
    }
    return coverage;
}

CoverageFiles coverageFiles(const Session& session) {
    CoverageFiles files;
    for (int slot = 0; slot < slotCount; ++slot) {
        const auto index = static_cast<std::size_t>(slot);
        const InputSlot& facts = session.slots[index];
        if (session.loaded(slot)) files[index] = CoverageFile{facts.path, facts.topDepth, facts.bottomDepth};
    }
    return files;
}

std::string coverageDepth(double depth) {
    return formatMask(depth, 4);
}

std::string coverageTip(int slot, bool isTop) {
    return fileName(slot) + (isTop ? " Top" : " Bottom");
}

Drawing coverageDrawing(const Coverage& coverage, const CoverageFiles& files, const std::string& unit, double width,
                        double height) {
    return CoveragePainter(coverage, files, unit, width, height).drawing();
}

}  // namespace welvane
