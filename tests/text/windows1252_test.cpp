#include "text/windows1252.h"

#include <gtest/gtest.h>

#include <cctype>
#include <string>
#include <vector>

namespace kiv {
namespace {

struct CasePair {
    unsigned char upper;
    unsigned char lower;
};

std::vector<CasePair> AllCasePairs()
{
    std::vector<CasePair> pairs = {{0x8A, 0x9A}, {0x8C, 0x9C}, {0x8E, 0x9E}, {0x9F, 0xFF}};
    for (int c = 'A'; c <= 'Z'; ++c)
        pairs.push_back({static_cast<unsigned char>(c), static_cast<unsigned char>(c + 32)});
    for (int c = 0xC0; c <= 0xDE; ++c)
        if (c != 0xD7)
            pairs.push_back({static_cast<unsigned char>(c), static_cast<unsigned char>(c + 32)});
    return pairs;
}

TEST(Windows1252, CaseOfTheWholeCodePage)
{
    for (int code = 0; code < 256; ++code) {
        const auto c = static_cast<unsigned char>(code);
        unsigned char upper = c;
        unsigned char lower = c;
        for (const CasePair& pair : AllCasePairs()) {
            if (c == pair.lower)
                upper = pair.upper;
            if (c == pair.upper)
                lower = pair.lower;
        }
        EXPECT_EQ(static_cast<unsigned char>(ToUpper(static_cast<char>(c))), upper) << code;
        EXPECT_EQ(static_cast<unsigned char>(ToLower(static_cast<char>(c))), lower) << code;
    }
}

TEST(Windows1252, SignsWithoutPartnerStay)
{
    // multiplication and division sign, sharp s, micro, florin, the two ordinals, and the codes
    // without character
    for (const char* const text : {"\xD7", "\xF7", "\xDF", "\xB5", "\x83", "\xAA", "\xBA", "\x81",
                                   "\x8D", "\x8F", "\x90", "\x9D"}) {
        EXPECT_EQ(UpperCase(text), text);
        EXPECT_EQ(LowerCase(text), text);
    }
}

TEST(Windows1252, WholeTexts)
{
    EXPECT_EQ(UpperCase("caf\xE9 \x9C\xFF 1"), "CAF\xC9 \x8C\x9F 1");
    EXPECT_EQ(LowerCase("CAF\xC9 \x8C\x9F 1"), "caf\xE9 \x9C\xFF 1");
}

struct Utf8Row {
    const char* bytes;
    const char* utf8;
};

// Both ways.
constexpr Utf8Row kRoundTrips[] = {
    {"", ""},
    {"plain", "plain"},
    {"caf\xE9", "caf\xC3\xA9"},
    {"\x80", "\xE2\x82\xAC"}, // euro
    {"\x92\x93\x94\x96\x97", "\xE2\x80\x99\xE2\x80\x9C\xE2\x80\x9D\xE2\x80\x93\xE2\x80\x94"},
    {"\x81\x8D\x8F\x90\x9D",
     "\xC2\x81\xC2\x8D\xC2\x8F\xC2\x90\xC2\x9D"}, // the five without a character
    {"\xA0\xFF", "\xC2\xA0\xC3\xBF"},
    {"\r\n\t", "\r\n\t"},
};

TEST(Windows1252, Utf8BothWays)
{
    for (const Utf8Row& row : kRoundTrips) {
        EXPECT_EQ(ToUtf8(row.bytes), row.utf8);
        EXPECT_EQ(FromUtf8(row.utf8), row.bytes);
    }
    for (int code = 0; code < 256; ++code) {
        const std::string one(1, static_cast<char>(static_cast<unsigned char>(code)));
        EXPECT_EQ(FromUtf8(ToUtf8(one)), one) << code;
    }
}

// What the code page lacks becomes a decimal reference, bytes of no valid sequence stay.
constexpr Utf8Row kFromUtf8[] = {
    {"&#20013;", "\xE4\xB8\xAD"},
    {"a&#127758;b", "a\xF0\x9F\x8C\x8E"
                    "b"},
    {"&#65279;x", "\xEF\xBB\xBFx"}, // a byte order mark is an ordinary character
    {"&#128;", "\xC2\x80"},         // a control character, not the euro
    {"&#133;", "\xC2\x85"},
    {"\xE9t\xE9", "\xE9t\xE9"},               // Latin-1 handed in by mistake
    {"\xE4\xB8", "\xE4\xB8"},                 // cut off
    {"\xE4\xB8z", "\xE4\xB8z"},               // broken off
    {"\xC0\xAF", "\xC0\xAF"},                 // overlong
    {"\xE0\x80\xAF", "\xE0\x80\xAF"},         // overlong
    {"\xED\xA0\x80", "\xED\xA0\x80"},         // half of a surrogate pair
    {"\xF4\x90\x80\x80", "\xF4\x90\x80\x80"}, // past the last character
    {"\xF8\x88\x80\x80\x80", "\xF8\x88\x80\x80\x80"},
    {"\xFF", "\xFF"},
};

TEST(Windows1252, FromUtf8LosesNothing)
{
    for (const Utf8Row& row : kFromUtf8)
        EXPECT_EQ(FromUtf8(row.utf8), row.bytes);
}

struct KeepingRow {
    const char* text;
    const char* original;
    const char* utf8;
};

TEST(Windows1252, ReferencesOfTheOriginalBecomeItsCharactersAgain)
{
    const std::vector<KeepingRow> rows = {
        {"&#20013;_t.jpg", "\xE4\xB8\xAD.jpg", "\xE4\xB8\xAD_t.jpg"},
        {"&#20013;&#128512;&#20013;", "\xE4\xB8\xAD \xF0\x9F\x98\x80",
         "\xE4\xB8\xAD\xF0\x9F\x98\x80\xE4\xB8\xAD"},
        {"&#20013;\xE9", "x", "&#20013;\xC3\xA9"},                        // not from there
        {"&#20014;", "\xE4\xB8\xAD", "&#20014;"},                         // another
        {"-#20013;", "\xE4\xB8\xAD", "-#20013;"},                         // changed
        {"&#20013;&#20013;", "&#20013;\xE4\xB8\xAD", "&#20013;&#20013;"}, // which one?
        {"a\xE9", "a\xE9", "a\xC3\xA9"},                                  // no UTF-8 before
        {"", "\xE4\xB8\xAD", ""},
    };
    for (const KeepingRow& row : rows)
        EXPECT_EQ(ToUtf8Keeping(row.text, row.original), row.utf8);
}

TEST(Windows1252, CodePoints)
{
    EXPECT_EQ(CodePoint('A'), U'A');
    EXPECT_EQ(CodePoint('\x80'), 0x20ACU);
    EXPECT_EQ(CodePoint('\x81'), 0x81U);
    EXPECT_EQ(CodePoint('\x9F'), 0x178U);
    EXPECT_EQ(CodePoint('\xFE'), 0xFEU);
}

} // namespace
} // namespace kiv
