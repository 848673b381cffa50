// Calls of "adopt".
#include "cli_desk.h"

namespace kiv {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class AdoptCommand : public CliTest {
  protected:
    AdoptCommand()
    {
        const std::string head =
            "<html>\r\n<head><link rel=\"stylesheet\" href=\"mill.css\"></head>\r\n";
        Put("old/bread.htm", head + "<p>Bread\r\n</html>\r\n");
        Put("old/index.htm", head + "<p>The mill\n</html>\n");
        Put("old/mill.css", "p { margin: 0 }");
    }
};

TEST_F(AdoptCommand, TellsOfEachPage)
{
    const Printed printed = Call({"adopt", NativeOf("old"), "--to", NativeOf("new")});
    EXPECT_EQ(printed.code, 0);
    EXPECT_EQ(printed.err, "");
    EXPECT_THAT(printed.out,
                StartsWith("2 pages adopted: 1 with the same bytes, 1 the same but for line ends\n"
                           "In the order of name: 0 through the template, 2 with a shared head and "
                           "tail, 0 naked, 0 as it is, "
                           "0 copied; 1 other file copied\n"
                           "  same but for line ends  shared    index.htm\n"
                           "  same bytes              shared    bread.htm\n"
                           "Next:\n"
                           "  kiv-cli build "));
    EXPECT_EQ(Call({"build", NativeOf("new"), "--strict"}).code, 0);
    EXPECT_EQ(Content("new/bread.htm"), Content("old/bread.htm"));
    EXPECT_EQ(Content("new/mill.css"), "p { margin: 0 }");
}

TEST_F(AdoptCommand, OffersNoBuildWhereThereAreNoPages)
{
    Put("notes/a.txt", "a");
    const Printed printed = Call({"adopt", NativeOf("notes"), "--to", NativeOf("new")});
    EXPECT_THAT(printed.out, StartsWith("0 pages adopted"));
    EXPECT_THAT(printed.out, Not(HasSubstr("Next:")));
    EXPECT_EQ(NamesIn("new"), (Texts{"a.txt"}));
}

TEST_F(AdoptCommand, ReportsAsJson)
{
    const Json report = Report({"adopt", "C:\\old", "--to", "C:\\new"});
    const Json adoption = report["adoption"];
    EXPECT_EQ(adoption["folder"].Text(), "C:\\old");
    EXPECT_EQ(adoption["target"].Text(), "C:\\new");
    EXPECT_EQ(adoption["pages"][1]["page"].Text(), "bread.htm");
    EXPECT_EQ(adoption["pages"][1]["result"].Text(), "same bytes");
    EXPECT_EQ(adoption["pages"][1]["way"].Text(), "shared");
}

TEST_F(AdoptCommand, WritesOverNothing)
{
    Put("new/_html.txt", "mine");
    const Printed printed = Call({"adopt", "C:\\old", "--to", "C:\\new"});
    EXPECT_EQ(printed.code, 1);
    EXPECT_THAT(printed.err, HasSubstr("is not empty"));
    EXPECT_EQ(Content("new/_html.txt"), "mine");
    EXPECT_EQ(Call({"adopt", "C:\\old", "--to", "C:\\old\\new"}).code, 1);
    EXPECT_FALSE(Exists("old/new"));
    EXPECT_EQ(Call({"adopt", "C:\\gone", "--to", "C:\\new2"}).code, 1);
    EXPECT_FALSE(Exists("new2"));
}

} // namespace
} // namespace kiv
