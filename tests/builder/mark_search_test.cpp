// Marks are looked for many characters at a time; here each character is held against what it is.
#include "builder/mark_search.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace kiv {
namespace {

constexpr std::string_view kBeginnings = "!$?@%{}\n"; // but for "<"
constexpr std::string_view kLateBeginnings = "@<!{}";

/// One bit where `character` stands, when it is one of some characters.
std::uint64_t BitOf(std::string_view characters, char character, std::size_t at)
{
    return characters.find(character) == std::string_view::npos ? 0 : std::uint64_t{1} << at;
}

TEST(MarkSearch, EachCharacterAtEachPlaceOfAStretchIsWhatItIs)
{
    for (int code = 0; code < 256; ++code)
        for (std::size_t at = 0; at < kStretch; ++at) {
            std::string text(3 + kStretch + 3, 'x');
            text[3 + at] = static_cast<char>(code);
            const bool is_last_tag = text[3 + at] == '<' && at == kStretch - 1;
            const std::uint64_t expected =
                is_last_tag ? std::uint64_t{1} << at : BitOf(kBeginnings, text[3 + at], at);
            ASSERT_EQ(MarksFrom(text, 3), expected) << "code " << code << " at " << at;
            ASSERT_EQ(MarksByComparing(text.data() + 3), expected)
                << "code " << code << " at " << at;
        }
}

TEST(MarkSearch, ATagCountsByTheCharacterThatFollows)
{
    for (int code = 0; code < 256; ++code)
        for (std::size_t at = 0; at + 1 < kStretch; ++at) {
            std::string text(kStretch, '.');
            text[at] = '<';
            text[at + 1] = static_cast<char>(code);
            const std::uint64_t tag = BitOf("zZsSoOmM", text[at + 1], at);
            const bool is_last_tag = text[at + 1] == '<' && at + 1 == kStretch - 1;
            const std::uint64_t behind = is_last_tag ? std::uint64_t{1} << (at + 1)
                                                     : BitOf(kBeginnings, text[at + 1], at + 1);
            ASSERT_EQ(MarksFrom(text, 0), tag | behind) << "code " << code << " behind " << at;
            ASSERT_EQ(MarksByComparing(text.data()), tag | behind)
                << "code " << code << " behind " << at;
        }
}

TEST(MarkSearch, ATagAtTheEndOfATextCountsWhateverMayFollow)
{
    for (std::size_t size = 1; size <= kStretch; ++size) {
        const std::string text = std::string(size - 1, '.') + "<..";
        ASSERT_EQ(MarksFrom(std::string_view(text).substr(0, size), 0),
                  std::uint64_t{1} << (size - 1))
            << size;
    }
}

TEST(MarkSearch, ATextThatEndsWithinTheStretchHasNoMarksBehindItsEnd)
{
    for (std::size_t size = 1; size < kStretch; ++size) {
        const std::string text = std::string(size - 1, 'x') + "@@@";
        ASSERT_EQ(MarksFrom(std::string_view(text).substr(0, size), 0),
                  std::uint64_t{1} << (size - 1))
            << size;
    }
}

TEST(MarkSearch, ManyStretchesAreLookedAtInOneGo)
{
    constexpr std::size_t kFrom = 5;
    for (const std::size_t size : {0U, 1U, 63U, 64U, 65U, 128U, 191U, 192U, 500U}) {
        std::string text(kFrom + size, 'x');
        for (std::size_t at = kFrom; at < text.size(); at += 7)
            text[at] = '@';
        std::uint64_t marks[3] = {};
        const std::size_t count = MarksFrom(text, kFrom, marks);
        EXPECT_EQ(count, std::min<std::size_t>((size + kStretch - 1) / kStretch, 3)) << size;
        for (std::size_t i = 0; i < count; ++i)
            EXPECT_EQ(marks[i], MarksFrom(text, kFrom + i * kStretch)) << size << " stretch " << i;
    }
}

TEST(MarkSearch, ALateMarkIsFoundInTextsOfAnyLength)
{
    for (int code = 0; code < 256; ++code)
        for (const std::size_t size : {1U, 16U, 17U, 64U, 65U, 200U}) {
            std::string text(size, 'x');
            text.back() = static_cast<char>(code);
            ASSERT_EQ(HoldsLateMark(text), BitOf(kLateBeginnings, text.back(), 0) != 0)
                << "code " << code << " in " << size;
        }
}

} // namespace
} // namespace kiv
