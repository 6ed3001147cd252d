#include "convert/record_text.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>
#include <string>

namespace welvane {
namespace {

std::string numberText(double value) {
    std::string text;
    appendNumber(text, value);
    return text;
}

TEST(RecordText, everyNumberReadsBackAsTheSame) {
    std::mt19937_64 random(11);
    for (int round = 0; round < 200000; ++round) {
        double value = std::bit_cast<double>(static_cast<std::uint64_t>(random()));
        if (round % 2 == 0)
            value = static_cast<double>(static_cast<std::int64_t>(random() % 2000000000) - 1000000000) / 1e4;
        if (!std::isfinite(value)) continue;
        const std::string text = numberText(value);
        ASSERT_EQ(std::strtod(text.c_str(), nullptr), value) << text;
        ASSERT_LE(text.size(), 27U) << text;
    }
}

TEST(RecordText, numbersLookAsAPersonWritesThem) {
    struct Case {
        double value;
        const char* text;
    };
    for (const Case& one : {Case{1000.0488, "1000.0488"},
                            {-0.0, "-0"},
                            {1e15, "1000000000000000"},
                            {1e16, "1e+16"},
                            {0.0000012, "0.0000012"},
                            {1e-8, "1e-08"},
                            {0.1, "0.1"}})
        EXPECT_EQ(numberText(one.value), one.text);
}

}  // namespace
}  // namespace welvane
