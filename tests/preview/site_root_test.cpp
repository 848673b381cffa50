// Which folder a site's addresses stay within.
#include "platform/native_files.h"
#include "preview/site_root.h"
#include "tests/support/folders.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace kiv {
namespace {

class SiteRoots : public testing::Test {
  protected:
    SiteRoots()
    {
        for (const char* const name : {"all/site/section/b.htm", "all/site/main.css",
                                       "all/logo.gif", "all/site/section/pictures/x.gif"})
            test::WriteBytes(folder_.Path() / name, "");
    }

    /// A path as the drives give it.
    static std::string Native(const std::filesystem::path& path)
    {
        std::string native = test::TextOf(path);
        std::ranges::replace(native, '/', kNativeSeparator);
        return native;
    }

    /// The root of all/site/section with this page in it, from the test's folder on.
    std::string RootWith(const std::string& html, const std::string& page = "section/a.htm")
    {
        const std::filesystem::path site = folder_.Path() / "all" / "site";
        test::WriteBytes(site / page, html);
        const std::vector<std::string> pages{Native(site / page)};
        const std::string folder = Native(site / "section");
        return std::filesystem::relative(test::PathOf(RootOfSite(folder, pages)), folder_.Path())
            .generic_string();
    }

    test::TemporaryFolder folder_;
};

TEST_F(SiteRoots, IsTheFolderItselfWhereNothingLeadsOut)
{
    for (const char* const html :
         {"", "<a href=b.htm>", "<a href=\"pictures/x.gif\">", "<a href='pictures/../b.htm'>",
          "<a href=\"http://a.example/../../x\">", "<a href=\"mailto:../x\">", "<p>../main.css",
          "<!-- <a href=../main.css> -->", "<a href=../not-there.htm>", "<a name=../main.css>",
          "<p href=../main.css>", "<a href>", "<a href=", "<a =../main.css>",
          "<script>'<a href=../main.css>'</script>"})
        EXPECT_EQ(RootWith(html), "all/site/section") << html;
}

TEST_F(SiteRoots, GoesUpAsFarAsAddressesLead)
{
    for (const char* const html :
         {"<link rel=stylesheet href=\"../main.css\">", "<a href=../>", "<img src='../main.css'>",
          "<body background = ../main.css>", "<A title=\"a>b\" HREF=\"../main.css#x\">",
          "<p style=\"background: url(../main.css)\">", "<style>@import '../main.css';</style>",
          "<br/><img/src=../main.css/>", "<img src=b.htm srcset=\"b.htm 1x, ../main.css 2x\">",
          "<img longdesc=../main.css>", "<button formaction=../main.css>",
          "<object data=../main.css>", "<input type=image src=../main.css>",
          "<video poster=../main.css>"})
        EXPECT_EQ(RootWith(html), "all/site") << html;
    EXPECT_EQ(RootWith("<a href=../main.css><img src=../../logo.gif>"), "all");
    EXPECT_EQ(RootWith("<a href=../%6Dain.css>"), "all/site");
}

TEST_F(SiteRoots, FollowsStyleSheets)
{
    const std::filesystem::path site = folder_.Path() / "all" / "site";
    test::WriteBytes(site / "section/own.CSS", "@import 'css/more.css';");
    test::WriteBytes(site / "section/css/more.css", "@import url(../own.CSS);p{background:url(b)}");
    EXPECT_EQ(RootWith("<link rel=stylesheet href=own.CSS>"), "all/site/section");
    test::WriteBytes(site / "section/css/more.css", "p{background:url(../../../logo.gif)}");
    EXPECT_EQ(RootWith("<link rel=stylesheet href=own.CSS>"), "all");
    EXPECT_EQ(RootWith("<style>@import 'css/more.css';</style>"), "all");
}

TEST_F(SiteRoots, NeverToAWholeDisk)
{
    EXPECT_EQ(RootWith("<a href=../../../../../../../../../../../../../../../../../..>"),
              "all/site/section");
}

TEST_F(SiteRoots, PagesThatLieElsewhereAreWithin)
{
    EXPECT_EQ(RootWith("", "htm/a.htm"), "all/site");
}

TEST_F(SiteRoots, AnAddressFromTheRootOnTellsWhichItIs)
{
    EXPECT_EQ(RootWith("<a href=/main.css>"), "all/site");
    EXPECT_EQ(RootWith("<a href=/main.css><a href=/section/b.htm><img src=/logo.gif>"), "all/site");
    EXPECT_EQ(RootWith("<img src=/logo.gif>"), "all");
    EXPECT_EQ(RootWith("<img src=/none.gif>"), "all/site/section");
    EXPECT_EQ(RootWith("<img src=/b.htm>"), "all/site/section");
}

} // namespace
} // namespace kiv
