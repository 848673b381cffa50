// Sites of many pages, and folders that fail under the program: on drives in memory.
#include "builder/build_driver.h"
#include "exchange/adoption.h"
#include "platform/run_error.h"
#include "tests/support/failing_files.h"
#include "tests/support/memory_drives.h"
#include "tests/support/recorders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class BigAdoptions : public testing::Test {
  protected:
    BigAdoptions() { files.PutFolder("new"); }

    Machine MachineOver(Files& each)
    {
        return {each, files, clock, clipboard, programs, reporter, pictures};
    }
    Adoption Adopt(Files& each, const std::string& target = "C:\\new")
    {
        Machine machine = MachineOver(each);
        return AdoptSite(machine, "C:\\old", target);
    }
    void Build(const std::string& folder)
    {
        Machine machine = MachineOver(files);
        files.Refresh();
        files.ChangeDirectory(folder);
        BlockMemory blocks;
        OutputRoots roots;
        BuildSite(machine, {.UploadCommand = {}, .addresses = {}, .program_start = clock.Now()},
                  blocks, roots);
    }
    std::string Content(const std::string& path) { return files.ReadFile(path); }

    test::MemoryDrives files;
    FrozenClock clock{{2004, 3, 5, 14, 7, 9}};
    HeldClipboard clipboard;
    test::StartRecorder programs;
    test::RecordingReporter reporter;
    HeaderPictureLoader pictures{files};
};

void ExpectSameLines(const Adoption& adoption)
{
    for (const AdoptedPage& page : adoption.pages)
        EXPECT_NE(page.comparison.likeness, Likeness::different) << page.name;
}

TEST_F(BigAdoptions, BecomeAGroupWhereAListHoldsFewerPages)
{
    for (int i = 0; i < 1000; ++i)
        files.Put("old/p" + std::to_string(i) + ".htm", "<p>page\n<p>" + std::to_string(i) + "\n");
    files.Put("old/more/x.htm", "<p>x\n");
    const Adoption adoption = Adopt(files);
    ExpectSameLines(adoption);
    EXPECT_EQ(adoption.pages.size(), 1001U);
    EXPECT_THAT(adoption.sections, ElementsAre("", "_part2", "more"));
    EXPECT_EQ(Content("C:\\new\\_group.txt"), "_part2\r\nmore\r\n");
    Build("C:\\new\\_part2");
    Build("C:\\new\\more");
    EXPECT_EQ(Content("C:\\new\\p999.htm"), "<p>page\r\n<p>999\r\n");
    EXPECT_EQ(Content("C:\\new\\more\\x.htm"), "<p>x\r\n");
}

TEST_F(BigAdoptions, KeepALongSiteWithinTheBoundsOfAList)
{
    for (int page = 0; page < 14; ++page) {
        std::string text;
        for (int line = 0; line < 3000; ++line)
            text += std::to_string(page * 3000 + line) + "\n";
        files.Put("old/p" + std::to_string(page) + ".htm", text);
    }
    ExpectSameLines(Adopt(files));
    Build("C:\\new");
    EXPECT_EQ(Content("C:\\new\\p13.htm").substr(0, 7), "39000\r\n");
}

/// A disk that is taken away at any step: nothing has happened to the old pages.
TEST_F(BigAdoptions, LeaveTheOldFolderAloneWhateverFails)
{
    files.Put("old/a.htm", "<html>\n<p>a\n</html>\n");
    files.Put("old/sub/b.htm", "<html>\n<p>b\n</html>\n");
    files.Put("old/a.gif", "GIF");
    const auto old = files.Tree("old");
    int failures = 0;
    bool goes_on = true;
    for (int step = 0; goes_on; ++step) {
        test::FailingFiles failing(files, step);
        const std::string target = "new" + std::to_string(step);
        files.PutFolder(target);
        try {
            Adopt(failing, "C:\\" + target);
            goes_on = failing.Failed();
        } catch (const RunError& error) {
            ++failures;
            EXPECT_FALSE(error.text.empty());
        }
        ASSERT_EQ(files.Tree("old"), old) << step;
        ASSERT_LT(step, 5000);
    }
    EXPECT_GT(failures, 10);
}

/// Reads, but writes nothing in the old folder.
class ReadOnly : public test::FailingFiles {
  public:
    explicit ReadOnly(Files& files) : FailingFiles(files, 1'000'000'000) {}
    OutputFile Open(std::string_view path) override
    {
        Look(path);
        return FailingFiles::Open(path);
    }
    bool MakeFolder(std::string_view path) override
    {
        Look(path);
        return FailingFiles::MakeFolder(path);
    }
    bool DeleteFile(std::string_view path) override
    {
        Look(path);
        return FailingFiles::DeleteFile(path);
    }
    std::unique_ptr<FolderLock> LockFolder(std::string_view path) override
    {
        Look(path);
        return FailingFiles::LockFolder(path);
    }

  private:
    static void Look(std::string_view path)
    {
        if (path.starts_with("C:\\old"))
            throw RunError(ErrorKind::file, "Permission denied");
    }
};

TEST_F(BigAdoptions, NeedNoRightToWriteInTheOldFolder)
{
    files.Put("old/a.htm", "<p>a\n");
    files.Put("old/sub/b.gif", "GIF");
    ReadOnly locked(files);
    ExpectSameLines(Adopt(locked));
    EXPECT_EQ(Content("C:\\new\\sub\\b.gif"), "GIF");
}

/// Cannot read one of the pages.
class Unreadable : public test::FailingFiles {
  public:
    explicit Unreadable(Files& files) : FailingFiles(files, 1'000'000'000) {}
    std::string ReadFile(std::string_view path) override
    {
        if (path.ends_with("b.htm"))
            throw RunError(ErrorKind::file, "cannot read b.htm: Permission denied");
        return FailingFiles::ReadFile(path);
    }
};

TEST_F(BigAdoptions, EndBeforeTheyWriteWhereAPageCannotBeRead)
{
    files.Put("old/a.htm", "<p>a\n");
    files.Put("old/b.htm", "<p>b\n");
    Unreadable locked(files);
    try {
        Adopt(locked);
        ADD_FAILURE();
    } catch (const RunError& error) {
        EXPECT_THAT(error.text, HasSubstr("b.htm"));
    }
    EXPECT_TRUE(files.Tree("new").empty());
}

/// Names that a list, a variable or a page reference could take for something else; their pages
/// have a menu of all of them.
TEST_F(BigAdoptions, TakeNamesThatAListWouldActOn)
{
    const std::vector<std::string> names = {";x.htm",     "++x.htm",  "a]b.htm",    "a[1].htm",
                                            "!!1[a.htm",  "@@1.htm",  "@TITLE.htm", "a|b.htm",
                                            " blank.htm", "a!1b.htm", "x.y.z.htm",  "%20.htm",
                                            "{}.htm",     "a&b.htm",  "a'b.htm",    "..x.htm"};
    std::map<std::string, std::string> pages;
    for (const std::string& own : names) {
        std::string page = "<html>\r\n<ul class=\"all the pages there are\">\r\n";
        for (const std::string& each : names)
            page += each == own ? "<li><b>" + each + "</b></li>\r\n"
                                : "<li><a href=\"" + each + "\">" + each + "</a></li>\r\n";
        pages[own] = page + "</ul>\r\n<p>This is " + own + "\r\n</html>\r\n";
        files.Put("old/" + own, pages[own]);
    }
    const Adoption adoption = Adopt(files);
    EXPECT_EQ(adoption.pages.size(), names.size());
    for (const AdoptedPage& page : adoption.pages)
        EXPECT_EQ(page.comparison.likeness, Likeness::same_bytes) << page.name;
    Build("C:\\new");
    for (const auto& [name, page] : pages)
        EXPECT_EQ(Content("C:\\new\\" + name), page) << name;
}

/// One page of half a megabyte, as hostile as it can be, takes no longer than it must.
TEST_F(BigAdoptions, TakeAPageThatIsAllTagsOrAllOneLine)
{
    std::string tags = "<html>\n";
    for (int i = 0; i < 20000; ++i)
        tags += "<a <link <title \n";
    files.Put("old/tags.htm", tags);
    files.Put("old/line.htm", std::string(500'000, '<'));
    files.Put("old/menu.htm", "<a href=\"menu.htm\">" + std::string(250'000, '!') + "</a>");
    ExpectSameLines(Adopt(files));
}

} // namespace
} // namespace kiv
