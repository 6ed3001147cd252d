#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "shared/line_reader.h"

namespace welvane {

/// A LAS text with the places of its sections, found in one walk over its header. Copies nothing: the bytes must
/// outlive it. Nothing changes once it is made, so that many threads can ask at once.
class LasText {
  public:
    explicit LasText(std::string_view bytes, LineRule rule = LineRule::CarriageReturn);

    std::string_view bytes() const { return bytes_; }
    LineRule lineRule() const { return rule_; }
    /// 1-based number of the line that holds the byte at a place (0-based). Reads all before it: for messages only.
    std::size_t lineNumber(std::size_t place) const { return lineNumberAt(bytes_, place, rule_); }
    /// The lines from a place (0-based) on, of the next `most` bytes. Whoever reads lines of the text gets them here:
    /// this alone knows how its lines end.
    LineReader lines(std::size_t from = 0, std::size_t most = std::string_view::npos) const;
    /// Lines from a place on, as far as a header can reach.
    LineReader headerLines(std::size_t from = 0) const;

    /// Place (0-based) behind the title line of a section; nothing where there is none. A section is known by the
    /// letter behind "~". With LineRule::CarriageReturn a line that holds "~A" anywhere hides all titles behind it but
    /// that of ~A. With LineRule::Any a title that is or begins the section's own name ("~C", "~Curve", "~CUR") goes
    /// before others of its letter ("~Core", "~Custom").
    std::optional<std::size_t> seekSection(char letter) const;
    /// The title lines in their order, each trimmed and with its "~"; the last one is that of ~A.
    const std::vector<std::string_view>& titles() const { return titles_; }

  private:
    void index();
    void indexByNames();

    std::string_view bytes_;
    LineRule rule_;
    std::vector<std::string_view> titles_;
    std::array<std::size_t, 256> behindTitle_{};  ///< by upper-cased letter; 0 where there is no such section
};

/// True for a title of a standard section by its name, as far as its first three letters go: "~W", "~Well", "~WEL..."
/// but not "~Wireline".
bool isNamedTitle(std::string_view line);
/// True for a line that begins with "~" and the letter.
bool isTitle(std::string_view line, char letter);
/// First place of "~" and the letter at or behind `from`, anywhere in the text; npos when there is none.
std::size_t findTitle(std::string_view text, char letter, std::size_t from = 0);

}  // namespace welvane
