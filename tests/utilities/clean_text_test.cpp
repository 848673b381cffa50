#include "utilities/clean_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> LinesOf(std::string_view text)
{
    std::vector<std::string> lines;
    while (!text.empty())
        lines.emplace_back(TakeAnyLine(text));
    return lines;
}

TEST(CleanText, AnyLineEndPartsLines)
{
    EXPECT_THAT(LinesOf(""), IsEmpty());
    EXPECT_THAT(LinesOf("a"), ElementsAre("a"));
    EXPECT_THAT(LinesOf("a\r\n"), ElementsAre("a"));
    EXPECT_THAT(LinesOf("a\r\nb\nc\rd"), ElementsAre("a", "b", "c", "d"));
    EXPECT_THAT(LinesOf("\n\r\r\n"), ElementsAre("", "", ""));
    EXPECT_THAT(LinesOf("\r\r\n\n"), ElementsAre("", "", ""));
    EXPECT_THAT(LinesOf("\x1A\tx "), ElementsAre("\x1A\tx "));
}

TEST(CleanText, RunsOfBlanksBecomeOne)
{
    struct Row {
        std::string text, collapsed;
    };
    const Row kRows[] = {
        {"", ""},
        {" ", " "},
        {"a b", "a b"},
        {"a  b", "a b"},
        {"   ", " "},
        {"  a   b ", " a b "},
        {"a \t  b", "a \t b"},
        {" a  ", " a "},
    };
    for (const Row& row : kRows) {
        std::string text = row.text;
        CollapseBlanks(text);
        EXPECT_EQ(text, row.collapsed) << '"' << row.text << '"';
    }
}

TEST(CleanText, Entities)
{
    struct Row {
        std::string text, replaced;
    };
    const Row kRows[] = {
        {"", ""},
        {"plain <b>&amp;</b>", "plain <b>&amp;</b>"},
        {"\xA1\xA3\xA9\xBD\xC0\xDE\xDF\xFF", "&iexcl;&pound;&copy;&frac12;&Agrave;&THORN;"
                                             "&szlig;&yuml;"},
        {"\x8A\x9A\x9F", "&Scaron;&scaron;&Yuml;"},
        {"\x91\x92\x93\x94", "&lsquo;&rsquo;&ldquo;&rdquo;"},
        // The gaps of the table: these have no row.
        {"\xA0\xA6\xAA\xAB\xAC\xAD\xAF\xB1\xB4\xB5\xB7\xB8\xBB\xFE\x80\x95\x99",
         "\xA0\xA6\xAA\xAB\xAC\xAD\xAF\xB1\xB4\xB5\xB7\xB8\xBB\xFE\x80\x95\x99"},
        {"a \x97 b", "a &mdash; b"},
        {"a \x96 b", "a &mdash; b"}, // an en dash between blanks becomes an em dash
        {"a -- b", "a &mdash; b"},
        {"a - b", "a &mdash; b"},
        {"a\x97"
         "b",
         "a &mdash; b"},
        {"a\x96"
         "b",
         "a&ndash;b"},
        {"a-b--c", "a-b--c"},
        {"a\x85", "a..."},
        {"`a`", "'a'"},
        // A blank belongs to one dash only; a later row sees what the one before has put in.
        {"a - - b", "a &mdash; - b"},
        {"a -- - b", "a &mdash; &mdash; b"},
        {"a \x97 \x97 b", "a &mdash;  &mdash;  b"},
        {"a \x97", "a  &mdash; "},
        {"a \x96 - b", "a &mdash; &mdash; b"},
    };
    for (const Row& row : kRows) {
        std::string text = row.text;
        ReplaceEntities(text);
        EXPECT_EQ(text, row.replaced) << row.text;
    }
}

} // namespace
} // namespace kiv
