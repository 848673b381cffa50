#include "builder/mark_search.h"

#include <algorithm>
#include <array>
#include <string_view>

#ifdef __SSE2__
#include <immintrin.h>
#endif
#if __has_include(<sys/platform/x86.h>) && !defined(__clang__) // it is written for C and GCC
#include <sys/platform/x86.h>
#endif

namespace kiv {

namespace {

constexpr std::string_view kMarksAndEnds = "!$?@%{}\n"; // but for "<"
constexpr std::string_view kTagLetters = "zZsSoOmM";    // behind it
constexpr std::string_view kLateMarks = "@<!{}";

/// What of a stretch counts: marks, and each "<" that a letter follows or that is the last.
constexpr std::uint64_t Counting(std::uint64_t marks, std::uint64_t tags, std::uint64_t letters)
{
    constexpr std::uint64_t kLast = std::uint64_t{1} << (kStretch - 1);
    return marks | (tags & (letters >> 1U | kLast));
}

constexpr std::size_t kBlock = 16;

/// The bytes of a block that are one of some characters.
#ifdef __SSE2__
unsigned FindIn(const char* block, std::string_view characters)
{
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(block));
    __m128i found = _mm_setzero_si128();
    for (const char c : characters)
        found = _mm_or_si128(found, _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)));
    return static_cast<unsigned>(_mm_movemask_epi8(found));
}
#else
unsigned FindIn(const char* block, std::string_view characters)
{
    unsigned found = 0;
    for (std::size_t i = 0; i < kBlock; ++i)
        for (const char c : characters)
            found |= static_cast<unsigned>(block[i] == c) << i;
    return found;
}
#endif

#if defined(__SSE2__) && defined(__GNUC__)

/// A byte's halves, four bits each, are looked up in a table each. It is one of the characters of a
/// set where the two entries have the set's bit in common; so a set is all that the high halves and
/// the low halves of its characters can make up.
using HalfTable = std::array<std::uint8_t, 16>;

struct HalfSet {
    std::string_view characters;
    std::uint8_t bit;
};

// The tag is the highest bit, which is taken out of a byte with the least work; letters are the two
// below, and marks are the others.
constexpr std::uint8_t kTagBit = 0x80;
constexpr std::uint8_t kLetterBits = 0x60;
constexpr std::uint8_t kMarkBits = 0x1F;
constexpr HalfSet kHalfSets[] = {
    {"<", kTagBit}, {"sSzZ", 0x40}, {"mMoO", 0x20}, {"{}", 0x10},
    {"@", 0x08},    {"?", 0x04},    {"!$%", 0x02},  {"\n", 0x01},
};

constexpr HalfTable TableOf(bool is_high)
{
    HalfTable table{};
    for (const HalfSet& set : kHalfSets)
        for (const char c : set.characters) {
            const auto code = static_cast<unsigned char>(c);
            std::uint8_t& entry = table[is_high ? code / 16U : code % 16U];
            entry = static_cast<std::uint8_t>(entry | set.bit);
        }
    return table;
}

constexpr HalfTable kLowHalves = TableOf(false);
constexpr HalfTable kHighHalves = TableOf(true);

constexpr bool TablesHold(std::string_view characters, unsigned bits)
{
    for (unsigned code = 0; code < 128; ++code) {
        const bool is_one = characters.find(static_cast<char>(code)) != std::string_view::npos;
        if (((kLowHalves[code % 16] & kHighHalves[code / 16] & bits) != 0) != is_one)
            return false;
    }
    return true;
}

static_assert(TablesHold(kMarksAndEnds, kMarkBits));
static_assert(TablesHold(kTagLetters, kLetterBits));
static_assert(TablesHold("<", kTagBit));

__attribute__((target("avx2"))) inline __m256i Twice(const HalfTable& table)
{
    return _mm256_broadcastsi128_si256(
        _mm_loadu_si128(reinterpret_cast<const __m128i*>(table.data())));
}

/// The highest bit of each byte.
__attribute__((target("avx2"))) inline std::uint64_t HighBits(__m256i bytes)
{
    return static_cast<unsigned>(_mm256_movemask_epi8(bytes));
}

/// The same for processors that look up 32 bytes at a time, a fifth of the work.
__attribute__((target("avx2"))) inline std::uint64_t LookUpStretch(const char* stretch)
{
    constexpr std::size_t kHalf = 32;
    const __m256i low_table = Twice(kLowHalves);
    const __m256i high_table = Twice(kHighHalves);
    const __m256i half_mask = _mm256_set1_epi8(15);
    const __m256i mark_mask = _mm256_set1_epi8(kMarkBits);
    std::uint64_t others = 0; // no marks
    std::uint64_t tags = 0;
    std::uint64_t letters = 0;
    for (std::size_t part = 0; part < kStretch; part += kHalf) {
        const __m256i bytes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(stretch + part));
        const __m256i high = _mm256_and_si256(_mm256_srli_epi16(bytes, 4), half_mask);
        // The look-up gives nothing for bytes above 127.
        const __m256i common = _mm256_and_si256(_mm256_shuffle_epi8(low_table, bytes),
                                                _mm256_shuffle_epi8(high_table, high));
        const __m256i no_marks =
            _mm256_cmpeq_epi8(_mm256_and_si256(common, mark_mask), _mm256_setzero_si256());
        const __m256i is_letter =
            _mm256_or_si256(_mm256_slli_epi16(common, 1), _mm256_slli_epi16(common, 2));
        others |= HighBits(no_marks) << part;
        tags |= HighBits(common) << part;
        letters |= HighBits(is_letter) << part;
    }
    return Counting(~others, tags, letters);
}

/// Many in a row: the tables stay where they are.
__attribute__((target("avx2"))) void LookUpStretches(const char* first,
                                                     std::span<std::uint64_t> marks)
{
    for (std::uint64_t& found : marks) {
        found = LookUpStretch(first);
        first += kStretch;
    }
}

#ifdef CPU_FEATURE_ACTIVE
/// The C library has asked the processor already, which takes long in a virtual machine.
const bool kLooksUp = CPU_FEATURE_ACTIVE(AVX2);
#else
const bool kLooksUp = __builtin_cpu_supports("avx2") != 0;
#endif

#endif

std::uint64_t MarksInStretch(const char* stretch)
{
#if defined(__SSE2__) && defined(__GNUC__)
    if (kLooksUp)
        return LookUpStretch(stretch);
#endif
    return MarksByComparing(stretch);
}

void MarksInStretches(const char* first, std::span<std::uint64_t> marks)
{
#if defined(__SSE2__) && defined(__GNUC__)
    if (kLooksUp)
        return LookUpStretches(first, marks);
#endif
    for (std::uint64_t& found : marks) {
        found = MarksByComparing(first);
        first += kStretch;
    }
}

constexpr std::array<bool, 256> kIsLateMark = [] {
    std::array<bool, 256> is_mark{};
    for (const char c : kLateMarks)
        is_mark[static_cast<unsigned char>(c)] = true;
    return is_mark;
}();

} // namespace

std::uint64_t MarksByComparing(const char* stretch)
{
    const auto find = [stretch](std::string_view characters) {
        std::uint64_t found = 0;
        for (std::size_t block = 0; block < kStretch; block += kBlock)
            found |= std::uint64_t{FindIn(stretch + block, characters)} << block;
        return found;
    };
    return Counting(find(kMarksAndEnds), find("<"), find(kTagLetters));
}

std::uint64_t MarksFrom(std::string_view text, std::size_t from)
{
    if (from + kStretch <= text.size())
        return MarksInStretch(text.data() + from);
    std::array<char, kStretch> last{};
    last[text.copy(last.data(), kStretch, from)] = kTagLetters.front(); // for all that may follow
    return MarksInStretch(last.data());
}

std::size_t MarksFrom(std::string_view text, std::size_t from, std::span<std::uint64_t> marks)
{
    const std::size_t whole = std::min((text.size() - from) / kStretch, marks.size());
    MarksInStretches(text.data() + from, marks.first(whole));
    const std::size_t end = from + whole * kStretch;
    if (whole == marks.size() || end == text.size())
        return whole;
    marks[whole] = MarksFrom(text, end);
    return whole + 1;
}

bool HoldsLateMark(std::string_view text)
{
    constexpr std::size_t kLong = 16; // from here on a look at all at once takes less
    if (text.size() > kLong && text.size() <= kStretch && MarksFrom(text, 0) == 0)
        return false;
    for (const char c : text)
        if (kIsLateMark[static_cast<unsigned char>(c)])
            return true;
    return false;
}

} // namespace kiv
