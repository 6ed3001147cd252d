#pragma once

#include <array>
#include <map>
#include <string>
#include <vector>

#include "las/sections.h"
#include "session/session.h"

namespace welvane {

/// What a person did to wrd, the ~Well lines of the first input: lines that were edited, taken away and added. It is
/// done to whatever header goes out, line by line: lines of one mnemonic are told apart by their order.
class WellEdits {
  public:
    /// All lines are as that version of the standard orders value and description.
    WellEdits(const Session& session, double outputVersion);

    /// Lines added in front of all.
    const std::vector<HeaderField>& front() const { return front_; }
    /// What stands in the place of the header's next line of this mnemonic: the line, edited or not, and those added
    /// behind it.
    std::vector<HeaderField> inPlaceOf(const HeaderField& line);
    /// Lines edited or added whose place the header does not have, asked for when all of its lines have been.
    std::vector<HeaderField> rest();

  private:
    struct Line {
        bool gone = false;
        std::array<bool, 3> edited{};  ///< unit, value, description
        HeaderField now{};
        std::vector<HeaderField> behind{};
    };
    using Counts = std::map<std::string, int>;
    static std::string nextKey(Counts& counts, const std::string& mnem);
    void compare(const std::vector<HeaderField>& before, const std::vector<HeaderField>& after);

    std::map<std::string, Line> lines_;  ///< those alone that something was done to
    std::vector<std::string> order_;     ///< keys of the table, from above
    std::vector<HeaderField> front_;
    Counts asked_;
};

}  // namespace welvane
