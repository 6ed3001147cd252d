#include "models/coverage.h"

#include "session/matching.h"

namespace welvane {

namespace {

CoverageLabel rangeLabel(const Coverage& coverage, double depth, const char* caption, const char* tip) {
    if (coverage.empty()) return {false, "", caption, tip};
    return {true, coverageDepth(depth), caption, tip};
}

}  // namespace

std::string CoverageTab::depthUnit() const {
    for (int slot = 0; slot < slotCount; ++slot)
        if (session_.loaded(slot)) return session_.slots[slot].depthUnit;
    return {};
}

Drawing CoverageTab::drawing(double width, double height) const {
    return coverageDrawing(picture(), coverageFiles(session_), depthUnit(), width, height);
}

std::array<CoverageLabel, 2 * slotCount> CoverageTab::labels() const {
    std::array<CoverageLabel, 2 * slotCount> labels;
    const CoverageFiles files = coverageFiles(session_);
    for (int place = 0; place < 2 * slotCount; ++place) {
        const int slot = place / 2;
        const bool isTop = place % 2 == 0;
        CoverageLabel& label = labels[place];
        label.caption = coverageTip(slot, isTop);
        // Kept: the first file's bottom label too is told as its top. Test: labelsShowTopsAndBottomsWithTheirTips
        label.tip = coverageTip(slot, isTop || slot == 0);
        label.back = slotInk(slot);
        const auto& file = files[slot];
        if (!file) continue;
        label.visible = true;
        label.text = coverageDepth(isTop ? file->top : file->bottom);
        label.tip += "\n" + file->path;
    }
    return labels;
}

CoverageLabel CoverageTab::minTop() const {
    const Coverage coverage = picture();
    return rangeLabel(coverage, coverage.shallowest, "Min Top", "Shallowest");
}
CoverageLabel CoverageTab::maxBottom() const {
    const Coverage coverage = picture();
    return rangeLabel(coverage, coverage.deepest, "Max Bottom", "Deepest");
}

std::array<SpliceBox, 2 * slotCount> CoverageTab::boxes() const {
    std::array<SpliceBox, 2 * slotCount> boxes;
    for (int place = 0; place < 2 * slotCount; ++place) {
        const int slot = place / 2;
        const std::string caption = place % 2 == 0 ? "File " + std::to_string(slot + 1) + " From +" : "To +";
        boxes[place] = {session_.loaded(slot), session_.tables.fsL[place], caption, slotInk(slot)};
    }
    return boxes;
}

void CoverageTab::type(int box, const std::string& text) {
    if (box >= 0 && box < 2 * slotCount) session_.tables.fsL[box] = text;
}

void CoverageTab::enter(int box) {
    if (box < 0 || box >= 2 * slotCount || !session_.loaded(box / 2)) return;
    enterSpliceDepth(session_, box, std::string(session_.tables.fsL[box]));
}

std::string CoverageTab::applyCaption(int slot) {
    return "Apply to all channels of file " + std::to_string(slot + 1);
}

void CoverageTab::apply(int slot) {
    if (slot >= 0 && slot < slotCount && canApply(slot)) applySpliceDepths(session_, slot);
}

void CoverageTab::applyParameters(const std::string& from, const std::string& to) {
    applyParameterDepths(session_, from, to);
}

}  // namespace welvane
