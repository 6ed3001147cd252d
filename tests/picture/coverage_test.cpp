#include "picture/coverage.h"

#include <gtest/gtest.h>

namespace welvane {
namespace {

CoverageFiles twoFiles() {
    CoverageFiles files;
    files[1] = CoverageFile{"two.las", 1150, 1400};
    files[3] = CoverageFile{"dir/four.las", 1000, 1200.5};
    return files;
}

TEST(Coverage, barsStandAtTheirPlacesAndLinesAcross) {
    const Coverage coverage = drawVisual(twoFiles());
    EXPECT_EQ(coverage.shallowest, 1000);
    EXPECT_EQ(coverage.deepest, 1400);
    ASSERT_EQ(coverage.boxes.size(), 2u);
    EXPECT_EQ(coverage.boxes[0].left, 10);
    EXPECT_EQ(coverage.boxes[0].right, 19);
    EXPECT_EQ(coverage.boxes[1].left, 30);
    EXPECT_EQ(coverage.boxes[1].right, 39);
    ASSERT_EQ(coverage.lines.size(), 4u);
    const std::array<double, 4> depths = {1150, 1400, 1000, 1200.5};
    for (std::size_t index = 0; index < 4; ++index) {
        EXPECT_EQ(coverage.lines[index].depth, depths[index]);
        EXPECT_EQ(coverage.lines[index].x1, 0);
        EXPECT_EQ(coverage.lines[index].x2, 40);
    }
}

TEST(Coverage, ofNoFileThereIsNothingToDraw) {
    const Coverage coverage = drawVisual({});
    EXPECT_TRUE(coverage.empty());
    EXPECT_TRUE(coverage.lines.empty());
    EXPECT_EQ(coverage.deepest - coverage.shallowest, 0);
}

/// The first box inside the group of this title; nothing where there is none.
std::optional<Area> boxOf(const Drawing& drawing, const std::string& title) {
    bool inside = false;
    for (const Shape& shape : drawing.shapes) {
        if (const auto* group = std::get_if<GroupStart>(&shape)) inside = group->title == title;
        if (const auto* box = std::get_if<Box>(&shape); box != nullptr && inside) return box->area;
    }
    return std::nullopt;
}

TEST(Coverage, barsOfTheDrawingAreAsLongAsTheirDepths) {
    const CoverageFiles files = twoFiles();
    const Drawing drawing = coverageDrawing(drawVisual(files), files, "M", 600, 400);
    const auto two = boxOf(drawing, "File 2: two.las, 1150.0000 M to 1400.0000 M");
    const auto four = boxOf(drawing, "File 4: dir/four.las, 1000.0000 M to 1200.5000 M");
    ASSERT_TRUE(two && four);
    const double perMetre = two->height() / 250;
    EXPECT_NEAR(four->height() / 200.5, perMetre, 1e-9);
    EXPECT_NEAR(two->top - four->top, 150 * perMetre, 1e-9);
    EXPECT_NEAR(four->width() / two->width(), 1, 1e-9);
    EXPECT_NEAR((four->left - two->left) / two->width(), 20.0 / 9, 1e-9);
}

TEST(Coverage, aFileOfOneDepthIsSeen) {
    CoverageFiles files;
    files[0] = CoverageFile{"a.las", 5, 5};
    const auto box = boxOf(coverageDrawing(drawVisual(files), files, "", 600, 400), "File 1: a.las, 5.0000 to 5.0000");
    ASSERT_TRUE(box);
    EXPECT_GT(box->height(), 1);
}

}  // namespace
}  // namespace welvane
