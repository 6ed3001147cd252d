#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "las/header_line.h"

/// A header as its lines stand, whatever they are and whatever ends them: for who keeps them all. Views are into the
/// bytes that were read.
namespace welvane {

struct SourceLine {
    std::size_t number = 0;  ///< from 1
    std::string_view text;   ///< without its end and the blanks and tabs around it
};

struct SourceSection {
    char letter = 0;  ///< V, W, C, P, O or A; 0 for a section of any other name
    SourceLine title;
    std::vector<SourceLine> lines;  ///< blank ones left out
};

struct SourceHeader {
    std::vector<SourceLine> front;  ///< lines in front of the first title
    std::vector<SourceSection> sections;
    /// Place (0-based) right behind the title of ~A, its line end not taken; nothing without data. `dataLine` is the
    /// number of that line.
    std::optional<std::size_t> data;
    std::size_t dataLine = 0;

    /// The first section of a letter; nullptr without one.
    const SourceSection* find(char letter) const;
};
/// Reads up to the title of ~A. A block such as "[TOPS]" counts as a section of its own. A section is known by the
/// first letter of its title only where its name is that of a section of the standard, or the beginning of it ("~C",
/// "~Curve Information", but not "~Core"); where ~Curve or ~Well would be missing then, any section of that letter
/// stands for it.
SourceHeader readSourceHeader(std::string_view bytes, std::size_t firstNumber = 1);

/// What a header line of the standard says, and what it took to read it so.
struct KeptField {
    HeaderField field;
    std::string mended;  ///< in words; "" for a line that is in order
};
/// The fields of a line, every character of them kept: a "|" stays, tabs are blanks. A colon in the mnemonic becomes
/// "_", a missing one is added. `firstColon` cuts at the first colon, as ~Well of LAS 1.2 wants it, else at the last.
/// Nothing for a line without a dot, without a mnemonic, or with a mnemonic of several words and no colon.
std::optional<KeptField> keptField(std::string_view line, bool firstColon = false);

}  // namespace welvane
