#include "las/classify.h"

#include <algorithm>

#include "las/repair.h"
#include "platform/mapped_file.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::size_t lineEndBlock = 4096;
constexpr std::size_t bannerBlock = 2048;
constexpr std::size_t smallFile = 32000;

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

bool namedAsLas(std::string_view path) {
    const std::string name = fileNameOf(path);
    const std::size_t place = findText(name, ".las");
    return place != npos && place + 4 == name.size();
}

}  // namespace

LineEnds lineEndKind(std::string_view path) {
    if (!fileExists(path)) return LineEnds::Missing;
    const auto mapped = MappedFile::open(path);
    if (!mapped) return LineEnds::Undecided;
    const std::string_view bytes = mapped->bytes();
    if (bytes.empty()) return LineEnds::Empty;
    const std::string_view head = bytes.substr(0, lineEndBlock);
    return lineEndsOf(head, bytes.size() < lineEndBlock ? head : bytes.substr(bytes.size() - lineEndBlock));
}

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

LasTest quickLasTest(std::string_view path) {
    if (!namedAsLas(path)) return LasTest::WrongName;
    const auto mapped = MappedFile::open(path);
    if (!mapped) return LasTest::ReadError;
    std::string_view bytes = mapped->bytes();
    // Half the length, a half byte rounded to the even neighbour.
    if (const std::size_t size = bytes.size(); size > smallFile)
        bytes = bytes.substr(0, size / 2 + (size % 4 == 3 ? 1 : 0));
    return lasTestOf(path, bytes);
}

LasTest lasTestOf(std::string_view path, std::string_view bytes) {
    if (!namedAsLas(path)) return LasTest::WrongName;
    bool seenVersion = false;
    bool seenWell = false;
    for (std::size_t place = bytes.find('~'); place != npos && place + 1 < bytes.size();
         place = bytes.find('~', place + 1)) {
        const char letter = upperChar(bytes[place + 1]);
        seenVersion = seenVersion || letter == 'V';
        seenWell = seenWell || letter == 'W';
        if (seenVersion && seenWell) return LasTest::Passes;
    }
    return LasTest::NoSections;
}

PlexmoreKind plexmoreKind(std::string_view path) {
    const auto mapped = MappedFile::open(path);
    return mapped ? plexmoreKindOf(mapped->bytes()) : PlexmoreKind::ReadError;
}

PlexmoreKind plexmoreKindOf(std::string_view head) {
    const std::string_view text = trim(head.substr(0, bannerBlock));
    if (!beginsWith(text, "#") || !holdsText(text, "Ascii save")) return PlexmoreKind::None;
    if (!holdsText(text, "~C")) return PlexmoreKind::NoCurves;
    return text.find('\t') != npos ? PlexmoreKind::Version2 : PlexmoreKind::Version3;
}

bool isPlexmoreAscii(std::string_view path) {
    const auto mapped = MappedFile::open(path);
    return mapped && isPlexmoreAsciiTable(mapped->bytes());
}

bool isPlexmoreAsciiTable(std::string_view head) {
    if (head.size() < bannerBlock) return false;
    const std::string_view text = trim(head.substr(0, bannerBlock));
    return beginsWith(text, "PrimaryIndex") && holdsText(text, "[A");
}

FileVerdict judgeFile(std::string_view path) {
    const LineEnds ends = lineEndKind(path);
    if (ends != LineEnds::Good) return FileVerdict::UnixTermination;
    return verdictOf(ends, quickLasTest(path), plexmoreKind(path));
}

FileVerdict verdictOf(LineEnds ends, LasTest test, PlexmoreKind kind) {
    if (ends != LineEnds::Good) return FileVerdict::UnixTermination;
    if (test == LasTest::ReadError || kind == PlexmoreKind::ReadError) return FileVerdict::Unusable;
    if (test == LasTest::Passes && kind == PlexmoreKind::None) return FileVerdict::Las;
    if (kind == PlexmoreKind::Version2) return FileVerdict::Plexmore2;
    if (kind == PlexmoreKind::Version3) return FileVerdict::Plexmore3;
    return test == LasTest::Passes ? FileVerdict::Unusable : FileVerdict::NotBasicLas;
}

FileVerdict quickCheck(std::string_view path, UserInterface& user) {
    repairCurveTitle(path, user);
    return judgeFile(path);
}

StatusLine statusLine(FileVerdict verdict) {
    switch (verdict) {
        case FileVerdict::Las:
            return {"LAS File", false};
        case FileVerdict::UnixTermination:
            return {"Unix Termination", true};
        case FileVerdict::Plexmore2:
            return {"Plexmore 2.X LAS", false};
        case FileVerdict::Plexmore3:
            return {"Plexmore 3.5 or earlier LAS", false};
        case FileVerdict::NotBasicLas:
            return {"Not Basic LAS!", true};
        case FileVerdict::Unusable:
            break;
    }
    return {"Unusable File!", true};
}

}  // namespace welvane
