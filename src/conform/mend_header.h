#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "conform/judgement.h"

namespace welvane {

/// A section of a header in hand: its title and its lines.
struct HeaderBlock {
    char letter = '\0';  ///< NUL in front of the first title
    std::string title;
    std::vector<std::string> lines;
};

/// What the rules say of the header as a whole, and the values that its lines take.
class HeaderMend {
  public:
    /// `wraps`: the data, which were not wrapped, will be.
    HeaderMend(const Judgement& judged, bool wraps);

    /// Mends the lines of the blocks and puts these in order. `fromData` are comment lines that stood among the data.
    void mend(std::vector<HeaderBlock>& blocks, const std::vector<std::string>& fromData) const;

  private:
    void mendLine(char letter, std::string& line) const;
    void mendVersion(HeaderBlock& block) const;
    void mendWell(HeaderBlock& block) const;
    void mendUnits(HeaderBlock& block) const;
    void setRange(HeaderBlock& block, std::string_view mnem, const std::string& value) const;
    std::string newStep() const;
    bool any(Rule rule) const;

    const Judgement& judged_;
    bool wraps_;
    std::vector<Finding> found_;
};

/// Without control characters and tabs; blanks stand in their place.
void plainBytes(std::string& line);

}  // namespace welvane
