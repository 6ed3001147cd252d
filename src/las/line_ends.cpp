#include "las/line_ends.h"

#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::size_t lookedAt = 4096;

constexpr char nothing = 0;  ///< no line end character beside the token

/// The line end characters in front of and behind a token's first place.
struct Around {
    char before = nothing, after = nothing;
    bool operator==(const Around&) const = default;
};

Around aroundFirst(std::string_view block, std::string_view token) {
    const std::size_t place = block.find(token);
    if (place == npos) return {};
    const auto lineEndAt = [block](std::size_t at) {
        return at < block.size() && (block[at] == '\r' || block[at] == '\n') ? block[at] : nothing;
    };
    return {place == 0 ? nothing : lineEndAt(place - 1), lineEndAt(place + token.size())};
}

bool goodDosPair(std::string_view block) {
    const Around around = aroundFirst(block, "\r\n");
    return around == Around{nothing, '\r'} || around == Around{'\n', '\r'} || around == Around{'\n', nothing} ||
           around == Around{};
}

bool goodUnixPair(std::string_view block) {
    const Around around = aroundFirst(block, "\n");
    return around == Around{} || around == Around{nothing, '\n'} || around == Around{'\n', nothing} ||
           around == Around{'\n', '\n'};
}

}  // namespace

LineEnds lineEndsOf(std::string_view head, std::string_view tail) {
    if (head.empty()) return LineEnds::Empty;
    if (head.find('\0') != npos) return LineEnds::Binary;
    if (head.find("\r\n") == npos) return goodUnixPair(tail) ? LineEnds::Unix : LineEnds::Undecided;
    // An end that knows LF only, behind a head with CR LF, was put together from two sources.
    const bool endsUnix = tail.find("\r\n") == npos && tail.find('\n') != npos;
    if (endsUnix || !goodDosPair(tail)) return LineEnds::Undecided;
    if (goodDosPair(head)) return LineEnds::Good;
    return goodUnixPair(tail) ? LineEnds::Unix : LineEnds::Undecided;
}

LineEnds lineEndsOf(std::string_view bytes) {
    return lineEndsOf(bytes.substr(0, lookedAt), bytes.substr(bytes.size() < lookedAt ? 0 : bytes.size() - lookedAt));
}

}  // namespace welvane
