#include "blocks/fragments.h"

#include "blocks/reports.h"
#include "tests/blocks/block_desk.h"

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Fragments, ZbarPutsWidthAndHeightBetweenItsPieces)
{
    EXPECT_EQ(zbar("40", "8"),
              "<img src=\"../images/zbar.gif\" width=\"40\" height=\"8\" border=\"0\">");
    EXPECT_EQ(zbar("", ""), "<img src=\"../images/zbar.gif\" width=\"\" height=\"\" border=\"0\">");
}

TEST(Reports, ReportmsgfShowsAndIsEmpty)
{
    RecordingReporter reporter;
    EXPECT_EQ(reportmsgf(reporter, "Oops!"), "");
    EXPECT_THAT(reporter.shown, ElementsAre("Oops!"));
}

TEST(Reports, BigoopsPutsItsWordsFirstAndIsTrue)
{
    RecordingReporter reporter;
    EXPECT_TRUE(bigoops(reporter, "zutimeline"));
    EXPECT_THAT(reporter.shown, ElementsAre("BIG OOPS! zutimeline"));
}

TEST(Reports, CollectedMessagesGoToTheLog)
{
    RecordingReporter reporter;
    reporter.collect_messages = true;
    reportmsgf(reporter, "one");
    bigoops(reporter, "two");
    EXPECT_EQ(reporter.message_log, "one<P>BIG OOPS! two<P>");
    EXPECT_THAT(reporter.shown, IsEmpty());
}

} // namespace
} // namespace kiv
