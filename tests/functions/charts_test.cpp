#include <cmath>
#include <gtest/gtest.h>

#include "functions/functions.h"

namespace welvane {
namespace {

/// Codes of the six matrix changes, from and to as 0 SAND, 1 LIME, 2 DOLO.
constexpr struct { int code, from, to; } changes[] = {{1, 0, 1}, {2, 0, 2}, {3, 1, 0}, {4, 1, 2}, {5, 2, 0}, {6, 2, 1}};

TEST(DensityMatrix, KeepsTheBulkDensity) {
    const double density[] = {2.65, 2.71, 2.87};
    for (const auto& change : changes) {
        for (double phi = -0.1; phi <= 0.61; phi += 0.05) {
            const double bulk = density[change.from] - (density[change.from] - 1) * phi;
            const double expected = (density[change.to] - bulk) / (density[change.to] - 1);
            EXPECT_NEAR(convertDensityMatrix(static_cast<float>(phi), change.code, stockMatrixTable), expected, 1e-6)
                << change.code << " " << phi;
        }
    }
    for (const int code : {0, 7, -1}) EXPECT_EQ(convertDensityMatrix(0.2F, code, stockMatrixTable), 0.2F);
    EXPECT_EQ(convertDensityMatrix(-999.25F, 3, stockMatrixTable), -999.25F);
}

TEST(DensityMatrix, ReadsItsOwnRowsOfTheTable) {
    MatrixTable table = stockMatrixTable;
    table[1] = table[2] = table[3] = 9;  // the texts of the note take no part
    table[0] = 1.1F;
    table[5] = 2.70F;
    table[7] = 2.60F;
    // LIME to SAND: rho = 2.70 - 1.6 x 0.25 = 2.30; (2.60 - 2.30) / 1.5 = 0.2
    EXPECT_NEAR(convertDensityMatrix(0.25F, 3, table), 0.2, 1e-6);
}

/// The chart's forward polynomials written out once more, to hold both ways of each conversion against.
double forward(int matrix, double x) {
    switch (matrix) {
        case 0:
            return x <= 4.0152 ? -0.081409 + 0.13226 * x + 0.0040514 * x * x : 2.8694 - 1.3406 * x + 0.18785 * x * x;
        case 1:
            return x < 4.01507245439747 ? -0.077296 + 0.08562 * x + 0.013803 * x * x
                                        : 2.6261 - 1.261 * x + 0.18149 * x * x;
        default:
            return x <= 4.0152 ? -0.084268 + 0.0908 * x + 0.0086505 * x * x : 3.9333 - 1.9104 * x + 0.25786 * x * x;
    }
}

TEST(NeutronCP1e, GoesFromCurveToCurveAtTheSameChartVariable) {
    for (const auto& change : changes) {
        for (double x = 0.2; x < 4.8; x += 0.1) {
            const auto phi = static_cast<float>(forward(change.from, x));
            EXPECT_NEAR(convertNeutronCP1e(phi, change.code), forward(change.to, x), 2e-5) << change.code << " X=" << x;
        }
    }
    EXPECT_EQ(convertNeutronCP1e(0.25F, 0), 0.25);
    EXPECT_EQ(convertNeutronCP1e(0.25F, 7), 0.25);
    EXPECT_THROW(convertNeutronCP1e(-999.25F, 1), RunTimeFailure);
}

TEST(NeutronCP1e, MeetsAtTheSplits) {
    const float splits[] = {0.5151088408642F, 0.48899F, 0.419837271974399F};
    for (const auto& change : changes) {
        const float split = splits[change.from];
        const double below = convertNeutronCP1e(std::nextafter(split, 0.0F), change.code);
        const double above = convertNeutronCP1e(std::nextafter(split, 1.0F), change.code);
        EXPECT_NEAR(below, above, 2e-3) << change.code;  // the chart's own pieces meet within this
    }
    // Limestone porosities read as sandstone are larger, as dolomite smaller.
    EXPECT_GT(convertNeutronCP1e(0.2F, 3), 0.2);
    EXPECT_LT(convertNeutronCP1e(0.2F, 4), 0.2);
}

TEST(NeutronCP1c, TablesAndPolynomials) {
    const struct {
        const char* name;
        int code;
        double phi, expected;
    } cases[] = {
        {"lime to sand at a key", 3, 0.1571F, 0.2},
        // half way between the keys 0.1094 and 0.1571
        {"lime to sand between keys", 3, 0.13325, 0.175},
        {"lime to sand at the lowest key", 3, -0.02, -0.02},
        {"clipped below", 3, -0.5, -0.02},
        {"lime to sand above the last key", 3, 0.98, 0},
        // 0.5 + 0.5 x (0.7 - 0.464) / 0.509
        {"lime to sand in the last row", 3, 0.7, 0.7318271},
        {"lime to dolo at a key", 4, 0.272F, 0.2},
        {"lime to dolo clipped above", 4, 1.7, 1.0},
        // 0.05 + 0.05 x (0.15 - 0.1145) / 0.0635
        {"lime to dolo between keys", 4, 0.15, 0.0779528},
        // -5.3 x 0.0025 + 2.06 x 0.05 + 0.025
        {"dolo to lime, low piece", 6, 0.05, 0.11475},
        // -0.6 x 0.01 + 1.12 x 0.1 + 0.072; the low piece would give 0.178 as well, so a point beside it tells them
        // apart
        {"dolo to lime at 0.1", 6, 0.1, 0.178},
        // -0.6 x 0.04 + 1.12 x 0.2 + 0.072
        {"dolo to lime, middle piece", 6, 0.2, 0.272},
        // 0.9377 x 0.35 + 0.0623; the middle piece would give 0.3905
        {"dolo to lime at 0.35", 6, 0.35, 0.390495},
        {"dolo to lime, linear piece", 6, 0.8, 0.81246},
        // 0.272 lies between 0.2564 (0.30) and 0.3076 (0.35)
        {"dolo to sand through lime", 5, 0.2, 0.3152344},
        {"the null value", 3, -999.25, -999.25},
        {"no change", 0, 7.5, 7.5},
        {"no such code", 9, 0.2, 0},
    };
    for (const auto& one : cases) EXPECT_NEAR(convertNeutronCP1c(one.phi, one.code), one.expected, 1e-6) << one.name;
}

TEST(NeutronCP1c, SandToLimeSolvesItsEquation) {
    for (double phi = -0.02; phi <= 1.0; phi += 0.01) {
        const double p = convertNeutronCP1c(phi, 1);
        EXPECT_NEAR(p, phi - 0.125 * std::pow(1 - p, 1.5) * std::sqrt(p + 0.04), 2e-4) << phi;
        EXPECT_NEAR(convertNeutronCP1c(phi, 2), convertNeutronCP1c(p, 4), 1e-12) << phi;
    }
}

TEST(Logarithms, HaveNoFailures) {
    EXPECT_NEAR(log10Of(1000), 3, 1e-12);
    for (const double value : {0.0, -1.0}) EXPECT_EQ(log10Of(value), 0);
    EXPECT_NEAR(antiLog10(2), 100, 1e-10);
    EXPECT_NEAR(antiLog10(-50) / 1e-50, 1, 1e-12);
    for (const double value : {50.01, -50.01}) EXPECT_EQ(antiLog10(value), 0);
}

}  // namespace
}  // namespace welvane
