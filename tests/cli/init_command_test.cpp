// Sites that `init` begins: what it prints, and that all that is done with a site works on them at
// once, without a word.
#include "cli/call_argument.h"
#include "cli_desk.h"
#include "inspect/html_facts.h"

#include <cstdlib>
#include <filesystem>

namespace kiv {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class InitCommand : public CliTest {
  protected:
    /// A call that ends well and has nothing to say.
    void Silently(const Texts& arguments)
    {
        const Printed printed = Call(arguments);
        EXPECT_EQ(printed.code, 0) << arguments[0];
        EXPECT_EQ(printed.err, "") << arguments[0];
    }

    /// Built, checked, and checked again when it is built. Not even a note is left.
    void IsWell(const std::string& site)
    {
        // That no page is read is a note of its own.
        const std::string least = CanReadPages() ? "note" : "warning";
        Silently({"check", site, "--fail-on", least});
        Silently({Exists(site.substr(3) + "/_group.txt") ? "group" : "build", site, "--strict"});
        Silently({"check", site, "--fail-on", least});
    }

    /// Whether every page of the folder is valid HTML. Without the program that knows, nothing is
    /// looked at.
    void HasValidPages(const std::string& below) const
    {
#ifdef KIV_TIDY
        for (const std::string& name : NamesIn(below))
            if (name.ends_with(".htm")) {
                const std::string call =
                    std::string(KIV_TIDY) + " -e -q '" + NativeOf(below + "/" + name) + "'";
                EXPECT_EQ(std::system(call.c_str()), 0) << name;
            }
#else
        (void)below;
#endif
    }
};

TEST_F(InitCommand, TellsWhatItMadeAndHowToGoOn)
{
    EXPECT_EQ(Call({"init", "C:\\mill"}).out,
              "4 files made\n"
              "  " +
                  NativeOf("mill/style.css") +
                  "\n"
                  "  " +
                  NativeOf("mill/hills.svg") +
                  "\n"
                  "  " +
                  NativeOf("mill/_template.txt") +
                  "\n"
                  "  " +
                  NativeOf("mill/_html.txt") +
                  "\n"
                  "Next:\n"
                  "  kiv-cli build " +
                  CallArgument("C:\\mill") +
                  "           makes the pages: look at C:\\mill\\index.htm\n"
                  "  kiv-cli preview " +
                  CallArgument("C:\\mill") +
                  " --open  shows them in the browser while you write\n");
    const Printed again = Call({"init", "C:\\mill"});
    EXPECT_EQ(again.out, "Nothing made: all of it is there already\n");
    EXPECT_EQ(again.err, "kiv: There already, and left as it is: _html.txt, _template.txt\n");
    EXPECT_EQ(again.code, 0);
}

TEST_F(InitCommand, TellsTheCallForTheNews)
{
    const Printed printed = Call({"--now", "2004-03-05T14:07:09", "init", "C:\\mill", "--news"});
    EXPECT_THAT(
        printed.out,
        HasSubstr("  kiv-cli news --site 1 --name pr030504 --title \"...\" --text FILE  adds "
                  "an item to the news\n"));
}

TEST_F(InitCommand, TellsTheNumberOfTheNewsThatTheListIsToHave)
{
    Put("utils/kivnews.ini", "Boats|C:\\boats\\\r\n");
    const Printed printed =
        Call({"--now", "2004-03-05T14:07:09", "init", "C:\\old mill", "--news"});
    EXPECT_THAT(printed.out, HasSubstr("  kiv-cli group " + CallArgument("C:\\old mill") + " "));
    EXPECT_THAT(
        printed.out,
        HasSubstr("  kiv-cli news --site 2 --name pr030504 --title \"...\" --text FILE  adds "
                  "an item to the news, after you have added its line to kivnews.ini\n"));
    EXPECT_THAT(printed.err, HasSubstr("Please add this line: Old mill|C:\\old mill\\news\\||"));
}

TEST_F(InitCommand, ReportsTheFiles)
{
    const Json report = Report({"init", "C:\\site"});
    EXPECT_EQ(report["status"], "4 files made");
    EXPECT_EQ(report["files"], Json::Parse(R"(["C:\\site\\style.css", "C:\\site\\hills.svg",
                              "C:\\site\\_template.txt", "C:\\site\\_html.txt"])"));
    EXPECT_EQ(report["written"][3]["native"], NativeOf("site/_html.txt"));
    EXPECT_EQ(report["written"].Size(), 4U);
    EXPECT_EQ(Report({"init", "C:\\site"})["messages"],
              Json::Parse(R"(["There already, and left as it is: _html.txt, _template.txt"])"));
}

TEST_F(InitCommand, ASectionsNameThatIsNoneIsAWrongCall)
{
    for (const char* const name : {"a b", "../up", "news", "caf\xC3\xA9", "", "NUL", "-a"}) {
        const Printed printed = Call({"init", "C:\\new", "--section", name});
        EXPECT_EQ(printed.code, 2) << name;
        EXPECT_THAT(printed.err, HasSubstr("--section")) << name;
    }
    EXPECT_FALSE(Exists("new"));
}

TEST_F(InitCommand, AFolderThatCannotBeMadeIsFatal)
{
    Put("taken", "a file");
    const Printed printed = Call({"init", "C:\\taken\\site"});
    EXPECT_EQ(printed.code, 1);
    EXPECT_THAT(printed.err, HasSubstr("cannot make the folder C:\\taken: a file has this name"));
    EXPECT_EQ(Call({"init", ""}).code, 1); // a script's empty variable

    const std::string long_name(256, 'a');
    EXPECT_THAT(Call({"init", "C:\\" + long_name}).err, HasSubstr(": the name is too long"));
    EXPECT_THAT(Call({"init", "C:\\taken"}).err,
                HasSubstr("cannot make the folder C:\\taken: a file has this name"));
    EXPECT_THAT(Call({"init", "Q:\\site"}).err, HasSubstr("no such drive"));
}

TEST_F(InitCommand, AFolderIsMadeAsItWasTypedOrNotAtAll)
{
    const std::string han = "\xE9\x9D\xA2";
    for (const std::string& name : {han, "new/" + han, han + "/new/"}) {
        const Printed printed = Call({"init", NativeOf("") + name});
        EXPECT_EQ(printed.code, 1) << name;
        EXPECT_THAT(printed.err, HasSubstr("characters that kiv cannot give")) << name;
    }
    EXPECT_THAT(NamesIn(""), testing::ElementsAre("site", "utils"));
    std::filesystem::create_directory(Root() / test::PathOf(han));
    for (const std::string& name : {han, han + "/caf\xC3\xA9"})
        Silently({"init", NativeOf("") + name});
    EXPECT_TRUE(std::filesystem::exists(Root() / test::PathOf(han + "/_html.txt")));
    EXPECT_TRUE(std::filesystem::exists(Root() / test::PathOf(han + "/caf\xC3\xA9/_html.txt")));
    EXPECT_THAT(NamesIn(""), testing::SizeIs(3));
}

#ifndef _WIN32
TEST_F(InitCommand, ANameThatIsNoUtf8IsNotMadeAnother)
{
    EXPECT_EQ(Call({"init", NativeOf("") + "caf\xE9"}).code, 1);
    EXPECT_THAT(NamesIn(""), testing::ElementsAre("site", "utils"));
}
#endif

TEST_F(InitCommand, ASectionThatHasNoSiteMapIsBuiltFirst)
{
    Put("mill/shop/_html.txt", "@FILE = index\n@TITLE = Our shop\n<p>Boats.</p>\n");
    const Printed printed = Call({"init", "C:\\mill", "--section", "shop"});
    const std::string first = "  kiv-cli build " + CallArgument(NativeOf("mill/shop")) + "  ";
    EXPECT_THAT(printed.out, HasSubstr("Next:\n" + first));
    EXPECT_EQ(Call({"group", "C:\\mill"}).code, 1);
    EXPECT_EQ(Call({"build", "C:\\mill\\shop"}).code, 0);
    EXPECT_EQ(Call({"group", "C:\\mill"}).code, 0);
    EXPECT_THAT(Content("mill/sitemap.htm"), HasSubstr("<a href=\"shop/index.htm\">Our shop</A>"));
}

TEST_F(InitCommand, ASiteWorksAtOnce)
{
    Silently({"init", "C:\\site"});
    IsWell("C:\\site");
    HasValidPages("site");
    const std::string page = Content("site/table.htm");
    EXPECT_THAT(page, StartsWith("<!DOCTYPE html>\r\n"));
    EXPECT_THAT(page, HasSubstr("charset=windows-1252"));
    EXPECT_THAT(page, HasSubstr("name=\"viewport\""));
    EXPECT_THAT(page, HasSubstr("<li> <a href=\"index.htm\">Welcome</a>\r\n"));
    EXPECT_THAT(page, HasSubstr("<a rel=\"prev\" href=\"index.htm\">"));
    EXPECT_THAT(page, HasSubstr("<a rel=\"next\" href=\"picture.htm\">"));
    EXPECT_THAT(page, HasSubstr("<td class=\"r1\">Monday</td><td class=\"r2\">closed</td>"));
}

TEST_F(InitCommand, SectionsAndNewsWorkAtOnce)
{
    Silently({"init", "C:\\site", "--news", "--section", "shop"});
    const std::string map = Content("site/_sitemap.txt");
    const std::string map_of_shop = Content("site/shop/_sitemap.txt");
    IsWell("C:\\site");
    EXPECT_EQ(Content("site/_sitemap.txt"), map); // just what the build makes of the list
    EXPECT_EQ(Content("site/shop/_sitemap.txt"), map_of_shop);
    EXPECT_THAT(Content("site/sitemap.htm"),
                HasSubstr("<li><a href=\"shop/more.htm\">More</A></LI>\r\n"));

    Put("article.txt", "They came.\n");
    Silently({"news", "--site", "1", "--name", "pr030504", "--title", "Boats at sea", "--text",
              NativeOf("article.txt")});
    Silently({"news", "--site", "1", "--name", "pr030604", "--title", "And back", "--text",
              NativeOf("article.txt")});
    IsWell("C:\\site");
    EXPECT_THAT(Content("site/news/index.htm"),
                HasSubstr("<p><span class=\"when\">March 6, 2004</span><br>"
                          "<a href=\"pr030604.htm\">And back</a></p>\r\n"
                          "<p><span class=\"when\">March 5, 2004</span><br>"
                          "<a href=\"pr030504.htm\">Boats at sea</a></p>\r\n"));
    Silently({"build", "C:\\site\\news", "--strict"});
    for (const char* const folder : {"site/shop", "site/news"})
        HasValidPages(folder);
}

TEST_F(InitCommand, WhatComesLaterWorksWhenItsLinesAreAdded)
{
    Silently({"init", "C:\\site"});
    Silently({"build", "C:\\site", "--strict"});
    Call({"init", "C:\\site", "--section", "shop"});
    Call({"init", "C:\\site", "--news"});
    std::string page_list = Content("site/_html.txt");
    page_list += "@FILE = map\r\n@TITLE = Map\r\n<!--SITEMAPHERE-->\r\n";
    Put("site/_html.txt", page_list);
    std::string frame = Content("site/_template.txt");
    const std::string toc = "<!--TOC HERE-->\r\n";
    frame.insert(frame.find(toc) + toc.size(), "<li><a href=\"shop/index.htm\">Shop</a></li>\r\n"
                                               "<li><a href=\"news/index.htm\">News</a></li>\r\n");
    Put("site/_template.txt", frame);
    Put("site/_group.txt", Content("site/_group.txt") + "news\r\n");
    EXPECT_EQ(Content("site/_group.txt"), "shop\r\nnews\r\n");
    IsWell("C:\\site");
    const Printed again = Call({"init", "C:\\site", "--section", "shop", "--news"});
    EXPECT_EQ(again.out, "Nothing made: all of it is there already\n");
    EXPECT_THAT(again.err, testing::Not(HasSubstr("add this line")));
}

} // namespace
} // namespace kiv
