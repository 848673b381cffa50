// How lines of text are written so that a build leaves them alone.
#include "exchange/protected_line.h"

#include "builder/at_variables.h"

#include <gtest/gtest.h>

namespace kiv {
namespace {

struct LineCase {
    const char* name;
    std::string line;
    std::optional<std::string> source;
};

class ProtectedLines : public testing::TestWithParam<LineCase> {};

TEST_P(ProtectedLines, AreWrittenSo)
{
    EXPECT_EQ(ProtectedLine(GetParam().line), GetParam().source);
}

const LineCase kLines[] = {
    {"Plain", "<p>one | two { three }", "<p>one | two { three }"},
    {"Empty", "", ""},
    {"Comment", "; a remark", "@@8; a remark"},
    // "@@8;=" would define a variable.
    {"CommentThatWouldBeADefinition", ";= =", "@@8@@8;= ="},
    {"Include", "++x.txt", "@@8++x.txt"},
    {"Directive", "@media print {", "@@8@media print {"},
    {"Definition", "$$01= a", "@@8$$01= a"},
    {"Wrapper", "[[1", "@@8[[1"},
    {"WrapperEnd", "]]", "@@8]]"},
    {"Pass", "asp:net", "@@8asp:net"},
    {"Position", "=1=x", "@@8=1=x"},
    {"Mark", "<!--toc here-->", "@@8<!--toc here-->"},
    {"Bang", "Stop!!!", "Stop!@@8!@@8!"},
    {"Macro", "!!1[a]", "!@@8!1[a]"},
    {"DollarMacro", "a $$2[b] $$", "a $@@8$2[b] $$"},
    {"References", "??1[a] ?!2[b] ??", "?@@8?1[a] ?@@8!2[b] ??"},
    {"BlockTag", "a <zutable>", "a <@@8zutable>"},
    {"Style", "<style>", std::nullopt},
    {"StyleWithAttribute", "<style media=\"print\">", "<style media=\"print\">"},
    {"AtVariable", "write to a@title.com", std::nullopt},
    {"FontFace", "@font-face {", std::nullopt},
    {"NumberedVariable", "a @@1 b", std::nullopt},
    {"PercentVariable", "a %%3 b", std::nullopt},
    {"Braces", "f() {}", std::nullopt},
    {"TwoClosed", "}}", std::nullopt},
    {"Popup", "!!pop", std::nullopt},
    {"Swap", "!!SWAP[", std::nullopt},
    {"FileText", "!++x.txt", std::nullopt},
    {"Option", "<option value=\"a.htm\">", std::nullopt},
    {"OptionWithBlanks", "   <option value=\"a.htm\">", std::nullopt},
    {"Nul", std::string("a\0b", 3), std::nullopt},
    {"CarriageReturn", "a\rb", std::nullopt},
    {"TooLong", std::string(20001, 'x'), std::nullopt},
};

TEST(AtVariableStarts, AreThoseOfAllNames)
{
    for (const std::string_view name : AtVariableNames())
        EXPECT_NE(kAtVariableStarts.find(name.front()), std::string_view::npos) << name;
}

INSTANTIATE_TEST_SUITE_P(All, ProtectedLines, testing::ValuesIn(kLines),
                         [](const auto& each) { return std::string(each.param.name); });

} // namespace
} // namespace kiv
