#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// A picture as a list of shapes: a window paints the list, a file holds it. x counts from the left, y downwards, both
/// in units of the drawing; one of them is one pixel where nothing scales it.
namespace welvane {

struct Point {
    double x = 0, y = 0;
};
struct Area {
    double left = 0, top = 0, right = 0, bottom = 0;
    double width() const { return right - left; }
    double height() const { return bottom - top; }
    double middle() const { return (left + right) / 2; }
};

/// Colours by meaning; a theme says what they look like.
enum class Ink {
    None,
    Paper,       ///< behind everything
    Panel,       ///< behind heads and labels
    Text,        ///< what is read first
    Faint,       ///< what is read when it is needed
    Frame,       ///< around tracks
    Grid,        ///< fine lines of a grid
    StrongGrid,  ///< its main lines
    Slot1,       ///< of the four input files, as everywhere in the program
    Slot2,
    Slot3,
    Slot4,
    OnSlot,  ///< text upon the colour of a slot
    Curve1,  ///< of the curves of one track, in order
    Curve2,
    Curve3,
    Curve4,
    Curve5,
    Curve6
};
inline constexpr int slotInks = 4, curveInks = 6;
/// Slots and curves count from 0; behind the last colour they begin anew.
constexpr Ink slotInk(int slot) {
    return static_cast<Ink>(static_cast<int>(Ink::Slot1) + slot % slotInks);
}
constexpr Ink curveInk(int curve) {
    return static_cast<Ink>(static_cast<int>(Ink::Curve1) + curve % curveInks);
}

enum class Dash { Solid, Dashed, Dotted, DashDot };
struct Stroke {
    Ink ink = Ink::None;
    double width = 1;
    Dash dash = Dash::Solid;
};

struct Line {
    Point from, to;
    Stroke stroke;
};
struct Box {
    Area area;
    Ink fill = Ink::None;
    Stroke stroke{};
};
/// Lines through points; each piece is drawn by itself, one of a single point as a dot.
struct Polyline {
    std::vector<std::vector<Point>> pieces;
    Stroke stroke;
};

enum class Anchor { Left, Middle, Right };
/// A text whose base line begins, has its middle or ends at a point.
struct Label {
    Point at;
    std::string text;  ///< any bytes: what is no UTF-8 counts as Latin-1
    double size = 11;
    Ink ink = Ink::Text;
    Anchor anchor = Anchor::Left;
    bool bold = false;
};

/// What follows up to the GroupEnd belongs together: under a pointer it tells `title`, and nothing of it is seen
/// outside `clip`.
struct GroupStart {
    std::string title;
    std::optional<Area> clip{};
};
struct GroupEnd {};

using Shape = std::variant<Line, Box, Polyline, Label, GroupStart, GroupEnd>;

struct Drawing {
    double width = 0, height = 0;
    std::string title;  ///< of the whole picture
    std::vector<Shape> shapes;

    void add(Shape shape) { shapes.push_back(std::move(shape)); }
};

/// How wide a text will be, about: fonts differ.
double textWidth(std::string_view text, double size, bool bold = false);
/// The text, shortened with "..." at its end where it would be wider than `width`; "" where not even that fits.
std::string fittedText(std::string_view text, double width, double size, bool bold = false);

}  // namespace welvane
