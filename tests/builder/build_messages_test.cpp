#include "builder/build_messages.h"
#include "platform/drives.h"
#include "tests/support/recorders.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace kiv {
namespace {

TEST(BuildMessages, TextsKeptBackAreBounded)
{
    test::RecordingReporter told;
    const Place place;
    const std::unique_ptr<Drives> files = MakeDriveFiles({});
    BuildMessages messages(told, *files, place);
    const std::string line(1'000'000, 'x');
    for (int i = 0; i < 13; ++i)
        messages.ShowBuildMessage(line);
    messages.ShowBuildMessage("short");
    EXPECT_EQ(told.shown, std::vector<std::string>{line});
    const std::vector<Warning>& kept = told.Warnings();
    ASSERT_EQ(kept.size(), 14U);
    // The first is shown; eleven more are kept whole, ten millions and the one that passes them.
    EXPECT_EQ(kept[11].text, line);
    EXPECT_EQ(kept[12].text, std::string(200, 'x') + "...");
    EXPECT_EQ(kept[13].text, "short");
}

TEST(BuildMessages, EachHasThePlaceOfItsMoment)
{
    test::RecordingReporter told;
    Place place;
    const std::unique_ptr<Drives> files = MakeDriveFiles({});
    BuildMessages messages(told, *files, place);
    place = {"C:\\site\\_html.txt", 3, "a.htm"};
    messages.ShowBuildMessage("one");
    place = {};
    messages.ShowBuildMessage("two");
    messages.reportmsg("three");
    const std::vector<Warning>& kept = told.Warnings();
    ASSERT_EQ(kept.size(), 3U);
    EXPECT_EQ(kept[0].where.Text(), "C:\\site\\_html.txt, line 3, page a.htm");
    EXPECT_TRUE(kept[0].was_shown);
    EXPECT_EQ(kept[1].where.Text(), "");
    EXPECT_FALSE(kept[1].was_shown);
    EXPECT_TRUE(kept[2].was_shown);
}

} // namespace
} // namespace kiv
