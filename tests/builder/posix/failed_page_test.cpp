// A page that cannot be written ends a build the same way, however many threads write.
#include "tests/builder/build_desk.h"

#include <csignal>
#include <sys/resource.h>

#include <algorithm>
#include <filesystem>
#include <set>

namespace kiv {
namespace {

/// No file may become longer while it lives.
class LongestFile {
  public:
    explicit LongestFile(rlim_t bytes) : old_signal_(std::signal(SIGXFSZ, SIG_IGN))
    {
        ::getrlimit(RLIMIT_FSIZE, &old_);
        const struct rlimit limit {
            bytes, old_.rlim_max
        };
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    LongestFile(const LongestFile&) = delete;
    LongestFile& operator=(const LongestFile&) = delete;
    ~LongestFile()
    {
        ::setrlimit(RLIMIT_FSIZE, &old_);
        std::signal(SIGXFSZ, old_signal_);
    }

  private:
    struct rlimit old_ {};
    void (*old_signal_)(int);
};

/// Forty pages. The seventeenth is too long to be written, the thirtieth has a warning.
void PutPages(BuildDesk& desk)
{
    std::string list;
    for (int number = 1; number <= 40; ++number) {
        list += "@FILE = p" + std::to_string(number) + "\n@TITLE = T\nText\n";
        if (number == 17)
            list += std::string(90'000, 'x') + "\n";
        if (number == 30)
            list += "<a href=\"@ID:nowhere\">\n";
    }
    desk.Put("site/_html.txt", list);
    desk.Put("site/p20.htm", "old");
}

/// What there is to tell of a build that failed.
struct Told {
    std::string kind;
    std::string place;
    std::string status;
    std::size_t warnings = 0;
    std::set<std::string> names;
    bool operator==(const Told&) const = default;
};

Told BuildBy(std::size_t threads)
{
    BuildDesk desk;
    PutPages(desk);
    desk.files = MakeDriveFiles({{'C', desk.Root().string()}}, threads);
    desk.files->ChangeDirectory("C:\\site");
    Told told;
    {
        const LongestFile limit(50'000);
        told.kind = desk.Build();
    }
    told.place = desk.place;
    told.status = desk.reporter.status;
    told.warnings = desk.reporter.Warnings().size();
    for (const auto& entry : std::filesystem::directory_iterator(desk.Root() / "site"))
        told.names.insert(entry.path().filename().string());
    return told;
}

TEST(FailedPage, EndsABuildTheSameWayHoweverManyThreadsWrite)
{
    Told expected{"file", "C:\\site\\_html.txt, line 49, page p17.htm", "p17.htm", 0, {}};
    for (int number = 1; number <= 16; ++number)
        expected.names.insert("p" + std::to_string(number) + ".htm");
    expected.names.insert({"p20.htm", "_html.txt", "_template.txt"});
    for (const std::size_t threads : {1U, 2U, 8U}) {
        SCOPED_TRACE(threads);
        const Told told = BuildBy(threads);
        EXPECT_EQ(told.kind, expected.kind);
        EXPECT_EQ(told.place, expected.place);
        EXPECT_EQ(told.status, expected.status);
        EXPECT_EQ(told.warnings, expected.warnings);
        EXPECT_EQ(told.names, expected.names);
    }
}

} // namespace
} // namespace kiv
