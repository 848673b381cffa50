// What commands tell as one list.
#include "shell/builds.h"
#include "shell/messages.h"
#include "shell/site_check.h"
#include "shell_desk.h"

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MessagesTest : public ShellTest {
  protected:
    MessagesTest()
    {
        Put("site/_template.txt", "<!--BODY HERE-->\r\n");
        PutText("x !!FLV[p\r\ny !!FLV[p\r\n");
        workspace.StartWindow("C:\\site");
    }
    void PutText(const std::string& text)
    {
        Put("site/_html.txt", "@FILE = a\r\n@TITLE = A\r\n" + text);
    }
    bool Run(const std::function<void()>& command)
    {
        reporter.ForgetWarnings();
        const std::optional<RunError> error = workspace.Run(command);
        return list.FollowCommand(workspace, reporter.Warnings(), error);
    }
    Texts Told() const
    {
        Texts told;
        for (const Finding& message : list.Messages())
            told.push_back(std::string(SeverityName(message.severity)) + " " + message.text);
        return told;
    }
    static void Fail() { throw RunError(ErrorKind::file, "it is gone"); }

    MessageList list;
};

TEST_F(MessagesTest, StayUntilTheNextBuild)
{
    EXPECT_TRUE(Run([&] { BuildWorkDir(workspace); }));
    const Texts built = {"warning Missing closed bracket: p", "warning Missing closed bracket: p"};
    EXPECT_EQ(Told(), built);
    EXPECT_FALSE(Run([] {}));
    EXPECT_EQ(Told(), built);
    PutText("well\r\n");
    EXPECT_FALSE(Run([&] { BuildWorkDir(workspace); }));
    EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(MessagesTest, AnErrorStandsOnceHoweverOftenItIsTold)
{
    EXPECT_TRUE(Run(Fail));
    EXPECT_TRUE(Run(Fail));
    EXPECT_THAT(Told(), ElementsAre("error it is gone"));
    EXPECT_TRUE(Run([&] { workspace.machine().reporter.reportmsg("look"); }));
    EXPECT_THAT(Told(), ElementsAre("error it is gone", "warning look"));
    EXPECT_TRUE(Run([&] { BuildWorkDir(workspace); }));
    EXPECT_EQ(Told().size(), 2U);
}

TEST(ShownPlace, IsRelativeToTheFolder)
{
    EXPECT_EQ(ShownPlace(Place{"C:\\site\\_html.txt", 12, "a.htm"}, "C:\\site\\"), "_html.txt:12");
    EXPECT_EQ(ShownPlace(Place{"C:\\SITE\\lab\\_html.txt", 1, {}}, "C:\\site\\"),
              "lab\\_html.txt:1");
    EXPECT_EQ(ShownPlace(Place{"C:\\utils\\quiz.txt", 0, {}}, "C:\\site\\"), "C:\\utils\\quiz.txt");
    EXPECT_EQ(ShownPlace(Place{}, "C:\\site\\"), "");
    EXPECT_EQ(ShownPlace(Place{{}, 0, "a.htm"}, "C:\\site\\"), "");
}

} // namespace
} // namespace kiv
