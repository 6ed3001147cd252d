#include "models/coverage.h"

#include "support/session_fixture.h"

namespace welvane {
namespace {

struct CoverageTabTest : test::SessionTest {
    CoverageTab tab{session};
    void SetUp() override {
        load(0, test::LasText{.start = 1000, .stop = 1200, .step = 0.5});
        load(2, test::LasText{.start = 1150.25, .stop = 1400.25, .step = 0.25});
    }
};

TEST_F(CoverageTabTest, labelsShowTopsAndBottomsWithTheirTips) {
    const auto labels = tab.labels();
    const std::string one = "\n" + session.slots[0].path, three = "\n" + session.slots[2].path;
    EXPECT_EQ(labels[0].text, "1000.0000");
    EXPECT_EQ(labels[0].tip, "File 1 Top" + one);
    EXPECT_EQ(labels[1].text, "1200.0000");
    EXPECT_EQ(labels[1].tip, "File 1 Top" + one);
    EXPECT_EQ(labels[5].text, "1400.2500");
    EXPECT_EQ(labels[5].tip, "File 3 Bottom" + three);
    EXPECT_EQ(labels[5].back, Ink::Slot3);
    EXPECT_FALSE(labels[2].visible);
    EXPECT_EQ(tab.minTop().text, "1000.0000");
    EXPECT_EQ(tab.maxBottom().text, "1400.2500");
    EXPECT_EQ(tab.maxBottom().tip, "Deepest");
    EXPECT_EQ(tab.picture().boxes.size(), 2u);
}

TEST_F(CoverageTabTest, thePictureNamesItsDepthsAndFiles) {
    const Drawing drawing = tab.drawing(400, 300);
    std::string texts;
    for (const Shape& shape : drawing.shapes)
        if (const auto* const text = std::get_if<Label>(&shape)) texts += text->text + " ";
    EXPECT_NE(texts.find("1200"), std::string::npos) << texts;
    EXPECT_NE(texts.find("1400.2500 M"), std::string::npos) << texts;
    closeSlot(app, session, 0);
    closeSlot(app, session, 2);
    EXPECT_NO_THROW(tab.drawing(400, 300));
}

TEST_F(CoverageTabTest, enterSnapsAndLetsTheNextFileFollow) {
    tab.type(1, "1180.3");
    tab.enter(1);
    EXPECT_EQ(tab.boxes()[1].text, "1180.5");
    EXPECT_EQ(tab.boxes()[2].text, "1181");
    EXPECT_FALSE(tab.boxes()[2].visible);
    EXPECT_EQ(tab.boxes()[2].caption, "File 2 From +");
    tab.type(4, "1");
    tab.enter(4);
    EXPECT_EQ(tab.boxes()[4].text, "1150.25") << "held to the file's top";
    tab.type(3, "7");
    tab.enter(3);
    EXPECT_EQ(tab.boxes()[3].text, "7") << "there is no file whose grid could be meant";
}

TEST_F(CoverageTabTest, buttonsCarryTheDepthsIntoTheLinks) {
    tab.type(0, "1010");
    tab.type(1, "1100");
    tab.apply(0);
    EXPECT_EQ(link(0, 1), (test::Texts{"GR", "1", "1010", "1100"}));
    EXPECT_FALSE(tab.canApply(1));
    EXPECT_EQ(tab.applyCaption(3), "Apply to all channels of file 4");
    EXPECT_EQ(tab.fromParameters(), (test::Texts{"BHT"}));
    tab.applyParameters("1200", "BHT");
    EXPECT_EQ(link(0, 1), (test::Texts{"GR", "1", "1200", "85"}));
    EXPECT_EQ(link(2, 2), (test::Texts{"GR", "1", "1200", "85"}));
}

TEST_F(CoverageTabTest, withNoFileThereIsNoRange) {
    closeSlot(app, session, 0);
    closeSlot(app, session, 2);
    EXPECT_FALSE(tab.minTop().visible);
    EXPECT_FALSE(tab.labels()[0].visible);
    EXPECT_TRUE(tab.picture().empty());
}

}  // namespace
}  // namespace welvane
