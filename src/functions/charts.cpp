#include "functions/charts.h"

#include <array>
#include <cmath>

#include "functions/functions.h"
#include "functions/samples.h"

namespace welvane {

namespace {

constexpr float noPorosity = -999.25F;

/// From-matrix and to-matrix of a change code 1 to 6, as 0 SAND, 1 LIME, 2 DOLO.
struct MatrixPair {
    std::size_t from, to;
};
constexpr std::array<MatrixPair, 6> matrixPairs = {{{0, 1}, {0, 2}, {1, 0}, {1, 2}, {2, 0}, {2, 1}}};
constexpr bool isMatrixChange(int code) {
    return code >= 1 && code <= 6;
}

/// One piece of chart CP-1e: phi = a + b X + c X^2 over the chart variable X.
struct Quadratic {
    double a, b, c;
    double forward(double x) const { return a + b * x + c * x * x; }
    /// The larger root; no number below the parabola.
    double inverse(double phi) const { return (-b + std::sqrt(b * b - 4 * c * (a - phi))) / (2 * c); }
};
struct ChartCurve {
    Quadratic low, high;
    double splitX, splitPhi;
    bool lowIncludesSplit;
};
constexpr std::array<ChartCurve, 3> cp1e = {{
    {{-0.081409, 0.13226, 0.0040514}, {2.8694, -1.3406, 0.18785}, 4.0152, 0.5151088408642, true},
    {{-0.077296, 0.08562, 0.013803}, {2.6261, -1.261, 0.18149}, 4.01507245439747, 0.48899, false},
    {{-0.084268, 0.0908, 0.0086505}, {3.9333, -1.9104, 0.25786}, 4.0152, 0.419837271974399, true},
}};

const Quadratic& piece(const ChartCurve& curve, double value, double split) {
    return value < split || (curve.lowIncludesSplit && value == split) ? curve.low : curve.high;
}

struct TableRow {
    float porosity, key;
};
using NeutronTable = std::array<TableRow, 13>;
/// Chart CP-1c: NeutronTable1 gives sandstone, NeutronTable2 dolomite porosity of a limestone porosity.
constexpr NeutronTable neutronTable1 = {{{-0.02F, -0.02F},
                                         {0.0F, -0.0187F},
                                         {0.05F, 0.0202F},
                                         {0.1F, 0.0636F},
                                         {0.15F, 0.1094F},
                                         {0.2F, 0.1571F},
                                         {0.25F, 0.2062F},
                                         {0.3F, 0.2564F},
                                         {0.35F, 0.3076F},
                                         {0.4F, 0.3595F},
                                         {0.45F, 0.4121F},
                                         {0.5F, 0.464F},
                                         {1.0F, 0.973F}}};
constexpr NeutronTable neutronTable2 = {{{-0.02F, -0.02F},
                                         {0.0F, 0.025F},
                                         {0.05F, 0.1145F},
                                         {0.1F, 0.178F},
                                         {0.15F, 0.2265F},
                                         {0.2F, 0.272F},
                                         {0.25F, 0.3145F},
                                         {0.3F, 0.354F},
                                         {0.35F, 0.39F},
                                         {0.4F, 0.437F},
                                         {0.45F, 0.484F},
                                         {0.5F, 0.531F},
                                         {1.0F, 1.0F}}};

double lookUp(const NeutronTable& table, double phi) {
    // Held against the keys in single precision, as the keys are held: the clipped -0.02 then is the first key, not
    // just below it.
    const float wanted = static_cast<float>(phi);
    double result = 0;
    // The search goes on behind a match, so that at a shared key the later row decides.
    for (std::size_t row = 1; row < table.size(); ++row) {
        const TableRow &before = table[row - 1], &here = table[row];
        if (wanted < before.key || wanted > here.key) continue;
        const double share = (phi - before.key) / (static_cast<double>(here.key) - before.key);
        result = before.porosity + share * (static_cast<double>(here.porosity) - before.porosity);
    }
    return result;
}

/// Sandstone to limestone: the limestone porosity p with p = phi - 0.125 (1 - p)^1.5 (p + 0.04)^0.5, by halved steps.
double sandToLime(double phi) {
    double next = 100;
    double p = phi;
    // It settles in about twenty steps; the count only guards against a value that is no porosity.
    for (int turn = 0; turn < 1000 && std::fabs(next - p) > 0.00005; ++turn) {
        next = phi - std::pow(1 - p, 1.5) * std::sqrt(p + 0.04) * 0.125;
        p = (next + p) / 2;
    }
    return p;
}

double doloToLime(double phi) {
    if (phi < 0.1) return -5.3 * phi * phi + 2.06 * phi + 0.025;
    if (phi < 0.35) return -0.6 * phi * phi + 1.12 * phi + 0.072;
    return 0.9377 * phi + 0.0623;
}

}  // namespace

float convertDensityMatrix(float porosity, int code, const MatrixTable& matrix) {
    if (porosity == noPorosity || !isMatrixChange(code)) return porosity;
    const MatrixPair pair = matrixPairs[code - 1];
    const float from = matrix[4 + pair.from];
    const float to = matrix[7 + pair.to];
    const float fluid = matrix[0];
    const float bulk = -(from - fluid) * porosity + from;
    return (to - bulk) / (to - fluid);
}

double chartCP1e(float porosity, int code) {
    if (!isMatrixChange(code)) return porosity;
    const MatrixPair pair = matrixPairs[code - 1];
    const ChartCurve &from = cp1e[pair.from], &to = cp1e[pair.to];
    const double phi = porosity;
    const double x = piece(from, phi, from.splitPhi).inverse(phi);
    return std::isnan(x) ? notANumber : piece(to, x, to.splitX).forward(x);
}

double convertNeutronCP1e(float porosity, int code) {
    const double result = chartCP1e(porosity, code);
    if (std::isnan(result)) throw RunTimeFailure("square root of a negative number");
    return result;
}

double convertNeutronCP1c(double porosity, int code) {
    if (porosity == static_cast<double>(noPorosity) || code == 0) return porosity;
    const double phi = porosity > 1.0 ? 1.0 : porosity <= -0.02 ? -0.02 : porosity;
    switch (code) {
        case 1:
            return sandToLime(phi);
        case 2:
            return convertNeutronCP1c(sandToLime(phi), 4);
        case 3:
            return lookUp(neutronTable1, phi);
        case 4:
            return lookUp(neutronTable2, phi);
        case 5:
            return convertNeutronCP1c(doloToLime(phi), 3);
        case 6:
            return doloToLime(phi);
        default:
            return 0;
    }
}

double log10Of(double value) {
    return value > 0 ? std::log(value) / std::log(10.0) : 0;
}

double antiLog10(double value) {
    return value >= -50 && value <= 50 ? std::pow(10.0, value) : 0;
}

}  // namespace welvane
