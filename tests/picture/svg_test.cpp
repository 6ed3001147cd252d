#include "picture/svg.h"

#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>

namespace welvane {
namespace {

/// What stands between two texts; "" where they do not.
std::string between(const std::string& text, const std::string& before, const std::string& after) {
    const std::size_t begin = text.find(before);
    if (begin == std::string::npos) return {};
    const std::size_t from = begin + before.size(), end = text.find(after, from);
    return end == std::string::npos ? std::string() : text.substr(from, end - from);
}

/// The points of a path of "M" and "l", read back by what SVG says of them.
std::vector<std::vector<Point>> piecesOf(const std::string& path) {
    std::vector<std::vector<Point>> pieces;
    Point pen;
    char command = 0;
    for (const char* place = path.c_str(); *place != '\0';) {
        if (*place == 'M' || *place == 'l') command = *place++;
        char* end = nullptr;
        const double x = std::strtod(place, &end);
        const double y = std::strtod(end, &end);
        if (end == place) break;
        place = end;
        while (*place == ' ') ++place;
        pen = command == 'M' ? Point{x, y} : Point{pen.x + x, pen.y + y};
        if (command == 'M') pieces.emplace_back();
        pieces.back().push_back(pen);
    }
    return pieces;
}

TEST(Svg, pathsKeepEveryPointToATenth) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> anywhere(-300, 300);
    Polyline line{{}, {Ink::Curve1}};
    for (const int length : {2, 3, 5000}) {
        line.pieces.emplace_back();
        for (int index = 0; index < length; ++index)
            line.pieces.back().push_back({anywhere(random), index % 3 == 0 ? -0.04 : anywhere(random)});
    }
    Drawing drawing{400, 300, "", {line}};
    const auto read = piecesOf(between(svgText(drawing, Theme::Light), " d=\"", "\""));
    ASSERT_EQ(read.size(), line.pieces.size());
    for (std::size_t piece = 0; piece < read.size(); ++piece) {
        ASSERT_EQ(read[piece].size(), line.pieces[piece].size());
        for (std::size_t index = 0; index < read[piece].size(); ++index) {
            ASSERT_NEAR(read[piece][index].x, line.pieces[piece][index].x, 0.051) << piece << " " << index;
            ASSERT_NEAR(read[piece][index].y, line.pieces[piece][index].y, 0.051) << piece << " " << index;
        }
    }
}

TEST(Svg, textsComeOutAsXmlCanHoldThem) {
    struct Case {
        const char *name, *text, *xml;
    };
    for (const Case& row : {Case{"marks", "a<b & \"c\">", "a&lt;b &amp; &quot;c&quot;&gt;"},
                            {"UTF-8", "\xC2\xB5S/F", "\xC2\xB5S/F"},
                            {"Latin-1", "\xB5S/F", "\xC2\xB5S/F"},
                            {"control character", "a\x01z", "a\xEF\xBF\xBDz"},
                            {"no character at all", "a\xEF\xBF\xBFz", "a\xEF\xBF\xBDz"},
                            {"line break", "a\nz", "a z"}}) {
        const Drawing drawing{10, 10, "", {GroupStart{row.text}, GroupEnd{}, Label{{1, 2}, row.text}}};
        const std::string svg = svgText(drawing, Theme::Light);
        EXPECT_EQ(between(svg, "<title>", "</title>"), row.xml) << row.name;
        EXPECT_EQ(between(between(svg, "<text", "/text>"), ">", "<"), row.xml) << row.name;
    }
}

TEST(Svg, numbersBeyondReasonStayNumbers) {
    const double infinite = HUGE_VAL;
    const Drawing drawing{10, 10, "", {Line{{infinite, NAN}, {-1e300, 5}, {Ink::Text}}}};
    const std::string svg = svgText(drawing, Theme::Dark);
    EXPECT_EQ(between(svg, "<line ", " stroke"), "x1=\"1000000\" y1=\"0\" x2=\"-1000000\" y2=\"5\"");
}

TEST(Svg, groupsOfOneAreaShareItsClip) {
    const Area one{1, 2, 3, 4}, other{1, 2, 3, 5};
    Drawing drawing{10, 10, "", {}};
    for (const Area& area : {one, other, one}) {
        drawing.add(GroupStart{"", area});
        drawing.add(GroupEnd{});
    }
    const std::string svg = svgText(drawing, Theme::Light);
    EXPECT_NE(svg.find("<clipPath id=\"c2\"><rect x=\"1\" y=\"2\" width=\"2\" height=\"3\"/></clipPath>"),
              std::string::npos);
    EXPECT_EQ(svg.find("id=\"c3\""), std::string::npos);
    const std::string groups = svg.substr(svg.find("<g "));
    EXPECT_EQ(groups,
              "<g clip-path=\"url(#c1)\">\n</g>\n<g clip-path=\"url(#c2)\">\n</g>\n<g clip-path=\"url(#c1)\">\n</g>\n"
              "</svg>\n");
}

/// Relative luminance and contrast after the Web Content Accessibility Guidelines 2.1.
double luminance(const Colour& colour) {
    const auto part = [](std::uint8_t value) {
        const double share = value / 255.0;
        return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(colour.red) + 0.7152 * part(colour.green) + 0.0722 * part(colour.blue);
}
double contrast(Ink one, Ink other, Theme theme) {
    const double a = luminance(colourOf(one, theme)), b = luminance(colourOf(other, theme));
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

TEST(Theme, whatIsReadStandsOut) {
    for (const Theme theme : {Theme::Light, Theme::Dark}) {
        for (int slot = 0; slot < slotInks; ++slot) {
            EXPECT_GT(contrast(slotInk(slot), Ink::Panel, theme), 3) << slot;
            EXPECT_GT(contrast(slotInk(slot), Ink::OnSlot, theme), 4) << slot;
        }
        for (int curve = 0; curve < curveInks; ++curve)
            EXPECT_GT(contrast(curveInk(curve), Ink::Paper, theme), 3) << curve;
        EXPECT_GT(contrast(Ink::Text, Ink::Paper, theme), 10);
        EXPECT_GT(contrast(Ink::Faint, Ink::Panel, theme), 4.5);
    }
}

}  // namespace
}  // namespace welvane
