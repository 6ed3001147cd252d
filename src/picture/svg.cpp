#include "picture/svg.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <tuple>

#include "shared/utf8.h"

namespace welvane {

namespace {

/// Farther out nothing is seen, and programs that show pictures reckon in singles.
constexpr double farthest = 1e6;

/// A length in tenths.
std::int64_t tenths(double value) {
    if (std::isnan(value)) return 0;
    return std::llround(std::clamp(value, -farthest, farthest) * 10);
}

void addTenths(std::string& text, std::int64_t number) {
    if (number < 0) text += '-';
    const std::int64_t size = number < 0 ? -number : number;
    if (size >= 10 || size == 0) text += std::to_string(size / 10);
    if (size % 10 == 0) return;
    text += '.';
    text += static_cast<char>('0' + size % 10);
}

std::string number(double value) {
    std::string text;
    addTenths(text, tenths(value));
    return text;
}

/// A character that XML 1.0 knows no way to write.
bool isForbidden(unsigned char byte) {
    return byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r';
}

std::string xmlText(std::string_view bytes) {
    const std::string text = utf8Text(bytes);
    std::string xml;
    for (std::size_t place = 0; place < text.size(); ++place) {
        const char c = text[place];
        const auto byte = static_cast<unsigned char>(c);
        const bool isNonCharacter = byte == 0xEF && static_cast<unsigned char>(text[place + 1]) == 0xBF &&
                                    static_cast<unsigned char>(text[place + 2]) >= 0xBE;
        if (isNonCharacter) place += 2;
        if (isForbidden(byte) || isNonCharacter)
            xml += "\xEF\xBF\xBD";
        else if (c == '&')
            xml += "&amp;";
        else if (c == '<')
            xml += "&lt;";
        else if (c == '>')
            xml += "&gt;";
        else if (c == '"')
            xml += "&quot;";
        else if (c == '\n' || c == '\r' || c == '\t')
            xml += ' ';
        else
            xml += c;
    }
    return xml;
}

/// Numbers of a path, each parted from the one before where nothing else does.
class PathText {
  public:
    /// Goes to the first point of a piece, and draws to the others by what they differ: shorter, and rounded sums do
    /// not drift, as the rounded points are what differs.
    void addPiece(const std::vector<Point>& points) {
        for (std::size_t index = 0; index < points.size(); ++index) {
            const std::int64_t x = tenths(points[index].x), y = tenths(points[index].y);
            if (index == 0) {
                text_ += 'M';
                addPair(x, y);
            } else {
                if (index == 1) text_ += 'l';
                addPair(x - x_, y - y_);
            }
            x_ = x;
            y_ = y;
        }
        // A dot: round ends make one of a line without length.
        if (points.size() == 1) text_ += "l0 0";
    }
    const std::string& text() const { return text_; }

  private:
    void addPair(std::int64_t x, std::int64_t y) {
        if (x >= 0 && text_.back() != 'M' && text_.back() != 'l') text_ += ' ';
        addTenths(text_, x);
        if (y >= 0) text_ += ' ';
        addTenths(text_, y);
    }
    std::string text_;
    std::int64_t x_ = 0, y_ = 0;
};

class SvgWriter {
  public:
    SvgWriter(const Drawing& drawing, Theme theme) : drawing_(drawing), theme_(theme) {}

    std::string text() {
        const std::string size = "width=\"" + number(drawing_.width) + "\" height=\"" + number(drawing_.height) +
                                 "\" viewBox=\"0 0 " + number(drawing_.width) + " " + number(drawing_.height) + "\"";
        out_ = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" " + size +
               " role=\"img\" font-family=\"Helvetica, Arial, 'Liberation Sans', sans-serif\">\n";
        addTitle(drawing_.title);
        addClips();
        out_ += "<rect width=\"100%\" height=\"100%\"" + paint("fill", Ink::Paper) + "/>\n";
        for (const Shape& shape : drawing_.shapes) std::visit([this](const auto& one) { add(one); }, shape);
        return std::move(out_) + "</svg>\n";
    }

  private:
    using ClipKey = std::tuple<std::int64_t, std::int64_t, std::int64_t, std::int64_t>;
    static ClipKey keyOf(const Area& area) {
        return {tenths(area.left), tenths(area.top), tenths(area.right), tenths(area.bottom)};
    }

    /// One clip path for each area, by number.
    void addClips() {
        for (const Shape& shape : drawing_.shapes) {
            const GroupStart* const group = std::get_if<GroupStart>(&shape);
            if (group == nullptr || !group->clip) continue;
            const auto [clip, isNew] = clips_.try_emplace(keyOf(*group->clip), clips_.size() + 1);
            if (!isNew) continue;
            out_ += "<clipPath id=\"c" + std::to_string(clip->second) + "\"><rect" + sides(*group->clip) +
                    "/></clipPath>\n";
        }
    }

    static std::string sides(const Area& area) {
        return " x=\"" + number(area.left) + "\" y=\"" + number(area.top) + "\" width=\"" + number(area.width()) +
               "\" height=\"" + number(area.height()) + "\"";
    }

    std::string paint(std::string_view attribute, Ink ink) const {
        static constexpr std::string_view digits = "0123456789abcdef";
        if (ink == Ink::None) return " " + std::string(attribute) + "=\"none\"";
        const Colour colour = colourOf(ink, theme_);
        std::string text = " " + std::string(attribute) + "=\"#";
        for (const unsigned part : {colour.red, colour.green, colour.blue}) {
            text += digits[part >> 4];
            text += digits[part & 15];
        }
        return text + "\"";
    }

    std::string pen(const Stroke& stroke) const {
        std::string text = paint("stroke", stroke.ink);
        if (stroke.ink == Ink::None) return text;
        if (stroke.width != 1) text += " stroke-width=\"" + number(stroke.width) + "\"";
        if (stroke.dash == Dash::Dashed) text += " stroke-dasharray=\"6 3\"";
        if (stroke.dash == Dash::Dotted) text += " stroke-dasharray=\"1.5 2.5\"";
        if (stroke.dash == Dash::DashDot) text += " stroke-dasharray=\"8 3 1.5 3\"";
        return text;
    }

    void addTitle(const std::string& title) {
        if (!title.empty()) out_ += "<title>" + xmlText(title) + "</title>\n";
    }

    void add(const Line& line) {
        out_ += "<line x1=\"" + number(line.from.x) + "\" y1=\"" + number(line.from.y) + "\" x2=\"" +
                number(line.to.x) + "\" y2=\"" + number(line.to.y) + "\"" + pen(line.stroke) + "/>\n";
    }
    void add(const Box& box) {
        out_ += "<rect" + sides(box.area) + paint("fill", box.fill);
        if (box.stroke.ink != Ink::None) out_ += pen(box.stroke);
        out_ += "/>\n";
    }
    void add(const Polyline& line) {
        PathText path;
        for (const std::vector<Point>& piece : line.pieces) path.addPiece(piece);
        if (path.text().empty()) return;
        out_ += "<path fill=\"none\"" + pen(line.stroke) + " stroke-linejoin=\"round\" stroke-linecap=\"round\" d=\"" +
                path.text() + "\"/>\n";
    }
    void add(const Label& label) {
        out_ += "<text x=\"" + number(label.at.x) + "\" y=\"" + number(label.at.y) + "\" font-size=\"" +
                number(label.size) + "\"" + paint("fill", label.ink);
        if (label.anchor != Anchor::Left)
            out_ += label.anchor == Anchor::Middle ? " text-anchor=\"middle\"" : " text-anchor=\"end\"";
        if (label.bold) out_ += " font-weight=\"bold\"";
        out_ += ">" + xmlText(label.text) + "</text>\n";
    }
    void add(const GroupStart& group) {
        out_ += "<g";
        if (group.clip) out_ += " clip-path=\"url(#c" + std::to_string(clips_.at(keyOf(*group.clip))) + ")\"";
        out_ += ">\n";
        addTitle(group.title);
    }
    void add(const GroupEnd&) { out_ += "</g>\n"; }

    const Drawing& drawing_;
    const Theme theme_;
    std::map<ClipKey, std::size_t> clips_;
    std::string out_;
};

}  // namespace

std::string svgText(const Drawing& drawing, Theme theme) {
    return SvgWriter(drawing, theme).text();
}

}  // namespace welvane
