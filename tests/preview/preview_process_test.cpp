// `kiv-cli preview` as a process: what it prints, serves and starts, and how it ends.
#include "raw_client.h"
#include "tests/support/json.h"
#include "text/text.h"
#include "watch_process.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv {
namespace {

using test::Becomes;
using test::BodyOf;
using test::CliProcess;
using test::Ending;
using test::Get;
using test::HasPattern;
using testing::HasSubstr;

class PreviewProcess : public testing::Test, public test::DriveFolder {
  protected:
    PreviewProcess()
    {
        Put("site/_template.txt", "<!--BODY HERE-->\n");
        PutPage("<p>text");
    }

    void PutPage(const std::string& text) const
    {
        Put("site/_html.txt", "@FILE = index\n@TITLE = T\n" + text + "\n");
    }

    /// Waits until the first build is told, and takes the port from the address.
    int PortOf(const CliProcess& preview) const
    {
        if (!preview.HasLines(2))
            return 0;
        const std::string out = preview.Out();
        return NumericHead(out.substr(out.find("127.0.0.1:") + 10));
    }
};

TEST_F(PreviewProcess, TheAddressComesFirstAndThenTheBuilds)
{
    CliProcess preview(*this, {"preview", "C:\\site", "--port", "0"});
    const int port = PortOf(preview);
    EXPECT_THAT(preview.Out(), HasPattern("^http://127.0.0.1:[0-9]+/\n[0-9:]+  [0-9.]+ m?s  3 of "
                                          "3 files changed\n$"));
    EXPECT_EQ(preview.Err(), "");
    EXPECT_THAT(BodyOf(Get(port, "/")), HasSubstr("<p data-kiv-at=\"2:1\">text"));
    PutPage("<p>more");
    ASSERT_TRUE(preview.HasLines(3));
    EXPECT_THAT(BodyOf(Get(port, "/")), HasSubstr("more"));
    EXPECT_EQ(Content("site/index.htm"), "<!--BODY HERE-->\r\n<p>more\r\n");
    EXPECT_THAT(preview.End(Ending::interrupted), test::IsAsked(0));
}

TEST_F(PreviewProcess, EndsWhileBrowsersListen)
{
    CliProcess preview(*this, {"preview", "C:\\site", "--port", "0"});
    test::RawClient listener(PortOf(preview));
    listener.Say("GET /.kiv/events HTTP/1.1\r\nHost: localhost\r\n\r\n");
    EXPECT_THAT(listener.Hear("\"fresh\":[]}"), HasSubstr("data: "));
    EXPECT_THAT(preview.End(Ending::terminated), test::IsAsked(0));
    EXPECT_TRUE(listener.IsLeft(std::chrono::seconds(5)));
}

TEST_F(PreviewProcess, TheRootIsWhereTheLinksLeadAndIsTold)
{
    Put("main.css", "p{}");
    PutPage("<link rel=stylesheet href=\"../main.css\">");
    CliProcess preview(*this, {"preview", "C:\\site", "--port", "0"});
    const int port = PortOf(preview);
    EXPECT_THAT(preview.Out(), HasPattern("^http://127.0.0.1:[0-9]+/site/\n"));
    EXPECT_EQ(preview.Err(),
              "kiv: showing " + Root().string() + ", which the site's addresses stay within\n");
    EXPECT_EQ(BodyOf(Get(port, "/main.css")), "p{}");
}

TEST_F(PreviewProcess, TheRootIsChosenAgainWhenTheFirstBuildFailed)
{
    Put("main.css", "p{}");
    PutPage("<zutable>\n{{never\n</zutable>");
    CliProcess preview(*this, {"preview", "C:\\site", "--port", "0"});
    ASSERT_TRUE(preview.HasLines(1));
    const int port = NumericHead(preview.Out().substr(17));
    EXPECT_THAT(preview.Out(), HasPattern("^http://127.0.0.1:[0-9]+/\n"));
    PutPage("<link rel=stylesheet href=\"../main.css\">");
    const std::string address = "http://127.0.0.1:" + Decimal(port) + "/site/\n";
    ASSERT_TRUE(Becomes([&] { return preview.Out().find(address) != std::string::npos; }));
    EXPECT_THAT(preview.Err(), HasSubstr("kiv: showing " + Root().string() +
                                         ", which the site's addresses stay within\n"));
    EXPECT_EQ(BodyOf(Get(port, "/main.css")), "p{}");
}

TEST_F(PreviewProcess, TheRootIsToldByOlderPagesWhenTheFirstBuildFails)
{
    Put("main.css", "p{}");
    Put("site/old.htm", "<link rel=stylesheet href=\"../main.css\">");
    PutPage("<zutable>\n{{never\n</zutable>");
    CliProcess preview(*this, {"preview", "C:\\site", "--port", "0"});
    ASSERT_TRUE(preview.HasLines(1));
    EXPECT_THAT(preview.Out(), HasPattern("^http://127.0.0.1:[0-9]+/site/\n"));
    EXPECT_EQ(BodyOf(Get(NumericHead(preview.Out().substr(17)), "/main.css")), "p{}");
}

TEST_F(PreviewProcess, PagesThatAreWrittenElsewhereAreShownThere)
{
    PutFolder("web");
    Put("site/_html.txt", "@DIR1 = C:\\web\\\n@FILE = index\n@TITLE = T\n<p>text\n");
    CliProcess preview(*this, {"preview", "C:\\site", "--port", "0"});
    const int port = PortOf(preview);
    EXPECT_THAT(preview.Out(), HasPattern("^http://127.0.0.1:[0-9]+/web/\n"));
    EXPECT_THAT(BodyOf(Get(port, "/web/")), HasSubstr("<p data-kiv-at=\"2:1\">text"));
}

TEST_F(PreviewProcess, ARootThatIsNamed)
{
    CliProcess preview(*this, {"preview", "C:\\site", "--port", "0", "--root", "C:\\"});
    EXPECT_NE(PortOf(preview), 0);
    EXPECT_THAT(preview.Out(), HasPattern("^http://127.0.0.1:[0-9]+/site/\n"));
    CliProcess other(*this, {"preview", "C:\\site", "--root", "C:\\utils"});
    ASSERT_TRUE(Becomes([&] { return other.Err().ends_with("above it.\n"); }));
    EXPECT_THAT(other.Err(), HasSubstr("the root \"C:\\utils\" does not hold the site"));
    EXPECT_EQ(other.End(Ending::own), 1);
}

TEST_F(PreviewProcess, AGroupIsBuiltAndItsPagesHaveTheirOwnSource)
{
    Put("site/_group.txt", "news\n");
    Put("site/news/_template.txt", "<!--BODY HERE-->\n");
    Put("site/news/_html.txt", "@FILE = item\n@TITLE = T\n<p>an item\n");
    CliProcess preview(*this, {"preview", "C:\\site", "--port", "0", "--group"});
    const int port = PortOf(preview);
    const std::string page = Get(port, "/news/item.htm");
    EXPECT_THAT(page, HasSubstr("<p data-kiv-at=\"2:1\">an item"));
    const std::string mark = "data-secret=\"";
    const std::string secret = page.substr(page.find(mark) + mark.size(), 32);
    EXPECT_EQ(BodyOf(Get(port, "/.kiv/place?page=%2Fnews%2Fitem.htm&at=2:1",
                         "X-Kiv-Secret: " + secret + "\r\n")),
              "{\"trouble\":\"\",\"place\":\"_html.txt:3\"}");
    Put("site/news/_html.txt", "@FILE = item\n@TITLE = T\n<p>a newer item\n");
    ASSERT_TRUE(preview.HasLines(3));
    EXPECT_THAT(BodyOf(Get(port, "/news/item.htm")), HasSubstr("a newer item"));
}

TEST_F(PreviewProcess, APortThatIsTakenIsAnError)
{
    CliProcess first(*this, {"preview", "C:\\site", "--port", "0"});
    const std::string port = Decimal(PortOf(first));
    const test::DriveFolder drive;
    drive.Put("site/_template.txt", "<!--BODY HERE-->\n");
    drive.Put("site/_html.txt", "@FILE = index\n@TITLE = T\ntext\n");
    CliProcess second(drive, {"preview", "C:\\site", "--port", port});
    ASSERT_TRUE(Becomes([&] { return drive.Content("err").ends_with("takes a free one.\n"); }));
    EXPECT_EQ(drive.Content("err"), "kiv: error: cannot serve at port " + port +
                                        ": another program uses it\n    -> Name another port: "
                                        "--port 0 takes a free one.\n");
    EXPECT_EQ(second.End(Ending::own), 1);
}

TEST_F(PreviewProcess, WithJsonTheAddressIsAnObject)
{
    CliProcess preview(*this, {"--json", "preview", "C:\\site", "--port", "0"});
    EXPECT_NE(PortOf(preview), 0);
    const std::string out = preview.Out();
    const test::Json first = test::Json::Parse(out.substr(0, out.find('\n')));
    EXPECT_EQ(first["root"].Text(), Native("site").string());
    EXPECT_THAT(first["address"].Text(), HasPattern("^http://127.0.0.1:[0-9]+/$"));
}

} // namespace
} // namespace kiv
