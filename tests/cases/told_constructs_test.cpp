// Each construct of the format has a story: a word of the program's tables that no story of
// line_stories.cases names as a step fails here.
#include "blocks/dispatcher.h"
#include "builder/at_variables.h"
#include "builder/bang_macros.h"
#include "builder/page_directives.h"
#include "builder/server_scripts.h"
#include "tests/cases/case_file.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

namespace {

using testing::IsEmpty;

/// The names of all steps: what stands between two blanks and two blanks, in capitals.
std::set<std::string> ToldSteps()
{
    std::set<std::string> names;
    for (const Case& one : ReadCaseFile(KIV_LINE_STORIES))
        for (const Case::Question& question : one.questions)
            for (const std::string& line : question.answer) {
                const std::size_t end = line.size() > 2 ? line.find("  ", 2) : npos;
                if (end != npos && line.starts_with("  ") && line[2] != ' ')
                    names.insert(UpperCase(line.substr(2, end - 2)));
            }
    return names;
}

std::vector<std::string> Untold(const std::vector<std::string_view>& words)
{
    static const std::set<std::string> told = ToldSteps();
    std::vector<std::string> untold;
    for (const std::string_view word : words)
        if (!told.contains(UpperCase(Trim(word))))
            untold.emplace_back(word);
    return untold;
}

TEST(ToldConstructs, EveryDirectiveHasAStory)
{
    std::vector<std::string_view> words = PageDirectiveWords();
    // Their lines stay as they are: what they say of the site and the page is no step.
    EXPECT_EQ(std::erase(words, "@ROOT =") + std::erase(words, "@TITLE ="), 2U);
    EXPECT_THAT(Untold(words), IsEmpty());
}

TEST(ToldConstructs, EveryAtVariableHasAStory)
{
    EXPECT_THAT(Untold(AtVariableNames()), IsEmpty());
}

TEST(ToldConstructs, EveryBlockTagHasAStory)
{
    EXPECT_THAT(Untold(BlockTagWords()), IsEmpty());
}

TEST(ToldConstructs, EveryServerScriptHasAStory)
{
    EXPECT_THAT(Untold(ServerScriptWords()), IsEmpty());
}

TEST(ToldConstructs, EveryBangHasAStory)
{
    for (const Bang* const bang : kBangs)
        EXPECT_THAT(Untold({bang->mark}), IsEmpty());
}

TEST(ToldConstructs, EveryOtherStepHasAStory)
{
    EXPECT_THAT(Untold({"@@1", "%%1", "[[1", "]]", "!!3[", "$$3[", "??1[", "?!1["}), IsEmpty());
    EXPECT_THAT(Untold({"ASP:", "HTM:", "DIR1:", "=1=", "=2=", "=5=", "=8=", "=9="}), IsEmpty());
    EXPECT_THAT(Untold({"@@EOY", "<META NAME=", "<option value=", "{}", "{{", "}}", "!++"}),
                IsEmpty());
    EXPECT_THAT(Untold({"<!--DROPDOWN HERE-->", "<!--TOC HERE-->", "<!--SITEMAPHERE-->"}),
                IsEmpty());
    EXPECT_THAT(Untold({"@NOTEMPLATE", "@NOBODYTEMPLATE", "@TIGHTNOTEMPLATE", "@TIGHTPRINT",
                        "@REDIRECT new.htm", "@REDIRECT2 new.htm", "_singlehtml.txt"}),
                IsEmpty());
}

} // namespace

} // namespace kiv::test
