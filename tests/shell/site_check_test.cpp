// A check of the working directory as a command: it ends between two pages when that is asked for.
#include "platform/stop_request.h"
#include "shell/site_check.h"
#include "shell_desk.h"

namespace kiv {
namespace {

using testing::StartsWith;

/// Asks for the end of the command at one of its steps, counted from 1.
class StoppingReporter : public test::RecordingReporter {
  public:
    StopRequest stop;
    std::size_t stops_at = 0;

  protected:
    void ShowStep(int done, int all) override
    {
        RecordingReporter::ShowStep(done, all);
        if (steps.size() == stops_at)
            stop.Ask();
    }
};

class SiteCheck : public ShellTest {
  protected:
    SiteCheck()
    {
        Put("site/_template.txt", "<!--BODY HERE-->\r\n");
        Put("site/_html.txt", "@FILE = index\r\n@TITLE = One\r\n<p>One</p>\r\n"
                              "@FILE = two\r\n@TITLE = Two\r\n<p>Two</p>\r\n");
        Put("site/_group.txt", "lab\r\n");
        Put("site/lab/_template.txt", "<!--BODY HERE-->\r\n");
        Put("site/lab/_html.txt", "@FILE = lab\r\n@TITLE = Lab\r\n<p>Lab</p>\r\n");
        before_ = test::ReadTree(Native("site"));
        stopping.StopWhen(&stopping.stop);
    }

    /// Whether a check in a workspace of its own came to its end when it was to stop at a step.
    bool EndsByItself(std::size_t step)
    {
        stopping.stop.Forget();
        stopping.steps.clear();
        stopping.stops_at = step;
        Machine stopped{*files, *files, clock, clipboard, programs, stopping, pictures};
        Workspace place(stopped);
        place.LookAt("C:\\site");
        bool is_whole = true;
        try {
            EXPECT_EQ(place.Run([&] { CheckWorkDir(place); }), std::nullopt);
        } catch (const Stopped&) {
            is_whole = false;
            EXPECT_EQ(stopping.steps.size(), step); // at once, not some pages later
        }
        EXPECT_EQ(place.Checked.has_value(), is_whole) << step;
        EXPECT_EQ(files->CurrentDirectory(), "C:\\site") << step;
        EXPECT_EQ(test::ReadTree(Native("site")), before_) << step;
        return is_whole;
    }

    StoppingReporter stopping;

  private:
    test::FileTree before_;
};

TEST_F(SiteCheck, TellsHowFarItsBuildsAre)
{
    EXPECT_EQ(KindOf([&] { CheckWorkDir(workspace); }), "");
    ASSERT_GE(reporter.steps.size(), 3U);
    reporter.steps.resize(3);
    EXPECT_EQ(reporter.steps, (std::vector<std::pair<int, int>>{{1, 2}, {2, 2}, {1, 1}}));
    EXPECT_THAT(reporter.status, StartsWith("Check: "));
}

TEST_F(SiteCheck, EndsWhereverItIsAskedTo)
{
    std::size_t step = 1;
    while (!EndsByItself(step))
        ++step;
    EXPECT_GT(step, 9U); // three pages are built, read, and followed to where they lead
}

} // namespace
} // namespace kiv
