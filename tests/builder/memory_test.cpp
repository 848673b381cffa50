// A build that asks for more memory than there is.
#include "tests/builder/build_desk.h"
#include "tests/support/failing_files.h"

#include <new>
#include <stdexcept>

namespace kiv {
namespace {

/// Files that are too large for the memory.
template <typename Error>
class HugeFiles : public test::FailingFiles {
  public:
    HugeFiles(Files& files, std::string name) : FailingFiles(files, -1), name_(std::move(name)) {}

    std::string ReadFile(std::string_view path) override
    {
        if (path == name_)
            throw Error();
        return FailingFiles::ReadFile(path);
    }

  private:
    std::string name_;
};

struct TooLong : std::length_error {
    TooLong() : std::length_error("too long") {}
};

TEST(Memory, AFileThatDoesNotFitIsAFatalErrorWithItsPlace)
{
    BuildDesk desk;
    desk.Put("site/_html.txt", "@FILE = p\n@TITLE = P\none\n!++big.txt\n");
    desk.Put("site/big.txt", "big");
    HugeFiles<std::bad_alloc> huge(*desk.files, "big.txt");
    EXPECT_EQ(desk.Build(huge), "memory");
    EXPECT_EQ(desk.place, "C:\\site\\_html.txt, line 4, page p.htm");
    EXPECT_FALSE(desk.Exists("site/p.htm"));
    HugeFiles<TooLong> endless(*desk.files, "big.txt");
    EXPECT_EQ(desk.Build(endless), "memory");
}

TEST(Memory, WithoutALineTheFileIsThePlace)
{
    BuildDesk desk;
    desk.Put("site/_html.txt", "@FILE = p\n@TITLE = P\n");
    HugeFiles<std::bad_alloc> huge(*desk.files, "_template.txt");
    EXPECT_EQ(desk.Build(huge), "memory");
    EXPECT_EQ(desk.place, "C:\\site\\_template.txt");
}

} // namespace
} // namespace kiv
