#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace welvane::test {

/// A small sound LAS file with "\n" line ends (TempFolder::writeLines makes them CR LF): depths from `start` on by
/// `step` in metres, and for each channel name a column whose sample i is 10 * column + i.
inline std::string sampleLas(const std::vector<std::string>& channels, int start, int samples, int step = 1) {
    const std::string stop = std::to_string(start + (samples - 1) * step);
    std::string text =
        "~Version Information\n VERS.        2.0 : CWLS LOG ASCII STANDARD - VERSION 2.0\n WRAP.         NO : One line "
        "per depth step\n"
        "~Well Information\n STRT.M      " +
        std::to_string(start) + " : First depth\n STOP.M      " + stop + " : Last depth\n STEP.M      " +
        std::to_string(step) +
        " : Step\n NULL.    -999.25 : Null value\n WELL.    Heron 4 : Well\n~Curve Information\n DEPT.M            : "
        "Depth\n";
    for (const std::string& channel : channels) text += " " + channel + ".GAPI         : Channel " + channel + "\n";
    text += "~Ascii\n";
    for (int sample = 0; sample < samples; ++sample) {
        text += "  " + std::to_string(start + sample * step);
        for (std::size_t column = 0; column < channels.size(); ++column)
            text += "   " + std::to_string(10 * (static_cast<int>(column) + 1) + sample);
        text += "\n";
    }
    return text;
}

}  // namespace welvane::test
