// What a terminal may take for an order never reaches one.
#include "cli_desk.h"

#include "cli/shown_text.h"
#include "text/windows1252.h"

namespace kiv {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(ShownText, WhatSteersATerminalIsShownByItsNumber)
{
    struct Row {
        std::string text; // Windows-1252
        std::string shown;
    };
    for (const Row& row : std::vector<Row>{
             {"plain", "plain"},
             {"a\tb\nc", "a\tb\nc"},
             {"a\r\nb", "a\nb"},
             {"a\rb", "a\\x0Db"},
             {"\x1b[31m", "\\x1B[31m"},
             {"\x07\x08\x7f", "\\x07\\x08\\x7F"},
             {std::string("a\0b", 3), "a\\x00b"},
             {"\x9d]0;title", "\\x9D]0;title"}, // a code without a character
             {"\xe9\x80", "\xc3\xa9\xe2\x82\xac"},
         })
        EXPECT_EQ(ShownText(row.text), row.shown);
    EXPECT_EQ(ShownUtf8("\xc2\x9b"
                        "2J\xc2\xa0"),
              "\\x9B2J\xc2\xa0");
    // Bytes that are no UTF-8: a lone one, the first half of a character, one written too long.
    EXPECT_EQ(ShownUtf8("\x9b"
                        "31m\xc3"),
              "\\x9B31m\\xC3");
    EXPECT_EQ(ShownUtf8("\xc0\x9b\xed\xa0\x80\xc3\xa9"), "\\xC0\\x9B\\xED\\xA0\\x80\xc3\xa9");
}

/// Whether every byte is part of a UTF-8 character.
bool IsUtf8(std::string_view text)
{
    while (!text.empty()) {
        const std::size_t size = FirstUtf8(text).size;
        if (size == 0)
            return false;
        text.remove_prefix(size);
    }
    return true;
}

class Terminal : public CliTest {
  protected:
    Printed CallAtTerminal(const Texts& arguments)
    {
        out_is_terminal = true;
        return Call(arguments);
    }
};

TEST_F(Terminal, NothingOfASiteSteersIt)
{
    Put("site/_html.txt", "@file = \x1b]0;x\x07\r\n@title = T\r\n[zuloop]\r\n");
    Put("site/_template.txt", "@HEAD\r\n");
    for (const Texts& call : std::vector<Texts>{{"build", "C:\\site", "--verbose"},
                                                {"build", "C:\\\x1b[2J"},
                                                {"\x1b[2J"},
                                                {"\x9b"
                                                 "31m"},
                                                {"build", "--\x9b"
                                                          "31m"},
                                                {"build", "C:\\\x9b"
                                                          "31m"},
                                                {"--json", "build", "C:\\si\xc2\x9bte"}}) {
        const Printed printed = CallAtTerminal(call);
        for (const std::string& text : {printed.out, printed.err}) {
            EXPECT_TRUE(IsUtf8(text)) << text;
            for (const char* const order : {"\x1b", "\x07", "\x7f", "\xc2\x9b"})
                EXPECT_THAT(text, Not(HasSubstr(order)));
        }
    }
}

TEST_F(Terminal, AResultReachesAFileAsItIs)
{
    input = "\x1b[1m\r\n";
    EXPECT_THAT(Call({"convert", "--mode", "ptop"}).out, HasSubstr("\x1b[1m\r\n"));
    EXPECT_EQ(CallAtTerminal({"convert", "--mode", "ptop"}).out, "\\x1B[1m\n");
}

} // namespace
} // namespace kiv
