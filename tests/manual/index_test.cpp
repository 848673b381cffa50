// The index of words and the search: no word of the program is missing, and each leads somewhere.
#include "docs/manual/generator/search_index.h"
#include "docs/manual/generator/word_index.h"
#include "tests/manual/manual_text.h"
#include "tests/support/folders.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>

namespace {

using namespace kiv::manual;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Words = std::vector<std::string>;

const std::vector<ManualPage>& Manual()
{
    static const std::vector<ManualPage> pages = ReadManual(KIV_ROOT "/docs/manual");
    return pages;
}

/// A page of a manual that is made up.
ManualPage Page(const char* name, const char* title, const char* chapter)
{
    return {name, title, chapter, SectionsOf(chapter)};
}

/// Places as "page#id".
Words Addresses(const std::vector<WordPlace>& places)
{
    Words addresses;
    for (const WordPlace& place : places)
        addresses.push_back(place.page->name + "#" + place.section->id);
    return addresses;
}

TEST(Sections, HaveTheirHeadingsTextsAndCodes)
{
    const std::vector<PageSection> sections = SectionsOf("Above `a`.\n"
                                                         "# One **two**\n"
                                                         "- See [the `b|c`](x.htm),\n"
                                                         "\n"
                                                         "| `d` | e\n"
                                                         "| f? | g\n"
                                                         "## Below\n"
                                                         "#:case What `comes` out\n"
                                                         "#:in _html.txt\n"
                                                         "not prose\n"
                                                         "#:note\n"
                                                         "more\n");
    ASSERT_EQ(sections.size(), 3U);
    EXPECT_EQ(sections[0].heading, "");
    EXPECT_EQ(sections[0].text, "Above a.");
    EXPECT_EQ(sections[1].heading, "One two");
    EXPECT_EQ(sections[1].id, "one-two");
    EXPECT_EQ(sections[1].text, "- See the b|c, d | e. f? | g.");
    EXPECT_THAT(sections[1].codes, ElementsAre("b|c", "d"));
    EXPECT_EQ(sections[2].text, "What comes out. more");
    EXPECT_THAT(SectionsOf("# Alone\n"), testing::SizeIs(1)); // nothing above it
}

TEST(WordIndex, NamesTheHomeFirstAndOtherPagesOnce)
{
    const std::vector<ManualPage> pages = {
        Page("first", "First", "# A\n`@X` and `@x`\n# B\n`@X`\n"),
        Page("home", "Home",
             "The `@X`.\n# More\n`c:\\utils\\x.ini` and `!!pop[a|b]`\n# X1\n`@X`\n"),
        Page("other", "Other", "`@XY`\n"),
    };
    EXPECT_THAT(Addresses(PlacesOf("@X", "home", pages)),
                ElementsAre("home#", "home#x1", "first#a"));
    EXPECT_THAT(Addresses(PlacesOf("x.ini", "home", pages)), ElementsAre("home#more"));
    EXPECT_THAT(Addresses(PlacesOf("!!pop[", "home", pages)), ElementsAre("home#more"));
    EXPECT_THAT(Addresses(PlacesOf("X1", "home", pages)), ElementsAre("home#x1")); // its heading
    EXPECT_THAT(PlacesOf("@Z", "home", pages), IsEmpty());
    EXPECT_THAT(WordIndexHtml({{"Some words", "home", {"x.ini"}}}, pages),
                HasSubstr("<code class=\"short\">x.ini</code></td><td>"
                          "<a href=\"home.htm#more\">Home: More</a></td>"));
}

TEST(WordIndex, ACommandIsFoundByItsCalls)
{
    const std::vector<ManualPage> pages = {
        Page("a", "A", "`news` and `kiv-cli newsletter`\n# Other\n`kiv-cli --json new`\n"),
        Page("b", "B", "# Alone\n`kiv-cli news`\n"),
        Page("c", "C", "# With options\n`kiv-cli news --name x`\n"),
        Page("home", "Home", "| `news --site N` | does\n"),
    };
    EXPECT_THAT(Addresses(PlacesOf("kiv-cli news", "home", pages)),
                ElementsAre("home#", "b#alone", "c#with-options"));
}

TEST(WordIndex, AWordThatNoPageTellsOfIsRefused)
{
    const std::vector<ManualPage> pages = {Page("home", "Home", "`@X`\n")};
    EXPECT_THROW(WordIndexHtml({{"Some words", "home", {"@X", "@Z"}}}, pages), std::runtime_error);
}

/// Whatever the index holds is told by the page that it calls the home of its family.
TEST(WordIndex, EveryFamilyHasItsPage)
{
    std::size_t words = 0;
    for (const WordFamily& family : WordFamilies()) {
        EXPECT_TRUE(std::any_of(Manual().begin(), Manual().end(), [&](const ManualPage& page) {
            return page.name == family.page;
        })) << family.page;
        std::set<std::string> once;
        for (const std::string& word : family.words) {
            EXPECT_TRUE(once.insert(word).second) << word;
            EXPECT_THAT(PlacesOf(word, family.page, Manual()), testing::Not(IsEmpty())) << word;
            ++words;
        }
    }
    EXPECT_GT(words, 180U);
}

/// The tables of the program, whose sizes tests/manual/mentions_test.cpp has, are in it whole.
TEST(WordIndex, HoldsTheTables)
{
    std::set<std::string> all;
    for (const WordFamily& family : WordFamilies())
        all.insert(family.words.begin(), family.words.end());
    for (const char* const word :
         {"@FILE =", "@TITLE =", "@REDIRECT2", "@ASP =", "@XOFY_X-", "<style>", "!!SWAP[",
          "<zusidebar6>", "<zutable1>", "@SSENDEMAIL:", "_html.txt", "kivaddr.ini", "dead-link",
          "plugin cabinet", "<!--TOC HERE-->", "@@EOY", "[[1", "kiv-cli build", "kiv-cli watch"})
        EXPECT_TRUE(all.contains(word)) << word;
}

TEST(SearchIndex, IsAnArrayOfSections)
{
    const std::string script =
        SearchIndexScript({Page("p", "A \"page\"", "a\tb \\\n# H\n<!--x-->\n")});
    EXPECT_EQ(script, "const kivSections = [\n"
                      "[\"p\",\"A \\\"page\\\"\",\"\",\"\",\"a b \\\\\"],\n"
                      "[\"p\",\"A \\\"page\\\"\",\"h\",\"H\",\"<!--x-->\"],\n"
                      "];\n");
}

TEST(Manual, HasAPageForEachChapter)
{
    EXPECT_EQ(Manual().size(), kiv::test::Chapters().size());
    kiv::test::TemporaryFolder folder;
    kiv::test::WriteBytes(folder.Path() / "_html.txt", "@FILE = a\n@TITLE = A\n");
    kiv::test::WriteBytes(folder.Path() / "chapters/a.txt", "text\n");
    EXPECT_EQ(ReadManual(folder.Path().string()).front().title, "A");
    kiv::test::WriteBytes(folder.Path() / "chapters/b.txt", "text\n");
    EXPECT_THROW(ReadManual(folder.Path().string()), std::runtime_error);
    kiv::test::WriteBytes(folder.Path() / "_html.txt",
                          "@FILE = a\n@TITLE = A\n@FILE = b\n@FILE = c\n");
    EXPECT_THROW(ReadManual(folder.Path().string()), std::runtime_error);
}

} // namespace
