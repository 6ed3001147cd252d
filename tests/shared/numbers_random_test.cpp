// The fast roads of numbers against slow ones that are too plain to be wrong.

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "shared/number_fields.h"
#include "shared/numbers.h"
#include "shared/numbers_fast.h"

namespace welvane {
namespace {

/// Values of one test: as many as WELVANE_RANDOM_VALUES says, else so many that a build does not wait for them.
const int rounds = [] {
    const char* const wanted = std::getenv("WELVANE_RANDOM_VALUES");
    return wanted == nullptr ? 2'000'000 : std::atoi(wanted);
}();

/// A source whose seed is printed when the test fails.
class Random {
  public:
    std::uint64_t bits() { return source_(); }
    int below(int limit) { return static_cast<int>(source_() % static_cast<std::uint64_t>(limit)); }
    std::string digits(int count) {
        std::string text;
        while (count-- > 0) text += static_cast<char>('0' + below(10));
        return text;
    }
    /// Any finite double.
    double pattern() {
        for (;;) {
            const auto value = std::bit_cast<double>(bits());
            if (std::isfinite(value)) return value;
        }
    }
    std::string seedText() const { return "seed " + std::to_string(seed_); }

  private:
    std::uint64_t seed_ = std::random_device()();
    std::mt19937_64 source_{seed_};
};

double plainReading(std::string text) {
    for (char& c : text)
        if (c == 'D' || c == 'd') c = 'E';
    const double value = std::strtod(text.c_str(), nullptr);
    return std::isinf(value) ? std::copysign(std::numeric_limits<double>::max(), value) : value;
}

/// All digits of a number half way between two doubles, and in two of three cases a bit beside it.
std::string tieText(Random& random) {
    const std::uint64_t odd = (random.bits() >> 10 | 1ULL << 53) | 1;  // 54 bits, the last one set
    const int halvings = random.below(60);
    // odd / 2^halvings = (odd * 5^halvings) / 10^halvings, multiplied out digit by digit.
    std::string digits = std::to_string(odd);
    for (int step = 0; step < halvings; ++step) {
        int carry = 0;
        for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
            carry += (*digit - '0') * 5;
            *digit = static_cast<char>('0' + carry % 10);
            carry /= 10;
        }
        if (carry > 0) digits.insert(0, 1, static_cast<char>('0' + carry));
    }
    const int beside = random.below(3);
    if (beside == 1) digits.back() = static_cast<char>(digits.back() - 1);  // odd numbers end on no 0
    return digits + (beside == 2 ? "001" : "") + "E-" + std::to_string(halvings + (beside == 2 ? 3 : 0));
}

std::string shortestText(double value, std::chars_format form) {
    char text[400];
    const char* const end = std::to_chars(text, text + sizeof text, value, form).ptr;
    return std::string(text, static_cast<std::size_t>(end - text));
}

/// Mostly what stands in data sections; now and then long digits, any double, ties.
std::string lasForm(Random& random) {
    constexpr const char* signs[] = {"", "", "", "-", "-", "+"};
    const int kind = random.below(64);
    if (kind == 0) return tieText(random);
    if (kind == 1) return shortestText(random.pattern(), std::chars_format::fixed);
    if (kind < 8) return shortestText(random.pattern(), std::chars_format::scientific);
    const int longest = kind < 16 ? 24 : 8;
    std::string text = signs[random.below(6)] + random.digits(1 + random.below(longest));
    if (random.below(8) > 0) text += "." + random.digits(random.below(longest + 1));
    if (random.below(12) == 0)
        text += "EeDd"[random.below(4)] + std::string(1, "+-"[random.below(2)]) + random.digits(1 + random.below(3));
    return text;
}

TEST(NumbersRandom, readingAgreesWithTheLibrary) {
    Random random;
    SCOPED_TRACE(random.seedText());
    for (int round = 0; round < rounds; ++round) {
        const std::string text = lasForm(random);
        // By turns at the end of all text, and with the next columns behind it.
        const std::string given = round % 2 == 0 ? text : text + "  -999.25000  12.50000";
        const auto expected = std::bit_cast<std::uint64_t>(plainReading(text));
        for (const auto read : {parseNumberFast, detail::parseNumberGeneral}) {
            double value = 0;
            const char* const end = read(given.data(), given.data() + given.size(), value);
            ASSERT_EQ(end - given.data(), std::ssize(text)) << given;
            ASSERT_EQ(std::bit_cast<std::uint64_t>(value), expected) << given;
        }
    }
}

/// A word as data lines have them, one in sixteen no number or two.
std::string anyWord(Random& random) {
    std::string word = lasForm(random);
    if (random.below(16) > 0) return word;
    constexpr std::string_view odd = "-+.,:/eEx#\r\x01\xFF";
    word.insert(static_cast<std::size_t>(random.below(static_cast<int>(word.size()) + 1)), 1,
                odd[static_cast<std::size_t>(random.below(static_cast<int>(odd.size())))]);
    return word;
}

/// A line of `words`, blanks and tabs between them as they come.
std::string lineOf(Random& random, const std::vector<std::string>& words) {
    std::string line;
    for (const std::string& word : words) {
        line.append(static_cast<std::size_t>(random.below(8) + (line.empty() ? 0 : 1)),
                    random.below(16) == 0 ? '\t' : ' ');
        line += word;
    }
    if (random.below(4) == 0) line.append(static_cast<std::size_t>(random.below(100)), ' ');
    return line;
}

void expectSameFields(const NumberField& one, const NumberField& other, const std::string& line) {
    ASSERT_EQ(one.from, other.from) << line;
    ASSERT_EQ(one.length, other.length) << line;
    ASSERT_EQ(one.plain, other.plain) << line << ": " << line.substr(one.from, one.length);
    ASSERT_EQ(one.decimals, other.decimals) << line << ": " << line.substr(one.from, one.length);
    ASSERT_EQ(std::bit_cast<std::uint64_t>(one.value), std::bit_cast<std::uint64_t>(other.value)) << line;
}

TEST(NumbersRandom, linesAreCutAlikeByBytesAndByVectors) {
    Random random;
    SCOPED_TRACE(random.seedText());
    const detail::FieldRoad vectors = detail::fieldsByVectors();
    if (vectors == nullptr) GTEST_SKIP() << "this processor has no such instructions";
    std::vector<NumberField> slow, fast;
    for (int values = 0; values < rounds;) {
        std::vector<std::string> words(static_cast<std::size_t>(random.below(30)));
        for (std::string& word : words) word = anyWord(random);
        values += static_cast<int>(words.size()) + 1;
        const std::string line = lineOf(random, words);
        // By turns with room around the line, and at the very ends of all text.
        const auto before = static_cast<std::size_t>(random.below(2) * 16);
        const std::string text =
            std::string(before, '7') + line + std::string(static_cast<std::size_t>(random.below(2) * 64), '8');
        slow.resize((line.size() + 1) / 2);
        fast.resize(slow.size());
        const std::string_view inText = std::string_view(text).substr(before, line.size());
        const std::size_t count = detail::fieldsByBytes(inText, text, slow.data());
        ASSERT_EQ(count, words.size()) << line;
        ASSERT_EQ(vectors(inText, text, fast.data()), count) << line;
        for (std::size_t index = 0; index < count; ++index) {
            expectSameFields(slow[index], fast[index], std::string(inText));
            ASSERT_EQ(inText.substr(slow[index].from, slow[index].length), words[index]);
            if (!slow[index].plain) continue;
            ASSERT_EQ(std::bit_cast<std::uint64_t>(slow[index].value),
                      std::bit_cast<std::uint64_t>(plainReading(words[index])));
            const std::size_t dot = words[index].find('.');
            ASSERT_EQ(slow[index].decimals, dot == std::string::npos ? 0 : words[index].size() - dot - 1);
        }
    }
}

/// Rounds a decimal text by hand: all digits of the value written out, one carry from the right.
std::string plainMask(double value, int decimals) {
    std::string digits = shortestText(std::abs(value), std::chars_format::scientific);
    const std::size_t letter = digits.find('e');
    const int exponent = std::stoi(digits.substr(letter + 1));
    digits.erase(letter);
    digits.erase(std::remove(digits.begin(), digits.end(), '.'), digits.end());
    std::string whole(400 - 1 - static_cast<std::size_t>(exponent), '0');  // the point stands behind place 399
    whole += digits;
    whole.resize(std::max<std::size_t>(whole.size(), 1200), '0');
    std::size_t place = 400 + static_cast<std::size_t>(decimals);
    const bool up = whole[place] >= '5';
    whole.erase(place);
    while (up && whole[--place] == '9') whole[place] = '0';
    if (up) ++whole[place];
    std::string front = whole.substr(0, 400);
    front.erase(0, std::min<std::size_t>(front.find_first_not_of('0'), 399));
    const std::string sign = value < 0 && whole.find_first_not_of('0') != std::string::npos ? "-" : "";
    return sign + front + (decimals > 0 ? "." + whole.substr(400) : "");
}

/// Values that make rounding hard at `decimals`, and all others.
double maskValue(Random& random, int decimals) {
    const double power = std::pow(10.0, decimals);
    const double sign = random.below(2) == 0 ? 1 : -1;
    switch (random.below(7)) {
        case 0:
            return random.pattern();
        case 1:
            return sign * val(random.digits(1 + random.below(6)) + "." + random.digits(random.below(8)));
        case 2: {  // next to a tie, some units in the last place to either side
            double tie = (static_cast<double>(random.bits() >> (10 + random.below(54))) + 0.5) / power;
            for (int steps = random.below(4); steps > 0; --steps)
                tie = std::nextafter(tie, random.below(2) == 0 ? 0.0 : 1e300);
            return sign * tie;
        }
        case 3:
            return sign * val(random.digits(1 + random.below(12)) + "." + random.digits(decimals) + "5");
        case 4:
            return sign * std::ldexp(static_cast<double>(random.bits() >> 11), -random.below(80));
        case 5:
            return sign * random.below(100000000);
        default:
            return sign * static_cast<double>(static_cast<float>(random.below(2000000)) / 1000.0F);
    }
}

TEST(NumbersRandom, masksAgreeWithRoundingOnText) {
    Random random;
    SCOPED_TRACE(random.seedText());
    std::vector<char> fast(formatMaskCapacity(300)), slow(formatMaskCapacity(300));
    for (int round = 0; round < rounds; ++round) {
        const int decimals = random.below(16) == 0 ? random.below(301) : random.below(10);
        const double value = maskValue(random, decimals);
        const std::string_view fastText(fast.data(), formatMaskFast(fast.data(), value, decimals));
        const std::string_view slowText(slow.data(), detail::formatMaskSlowTo(slow.data(), value, decimals));
        ASSERT_EQ(fastText, slowText) << plainNumber(value) << " with " << decimals << " decimals";
        if (round % 10 == 0) {
            ASSERT_EQ(slowText, plainMask(value, decimals))
                << plainNumber(value) << " with " << decimals << " decimals";
        }
    }
}

TEST(NumbersRandom, plainTextsReadBack) {
    Random random;
    SCOPED_TRACE(random.seedText());
    for (int round = 0; round < rounds / 10; ++round) {
        const double value = random.pattern();
        ASSERT_EQ(val(plainNumber(value)), value);
        const auto single = std::bit_cast<float>(static_cast<std::uint32_t>(random.bits()));
        if (std::isfinite(single)) {
            ASSERT_EQ(static_cast<float>(val(plainNumber(single))), single);
        }
    }
}

}  // namespace
}  // namespace welvane
