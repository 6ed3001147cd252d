// Makes a LAS 2.0 file of a wanted size with logs that look like logs: slow wandering, noise, runs of nulls. The same
// arguments always make the same file.
#include <algorithm>
#include <array>
#include <cstdint>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "block_writer.h"
#include "shared/numbers.h"
#include "shared/numbers_fast.h"
#include "shared/settings.h"

namespace welvane::bench {
namespace {

constexpr int columnWidth = 13;
constexpr int decimals = 5;
constexpr int valuesPerLine = 78 / columnWidth;
constexpr double startDepth = 100;

struct Kind {
    std::string_view mnemonic, unit, description;
    double low, high;
};
constexpr std::array<Kind, 8> kinds = {{{"GR", "GAPI", "Gamma Ray", 10, 180},
                                        {"SP", "MV", "Spontaneous Potential", -120, 20},
                                        {"RT", "OHMM", "True Resistivity", 0.2, 2000},
                                        {"RHOB", "K/M3", "Bulk Density", 1950, 2950},
                                        {"NPHI", "V/V", "Neutron Porosity", -0.02, 0.45},
                                        {"DT", "US/M", "Sonic Slowness", 150, 450},
                                        {"CALI", "MM", "Caliper", 180, 420},
                                        {"PEF", "B/E", "Photoelectric Factor", 1.2, 6}}};

struct Shape {
    int channels = 0;  ///< depth included
    bool wrapped = false;
    std::int64_t records = 0;
    std::int64_t stepThousandths = 1;
};

std::string fixed(double value) {
    return formatMask(value, decimals);
}
std::string line(std::string text) {
    return std::move(text) + "\r\n";
}

std::string headerLine(std::string mnemonic, std::string_view unit, std::string_view value,
                       std::string_view description) {
    mnemonic.resize(std::max<std::size_t>(mnemonic.size(), 5), ' ');
    std::string text = mnemonic + "." + std::string(unit);
    text.resize(std::max<std::size_t>(text.size() + 1, 14), ' ');
    text += value;
    text.resize(std::max<std::size_t>(text.size() + 1, 59), ' ');
    return line(text + ": " + std::string(description));
}

std::string mnemonicOf(int channel) {
    const int index = channel - 1;
    const std::string name(kinds[static_cast<std::size_t>(index) % kinds.size()].mnemonic);
    const int turn = index / static_cast<int>(kinds.size());
    return turn == 0 ? name : name + std::to_string(turn + 1);
}

double depthOf(const Shape& shape, std::int64_t record) {
    return startDepth + static_cast<double>(record * shape.stepThousandths) / 1000;
}

std::string header(const Shape& shape) {
    std::string text = line("~Version Information");
    text += headerLine("VERS", "", "2.0", "CWLS Log ASCII Standard - VERSION 2.0");
    text += headerLine("WRAP", "", shape.wrapped ? "YES" : "NO",
                       shape.wrapped ? "Multiple lines per depth step" : "One line per depth step");
    text += line("~Well Information");
    text += headerLine("STRT", "M", fixed(startDepth), "START DEPTH");
    text += headerLine("STOP", "M", fixed(depthOf(shape, shape.records - 1)), "STOP DEPTH");
    text += headerLine("STEP", "M", fixed(static_cast<double>(shape.stepThousandths) / 1000), "STEP");
    text += headerLine("NULL", "", fixed(lasNull), "NULL VALUE");
    text += headerLine("COMP", "", "NORTH RIDGE ENERGY", "COMPANY");
    text += headerLine("WELL", "", "RIDGE 4-12", "WELL");
    text += headerLine("FLD", "", "WILDCAT", "FIELD");
    text += headerLine("LOC", "", "04-12-045-07W4", "LOCATION");
    text += headerLine("PROV", "", "ALBERTA", "PROVINCE");
    text += headerLine("SRVC", "", "NORTH RIDGE LOGGING", "SERVICE COMPANY");
    text += headerLine("DATE", "", "12-JUN-1997", "LOG DATE");
    text += headerLine("UWI", "", "100041204507W400", "UNIQUE WELL ID");
    text += line("~Curve Information");
    text += headerLine("DEPT", "M", "", "Depth");
    for (int channel = 1; channel < shape.channels; ++channel) {
        const Kind& kind = kinds[static_cast<std::size_t>(channel - 1) % kinds.size()];
        text += headerLine(mnemonicOf(channel), kind.unit, "", kind.description);
    }
    text += line("~Parameter Information");
    text += headerLine("EKB", "M", "712.40000", "Elevation of Kelly Bushing");
    text += headerLine("BS", "MM", "222.00000", "Bit Size");
    text += headerLine("BHT", "DEGC", "61.50000", "Bottom Hole Temperature");
    return text + line("~ASCII");
}

/// One log on its way down the hole.
struct Log {
    double value, low, high;
    std::int64_t untilChange;  ///< records left of the null or data run
    bool null;
};

class Logs {
  public:
    explicit Logs(int channels) {
        for (int channel = 1; channel < channels; ++channel) {
            const Kind& kind = kinds[static_cast<std::size_t>(channel - 1) % kinds.size()];
            // Each tool begins to read some way below the first depth.
            logs_.push_back(
                {(kind.low + kind.high) / 2, kind.low, kind.high, static_cast<std::int64_t>(random() % 40), true});
        }
    }
    double next(std::size_t index) {
        Log& log = logs_[index];
        if (log.untilChange-- <= 0) {
            log.null = !log.null;
            log.untilChange = static_cast<std::int64_t>(log.null ? 5 + random() % 60 : 500 + random() % 4000);
        }
        const double unit = static_cast<double>(random() >> 11) * 0x1p-53 - 0.5;
        log.value = std::clamp(log.value + unit * 0.05 * (log.high - log.low), log.low, log.high);
        return log.null ? lasNull : log.value;
    }

  private:
    /// xorshift64: quick, and the same everywhere.
    std::uint64_t random() {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 7;
        state_ ^= state_ << 17;
        return state_;
    }
    std::uint64_t state_ = 0x9E3779B97F4A7C15U;
    std::vector<Log> logs_;
};

void writeColumn(BlockWriter& writer, double value) {
    std::array<char, formatMaskCapacity(decimals)> text;
    const std::size_t length = std::min<std::size_t>(formatMaskFast(text.data(), value, decimals), columnWidth);
    std::copy_n(text.data(), length, std::fill_n(writer.reserve(columnWidth), columnWidth - length, ' '));
    writer.advance(columnWidth);
}

void writeData(BlockWriter& writer, const Shape& shape) {
    Logs logs(shape.channels);
    for (std::int64_t record = 0; record < shape.records; ++record) {
        writeColumn(writer, depthOf(shape, record));
        for (int channel = 1; channel < shape.channels; ++channel) {
            if (shape.wrapped && (channel - 1) % valuesPerLine == 0) writer.write("\r\n");
            writeColumn(writer, logs.next(static_cast<std::size_t>(channel - 1)));
        }
        writer.write("\r\n");
    }
}

/// Records that come close to the wanted size, and a step that keeps the hole believable and its depths inside a
/// column.
void settleSize(Shape& shape, std::int64_t bytes) {
    const int lines = shape.wrapped ? 1 + (shape.channels - 2 + valuesPerLine) / valuesPerLine : 1;
    const std::int64_t headerBytes = static_cast<std::int64_t>(header(shape).size());
    const std::int64_t record = static_cast<std::int64_t>(shape.channels) * columnWidth + 2 * lines;
    shape.records = std::max<std::int64_t>(2, (bytes - headerBytes) / record);
    for (const std::int64_t step : {500, 100, 10, 1}) {
        shape.stepThousandths = step;
        if (shape.records * step <= 20'000'000) break;
    }
}

int run(const char* path, std::string_view megabytes, std::string_view channels, bool wrapped) {
    const double size = val(megabytes);
    const double wanted = val(channels);
    if (!isNumeric(megabytes) || !isNumeric(channels) || size <= 0 || size > 20000 || wanted < 2 || wanted > 2000) {
        std::cerr << "MEGABYTES is above 0 and up to 20000, CHANNELS from 2 to 2000\n";
        return 2;
    }
    Shape shape{.channels = static_cast<int>(wanted), .wrapped = wrapped};
    settleSize(shape, static_cast<std::int64_t>(size * (1 << 20)));
    BlockWriter writer(path);
    writer.write(header(shape));
    writeData(writer, shape);
    if (writer.close()) return 0;
    std::cerr << path << ": cannot be written\n";
    return 1;
}

}  // namespace
}  // namespace welvane::bench

int main(int count, char** arguments) {
    const bool wrapped = count == 5 && std::string_view(arguments[4]) == "wrapped";
    if (count != 4 && !wrapped) {
        std::cerr << "usage: welvane_make_las OUT MEGABYTES CHANNELS [wrapped]\n";
        return 2;
    }
    return welvane::bench::run(arguments[1], arguments[2], arguments[3], wrapped);
}
