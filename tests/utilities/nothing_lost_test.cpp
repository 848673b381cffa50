// Each tool with every one of its steps on files failing in turn: what the user had is whole,
// old or new.
#include "tests/support/failing_files.h"
#include "tests/utilities/utility_desk.h"
#include "utilities/news_composer.h"
#include "utilities/picture_lists.h"
#include "utilities/title_grab.h"

#include <functional>

namespace kiv {
namespace {

using LayOut = std::function<void(UtilityDesk&)>;
using Tool = std::function<void(Machine&)>;

test::FileTree After(const LayOut& lay_out, const Tool& tool)
{
    UtilityDesk desk;
    lay_out(desk);
    tool(desk.machine);
    return desk.Tree();
}

/// Runs the tool with its first step failing, then its second, and so on until a run passes. Every
/// file then is as before or as after a whole run. Returns the number of failing runs.
int RunsThatFail(const LayOut& lay_out, const Tool& tool)
{
    const test::FileTree new_files = After(lay_out, tool);
    for (int step = 0;; ++step) {
        UtilityDesk desk;
        lay_out(desk);
        const test::FileTree old_files = desk.Tree();
        test::FailingFiles files(desk.machine.files, step);
        Machine machine{files,
                        desk.machine.native_paths,
                        desk.machine.clock,
                        desk.clipboard,
                        desk.programs,
                        desk.reporter,
                        desk.pictures};
        try {
            tool(machine);
        } catch (const RunError&) {
            EXPECT_TRUE(files.Failed());
        }
        const test::FileTree found = desk.Tree();
        for (const auto& [name, bytes] : found) {
            const auto before = old_files.find(name);
            const auto after = new_files.find(name);
            EXPECT_TRUE((before != old_files.end() && before->second == bytes) ||
                        (after != new_files.end() && after->second == bytes))
                << name << " when step " << step << " fails: " << test::Shown(bytes);
        }
        for (const auto& [name, bytes] : old_files)
            EXPECT_TRUE(found.contains(name)) << name << " is gone when step " << step << " fails";
        if (!files.Failed()) {
            EXPECT_EQ(found, new_files);
            return step;
        }
    }
}

TEST(NothingLost, NewsComposer)
{
    const LayOut lay_out = [](UtilityDesk& desk) {
        desk.Put("site/_html.txt", "home\r\n;inserthere1\r\nrest");
        desk.Put("site/news/_html.txt", "a\r\n;inserthere1\r\nb\r\n;inserthere2\r\nc\r\n");
        desk.Put("site/news/txt/old.txt", "old");
    };
    const Tool tool = [](Machine& machine) {
        NewsDesk news;
        news.settings.presets = {{"Site", "C:\\site\\news\\", "", "", "C:\\site\\", false}};
        news.switchto = [&](std::string_view folder) { machine.files.ChangeDirectory(folder); };
        NewsItem item;
        item.site = 1;
        item.file_name = "pr040504";
        item.text = "new";
        ComposeNews(machine, news, item);
    };
    // Three folders looked at, with a place in each, and locked, the article looked for, the folder
    // entered, two lists read and told apart by their places, three places found and written to.
    EXPECT_EQ(RunsThatFail(lay_out, tool), 21);
}

TEST(NothingLost, PictureLists)
{
    const LayOut lay_out = [](UtilityDesk& desk) {
        desk.Put("site/cat.gif", "GIF");
        desk.Put("site/cat_t.gif", "GIF");
        desk.pictures.sizes = {{"cat.gif", {100, 80}}, {"cat_t.gif", {10, 8}}};
        desk.Put("site/_alt.txt", "cat.gif|A cat|Ann|asleep\r\ngone.gif|Gone\r\n");
        for (const char* const name :
             {"_piclist", "_banglist", "_banglist2", "_banglist3", "_banglist4", "_pichtml"})
            desk.Put(std::string("site/") + name + ".txt", std::string("old ") + name);
    };
    const Tool tool = [](Machine& machine) { run_picture_sizer(machine, "", "edit "); };
    // The folder locked, the captions looked for and read, two listings, the old captions looked
    // for, a listing of other formats, eight places found and written to, the way back.
    EXPECT_EQ(RunsThatFail(lay_out, tool), 24);
}

TEST(NothingLost, TitleGrab)
{
    const LayOut lay_out = [](UtilityDesk& desk) {
        desk.Put("site/a.htm", "<title>A</title>");
        desk.Put("site/b.asp", "<title>B</title>");
        desk.Put("site/grabtitles.txt", "old");
    };
    const Tool tool = [](Machine& machine) {
        GrabFlags flags{true, false};
        grab_titles(machine, true, flags);
    };
    // Two listings, two pages read twice, one file to find a place for and to write.
    EXPECT_EQ(RunsThatFail(lay_out, tool), 8);
}

/// Notes which sources are written, and which the disk is only to keep.
class WatchedFiles : public test::FailingFiles {
  public:
    explicit WatchedFiles(Files& files) : FailingFiles(files, -1) {}
    void CommitSource(const OutputFile& file, std::string_view bytes,
                      const Expectation& expected) override
    {
        FailingFiles::CommitSource(file, bytes, expected);
        told.push_back((expected.is_record ? "kept " : "written ") + file.path);
    }
    std::vector<std::string> told;
};

/// What a run that was cut short has put into place may not have reached the disk.
TEST(NothingLost, NewsHasTheDiskKeepWhatARunBeforeHasDone)
{
    UtilityDesk desk;
    constexpr const char* kBang = "!!1[|pr040504||||]\r\n";
    desk.Put("site/_html.txt", ";inserthere1\r\n");
    desk.Put("site/news/_html.txt", std::string(";inserthere1\r\n") + kBang);
    desk.Put("site/news/txt/pr040504.txt", "new");
    WatchedFiles files(desk.machine.files);
    Machine machine{files,
                    desk.machine.native_paths,
                    desk.machine.clock,
                    desk.clipboard,
                    desk.programs,
                    desk.reporter,
                    desk.pictures};
    NewsDesk news;
    news.settings.presets = {{"Site", "C:\\site\\news\\", "", "", "C:\\site\\", false}};
    news.switchto = [](std::string_view) {};
    NewsItem item;
    item.site = 1;
    item.file_name = "pr040504";
    item.text = "new";
    item.as_is = true;
    EXPECT_TRUE(ComposeNews(machine, news, item));
    EXPECT_THAT(files.told, testing::ElementsAre("kept C:\\site\\news\\txt\\pr040504.txt",
                                                 "kept C:\\site\\news\\_html.txt",
                                                 "written C:\\site\\_html.txt"));
    files.told.clear();
    EXPECT_FALSE(ComposeNews(machine, news, item)); // there is such an article, and all is done
    EXPECT_THAT(files.told,
                testing::ElementsAre("kept C:\\site\\news\\txt\\pr040504.txt",
                                     "kept C:\\site\\news\\_html.txt", "kept C:\\site\\_html.txt"));
    files.told.clear();
    item.text = "another";
    EXPECT_FALSE(ComposeNews(machine, news, item));
    EXPECT_THAT(files.told, testing::IsEmpty());
}

#ifndef _WIN32
/// A run that was killed when all but the tidying was done is over; the next one tidies.
TEST(NothingLost, NewsLeavesNothingOfAKilledRun)
{
    UtilityDesk desk;
    desk.Put("site/_html.txt", ";inserthere1\r\n;inserthere2\r\n");
    desk.Put("site/txt/pr040504.txt", "new");
    constexpr const char* kLeft = "/.kiv-2147483647-1.tmp"; // no process has that number
    for (const char* const folder : {"site", "site/txt"})
        desk.Put(folder + std::string(kLeft), "half");
    NewsDesk news;
    news.settings.presets = {{"Site", "C:\\site\\", "", "", "", false}};
    NewsItem item;
    item.site = 1;
    item.file_name = "pr040504";
    item.text = "another";
    EXPECT_FALSE(ComposeNews(desk.machine, news, item)); // there is such an article
    for (const char* const folder : {"site", "site/txt"})
        EXPECT_FALSE(desk.Tree().contains(folder + std::string(kLeft))) << folder;
}
#endif

} // namespace
} // namespace kiv
