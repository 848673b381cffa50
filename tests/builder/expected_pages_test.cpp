// A build says how many pages it is about to hand over.
#include "tests/builder/build_desk.h"
#include "tests/support/memory_drives.h"

namespace kiv {
namespace {

class ToldDrives : public test::MemoryDrives {
  public:
    void ExpectHandOvers(std::size_t count) override { told = count; }
    void Commit(const OutputFile& file, std::string_view bytes) override
    {
        if (file.path == "C:\\site\\a.htm")
            told_before_first = told;
        MemoryDrives::Commit(file, bytes);
    }

    std::size_t told = 0;
    std::size_t told_before_first = 0;
};

TEST(ExpectedPages, ABuildTellsTheirNumberBeforeTheFirst)
{
    BuildDesk desk;
    ToldDrives drives;
    drives.Put("site/_template.txt", ";\r\n");
    drives.Put("site/_html.txt", "@FILE = a\r\n@TITLE = A\r\n@FILE = b\r\n@TITLE = B\r\n");
    drives.ChangeDirectory("C:\\site");
    EXPECT_EQ(desk.Build(drives), "");
    EXPECT_EQ(drives.told_before_first, 2U);
}

} // namespace
} // namespace kiv
