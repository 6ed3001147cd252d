#pragma once

#include <string>
#include <vector>

#include "support/las_maker.h"

namespace welvane::test {

/// A small sound LAS file with "\n" line ends (TempFolder::writeLines makes them CR LF): depths from `start` on by
/// `step` in metres, and for each channel name a column whose sample i is 10 * column + i.
inline std::string sampleLas(const std::vector<std::string>& channels, int start, int samples, int step = 1) {
    LasMaker maker;
    maker.well(" WELL.    Heron 4 : Well").ramp(start, step, samples, static_cast<int>(channels.size()));
    for (const std::string& channel : channels) maker.curve(channel);
    return maker.text();
}

}  // namespace welvane::test
