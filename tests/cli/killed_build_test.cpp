// A build that is killed leaves each file old or new, never a part of one.
#include "cli_desk.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace kiv {
namespace {

constexpr int kPages = 100;

class KilledBuild : public CliTest {
  protected:
    void SetUp() override
    {
        std::string list;
        for (int page = 1; page <= kPages; ++page)
            list += "@FILE = p" + std::to_string(page) + "\n@TITLE = T\ntext\n";
        Put("site/_html.txt", list);
        PutTemplate('a');
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(Call({"build", "C:\\site"}).code, 0);
        whole_ = std::chrono::steady_clock::now() - start;
    }

    /// A template whose pages are long enough to take more than one page of memory.
    void PutTemplate(char letter)
    {
        Put("site/_template.txt", Long(letter, "\n") + "<!--BODY HERE-->\n");
    }

    static std::string Long(char letter, const std::string& line_end)
    {
        std::string lines;
        for (int i = 0; i < 100; ++i)
            lines += std::string(99, letter) + line_end;
        return lines;
    }

    static std::string Page(char letter)
    {
        return Long(letter, "\r\n") + "<!--BODY HERE-->\r\ntext\r\n";
    }

    /// Starts a build and sends it a signal when `part` of the time of a whole build has passed.
    void BuildAndSend(int signal, double part)
    {
        const std::string drive = Root().string();
        const pid_t child = ::fork();
        if (child == 0) {
            ::close(STDOUT_FILENO);
            ::execl(KIV_CLI, KIV_CLI, "--drive-c", drive.c_str(), "build", "C:\\site", nullptr);
            ::_exit(127);
        }
        std::this_thread::sleep_for(whole_ * part);
        ::kill(child, signal);
        int state = 0;
        ::waitpid(child, &state, 0);
    }

    void RemovePages()
    {
        for (int page = 1; page <= kPages; ++page)
            std::filesystem::remove(Native("site/p" + std::to_string(page) + ".htm"));
    }

    /// How many pages hold the new text. Every one must be whole.
    int CountNew(char old_letter, char new_letter)
    {
        const std::string new_page = Page(new_letter);
        const std::string old_page = Page(old_letter);
        int count = 0;
        for (int page = 1; page <= kPages; ++page) {
            const std::string bytes = Content("site/p" + std::to_string(page) + ".htm");
            if (bytes == new_page)
                ++count;
            else
                EXPECT_TRUE(bytes == old_page) << "page " << page;
        }
        return count;
    }

  private:
    std::chrono::duration<double> whole_{};
};

TEST_F(KilledBuild, PagesAreOldOrNew)
{
    char old_letter = 'a';
    for (int i = 0; i < 16; ++i) {
        const char new_letter = old_letter == 'a' ? 'b' : 'a';
        PutTemplate(new_letter);
        BuildAndSend(i % 2 == 0 ? SIGKILL : SIGINT, i / 16.0);
        CountNew(old_letter, new_letter);
        ASSERT_EQ(Call({"build", "C:\\site"}).code, 0);
        EXPECT_EQ(CountNew(old_letter, new_letter), kPages);
        old_letter = new_letter;
    }
}

TEST_F(KilledBuild, NewPagesAreWholeOrMissing)
{
    const std::string whole = Page('a');
    RemovePages();
    for (int i = 0; i < 10; ++i) {
        BuildAndSend(SIGKILL, i / 10.0);
        for (int page = 1; page <= kPages; ++page) {
            const std::string name = "site/p" + std::to_string(page) + ".htm";
            EXPECT_TRUE(!Exists(name) || Content(name) == whole) << name;
        }
        RemovePages();
    }
}

} // namespace
} // namespace kiv
