#include "shell/uploads.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv {
namespace {

using testing::ElementsAre;

TEST(Uploads, LinesOfFiles)
{
    EXPECT_EQ(UploadLine("put -s @@ -d w/@@", "a.htm"), "put -s a.htm -d w/a.htm");
    EXPECT_EQ(UploadLine("put @@ w/@@", "a b.htm"), "put \"a b.htm\" w/\"a b.htm\"");
    EXPECT_EQ(UploadLine("put \"w/@@\"", "a b.htm"), "put \"w/a b.htm\"");
    EXPECT_EQ(UploadLine("put @@", "a\"b.htm"), "put \"a\\\"b.htm\"");
    EXPECT_EQ(UploadLine("put @@", "@@.htm"), "put @@.htm"); // what is put in is not looked at
    EXPECT_EQ(UploadLine("mirror", "a.htm"), "mirror");
}

TEST(Uploads, Plans)
{
    UploadPlan plan{.command = "put @@", .names = {"a.htm", "b c.htm"}, .keys = {}, .gone = {}};
    EXPECT_THAT(UploadLines(plan), ElementsAre("put a.htm", "put \"b c.htm\""));
    EXPECT_EQ(PlanText(plan), "put a.htm\nput \"b c.htm\"\n");
    plan.command = "mirror";
    EXPECT_THAT(UploadLines(plan), ElementsAre("mirror"));
    EXPECT_EQ(PlanText(plan), "mirror\n  a.htm\n  b c.htm\n");
    plan.names.clear();
    EXPECT_THAT(UploadLines(plan), ElementsAre());
    EXPECT_EQ(PlanText(plan), "");
}

} // namespace
} // namespace kiv
