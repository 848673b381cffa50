// What only systems with signals, pipes and scripts have: `kiv-cli watch` and `preview` as
// processes whose terminal, reader or browser is made up.
#include "watch_process.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/wait.h>
#include <unistd.h>

namespace kiv {
namespace {

namespace fs = std::filesystem;
using test::Becomes;
using test::CliProcess;
using test::Ending;
using testing::HasSubstr;
using testing::Not;

class Terminals : public testing::Test, public test::DriveFolder {
  protected:
    Terminals()
    {
        Put("site/_template.txt", "<!--BODY HERE-->\n");
        Put("site/_html.txt", "@FILE = index\n@TITLE = T\n<p>text\n");
    }
};

TEST_F(Terminals, ATerminalThatIsClosedEndsItLikeCtrlC)
{
    CliProcess watch(*this, {"watch", "C:\\site"});
    ASSERT_TRUE(watch.HasLines(1));
    EXPECT_EQ(watch.End(Ending::hung_up), 0);
}

TEST_F(Terminals, WhoNobodyReadsAnyMoreEndsWhileItWaits)
{
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    ::fcntl(ends[0], F_SETFD, FD_CLOEXEC);
    CliProcess watch(*this, {"watch", "C:\\site"}, ends[1]);
    ::close(ends[1]);
    char byte = ' ';
    while (byte != '\n')
        ASSERT_EQ(::read(ends[0], &byte, 1), 1);
    ::close(ends[0]);
    EXPECT_EQ(watch.End(Ending::own), 0);
    EXPECT_THAT(watch.Err(), Not(HasSubstr("error")));
}

TEST_F(Terminals, WhoNobodyReadsEnds)
{
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const std::string drive = Root().string();
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(ends[1], STDOUT_FILENO);
        ::close(STDERR_FILENO);
        ::close(ends[0]);
        ::close(ends[1]);
        ::execl(KIV_CLI, KIV_CLI, "--drive-c", drive.c_str(), "watch", "C:\\site", nullptr);
        ::_exit(127);
    }
    ::close(ends[0]);
    ::close(ends[1]);
    int state = 0;
    ::waitpid(child, &state, 0);
    EXPECT_TRUE(WIFEXITED(state));
    EXPECT_EQ(WEXITSTATUS(state), 1);
}

TEST_F(Terminals, TheBrowserIsOpenedAtTheAddress)
{
    Put("bin/xdg-open", "#!/bin/sh\necho \"$1\" >\"$(dirname \"$0\")/draft\"\n"
                        "mv \"$(dirname \"$0\")/draft\" \"$(dirname \"$0\")/opened\"\n");
    fs::permissions(Native("bin/xdg-open"), fs::perms::owner_all);
    const std::string path = std::getenv("PATH"); // NOLINT(concurrency-mt-unsafe)
    ::setenv("PATH", (Native("bin").string() + ":" + path).c_str(), 1);
    CliProcess preview(*this, {"preview", "C:\\site", "--port", "0", "--open"});
    ::setenv("PATH", path.c_str(), 1);
    ASSERT_TRUE(preview.HasLines(2));
    ASSERT_TRUE(Becomes([&] { return Exists("bin/opened"); }));
    const std::string out = preview.Out();
    EXPECT_EQ(Content("bin/opened"), out.substr(0, out.find('\n') + 1));
}

} // namespace
} // namespace kiv
