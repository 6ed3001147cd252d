// Draws channels of LAS files as tracks over one depth axis: the pictures of the guide.
//
//     log_picture OUT.svg FILE:MNEM[:TITLE] ...
#include <algorithm>
#include <cmath>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "las/data_access.h"
#include "platform/mapped_file.h"
#include "shared/field_splitter.h"
#include "shared/files.h"
#include "shared/line_reader.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {
namespace {

constexpr double trackWidth = 150, gap = 22, left = 62, top = 46, height = 560;

struct Sample {
    double depth, value;
    bool null;
};
struct Track {
    std::string title, unit, depthUnit;
    std::vector<Sample> samples;
};

/// One channel of an unwrapped file; no samples when it is not there.
Track readTrack(const std::string& path, const std::string& mnem) {
    Track track;
    InputSlot slot;
    const auto file = MappedFile::open(path);
    if (!file || !fillInputSlot(path, slot) || slot.wrap != "NO") return track;
    const SlotChannels channels = readSlotChannels(path);
    std::size_t field = 0;
    for (std::size_t index = 1; index < channels.size() && field == 0; ++index)
        if (sameText(channels[index].field.mnem, mnem)) field = index;
    if (field == 0) return track;
    track.unit = channels[field].field.unit;
    track.depthUnit = slot.depthUnit;
    const double null = val(slot.nullText);
    LineReader lines(file->bytes(), static_cast<std::size_t>(slot.dataStart) - 1);
    FieldSplitter words;
    for (std::string_view line; lines.next(line);) {
        words.setText(line);
        if (words.count() <= field) continue;
        const double value = val(words.field(field + 1));
        track.samples.push_back({val(words.field(1)), value, value == null});
    }
    return track;
}

class Picture {
  public:
    explicit Picture(const std::vector<Track>& tracks) : tracks_(tracks) {
        shallow_ = tracks.front().samples.front().depth;
        deep_ = shallow_;
        for (const Track& track : tracks)
            for (const Sample& sample : track.samples) {
                shallow_ = std::min(shallow_, sample.depth);
                deep_ = std::max(deep_, sample.depth);
            }
    }

    std::string svg() const {
        const double width = left + static_cast<double>(tracks_.size()) * (trackWidth + gap);
        std::string text =
            "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + plainNumber(width) + "\" height=\"" +
            plainNumber(top + height + 14) +
            "\" font-family=\"sans-serif\" font-size=\"11\"><rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n";
        const double step = (deep_ - shallow_) > 150 ? 50 : 10;
        for (double depth = std::max(0.0, shallow_ - 1); depth <= deep_; depth += 1) {
            if (std::abs(depth / step - std::round(depth / step)) > 0.5 / step) continue;
            const double line = std::round(depth / step) * step;
            text += "<text x=\"8\" y=\"" + formatMask(place(line) + 4, 1) + "\" fill=\"#555\">" + plainNumber(line) +
                    "</text>\n";
            depth = line + step - 1;
        }
        text += "<text x=\"8\" y=\"22\" fill=\"#555\">" + tracks_.front().depthUnit + "</text>\n";
        double x = left;
        for (const Track& track : tracks_) {
            text += drawTrack(track, x);
            x += trackWidth + gap;
        }
        return text + "</svg>\n";
    }

  private:
    const std::vector<Track>& tracks_;
    double shallow_ = 0, deep_ = 1;

    double place(double depth) const { return top + (depth - shallow_) / (deep_ - shallow_) * height; }

    std::string drawTrack(const Track& track, double x) const {
        double low = 1e300, high = -1e300;
        for (const Sample& sample : track.samples) {
            if (sample.null) continue;
            low = std::min(low, sample.value);
            high = std::max(high, sample.value);
        }
        if (low >= high) high = low + 1;
        std::string text = "<rect x=\"" + plainNumber(x) + "\" y=\"" + plainNumber(top) + "\" width=\"" +
                           plainNumber(trackWidth) + "\" height=\"" + plainNumber(height) +
                           "\" fill=\"none\" stroke=\"#999\"/>\n<text x=\"" + plainNumber(x) +
                           "\" y=\"18\" font-weight=\"bold\">" + track.title + "</text>\n<text x=\"" + plainNumber(x) +
                           "\" y=\"38\">" + formatMask(low, 2) + "</text><text x=\"" + plainNumber(x + trackWidth) +
                           "\" y=\"38\" text-anchor=\"end\">" + formatMask(high, 2) + " " + track.unit + "</text>\n";
        std::string points;
        const auto flush = [&] {
            if (!points.empty())
                text += "<polyline points=\"" + points + "\" fill=\"none\" stroke=\"#15507a\" stroke-width=\"1\"/>\n";
            points.clear();
        };
        for (const Sample& sample : track.samples) {
            if (sample.null) {
                flush();
                continue;
            }
            points += formatMask(x + (sample.value - low) / (high - low) * trackWidth, 1) + "," +
                      formatMask(place(sample.depth), 1) + " ";
        }
        flush();
        return text;
    }
};

int drawAll(int count, char** arguments) {
    std::vector<Track> tracks;
    for (int index = 2; index < count; ++index) {
        const std::vector<std::string> pieces = split(arguments[index], ':');
        if (pieces.size() < 2) continue;
        tracks.push_back(readTrack(pieces[0], pieces[1]));
        tracks.back().title = pieces.size() > 2 ? pieces[2] : pieces[1];
        if (tracks.back().samples.empty()) {
            std::cerr << "log_picture: " << pieces[0] << " has no samples of " << pieces[1] << "\n";
            return 1;
        }
    }
    if (tracks.empty()) {
        std::cerr << "usage: log_picture OUT.svg FILE:MNEM[:TITLE] ...\n";
        return 2;
    }
    std::ofstream(arguments[1]) << Picture(tracks).svg();
    return 0;
}

}  // namespace
}  // namespace welvane

int main(int count, char** arguments) {
    return welvane::drawAll(count, arguments);
}
