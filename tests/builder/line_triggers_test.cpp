// What a line holds is the same whether it is looked at alone or as one of many.
#include "builder/line_triggers.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace kiv {
namespace {

struct Line {
    std::string text;
    std::string end;
};

/// Each line of a text against the look at it alone.
void ExpectLines(const std::vector<Line>& lines)
{
    std::string text;
    for (const Line& line : lines)
        text += line.text + line.end;
    LineScanner scanner(text);
    std::size_t rest = text.size();
    for (const Line& line : lines) {
        ASSERT_FALSE(scanner.AtEnd());
        Triggers triggers = 0;
        ASSERT_EQ(scanner.Next(triggers), line.text);
        ASSERT_EQ(triggers, ScanLine(line.text) | (line.end == "\r\n" ? kEndBehind : 0U))
            << line.text;
        rest -= line.text.size() + line.end.size();
        ASSERT_EQ(scanner.Rest().size(), rest);
    }
    EXPECT_TRUE(scanner.AtEnd());
}

TEST(LineTriggers, AnEmptyTextHasNoLine)
{
    EXPECT_TRUE(LineScanner("").AtEnd());
    EXPECT_TRUE(LineScanner().AtEnd());
}

// 64 characters are looked at in one go, and 32 times as many ahead.
TEST(LineTriggers, LinesAreFoundAcrossTheBoundsOfALook)
{
    for (const std::size_t bound : {64U, 2048U, 4096U})
        for (std::size_t size = bound - 4; size <= bound + 4; ++size)
            for (const char* const mark : {"!!", "@", "<style>", "x"})
                for (const char* const end : {"", "\n", "\r\n"}) {
                    ExpectLines({{std::string(size - 2, 'x').append(mark), end}});
                    if (*end != '\0')
                        ExpectLines({{std::string(size - 2, 'x').append(mark), end},
                                     {"", end},
                                     {"@FILE = a", end},
                                     {std::string(bound, 'y'), ""}});
                }
}

TEST(LineTriggers, OnlyAFifthCharacterOfItsKindMayDefine)
{
    for (const std::string_view line : {"@@03=", "@@03= text", "%%12= x", "<ab>=", "abcd="}) {
        EXPECT_NE(ScanLine(line) & kDefining, 0U) << line;
        ExpectLines({{std::string(line), "\r\n"}, {std::string(line), ""}});
    }
    for (const std::string_view line : {"", "=", "@@3=", "@@03", "@@003=", "@@03 = text"}) {
        EXPECT_EQ(ScanLine(line) & kDefining, 0U) << line;
        ExpectLines({{"x", "\n"}, {std::string(line), "\r\n"}, {"=", ""}});
    }
}

} // namespace
} // namespace kiv
