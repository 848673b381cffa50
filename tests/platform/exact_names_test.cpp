#include "platform/exact_names.h"

#include <gtest/gtest.h>

namespace kiv {
namespace {

struct NameRow {
    const char* native;
    const char* exact;
    const char* text;
};

constexpr NameRow kNames[] = {
    {"a b.jpg", "a b.jpg", "a b.jpg"},
    {"caf\xC3\xA9 \xE2\x82\xAC", "caf\xE9 \x80", "caf\xE9 \x80"},
    {"\xE6\x97\xA5.jpg", "&#26085;.jpg", "&#26085;.jpg"},
    {"\xF0\x9F\x98\x80", "&#128512;", "&#128512;"},
    // What looks like a reference and is none of a character in the name.
    {"&#26085;.jpg", "&#38;#26085;.jpg", "&#26085;.jpg"},
    {"&#38;#26085;", "&#38;#38;#26085;", "&#38;#26085;"},
    {"&#128512;", "&#38;#128512;", "&#128512;"},
    {"&#55357;", "&#38;#55357;", "&#55357;"}, // half of a character
    {"&#1114345;", "&#38;#1114345;", "&#1114345;"},
    {"&&#26085;", "&&#38;#26085;", "&&#26085;"},
    // No reference of ours: the code page has the character, or the form is another one.
    {"&#233;", "&#233;", "&#233;"},
    {"&#026085;", "&#026085;", "&#026085;"},
    {"&#26085", "&#26085", "&#26085"},
    {"&#;&#x65E5;&amp;&", "&#;&#x65E5;&amp;&", "&#;&#x65E5;&amp;&"},
    {"&#99999999;", "&#99999999;", "&#99999999;"},
    {"&#2000000;", "&#2000000;", "&#2000000;"},
    // Bytes that are no UTF-8.
    {"caf\xE9.jpg", "caf&#1114345;.jpg", "caf\xE9.jpg"},
    {"\xE6\x97", "&#1114342;&#1114263;", "\xE6\x97"},
    {"\x80", "&#1114240;", "\x80"},
};

TEST(ExactNames, StandForOneNameOnly)
{
    for (const NameRow& row : kNames) {
        EXPECT_EQ(ExactName(row.native), row.exact);
        EXPECT_EQ(NativeName(row.exact), row.native);
    }
}

TEST(ExactNames, AsText)
{
    for (const NameRow& row : kNames)
        EXPECT_EQ(TextOfName(row.exact), row.text);
    EXPECT_EQ(TextOfName("&#26085;&#38;#1;&#128512;&#1114345;", "<", ">"),
              "<26085>&#1;<128512>\xE9");
}

TEST(ExactNames, ANewNameKeepsTheCharacters)
{
    EXPECT_EQ(ExactNewName("&#26085;_t.jpg", "&#26085;.jpg"), "&#26085;_t.jpg");
    EXPECT_EQ(ExactNewName("&#26085;_t.jpg", "&#38;#26085;.jpg"), "&#38;#26085;_t.jpg");
    EXPECT_EQ(ExactNewName("&#26085;.jpg", "sun.jpg"), "&#38;#26085;.jpg");
    EXPECT_EQ(ExactNewName("caf\xE9_t", "caf&#1114345;"), "caf\xE9_t");
}

} // namespace
} // namespace kiv
