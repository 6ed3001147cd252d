#include "las/classify.h"

#include <algorithm>

#include "las/repair.h"
#include "platform/mapped_file.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::size_t bannerBlock = 2048;
constexpr std::size_t smallFile = 32000;

bool namedAsLas(std::string_view path) {
    const std::string name = fileNameOf(path);
    const std::size_t place = findText(name, ".las");
    return place != npos && place + 4 == name.size();
}

/// What the test of the sections looks at: of a larger file half its length, a half byte rounded to the even neighbour.
std::string_view firstPart(std::string_view bytes) {
    const std::size_t size = bytes.size();
    return size > smallFile ? bytes.substr(0, size / 2 + (size % 4 == 3 ? 1 : 0)) : bytes;
}

}  // namespace

LineEnds lineEndKind(std::string_view path) {
    if (!fileExists(path)) return LineEnds::Missing;
    const auto mapped = MappedFile::open(path);
    return mapped ? lineEndsOf(mapped->bytes()) : LineEnds::Undecided;
}

LasTest quickLasTest(std::string_view path) {
    if (!namedAsLas(path)) return LasTest::WrongName;
    const auto mapped = MappedFile::open(path);
    return mapped ? lasTestOf(path, firstPart(mapped->bytes())) : LasTest::ReadError;
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
    const auto mapped = MappedFile::open(path);
    if (!mapped) return FileVerdict::UnixTermination;
    const std::string_view bytes = mapped->bytes();
    return verdictOf(lineEndsOf(bytes), lasTestOf(path, firstPart(bytes)), plexmoreKindOf(bytes));
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
