#include "utilities/news_settings.h"

#include "tests/utilities/utility_desk.h"

namespace kiv {
namespace {

NewsSettings Read(UtilityDesk& desk, const std::string& bytes)
{
    desk.Put("utils/kivnews.ini", bytes);
    return ReadNewsSettings(desk.machine.files);
}

TEST(NewsSettings, WithoutAFileThereIsTheScratchSite)
{
    UtilityDesk desk;
    const NewsSettings settings = ReadNewsSettings(desk.machine.files);
    ASSERT_EQ(settings.presets.size(), 1U);
    EXPECT_TRUE(IsScratchSite(settings.presets[0]));
    EXPECT_EQ(settings.presets[0].folder, "C:\\temp\\");
    EXPECT_EQ(settings.presets[0].home_folder, "");
    EXPECT_FALSE(settings.presets[0].highlight);
    EXPECT_EQ(settings.highlight_name, "");
    ASSERT_EQ(settings.publications.size(), 2U);
    EXPECT_EQ(settings.publications[0].code, "pr");
    EXPECT_EQ(settings.publications[0].name, "Press Release");
    EXPECT_EQ(settings.publications[1].code, "proc");
    EXPECT_EQ(settings.publications[1].name, "Proclamation");
}

TEST(NewsSettings, AnEmptyFileHasNoSite)
{
    UtilityDesk desk;
    EXPECT_TRUE(Read(desk, "").presets.empty());
}

TEST(NewsSettings, Lines)
{
    UtilityDesk desk;
    const NewsSettings settings =
        Read(desk, ";comment|x\r\n"
                   "\r\n"
                   "no bar at all\r\n"
                   "* First Name\r\n"
                   " Museum | museum\\news | mus | Mind the date! | museum | yes | surplus\r\n"
                   "= gaz | The Gazette | x\r\n"
                   "=no bar\r\n"
                   "Scratch|c:\\TEMP\r\n"
                   "Bare|\n"
                   "*  Second | Name  \n"
                   "Far|D:\\far\\||hint|E:\\home|");
    ASSERT_EQ(settings.presets.size(), 4U);
    const SitePreset& museum = settings.presets[0];
    EXPECT_EQ(museum.label, "Museum");
    EXPECT_EQ(museum.folder, "C:\\internet\\museum\\news\\");
    EXPECT_EQ(museum.tag, "mus");
    EXPECT_EQ(museum.reminder, "Mind the date!");
    EXPECT_EQ(museum.home_folder, "C:\\internet\\museum\\");
    EXPECT_TRUE(museum.highlight);
    EXPECT_FALSE(IsScratchSite(museum));
    EXPECT_EQ(settings.presets[1].folder, "c:\\TEMP\\");
    EXPECT_TRUE(IsScratchSite(settings.presets[1]));
    EXPECT_EQ(settings.presets[1].home_folder, "");
    EXPECT_EQ(settings.presets[2].label, "Bare");
    EXPECT_EQ(settings.presets[2].folder, "C:\\internet\\");
    EXPECT_EQ(settings.presets[3].folder, "D:\\far\\");
    EXPECT_EQ(settings.presets[3].reminder, "hint");
    EXPECT_EQ(settings.presets[3].home_folder, "E:\\home\\");
    EXPECT_FALSE(settings.presets[3].highlight);
    EXPECT_EQ(settings.highlight_name, "Second | Name"); // the last one
    ASSERT_EQ(settings.publications.size(), 3U);
    EXPECT_EQ(settings.publications[2].code, "gaz");
    EXPECT_EQ(settings.publications[2].name, "The Gazette");
}

TEST(NewsSettings, OptionWithoutLabelHasAnotherCaption)
{
    UtilityDesk desk;
    const NewsSettings settings = Read(desk, "Harbour|h|hb\r\n|h|hb\r\n|h|\r\n");
    EXPECT_EQ(CaptionOf(settings.presets[0]), "Harbour");
    EXPECT_EQ(CaptionOf(settings.presets[1]), "hb");
    EXPECT_EQ(CaptionOf(settings.presets[2]), "C:\\internet\\h\\");
}

TEST(NewsSettings, EighteenSitesAndNoMore)
{
    std::string bytes;
    for (int n = 0; n < 18; ++n)
        bytes += "site|folder\r\n";
    UtilityDesk desk;
    EXPECT_EQ(Read(desk, bytes + "=a|b\r\n*name\r\n").presets.size(), 18U);
    try {
        Read(desk, bytes + "\r\none|more");
        FAIL();
    } catch (const RunError& error) {
        EXPECT_EQ(error.kind, ErrorKind::subscript);
        EXPECT_EQ(error.where.Text(), "c:\\utils\\kivnews.ini, line 20");
    }
}

} // namespace
} // namespace kiv
