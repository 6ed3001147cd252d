// Makes the wells of examples/: an invented earth, the tools that are pulled through it, and the files that come of it.
// The same bytes come out every time and everywhere: the random numbers are our own, and what they feed is plain
// arithmetic.

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr double nullValue = -999.25;

/// Splitmix64: small, seeded, the same on every machine.
class Dice {
  public:
    explicit Dice(std::uint64_t seed) : state_(seed) {}
    /// Evenly between 0 and 1.
    double even() { return static_cast<double>(next() >> 11) * 0x1p-53; }
    double between(double low, double high) { return low + (high - low) * even(); }
    /// About normal with deviation 1: a sum of even numbers, which needs no logarithm.
    double normal() {
        double sum = -6;
        for (int i = 0; i < 12; ++i) sum += even();
        return sum;
    }

  private:
    std::uint64_t next() {
        std::uint64_t z = (state_ += 0x9e3779b97f4a7c15ULL);
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ULL;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebULL;
        return z ^ (z >> 31);
    }
    std::uint64_t state_;
};

enum class Rock { Sand, Shale, Lime };

/// What the earth is at one depth.
struct Earth {
    Rock rock = Rock::Shale;
    double shale = 1;     ///< part of the bulk
    double porosity = 0;  ///< effective, part of the bulk
    double water = 1;     ///< saturation
    double gas = 0;       ///< 1 where the hydrocarbon is gas
    double washout = 0;   ///< inches beyond the bit size
};

/// The earth in fine samples of `step` from `top` on.
struct Column {
    double top = 0, step = 0.05;
    std::vector<Earth> samples;
    const Earth& at(double depth) const {
        const double index = std::clamp((depth - top) / step, 0.0, static_cast<double>(samples.size() - 1));
        return samples[static_cast<std::size_t>(index)];
    }
};

struct EarthModel {
    double top, bottom;             ///< metres
    double gasContact, oilContact;  ///< metres; gas above the first, oil above the second
    double limeFrom;                ///< below it lime takes the place of sand
    std::uint64_t seed;
};

/// Layers of random thickness, each with its own clay, porosity and fluid, sands fining upwards.
Column makeColumn(const EarthModel& model) {
    Dice dice(model.seed);
    Column column;
    column.top = model.top;
    bool clean = false;
    double depth = model.top;
    while (depth < model.bottom) {
        const double thickness = clean ? dice.between(2, 14) : dice.between(1.5, 18);
        Earth layer;
        layer.rock = !clean ? Rock::Shale : depth > model.limeFrom ? Rock::Lime : Rock::Sand;
        layer.shale = clean ? dice.between(0.03, 0.22) : dice.between(0.72, 0.97);
        const double best = layer.rock == Rock::Lime ? dice.between(0.04, 0.19) : dice.between(0.16, 0.29);
        layer.porosity = clean ? best : dice.between(0.02, 0.05);
        const double washout = clean ? -dice.between(0, 0.25) : dice.between(-0.2, 2.6);
        for (double inside = 0; inside < thickness && depth < model.bottom;
             inside += column.step, depth += column.step) {
            Earth here = layer;
            if (clean)
                here.shale =
                    std::clamp(layer.shale + 0.25 * (1 - inside / thickness) * (layer.rock == Rock::Sand), 0.0, 1.0);
            here.porosity *= 1 - 0.5 * (here.shale - layer.shale);
            here.gas = clean && depth < model.gasContact ? 1 : 0;
            here.water = clean && depth < model.oilContact ? 0.22 + 0.5 * here.shale : 1;
            here.washout = std::max(washout, -0.3);
            column.samples.push_back(here);
        }
        clean = !clean;
    }
    return column;
}

double gammaRay(const Earth& e) {
    return 18 + 112 * e.shale + (e.rock == Rock::Lime ? -6 : 0);
}
double spontaneous(const Earth& e) {
    return -70 * (1 - std::min(1.0, e.shale * 1.25));
}
double matrixDensity(const Earth& e) {
    return e.rock == Rock::Lime ? 2.71 : 2.65;
}
double density(const Earth& e) {
    const double fluid = 1.02 - (1 - e.water) * (e.gas > 0 ? 0.55 : 0.18);
    const double solid = (1 - e.shale - e.porosity) * matrixDensity(e) + e.shale * 2.52;
    return solid + e.porosity * fluid;
}
double neutron(const Earth& e) {
    const double hydrogen = 1 - (1 - e.water) * (e.gas > 0 ? 0.55 : 0.05);
    return e.porosity * hydrogen + 0.36 * e.shale - (e.rock == Rock::Sand ? 0.03 : 0.0);
}
double slowness(const Earth& e) {
    const double solid = e.rock == Rock::Lime ? 47.5 : 55.5;
    return (1 - e.porosity - e.shale) * solid + e.shale * 92 + e.porosity * 189;
}
/// Archie with a shale that conducts beside the sand; the water is salt, 0.06 ohmm.
double resistivity(const Earth& e, double waterResistivity, double water) {
    const double conductance =
        e.porosity * e.porosity * water * water / (0.81 * waterResistivity) + e.shale * e.shale / 3.2;
    return 1 / std::max(conductance, 1 / 2000.0);
}
double photoelectric(const Earth& e) {
    const double solid = e.rock == Rock::Lime ? 5.08 : 1.81;
    return (1 - e.shale) * solid + e.shale * 3.1;
}

/// One curve of a run: what its tool sees, over which length, how noisily, and how it is printed.
struct Curve {
    std::string_view mnem, unit, code, description;
    std::function<double(const Earth&)> response;
    double length;  ///< metres of earth that one reading blurs
    double noise;   ///< as told by `relative`
    bool relative;  ///< noise is a part of the reading
    double sensor;  ///< metres from the tool's end: the lowest readings are missing
    int decimals;
};

/// The blurred reading at a depth: weights fall off to both sides over the tool's length.
double blurred(const Column& column, const Curve& curve, double depth) {
    constexpr int half = 6;
    double sum = 0, weights = 0;
    for (int i = -half; i <= half; ++i) {
        const double weight = half + 1 - std::abs(i);
        sum += weight * curve.response(column.at(depth + curve.length * i / (2.0 * half)));
        weights += weight;
    }
    return sum / weights;
}

struct Grid {
    double first, step;  ///< in the file's unit
    int count;
    int decimals;
    double metres = 1;  ///< of one unit of the file
    double depth(int i) const { return first + step * i; }
};

using Samples = std::vector<std::vector<double>>;  ///< [curve][depth]

Samples logged(const Column& column, const Grid& grid, const std::vector<Curve>& curves, std::uint64_t seed) {
    Dice dice(seed);
    Samples samples;
    const double end = grid.depth(grid.count - 1) * grid.metres;
    for (const Curve& curve : curves) {
        std::vector<double>& out = samples.emplace_back();
        double wander = 0;  // neighbouring readings err alike
        for (int i = 0; i < grid.count; ++i) {
            const double depth = grid.depth(i) * grid.metres;
            const double reading = blurred(column, curve, depth);
            wander = 0.6 * wander + 0.8 * dice.normal();
            const double value = curve.relative ? reading * (1 + curve.noise * wander) : reading + curve.noise * wander;
            out.push_back(depth > end - curve.sensor ? nullValue : value);
        }
    }
    return samples;
}

std::string number(double value, int decimals) {
    std::array<char, 64> buffer{};
    const auto done =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, decimals);
    std::string text(buffer.data(), done.ptr);
    return text.find_first_not_of("-0.") == std::string::npos && text[0] == '-' ? text.substr(1) : text;
}
std::string shown(double value, int decimals) {
    return value == nullValue ? "-999.25" : number(value, decimals);
}
std::string right(std::string_view text, std::size_t width) {
    return std::string(width > text.size() ? width - text.size() : 0, ' ') + std::string(text);
}
std::string left(std::string_view text, std::size_t width) {
    return std::string(text) + std::string(width > text.size() ? width - text.size() : 0, ' ');
}

/// A file in the making; every line ends with CR LF.
struct Text {
    std::string bytes;
    void line(std::string_view text) { bytes.append(text).append("\r\n"); }
    void field(std::string_view mnem, std::string_view unit, std::string_view value, std::string_view description) {
        line(left(std::string(mnem) + "." + std::string(unit), 14) + " " + left(value, 28) + " : " +
             std::string(description));
    }
};

struct Header {
    std::string_view title;
    bool old = false;  ///< LAS 1.2: descriptions stand before the colon, values behind it
    bool wrapped = false;
    std::string_view depthUnit = "M";
    std::vector<std::array<std::string_view, 2>> well{};        ///< mnemonic and value
    std::vector<std::array<std::string_view, 4>> parameters{};  ///< mnemonic, unit, value, description
    std::vector<std::string_view> other{};
};

std::string_view meaning(std::string_view mnem) {
    static constexpr std::array<std::array<std::string_view, 2>, 9> meanings = {{{"COMP", "COMPANY"},
                                                                                 {"WELL", "WELL"},
                                                                                 {"FLD", "FIELD"},
                                                                                 {"LOC", "LOCATION"},
                                                                                 {"PROV", "PROVINCE"},
                                                                                 {"SRVC", "SERVICE COMPANY"},
                                                                                 {"DATE", "LOG DATE"},
                                                                                 {"UWI", "UNIQUE WELL ID"},
                                                                                 {"RUN", "RUN NUMBER"}}};
    for (const auto& [name, text] : meanings)
        if (name == mnem) return text;
    return mnem;
}

void writeHeader(Text& text, const Header& header, const Grid& grid, const std::vector<Curve>& curves) {
    text.line("~Version Information");
    text.field("VERS", "", header.old ? "1.2" : "2.0",
               "CWLS LOG ASCII STANDARD - VERSION " + std::string(header.old ? "1.2" : "2.0"));
    text.field("WRAP", "", header.wrapped ? "YES" : "NO",
               header.wrapped ? "MULTIPLE LINES PER DEPTH STEP" : "ONE LINE PER DEPTH STEP");
    text.line("~Well Information");
    text.line("# " + std::string(header.title));
    text.field("STRT", header.depthUnit, number(grid.depth(0), grid.decimals), "START DEPTH");
    text.field("STOP", header.depthUnit, number(grid.depth(grid.count - 1), grid.decimals), "STOP DEPTH");
    text.field("STEP", header.depthUnit, number(grid.step, grid.decimals), "STEP");
    text.field("NULL", "", "-999.25", "NULL VALUE");
    for (const auto& [mnem, value] : header.well)
        text.field(mnem, "", header.old ? meaning(mnem) : value, header.old ? value : meaning(mnem));
    text.line("~Curve Information");
    text.field("DEPT", header.depthUnit, "00 001 00 00", "DEPTH");
    for (const Curve& curve : curves) text.field(curve.mnem, curve.unit, curve.code, curve.description);
    text.line("~Parameter Information");
    for (const auto& [mnem, unit, value, description] : header.parameters) text.field(mnem, unit, value, description);
    text.line("~Other Information");
    for (const std::string_view line : header.other) text.line(line);
}

void writeData(Text& text, bool wrapped, const Grid& grid, const std::vector<Curve>& curves, const Samples& samples) {
    std::string title = "~A  DEPT";
    if (!wrapped)
        for (const Curve& curve : curves) title += right(curve.mnem, 11);
    text.line(title);
    for (int i = 0; i < grid.count; ++i) {
        std::string line = right(number(grid.depth(i), grid.decimals), 11);
        if (wrapped) {
            text.line(line);
            line.clear();
        }
        for (std::size_t c = 0; c < curves.size(); ++c) {
            if (line.size() + 11 > 79 && wrapped) {
                text.line(line);
                line.clear();
            }
            line += right(shown(samples[c][static_cast<std::size_t>(i)], curves[c].decimals), 11);
        }
        text.line(line);
    }
}

void save(const std::filesystem::path& path, const Text& text) {
    std::ofstream file(path, std::ios::binary);
    file << text.bytes;
    if (!file.flush()) throw std::runtime_error("cannot write " + path.string());
}

void makeWell(const std::filesystem::path& path, const Header& header, const Column& column, const Grid& grid,
              const std::vector<Curve>& curves, std::uint64_t seed) {
    Text text;
    writeHeader(text, header, grid, curves);
    writeData(text, header.wrapped, grid, curves, logged(column, grid, curves, seed));
    save(path, text);
}

double deep(const Earth& e) {
    return resistivity(e, 0.06, e.water);
}
double medium(const Earth& e) {
    return resistivity(e, 0.09, std::min(1.0, e.water + 0.2));
}
double shallow(const Earth& e) {
    return resistivity(e, 0.35, std::min(1.0, e.water + 0.55));
}
/// A density pad that leaves the wall of a washed-out hole reads mud with the rock.
double paddedDensity(const Earth& e) {
    return density(e) - 0.16 * std::max(0.0, e.washout - 1.2);
}
double densityCorrection(const Earth& e) {
    return 0.004 + 0.055 * std::max(0.0, e.washout - 0.6);
}

void makeKestrel(const std::filesystem::path& folder) {
    const Column column = makeColumn({980, 1420, 1092, 1118, 1260, 20240607});
    const double bit = 8.5;
    const auto caliper = [bit](const Earth& e) { return bit + e.washout; };

    Header header{.title = "KESTREL 7, FIRST RUN"};
    header.well = {{"COMP", "MARLSTONE PETROLEUM"},
                   {"WELL", "KESTREL 7"},
                   {"FLD", "LONG MEADOW"},
                   {"LOC", "54 21 10 N, 002 14 36 E"},
                   {"SRVC", "UPLAND LOGGING"},
                   {"DATE", "07-JUN-2024"},
                   {"RUN", "1"}};
    header.parameters = {{"BS", "IN", "8.5", "BIT SIZE"},
                         {"DFD", "G/C3", "1.18", "MUD DENSITY"},
                         {"RMF", "OHMM", "0.35", "MUD FILTRATE RESISTIVITY"},
                         {"BHT", "DEGC", "48.0", "BOTTOM HOLE TEMPERATURE"},
                         {"MATR", "", "SAND", "NEUTRON MATRIX"}};
    header.other = {"Logged on the way up, tension steady. Hole washed out in the shales."};
    const std::vector<Curve> first = {
        {"GR", "GAPI", "30 310 01 00", "GAMMA RAY", gammaRay, 0.6, 2.2, false, 14.0, 3},
        {"CALI", "IN", "70 280 01 00", "CALIPER", caliper, 0.2, 0.03, false, 0, 3},
        {"SP", "MV", "07 010 01 00", "SPONTANEOUS POTENTIAL", spontaneous, 3.0, 0.6, false, 9.0, 3},
        {"SFLU", "OHMM", "07 220 01 00", "SHALLOW RESISTIVITY", shallow, 0.4, 0.02, true, 7.0, 4},
        {"ILM", "OHMM", "05 110 02 00", "MEDIUM INDUCTION", medium, 1.5, 0.015, true, 7.0, 4},
        {"ILD", "OHMM", "05 120 01 00", "DEEP INDUCTION", deep, 2.1, 0.015, true, 7.0, 4},
        {"RHOB", "G/C3", "45 350 01 00", "BULK DENSITY", paddedDensity, 0.4, 0.012, false, 0, 4},
        {"DRHO", "G/C3", "45 356 01 00", "DENSITY CORRECTION", densityCorrection, 0.4, 0.003, false, 0, 4},
        {"NPHI", "V/V", "42 890 01 00", "NEUTRON POROSITY", neutron, 0.6, 0.008, false, 5.0, 4},
        {"DT", "US/F", "60 520 01 00", "SONIC TRAVEL TIME", slowness, 0.6, 0.6, false, 11.0, 3},
    };
    makeWell(folder / "kestrel-7-run1.las", header, column, {1000.0488, 0.1524, 1313, 4}, first, 101);

    header.title = "KESTREL 7, SECOND RUN";
    header.well[4][1] = "FJORD WIRELINE";
    header.well[5][1] = "19-JUN-2024";
    header.well[6][1] = "2";
    header.parameters[1][2] = "1.22";
    header.parameters[3][2] = "55.5";
    header.other = {"Other tools than in the first run, and other names for what they measure."};
    const std::vector<Curve> second = {
        {"CAL", "IN", "70 280 01 00", "CALIPER", caliper, 0.2, 0.03, false, 0, 3},
        {"GRC", "GAPI", "30 310 01 00", "GAMMA RAY, CORRECTED", gammaRay, 0.5, 1.8, false, 12.0, 3},
        {"SP", "MV", "07 010 01 00", "SPONTANEOUS POTENTIAL", spontaneous, 3.0, 0.5, false, 8.0, 3},
        {"IDPH", "OHMM", "05 120 01 00", "DEEP INDUCTION, PHASOR", deep, 1.6, 0.012, true, 6.0, 4},
        {"IMPH", "OHMM", "05 110 02 00", "MEDIUM INDUCTION, PHASOR", medium, 1.2, 0.012, true, 6.0, 4},
        {"ZDEN", "G/C3", "45 350 01 00", "BULK DENSITY", paddedDensity, 0.3, 0.010, false, 0, 4},
        {"CNC", "V/V", "42 890 01 00", "NEUTRON POROSITY, CORRECTED", neutron, 0.6, 0.007, false, 4.5, 4},
        {"DTC", "US/F", "60 520 01 00", "SONIC TRAVEL TIME, COMPRESSIONAL", slowness, 0.5, 0.5, false, 10.0, 3},
        {"PE", "B/E", "45 358 01 00", "PHOTOELECTRIC FACTOR", photoelectric, 0.3, 0.06, false, 0, 3},
    };
    makeWell(folder / "kestrel-7-run2.las", header, column, {1150.0104, 0.1524, 1641, 4}, second, 202);
}

void makeOldFeet(const std::filesystem::path& folder) {
    const Column column = makeColumn({1500, 1570, 0, 1530, 1548, 19910314});
    Header header{.title = "AN OLD WELL, AS ITS TAPE WAS COPIED", .old = true, .wrapped = true, .depthUnit = "F"};
    header.well = {{"COMP", "PLOVER OIL COMPANY"}, {"WELL", "PLOVER STATE NO. 1"}, {"FLD", "DRY CREEK"},
                   {"LOC", "SEC 12 T4N R31W"},     {"SRVC", "UPLAND LOGGING"},     {"DATE", "14-MAR-91"}};
    header.parameters = {{"BS", "IN", "7.875", "BIT SIZE"},
                         {"RM", "OHMM", "1.42", "MUD RESISTIVITY"},
                         {"MATR", "", "LIME", "NEUTRON MATRIX"}};
    header.other = {"Copied from tape, 1.2 and wrapped as it stood."};
    const std::vector<Curve> curves = {
        {"GR", "GAPI", "30 310 01 00", "GAMMA RAY", gammaRay, 0.8, 3.0, false, 5.0, 2},
        {"SP", "MV", "07 010 01 00", "SPONTANEOUS POTENTIAL", spontaneous, 3.0, 0.8, false, 4.0, 2},
        {"CALI", "IN", "70 280 01 00", "CALIPER", [](const Earth& e) { return 7.875 + e.washout; }, 0.3, 0.04, false, 0,
         2},
        {"LLS", "OHMM", "08 220 01 00", "SHALLOW LATEROLOG", shallow, 0.6, 0.02, true, 3.0, 3},
        {"LLD", "OHMM", "08 220 02 00", "DEEP LATEROLOG", deep, 0.6, 0.02, true, 3.0, 3},
        {"MSFL", "OHMM", "08 270 01 00", "MICRO SPHERICALLY FOCUSED",
         [](const Earth& e) { return resistivity(e, 0.9, 0.9); }, 0.2, 0.05, true, 0, 3},
        {"RHOB", "G/C3", "45 350 01 00", "BULK DENSITY", paddedDensity, 0.5, 0.014, false, 0, 3},
        {"NPHI", "V/V", "42 890 01 00", "NEUTRON POROSITY", neutron, 0.7, 0.010, false, 2.5, 3},
        {"DT", "US/F", "60 520 01 00", "SONIC TRAVEL TIME", slowness, 0.6, 0.8, false, 4.0, 2},
    };
    makeWell(folder / "plover-state-1.las", header, column, {4940.0, 0.5, 401, 1, 0.3048}, curves, 303);
}

void makeMetric(const std::filesystem::path& folder) {
    const Column column = makeColumn({1780, 1920, 0, 1838, 1880, 20180922});
    Header header{.title = "A DEVIATED WELL, ALL METRIC"};
    header.well = {{"COMP", "TAMARACK ENERGY LTD."},
                   {"WELL", "TAMARACK PINE LAKE 4-23"},
                   {"FLD", "PINE LAKE"},
                   {"LOC", "04-23-036-25W4"},
                   {"PROV", "ALBERTA"},
                   {"SRVC", "UPLAND LOGGING"},
                   {"DATE", "22-SEP-2018"},
                   {"UWI", "100042303625W400"}};
    header.parameters = {{"BS", "MM", "222.0", "BIT SIZE"},
                         {"DFD", "K/M3", "1140.0", "MUD DENSITY"},
                         {"EKB", "M", "918.4", "KELLY BUSHING"},
                         {"BHT", "DEGC", "61.0", "BOTTOM HOLE TEMPERATURE"},
                         {"MATR", "", "SAND", "NEUTRON MATRIX"}};
    header.other = {"Depths are measured along the hole; tamarack-4-23-survey.txt tells how it bends."};
    const std::vector<Curve> curves = {
        {"GR", "GAPI", "30 310 01 00", "GAMMA RAY", gammaRay, 0.6, 2.0, false, 8.0, 2},
        {"CALI", "MM", "70 280 01 00", "CALIPER", [](const Earth& e) { return 222 + 25.4 * e.washout; }, 0.2, 0.8,
         false, 0, 2},
        {"RESD", "OHMM", "05 120 01 00", "DEEP RESISTIVITY", deep, 1.6, 0.012, true, 5.0, 3},
        {"RESS", "OHMM", "07 220 01 00", "SHALLOW RESISTIVITY", shallow, 0.4, 0.02, true, 5.0, 3},
        {"RHOB", "K/M3", "45 350 01 00", "BULK DENSITY", [](const Earth& e) { return 1000 * paddedDensity(e); }, 0.3,
         11.0, false, 0, 1},
        {"NPSS", "V/V", "42 890 01 00", "NEUTRON POROSITY, SAND", neutron, 0.6, 0.007, false, 3.5, 4},
        {"DT", "US/M", "60 520 01 00", "SONIC TRAVEL TIME", [](const Earth& e) { return slowness(e) / 0.3048; }, 0.6,
         1.8, false, 6.0, 2},
        {"PEF", "B/E", "45 358 01 00", "PHOTOELECTRIC FACTOR", photoelectric, 0.3, 0.06, false, 0, 3},
    };
    makeWell(folder / "tamarack-4-23.las", header, column, {1800.0, 0.2, 501, 1}, curves, 404);

    // Built up from vertical to 42 degrees between 600 and 1450 m, then held, turning slowly. The first line is the tie
    // point.
    Dice dice(505);
    Text survey;
    survey.line("M 300.00 299.98");
    for (int station = 0; station <= 57; ++station) {
        const double depth = 300 + 28.5 * station;
        const double angle = 0.6 + 41.4 * std::clamp((depth - 600) / 850, 0.0, 1.0) + dice.between(-0.25, 0.25);
        const double azimuth = 118 + 0.012 * (depth - 300) + dice.between(-0.8, 0.8);
        survey.line(number(depth, 2) + " " + number(angle, 2) + " " + number(azimuth, 1));
    }
    survey.line("-1 -1 -1");
    save(folder / "tamarack-4-23-survey.txt", survey);
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::cerr << "usage: make_examples FOLDER\n";
        return 2;
    }
    try {
        const std::filesystem::path folder = arguments[1];
        makeKestrel(folder);
        makeOldFeet(folder);
        makeMetric(folder);
    } catch (const std::exception& error) {
        std::cerr << "make_examples: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
