#include "shared/number_fields.h"

#include <array>
#include <limits>
#include <string>

#include "shared/failure.h"
#include "shared/numbers_fast.h"

#if defined(__x86_64__) && defined(__GNUC__)
#define WELVANE_VECTORS
#include <immintrin.h>
#endif

namespace welvane {

namespace {

constexpr bool partsWords(char c) {
    return c == ' ' || c == '\t';
}

/// Reads the word that a field tells the place of.
void readWord(const char* line, NumberField& field) {
    const char* const word = line + field.from;
    detail::PlainNumber number;
    const char* const behind = detail::gatherPlain(word, word + field.length, number);
    field.plain = behind == word + field.length && number.exact();
    field.value = field.plain ? number.value() : 0;
    field.decimals = field.plain ? static_cast<std::uint8_t>(number.decimals) : std::uint8_t{0};
}

#ifdef WELVANE_VECTORS

constexpr int vectorBytes = 16;

/// 16 bytes of zeros, then as many of ones: read from byte n on, the last n of 16 are ones.
alignas(16) constexpr std::array<std::uint8_t, 2 * vectorBytes> lastBytes = [] {
    std::array<std::uint8_t, 2 * vectorBytes> bytes{};
    for (int index = vectorBytes; index < 2 * vectorBytes; ++index) bytes[index] = 0xFF;
    return bytes;
}();

/// For a dot at byte n of 16: which byte goes where so that the digits before it close up; without one (16) all stay.
alignas(16) constexpr std::array<std::array<std::uint8_t, vectorBytes>, vectorBytes + 1> withoutDot = [] {
    std::array<std::array<std::uint8_t, vectorBytes>, vectorBytes + 1> tables{};
    for (int dot = 0; dot <= vectorBytes; ++dot)
        for (int index = 0; index < vectorBytes; ++index) {
            const int source = dot == vectorBytes || index > dot ? index : index - 1;
            tables[dot][index] = source < 0 ? std::uint8_t{0x80} : static_cast<std::uint8_t>(source);
        }
    return tables;
}();

/// A bit for each of 64 bytes that is no blank and no tab.
__attribute__((target("avx2"))) inline std::uint64_t wordBits(const char* at) {
    const auto blanks = [](const char* from) __attribute__((target("avx2"))) {
        const __m256i bytes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from));
        const __m256i blank = _mm256_cmpeq_epi8(bytes, _mm256_set1_epi8(' '));
        const __m256i tab = _mm256_cmpeq_epi8(bytes, _mm256_set1_epi8('\t'));
        return static_cast<std::uint32_t>(_mm256_movemask_epi8(_mm256_or_si256(blank, tab)));
    };
    return ~(static_cast<std::uint64_t>(blanks(at + 32)) << 32 | blanks(at));
}

/// The word of a field by one vector that ends where it ends; 16 bytes before its end can be read.
__attribute__((target("avx2,bmi"))) inline void readWordByVector(const char* line, NumberField& field) {
    const char* const word = line + field.from;
    const bool negative = *word == '-';
    const std::uint32_t length = field.length - (negative || *word == '+' ? 1U : 0U);
    if (length > vectorBytes) return readWord(line, field);
    const __m128i text = _mm_loadu_si128(reinterpret_cast<const __m128i*>(word + field.length - vectorBytes));
    const __m128i digits = _mm_sub_epi8(text, _mm_set1_epi8('0'));
    const __m128i isDigit = _mm_cmpeq_epi8(_mm_min_epu8(digits, _mm_set1_epi8(9)), digits);
    const __m128i isDot = _mm_cmpeq_epi8(text, _mm_set1_epi8('.'));
    const std::uint32_t kept = (0xFFFFU << (vectorBytes - length)) & 0xFFFFU;
    const std::uint32_t dots = static_cast<std::uint32_t>(_mm_movemask_epi8(isDot)) & kept;
    const std::uint32_t digitBits = static_cast<std::uint32_t>(_mm_movemask_epi8(isDigit)) & kept;
    const std::uint32_t count = length - (dots != 0 ? 1U : 0U);
    if ((dots | digitBits) != kept || (dots & (dots - 1)) != 0 || count - 1 > 14) return readWord(line, field);
    const std::uint32_t dot = _tzcnt_u32(dots | 1U << vectorBytes);
    const __m128i keep = _mm_loadu_si128(reinterpret_cast<const __m128i*>(lastBytes.data() + length));
    const __m128i closed = _mm_shuffle_epi8(_mm_and_si128(digits, keep),
                                            _mm_load_si128(reinterpret_cast<const __m128i*>(withoutDot[dot].data())));
    // Pairs, fours and eights of digits; the first eight end in the low half.
    const __m128i pairs = _mm_maddubs_epi16(closed, _mm_set1_epi16(0x010A));
    const __m128i fours = _mm_madd_epi16(pairs, _mm_set1_epi32(0x00010064));
    const __m128i eights = _mm_madd_epi16(_mm_packus_epi32(fours, fours), _mm_set1_epi32(0x00012710));
    const auto both = static_cast<std::uint64_t>(_mm_cvtsi128_si64(eights));
    const std::uint64_t mantissa = (both & 0xFFFFFFFFU) * 100000000U + (both >> 32);
    const std::uint32_t decimals = dots == 0 ? 0 : vectorBytes - 1 - dot;
    // Both numbers are exact, so the one division is the correctly rounded value.
    const double magnitude = static_cast<double>(static_cast<std::int64_t>(mantissa)) / detail::powersOfTen[decimals];
    field.value = negative ? -magnitude : magnitude;
    field.decimals = static_cast<std::uint8_t>(decimals);
    field.plain = true;
}

__attribute__((target("avx2,bmi"))) std::size_t cutByVectors(std::string_view line, std::string_view around,
                                                             NumberField* fields) {
    constexpr std::size_t block = 64;
    const char* const begin = line.data();
    const auto size = static_cast<std::uint32_t>(line.size());
    const auto before = static_cast<std::size_t>(begin - around.data());
    if (before < vectorBytes || around.size() - before - size < block)
        return detail::fieldsByBytes(line, around, fields);
    NumberField* field = fields;
    std::uint64_t carry = 0;  // 1 while the byte before the block is part of a word
    std::uint32_t from = 0;   // where that word begins
    const auto take = [&](std::uint32_t end) __attribute__((target("avx2,bmi"))) {
        field->from = from;
        field->length = end - from;
        readWordByVector(begin, *field++);
    };
    for (std::uint32_t at = 0; at < size; at += block) {
        std::uint64_t words = wordBits(begin + at);
        if (size - at < block) words &= (std::uint64_t{1} << (size - at)) - 1;
        const std::uint64_t behind = words << 1 | carry;
        std::uint64_t starts = words & ~behind;
        for (std::uint64_t ends = behind & ~words; ends != 0; ends &= ends - 1) {
            if (carry == 0) {
                from = at + static_cast<std::uint32_t>(_tzcnt_u64(starts));
                starts &= starts - 1;
            }
            carry = 0;
            take(at + static_cast<std::uint32_t>(_tzcnt_u64(ends)));
        }
        if (starts != 0) from = at + static_cast<std::uint32_t>(_tzcnt_u64(starts));
        carry = words >> 63;
    }
    if (carry != 0) take(size);
    return static_cast<std::size_t>(field - fields);
}

#endif

}  // namespace

std::size_t detail::fieldsByBytes(std::string_view line, std::string_view /*around*/, NumberField* fields) {
    std::size_t count = 0;
    const auto size = static_cast<std::uint32_t>(line.size());
    for (std::uint32_t at = 0;;) {
        while (at < size && partsWords(line[at])) ++at;
        if (at == size) return count;
        NumberField& field = fields[count++];
        field.from = at;
        while (at < size && !partsWords(line[at])) ++at;
        field.length = at - field.from;
        readWord(line.data(), field);
    }
}

detail::FieldRoad detail::fieldsByVectors() {
#ifdef WELVANE_VECTORS
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi")) return cutByVectors;
#endif
    return nullptr;
}

LineFields::LineFields(std::string_view around)
    : around_(around),
      road_(detail::fieldsByVectors() != nullptr ? detail::fieldsByVectors() : detail::fieldsByBytes) {}

std::span<const NumberField> LineFields::cut(std::string_view line) {
    if (line.size() > std::numeric_limits<std::uint32_t>::max() - 64)
        throw RunTimeFailure("a data line of " + std::to_string(line.size()) + " bytes");
    const std::size_t most = (line.size() + 1) / 2;
    if (fields_.size() < most) fields_.resize(most);
    return {fields_.data(), road_(line, around_, fields_.data())};
}

}  // namespace welvane
