// Calls of the system that do less than they were asked for, and say so to nobody.
#include "platform/drive_files_common.h"
#include "platform/posix/descriptor.h"
#include "tests/platform/drive_test.h"

#include <cerrno>
#include <cstddef>
#include <gmock/gmock.h>
#include <unistd.h>
#include <vector>
#ifdef __linux__
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#endif

namespace kiv {
namespace {

using testing::HasSubstr;

#ifdef __linux__
constexpr unsigned kPatience = 10; // seconds

/// From now on, a call of this number does nothing and gives 0.
void HaveItDoNothing(unsigned number)
{
    std::vector<sock_filter> code = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, number, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog program{static_cast<unsigned short>(code.size()), code.data()};
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
        ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0)
        ::_exit(2);
}

// It was tried again for ever.
TEST(DriveStreams, AWriteOfNothingIsAnError)
{
    const auto write_nothing = [] {
        ::alarm(kPatience);
        HaveItDoNothing(SYS_write);
        ::_exit(WriteBytes(STDOUT_FILENO, "x") == ENOSPC ? 0 : 1);
    };
    EXPECT_EXIT(write_nothing(), testing::ExitedWithCode(0), "");
}

// Whoever read it took the beginning for all of it.
TEST_F(DriveTest, AFileThatEndsTooSoonIsRefused)
{
    Put("a.txt", "all of it");
    const auto read_nothing = [&] {
        ::alarm(kPatience);
        HaveItDoNothing(SYS_pread64);
        const std::string error = ErrorOf([&] { files->ReadFile("C:\\a.txt"); });
        ::_exit(error.starts_with("file: cannot read C:\\a.txt: it ends before") ? 0 : 1);
    };
    EXPECT_EXIT(read_nothing(), testing::ExitedWithCode(0), "");
}

TEST(DriveStreams, WhatTellsNoSizeIsEmpty)
{
    const auto files = MakeDriveFiles({{'C', "/proc/self"}});
    EXPECT_EQ(files->ReadFile("C:\\status"), "");
}
#endif

/// Reads a file of which each look gives another size, and each reading another part.
class Shrinking : public DriveFiles {
  public:
    struct Step {
        std::uint64_t size;
        std::string content;
    };
    static std::string Read(const std::vector<Step>& steps)
    {
        std::size_t step = 0;
        std::string bytes;
        ReadWhole(
            "C:\\a.txt", steps[0].size,
            [&](std::size_t count) {
                bytes = steps.at(step++).content.substr(0, count);
                return bytes.size();
            },
            [&] { return steps.at(std::min(step, steps.size() - 1)).size; });
        return bytes;
    }
};

TEST(DriveStreams, AFileThatIsBeingWrittenIsReadAgain)
{
    EXPECT_EQ(Shrinking::Read({{3, "abc"}}), "abc");
    EXPECT_EQ(Shrinking::Read({{5, "ab"}, {3, "abc"}}), "abc");
    EXPECT_EQ(Shrinking::Read({{5, ""}, {0, ""}}), "");
    EXPECT_EQ(Shrinking::Read({{5, "ab"}, {3, "a"}, {4, "abcd"}}), "abcd");
    EXPECT_THAT(ErrorOf([] {
                    Shrinking::Read({{5, "ab"}, {5, "ab"}, {5, "ab"}});
                }),
                HasSubstr("Another program is changing it"));
}

} // namespace
} // namespace kiv
