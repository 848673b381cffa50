#include "exchange/encoded_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv {
namespace {

using testing::ElementsAre;

constexpr SourceKind kList{.names_files = true};
constexpr SourceKind kFrame{.is_template = true};

TEST(EncodedText, ToUtf8)
{
    const EncodedText text = Encoded("caf\xE9 \x80\r\nplain\n", Encoding::utf8, {});
    EXPECT_EQ(text.bytes, "caf\xC3\xA9 \xE2\x82\xAC\r\nplain\n");
    EXPECT_EQ(text.fault, "");
    EXPECT_FALSE(text.declares);
}

TEST(EncodedText, ToWindows)
{
    const EncodedText text =
        Encoded("caf\xC3\xA9 \xE4\xB8\xAD\xE2\x82\xAC\n\xE4\xB8\xAD", Encoding::windows1252, {});
    EXPECT_EQ(text.bytes, "caf\xE9 &#20013;\x80\n&#20013;");
    EXPECT_EQ(text.references, 2U);
}

// Every byte beyond ASCII, each with a letter behind it: none makes valid UTF-8 by chance.
TEST(EncodedText, ThereAndBackAreTheSameBytes)
{
    std::string bytes;
    for (int c = 0x80; c <= 0xFF; ++c)
        bytes.append(1, static_cast<char>(c)).append("x");
    const EncodedText there = Encoded(bytes, Encoding::utf8, {});
    EXPECT_EQ(there.fault, "");
    EXPECT_NE(there.bytes, bytes);
    const EncodedText back = Encoded(there.bytes, Encoding::windows1252, {});
    EXPECT_EQ(back.bytes, bytes);
    EXPECT_EQ(back.references, 0U);
}

TEST(EncodedText, WhatIsThereAlreadyStays)
{
    EXPECT_EQ(Encoded("caf\xC3\xA9", Encoding::utf8, {}).bytes, "caf\xC3\xA9");
    EXPECT_EQ(Encoded("plain", Encoding::utf8, {}).bytes, "plain");
    EXPECT_EQ(Encoded("plain", Encoding::windows1252, {}).bytes, "plain");
    EXPECT_EQ(Encoded("", Encoding::windows1252, {}).bytes, "");
}

TEST(EncodedText, MarksGo)
{
    const EncodedText text = Encoded("\xEF\xBB\xBF"
                                     "caf\xC3\xA9",
                                     Encoding::utf8, {});
    EXPECT_EQ(text.bytes, "caf\xC3\xA9");
    EXPECT_TRUE(text.lost_mark);
    EXPECT_EQ(Encoded("\xEF\xBB\xBF"
                      "caf\xC3\xA9",
                      Encoding::windows1252, {})
                  .bytes,
              "caf\xE9");
}

TEST(EncodedText, WhatCannotBeToldStaysAsItIs)
{
    const struct {
        const char* bytes;
        Encoding to;
        const char* fault;
        int line;
    } rows[] = {
        {"a\ncaf\xE9", Encoding::windows1252, "it has bytes that are no UTF-8", 2},
        {"caf\xC3\xA9\n\ncaf\xE9", Encoding::utf8,
         "it has lines in UTF-8, such as line 1, and bytes that are none", 3},
        {"\xFF\xFE"
         "a",
         Encoding::utf8, "it is UTF-16", 1},
        {"\xEF\xBB\xBF"
         "caf\xE9",
         Encoding::windows1252, "it has bytes that are no UTF-8", 1},
    };
    for (const auto& row : rows) {
        const EncodedText text = Encoded(row.bytes, row.to, {});
        EXPECT_EQ(text.bytes, row.bytes);
        EXPECT_EQ(text.fault, row.fault);
        EXPECT_EQ(text.fault_line, row.line) << row.fault;
        EXPECT_FALSE(text.lost_mark);
    }
}

TEST(EncodedText, LinesThatNameFilesStay)
{
    const std::string list = "@FILE = caf\xE9\n@TITLE = Caf\xE9\n++caf\xE9.txt\n!++caf\xE9.txt\n"
                             "+ caf\xE9\n@file=x\xE9\n@ASP = C:\\\xE9\n@FILES caf\xE9\n";
    const EncodedText text = Encoded(list, Encoding::utf8, kList);
    EXPECT_EQ(text.bytes, "@FILE = caf\xE9\n@TITLE = Caf\xC3\xA9\n++caf\xE9.txt\n!++caf\xE9.txt\n"
                          "+ caf\xC3\xA9\n@file=x\xE9\n@ASP = C:\\\xE9\n@FILES caf\xC3\xA9\n");
    EXPECT_THAT(text.kept_lines, ElementsAre(1, 3, 4, 6, 7));
    EXPECT_EQ(Encoded(text.bytes, Encoding::windows1252, kList).bytes, list);
    EXPECT_TRUE(NamesFile("+caf\xE9.txt", kFrame));
    EXPECT_FALSE(NamesFile("@FILE = caf\xE9", kFrame));
}

TEST(EncodedText, Declarations)
{
    const struct {
        const char* before;
        const char* after;
    } rows[] = {
        {"<meta charset=\"windows-1252\">", "<meta charset=\"utf-8\">"},
        {"<META http-equiv=\"Content-Type\"\ncontent=\"text/html; charset=ISO-8859-1\">",
         "<META http-equiv=\"Content-Type\"\ncontent=\"text/html; charset=utf-8\">"},
        {"<?xml version=\"1.0\" encoding='iso-8859-1'?>",
         "<?xml version=\"1.0\" encoding='utf-8'?>"},
        {"@charset \"latin1\";", "@charset \"utf-8\";"},
        {"<meta charset=cp1252><meta charset=us-ascii>",
         "<meta charset=utf-8><meta charset=utf-8>"},
    };
    for (const auto& row : rows) {
        const EncodedText text = Encoded(row.before, Encoding::utf8, {});
        EXPECT_EQ(text.bytes, row.after);
        EXPECT_TRUE(text.declares);
    }
    for (const char* const other : {"<meta charset=\"iso-8859-15\">", "<p>charset=windows-1252</p>",
                                    "<meta charset=", "<meta charset=>windows-1252",
                                    "<script charset=\"windows-1252\">", "<meta"})
        EXPECT_EQ(Encoded(other, Encoding::utf8, {}).bytes, other);
    EXPECT_EQ(Encoded("<meta charset=UTF-8>", Encoding::windows1252, {}).bytes,
              "<meta charset=windows-1252>");
}

} // namespace
} // namespace kiv
