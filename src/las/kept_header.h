#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "las/source_header.h"
#include "shared/notes.h"

/// A header written anew as LAS 2.0 with every line of the old one in it. rebuild_whole.cpp joins it with the data.
namespace welvane {

/// A line of ~Curve.
struct KeptCurve {
    HeaderField field;
    SourceLine source;
    std::string mended;   ///< what it took to read it, in words
    bool certain = true;  ///< false for a line without a dot, which may be no channel
};
/// The lines of ~Curve that are, or may be, a channel, in their order. One without a mnemonic is called CH and the
/// number of its column, the index being 1.
std::vector<KeptCurve> keptCurves(const SourceHeader& source);
/// Settles on the channels of data of so many columns: lines without a dot count only where they are as many as the
/// columns want; columns without a line are called CH and their number. Tells all that is not as the source has it.
std::vector<HeaderField> settleCurves(std::vector<KeptCurve>& curves, std::size_t columns, std::vector<Note>& notes);

/// What the data say of the depth lines. A text is "" where the header's own stands.
struct DepthFacts {
    std::string first, last, step;
};
/// True where WRAP says YES.
bool headerSaysWrapped(const SourceHeader& source);
/// VALUE of a line of ~Well, as it stands; "" without one. Of "M 100", a unit apart from its dot, the number.
std::string wellNumber(const SourceHeader& source, std::string_view mnem);

/// All lines in front of the data title, each with its CR LF; `behind` are sections that stood behind the data. Tells
/// what is not as the source has it.
std::string keptHeader(const SourceHeader& source, const SourceHeader& behind, std::vector<KeptCurve>& curves,
                       const std::vector<HeaderField>& channels, const DepthFacts& depths, std::string_view country,
                       std::vector<Note>& notes);

}  // namespace welvane
