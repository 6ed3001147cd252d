#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "functions/functions.h"

namespace welvane {
namespace {

using Samples = std::vector<double>;
constexpr double null = -999.25;

ReferenceTables units() {
    ReferenceTables tables;
    tables.units = {{"Density", "G/C3", 1, 0},
                    {"Density", "K/M3", 1000, 0},
                    {"Porosity", "V/V", 1, 0},
                    {"Porosity", "%", 100, 0},
                    {"Slowness", "US/M", 3.280839895013123, 0}};
    return tables;
}

/// Runs one function in place and returns its samples; `failed` counts those without a result.
struct Applied {
    FunctionState state;
    FailureList failures;
    Samples operator()(const std::string& descriptor, Samples samples, const char* outputUnit = "",
                       const char* inputUnit = "") {
        static const ReferenceTables tables = units();
        const ParsedFunction function = parseFunction(descriptor, stockMatrixTable);
        evaluateFunction(function, outputUnit, inputUnit, samples, samples, static_cast<float>(null), tables,
                         stockMatrixTable, state, failures);
        return samples;
    }
};

void expectNear(const Samples& found, const Samples& expected, const std::string& name) {
    ASSERT_EQ(found.size(), expected.size()) << name;
    for (std::size_t index = 0; index < found.size(); ++index)
        EXPECT_NEAR(found[index], expected[index], 1e-6 * std::max(1.0, std::fabs(expected[index])))
            << name << ", sample " << index + 1;
}

struct Case {
    const char* name;
    const char* descriptor;
    const char* outputUnit;
    const char* inputUnit;
    Samples samples, expected;
};

TEST(Evaluation, Arithmetic) {
    const Case cases[] = {
        {"conductivity of resistivity", "0", "%", "K/M3", {1, 20, 0.5, null}, {1000, 50, 2000, null}},
        {"resistivity of conductivity", "1", "", "", {-4, 1000}, {-250, 1}},
        // (2.65 - 2.32) / 1.65 = 0.2
        {"porosity of density", "2|2.65|1", "", "", {2.65, 2.32, 1, null}, {0, 0.2, 1, null}},
        {"porosity of density, in % of K/M3", "2|2.65|1", "%", "K/M3", {2320, 2650}, {20, 0}},
        {"density of porosity", "3|2.65|1", "K/M3", "%", {20, 0, 100}, {2320, 2650, 1000}},
        // (82.2 - 55.5) / 133.5 = 0.2
        {"porosity of transit time", "5|55.5|189", "V/V", "", {55.5, 82.2, 189}, {0, 0.2, 1}},
        {"porosity of a metric transit time", "5|55.5|189", "V/V", "US/M", {82.2 / 0.3048}, {0.2}},
        {"transit time of porosity", "6|55.5|189", "US/M", "%", {20}, {82.2 / 0.3048}},
        // SAND to LIME: rho = 2.65 - 1.65 x 0.2 = 2.32; (2.71 - 2.32) / 1.71
        {"density matrix in %", "4|||0|1", "%", "%", {20, null}, {100 * 0.39 / 1.71, null}},
        {"density matrix, the same", "4|||1|1", "%", "", {0.25}, {25}},
        {"neutron matrix by table", "8|||1|0", "%", "%", {15.71, null}, {20, null}},
        {"neutron count rates", "9|1000|100|0.1|0.01", "%", "%", {1000, 100, 550}, {0.01, 0.1, std::sqrt(0.001)}},
        {"power law", "10|2|3|-1|2", "%", "%", {1, -2, null}, {4 + 3 - 1, 16 - 6 - 1, null}},
        {"power law of exponent 1", "10|2|3|-1|1", "", "", {1.5}, {3 + 4.5 - 1}},
        {"whole exponents take negative bases", "10|1|0|0|3", "", "", {-2}, {-8}},
        {"both limits", "11|0|100", "%", "%", {-5, 0, 50, 100, 300, null}, {0, 0, 50, 100, 100, null}},
        {"low limit", "11|0|", "", "", {-5, 1e6}, {0, 1e6}},
        {"high limit", "11||10", "", "", {-5, 11}, {-5, 10}},
        {"no limit", "11||", "", "", {-5, 11}, {-5, 11}},
        {"low above high: high decides", "11|10|5", "", "", {0, 7, 20}, {5, 5, 5}},
        {"replace", "13|0|-999.25", "", "", {0, 1, null, 0}, {-999.25, 1, null, -999.25}},
        {"replacing the null value meets no sample", "13|-999.25|5", "", "", {null, 1}, {null, 1}},
        {"scale, linear", "15|0.2|2000|3.25|5.75", "%", "%", {3.25, 5.75, 4.5}, {0.2, 2000, 1000.1}},
        // half way between 10^log 0.2 and 10^log 2000 is the root of 400
        {"scale, logarithmic", "15|0.2|2000|3.25|-5.75", "", "", {3.25, 5.75, 4.5, null}, {0.2, 2000, 20, null}},
        {"weighted mean", "14|1|1", "", "", {4, 8}, {(4 / 2.0 + 4 + 8 / 2.0) / 2, (8 / 2.0 + 8 + 5 / 2.0) / 2}},
        {"weighted mean beside a null", "14|1", "", "", {4, null, 8, 8}, {4, null, 8, 8}},
        {"half-width 0", "14|2|0", "", "", {4, 8, null, 1}, {4, 8, null, 1}},
        {"negative half-width holds no sample", "14|2|-1", "", "", {4, null}, {null, null}},
        // (1 + 5) / 2 = 3; then (3 + 5 + 9) / 3; then of those: the null is left out
        {"half-width 1", "14|2|1", "", "", {1, 5, 9, null, 2}, {3, 17 / 3.0, (17 / 3.0 + 9) / 2, null, 2}},
    };
    for (const Case& one : cases) {
        Applied run;
        expectNear(run(one.descriptor, one.samples, one.outputUnit, one.inputUnit), one.expected, one.name);
        EXPECT_EQ(run.failures.count, 0U) << one.name;
    }
}

TEST(Evaluation, LithologyChangesAgreeWithTheirCharts) {
    Applied run;
    const Samples samples = {0.05, 0.2, 0.42, null};
    const Samples found = run("7|||0|1", samples, "%", "");
    for (std::size_t index = 0; index < 3; ++index)
        EXPECT_DOUBLE_EQ(found[index], 100 * convertNeutronCP1e(static_cast<float>(samples[index]), 1));
    EXPECT_EQ(found[3], null);
}

TEST(Evaluation, FailingSamplesKeepTheYBeforeAndAreCounted) {
    const Case cases[] = {
        {"reciprocal of 0", "0", "", "", {2, 0, null, 0, 4}, {500, 500, null, 500, 250}},
        {"first sample fails", "1", "", "", {0, 10}, {0, 100}},
        {"root of a negative number", "10|1|0|1|0.5", "", "", {9, -1, 16}, {4, 4, 5}},
        {"0 to a negative power", "10|1|0|0|-1", "", "", {4, 0, 2}, {0.25, 0.25, 0.5}},
        {"overflow", "10|1|0|0|99", "", "", {2, 1e9, 1}, {std::pow(2, 99), std::pow(2, 99), 1}},
        {"chart without a root", "7|||0|0", "", "", {0.2F}, {0.2F}},
        {"overflow of a count rate", "9|-1|0|1|10", "", "", {-1, -400, 0}, {10, 10, 1}},
    };
    for (const Case& one : cases) {
        Applied run;
        expectNear(run(one.descriptor, one.samples), one.expected, one.name);
    }
    Applied run;
    const Samples below = run("7|||0|1", {0.2, -3, 0.2});
    EXPECT_EQ(below[1], below[0]);
    EXPECT_EQ(run.failures.count, 1U);

    Applied many;
    many("0", Samples(100'000, 0.0));
    EXPECT_EQ(many.failures.count, 100'000U);
    EXPECT_EQ(many.failures.first.size(), FailureList::kept);
    EXPECT_EQ(many.failures.first[1].what, "RES2COND, sample 2");
}

TEST(Evaluation, CoefficientsThatFailedCountAsZero) {
    Applied run;
    expectNear(run("2|1|1", {2.3, null}, "%"), {0, null}, "matrix equals fluid");
    // Old tracks at one place: the slope is dropped and every sample becomes the left scale.
    expectNear(run("15|5|10|3|3", {1, null, 2}), {5, null, 5}, "no slope");
    EXPECT_EQ(run.failures.count, 1U);
}

TEST(Evaluation, averagePorosityStoresTheStaleY) {
    Applied run;
    expectNear(run("12|A|B", {1, null}), {0, null}, "nothing before");
    run("0", {null, 20, 0, null});
    expectNear(run("12|A|B", {1, null, 3}), {50, null, 50}, "after a function");
}

TEST(Evaluation, smoothingOfNoModeStoresTheStaleY) {
    Applied run;
    run("0", {20});
    expectNear(run("14|3|1", {1, 2, null}), {50, 50, null}, "mode 3");
}

TEST(Evaluation, smoothingInPlaceRunsOn) {
    const Samples samples = {0, 0, 8, 0, 0};
    Applied run;
    // In place: sample 3 has the smoothed 2 before it, (0 + 8 + 1) / 2, and hands 4.5 on.
    expectNear(run("14|1", samples), {0, 2, 4.5, 1.125, 0.28125}, "in place");
    Samples target(samples.size());
    const ParsedFunction function = parseFunction("14|1", stockMatrixTable);
    evaluateFunction(function, "", "", samples, target, static_cast<float>(null), ReferenceTables{}, stockMatrixTable,
                     run.state, run.failures);
    expectNear(target, {0, 2, 4, 2, 0}, "beside");
}

/// The plain sum over the span, as slow as it is.
Samples slowMean(Samples samples, double halfWidth) {
    const auto count = static_cast<double>(samples.size());
    for (std::size_t index = 0; index < samples.size(); ++index) {
        if (samples[index] == null) continue;
        const double position = static_cast<double>(index) + 1;
        double sum = 0;
        int found = 0;
        for (double place = std::max(1.0, std::nearbyint(position - halfWidth));
             place <= std::min(count, std::nearbyint(position + halfWidth)); ++place) {
            const double value = samples[static_cast<std::size_t>(place) - 1];
            if (value == null) continue;
            sum += value;
            ++found;
        }
        samples[index] = found == 0 ? null : sum / found;
    }
    return samples;
}

TEST(Evaluation, RunningMeanEqualsThePlainOne) {
    std::mt19937 random(20);
    std::uniform_real_distribution<double> values(-1000, 1000);
    for (const double halfWidth : {1.0, 1.5, 7.0, 16.0, 17.0, 30.5, 200.0, 5000.0}) {
        Samples samples(2000);
        for (double& sample : samples) sample = random() % 5 == 0 ? null : values(random);
        samples[700] = 1e15;  // a spike may leave nothing behind in the running sum
        Applied run;
        const Samples found = run("14|2|" + std::to_string(halfWidth), samples);
        const Samples expected = slowMean(samples, halfWidth);
        for (std::size_t index = 0; index < samples.size(); ++index)
            ASSERT_NEAR(found[index], expected[index], 1e-9 * std::max(1.0, std::fabs(expected[index])))
                << halfWidth << ", sample " << index + 1;
    }
}

TEST(Evaluation, MeanOfMoreThan16BitsFails) {
    Applied run;
    const Samples found = run("14|2|16384", Samples(40'000, 3.0));
    EXPECT_EQ(found[0], 3);
    EXPECT_EQ(run.failures.count, 40'000U - 2 * 16'383U);  // spans of 32,768 samples and more
    Applied far;
    far("14|2|3e9", Samples(10, 3.0));
    EXPECT_EQ(far.failures.count, 10U);
}

TEST(Evaluation, NullIsComparedInSinglePrecision) {
    Applied run;
    const double nearly = -999.25 + 1e-6;  // the same single
    EXPECT_EQ(run("10|0|0|7|1", {nearly})[0], nearly);
    EXPECT_EQ(run("10|0|0|7|1", {-999.26})[0], 7);
}

TEST(Evaluation, NullEndsExactlyWhereTheSingleChanges) {
    const ReferenceTables tables = units();
    const ParsedFunction constant = parseFunction("10|0|0|7|1", stockMatrixTable);
    for (const float nullValue : {-999.25F, -999.2537F, -9999.0F, 0.1F, -1e-30F, 3e38F}) {
        Samples samples;
        for (const float neighbour : {-HUGE_VALF, HUGE_VALF}) {
            const double half =
                (static_cast<double>(nullValue) + static_cast<double>(std::nextafter(nullValue, neighbour))) / 2;
            for (const double sample : {half, std::nextafter(half, -HUGE_VAL), std::nextafter(half, HUGE_VAL)})
                samples.push_back(sample);
        }
        Samples found = samples;
        FunctionState state;
        FailureList failures;
        evaluateFunction(constant, "", "", found, found, nullValue, tables, stockMatrixTable, state, failures);
        for (std::size_t index = 0; index < samples.size(); ++index)
            EXPECT_EQ(found[index] == samples[index], static_cast<float>(samples[index]) == nullValue)
                << nullValue << ", sample " << index;
    }
}

TEST(Evaluation, BlocksAndTheirEndsAgreeWithSingleSamples) {
    std::mt19937 random(7);
    Samples samples(3 * 512 + 77);
    for (double& sample : samples)
        sample = random() % 7 == 0 ? null : random() % 300 == 0 ? 0 : static_cast<double>(random() % 1000) / 8;
    Applied whole, single;
    const Samples found = whole("0", samples);
    for (std::size_t index = 0; index < samples.size(); ++index)
        ASSERT_EQ(found[index], single("0", {samples[index]})[0]) << index;
    EXPECT_EQ(whole.failures.count, single.failures.count);
    EXPECT_EQ(whole.state.y, single.state.y);
    Samples target(samples.size(), 1);
    evaluateFunction(parseFunction("2|2.65|1", stockMatrixTable), "", "", samples, target, static_cast<float>(null),
                     ReferenceTables{}, stockMatrixTable, whole.state, whole.failures);
    for (std::size_t index = 0; index < samples.size(); ++index)
        ASSERT_NEAR(target[index], samples[index] == null ? 1 : (2.65 - samples[index]) / 1.65, 1e-9) << index;
}

TEST(Evaluation, UnknownFunctionAndNoSamplesChangeNothing) {
    Applied run;
    EXPECT_EQ(run("16|1|2", {1, 2}), (Samples{1, 2}));
    for (int code = 0; code < functionCount; ++code) EXPECT_TRUE(run(std::to_string(code) + "|1|2|3|4", {}).empty());
    EXPECT_EQ(run.state.y, 0);
}

}  // namespace
}  // namespace welvane
