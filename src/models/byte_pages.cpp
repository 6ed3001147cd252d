#include "models/byte_pages.h"

#include <algorithm>

#include "platform/mapped_file.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view badTitle = "Bad Termination Found";
constexpr std::string_view goodTitle = "Termination Okay";
constexpr std::string_view goodText = "No Isolated Line Feeds (ASCII 10) found.";

bool showsCharacter(unsigned char code) {
    return code >= 32 && code <= 127;
}

}  // namespace

bool nextPage(ByteViewState& view) {
    return view.pageStart + bytePageLength < view.length && showPage(view, view.pageStart + bytePageLength);
}

bool previousPage(ByteViewState& view) {
    return view.pageStart > 0 && showPage(view, view.pageStart - std::min(view.pageStart, bytePageLength));
}

Table fillAsd(const ByteViewState& view) {
    Table asd(2, static_cast<int>(view.bytes.size()));
    for (std::size_t index = 0; index < view.bytes.size(); ++index) {
        const auto code = static_cast<unsigned char>(view.bytes[index]);
        SessionCell& shown = asd.cell(AsdRow::Text, index);
        SessionCell& number = asd.cell(AsdRow::Code, index);
        if (showsCharacter(code)) shown.text = view.bytes[index];
        number.text = threeDigits(code);
        if (isolatedLineFeed(view, index)) shown.backColour = number.backColour = badEndColour;
    }
    return asd;
}

std::string cellHint(unsigned char code) {
    if (code > 127) return "Un-printable";
    if (code == ' ') return "Printable character is Space";
    if (code > ' ') return std::string("Printable character is ") + static_cast<char>(code);
    return "Control character is " + (code == '\t' ? std::string("TAB") : std::to_string(code));
}

bool findBadTermination(App& app, ByteViewState& view) {
    std::size_t place = npos;
    {
        const auto file = MappedFile::open(view.path);
        if (!file) return false;
        place = findIsolatedLineFeed(file->bytes());
    }
    if (place == npos) {
        app.user.ask({.title = std::string(goodTitle), .text = std::string(goodText), .icon = Icon::Information});
        return false;
    }
    const Prompt found{.title = std::string(badTitle),
                       .text = "Isolated Line Feed (ASCII 10) found at byte " + std::to_string(place) +
                               ". Move grid to this position? (look for red cells)",
                       .buttons = Buttons::YesNo,
                       .icon = Icon::Stop,
                       .whenHeadless = Answer::No};
    if (app.user.ask(found) != Answer::Yes) return false;
    // Kept: the page begins 200 bytes behind the line feed, so its red cell shows after one step back.
    // Test: movesTwoHundredBytesBehindTheLineFeed
    return showPage(view, place + 200);
}

}  // namespace welvane
