#include "picture/scales.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "picture/axis.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// The usual scale of some curve groups in one unit.
struct ScaleRow {
    std::string_view groups, unit;  ///< groups between "|"; "" for any
    double left, right;
    bool logarithmic;
    TrackKind kind;
};

constexpr std::string_view porosities =
    "|NPHI|TNPH|ENPH|NPHI_LIM|NPHI_SAN|NPHI_DOL|TPHI|DPHI|DPHI_LIM|DPHI_SAN|DPHI_DOL|SPHI|";
constexpr std::string_view effectivePorosities = "|PHIT|PHIX|PHIA|PHIE|PHIC|PHI2|TCMR|CMRP|CMRP_3MS|CMFF|BFV|CBW|";
constexpr std::string_view saturations = "|SW|SWT|SWE|SXO|SWIRR|SO|SG|";
constexpr std::string_view volumes = "|VSH|VCL|VSAND|VLIME|VDOLO|VANHY|VCOAL|";
constexpr std::string_view densities = "|RHOB|ROBB|ROBU|ROBL|ROBR|";
constexpr std::string_view calipers = "|CALI|SCAL|C1|C2|BS|CSIZ|";

/// The scales that logs are printed with by custom. The first row that fits wins.
constexpr std::array<ScaleRow, 35> scaleRows = {{
    {"|GR|SGR|CGR|", "GAPI", 0, 150, false, TrackKind::Correlation},
    {"|SP|", "MV", -160, 40, false, TrackKind::Correlation},
    {calipers, "IN", 6, 16, false, TrackKind::Correlation},
    {calipers, "MM", 150, 400, false, TrackKind::Correlation},
    {calipers, "CM", 15, 40, false, TrackKind::Correlation},
    {densities, "G/C3", 1.95, 2.95, false, TrackKind::Porosity},
    {densities, "K/M3", 1950, 2950, false, TrackKind::Porosity},
    {"|DRHO|", "G/C3", -0.25, 0.25, false, TrackKind::Porosity},
    {"|DRHO|", "K/M3", -250, 250, false, TrackKind::Porosity},
    {"|PEF|", "B/E", 0, 10, false, TrackKind::Porosity},
    {porosities, "V/V", 0.45, -0.15, false, TrackKind::Porosity},
    {porosities, "PU", 45, -15, false, TrackKind::Porosity},
    {"|DT|DTLN|DTLF|", "US/F", 140, 40, false, TrackKind::Sonic},
    {"|DT|DTLN|DTLF|", "US/M", 500, 100, false, TrackKind::Sonic},
    {"|DTS|DTST|", "US/F", 240, 40, false, TrackKind::Sonic},
    {"|DTS|DTST|", "US/M", 800, 100, false, TrackKind::Sonic},
    {"|CILD|CILM|CT90|", "MMHO/M", 1000, 0, false, TrackKind::Other},
    {effectivePorosities, "V/V", 0.5, 0, false, TrackKind::Other},
    {effectivePorosities, "PU", 50, 0, false, TrackKind::Other},
    {saturations, "V/V", 1, 0, false, TrackKind::Other},
    {saturations, "PU", 100, 0, false, TrackKind::Other},
    {volumes, "V/V", 0, 1, false, TrackKind::Other},
    {volumes, "PU", 0, 100, false, TrackKind::Other},
    {"|PERM|KCORE|KMAX|KV|KTIM|KSDR|", "MD", 0.01, 1000, true, TrackKind::Other},
    {"|SIGM|SIBH|", "CU", 60, 0, false, TrackKind::Other},
    {"|DEVI|", "DEG", 0, 90, false, TrackKind::Other},
    {"|HAZI|P1AZ|RB|", "DEG", 0, 360, false, TrackKind::Other},
    {"|COALFLAG|BADHOLE|", "FLAG", 0, 1, false, TrackKind::Other},
    {"", "OHMM", 0.2, 2000, true, TrackKind::Resistivity},
    {"", "GAPI", 0, 150, false, TrackKind::Correlation},
    {"", "US/F", 140, 40, false, TrackKind::Sonic},
    {"", "US/M", 500, 100, false, TrackKind::Sonic},
    {"|GR|SGR|CGR|", "", 0, 150, false, TrackKind::Correlation},
    {"|SP|", "", -160, 40, false, TrackKind::Correlation},
    {"|NPHI|DPHI|", "", 0.45, -0.15, false, TrackKind::Porosity},
}};

/// Whether two texts name one unit: the same text, or of one group with the same factor.
bool sameUnit(const ReferenceTables& reference, const std::string& one, const std::string& other) {
    if (sameText(one, other)) return true;
    std::string group, otherGroup;
    unitGroupMembers(reference, one, &group);
    unitGroupMembers(reference, other, &otherGroup);
    if (group.empty() || !sameText(group, otherGroup)) return false;
    double offset = 0, otherOffset = 0;
    const double factor = unitFactor(reference, one, &offset), otherFactor = unitFactor(reference, other, &otherOffset);
    return std::abs(factor / otherFactor - 1) < 1e-6 && offset == otherOffset;
}

bool holdsGroup(std::string_view groups, const std::string& group) {
    return groups.empty() || (!group.empty() && holdsText(groups, "|" + group + "|"));
}

const ScaleRow* findRow(const ReferenceTables& reference, const CurveValues& curve) {
    const std::string mnem(trim(curve.mnem)), unit(trim(curve.unit));
    std::string group = curveGroup(reference, mnem);
    // Without a library the names that the table has are known all the same.
    if (group.empty()) group = mnem;
    for (const ScaleRow& row : scaleRows) {
        if (!holdsGroup(row.groups, group)) continue;
        const bool fits = row.unit.empty() ? unit.empty() : sameUnit(reference, unit, std::string(row.unit));
        if (fits) return &row;
    }
    return nullptr;
}

/// Some of the samples, in order: percentiles of a million are those of 65536 spread evenly over them.
std::vector<double> sortedSome(std::span<const double> values, bool positive) {
    constexpr std::size_t enough = 65536;
    const std::size_t stride = std::max<std::size_t>(1, values.size() / enough);
    std::vector<double> some;
    for (std::size_t index = 0; index < values.size(); index += stride) {
        const double value = values[index];
        if (std::isfinite(value) && (!positive || value > 0)) some.push_back(value);
    }
    // Few among many that are null: then all of them are looked at.
    if (some.empty() && stride > 1)
        for (const double value : values)
            if (std::isfinite(value) && (!positive || value > 0)) some.push_back(value);
    std::sort(some.begin(), some.end());
    return some;
}

/// Lower and upper percentile of sorted values that are not none.
std::pair<double, double> percentiles(const std::vector<double>& sorted) {
    const auto at = [&](double share) {
        return sorted[static_cast<std::size_t>(std::lround(share * static_cast<double>(sorted.size() - 1)))];
    };
    return {at(0.02), at(0.98)};
}

bool mostlyBeyond(const Scale& scale, std::span<const double> values) {
    const std::vector<double> some = sortedSome(values, false);
    const auto inside = std::upper_bound(some.begin(), some.end(), scale.greatest()) -
                        std::lower_bound(some.begin(), some.end(), scale.least());
    return !some.empty() && static_cast<std::size_t>(std::max<std::ptrdiff_t>(inside, 0)) * 10 < some.size();
}

}  // namespace

double Scale::share(double value) const {
    if (!logarithmic) return (value - left) / (right - left);
    if (value <= 0) return left < right ? -HUGE_VAL : HUGE_VAL;
    return std::log(value / left) / std::log(right / left);
}

std::string curveGroup(const ReferenceTables& reference, const std::string& mnem) {
    for (const Curve& curve : reference.curves)
        if (sameText(curve.mnem, mnem)) return curve.group;
    return {};
}

Scale percentileScale(std::span<const double> values) {
    const std::vector<double> sorted = sortedSome(values, false);
    if (sorted.empty()) return {};
    // Spans beyond these are not reckoned with: nobody reads them.
    constexpr double most = 1e300;
    auto [low, high] = percentiles(sorted);
    low = std::clamp(low, -most, most);
    high = std::clamp(high, -most, most);
    if (!(high > low)) {
        const double around = low == 0 ? 1 : std::abs(low) / 5;
        low -= around;
        high += around;
    }
    const double step = roundStep((high - low) / 10);
    const Scale scale{std::floor(low / step + 1e-9) * step, std::ceil(high / step - 1e-9) * step};
    return scale.left < scale.right ? scale : Scale{low, high};
}

Scale decadeScale(std::span<const double> values) {
    const std::vector<double> sorted = sortedSome(values, true);
    if (sorted.empty()) return {0.2, 2000, true};
    const auto [low, high] = percentiles(sorted);
    double from = std::floor(std::log10(low) + 1e-9), to = std::ceil(std::log10(high) - 1e-9);
    if (!(to > from)) to = from + 1;
    return {std::pow(10, std::max(from, -300.0)), std::pow(10, std::min(to, 300.0)), true};
}

ScaleChoice usualScale(const ReferenceTables& reference, const CurveValues& curve) {
    const ScaleRow* const row = findRow(reference, curve);
    if (row == nullptr) return {percentileScale(curve.values), TrackKind::Other};
    const Scale usual{row->left, row->right, row->logarithmic};
    if (!mostlyBeyond(usual, curve.values)) return {usual, row->kind};
    return {row->logarithmic ? decadeScale(curve.values) : percentileScale(curve.values), row->kind};
}

GridLines gridOf(const Scale& scale) {
    GridLines lines;
    if (!scale.logarithmic) {
        for (int part = 1; part < 10; ++part)
            (part == 5 ? lines.main : lines.fine).push_back(scale.left + part * (scale.right - scale.left) / 10);
        return lines;
    }
    constexpr double manyDecades = 8, nearEdge = 1e-9;
    const double low = std::log10(scale.least()), high = std::log10(scale.greatest());
    for (double decade = std::floor(low); decade <= high && decade < std::floor(low) + 700; ++decade) {
        for (int times = 1; times < 10; ++times) {
            const double value = times * std::pow(10, decade), place = std::log10(value);
            if (place < low + nearEdge || place > high - nearEdge || (times > 1 && high - low > manyDecades)) continue;
            (times == 1 ? lines.main : lines.fine).push_back(value);
        }
    }
    return lines;
}

}  // namespace welvane
