#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "jobs/given_number.h"
#include "jobs/well.h"
#include "jobs/workbench.h"

/// Channels in memory become a LAS file.
namespace welvane {

/// A channel to be written. The values are not copied.
struct ChannelColumn {
    HeaderField field{};
    std::span<const double> values{};  ///< one for each record; NaN is written as null
};

struct WriteRequest {
    std::string output{};
    std::vector<ChannelColumn> channels{};  ///< the index first; all of one length
    std::vector<WellSection> sections{};    ///< of the header, such as those of a well that was read
    std::vector<HeaderField> well{};        ///< lines of ~Well that go over those of the section
    GivenNumber null = -999.25;
};

struct WriteReport : JobReport {
    std::size_t records = 0;
    std::vector<std::string> names;  ///< of the channels as written, the index first
    std::string first, last, step;   ///< of the index as the header tells them; the step is "0" where there is none
};
/// Writes LAS 2.0, not wrapped, every value with all its digits. Without a ~Well section the lines that the standard
/// wants stand there empty. Notes tell of names that had to be changed, infinite values (null is written), values that
/// are the null value and will read back as null, and an index without one step. Refusal, with nothing written, for
/// fewer than two channels, none or unlike numbers of values, an index that is not a number everywhere, and an output
/// that cannot be written.
WriteReport writeChannels(Workbench& bench, const WriteRequest& request);

}  // namespace welvane
