// "%f" and "%l" in the command of an editor, as reports show the line.
#include "platform/file_marks.h"
#include "platform/programs.h"

#include <gtest/gtest.h>

#include <string>

namespace kiv {
namespace {

struct LaunchRow {
    std::string command;
    std::string shown; // of "C:\a b.txt", line 12
};

TEST(FileMarks, AreFilledInWhereTheyStand)
{
    const LaunchRow rows[] = {
        {"pad ", "pad C:\\a b.txt"},
        {"gedit +%l %f ", "gedit +12 C:\\a b.txt"},
        {"code --goto %f:%l ", "code --goto C:\\a b.txt:12"},
        {"code --goto \"%f:%l\" ", "code --goto \"C:\\a b.txt:12\""},
        {"edit %f %f %l%l ", "edit C:\\a b.txt C:\\a b.txt 1212"},
        // A mark for the line alone: the file stands at the end as ever.
        {"mousepad --line=%l ", "mousepad --line=12 C:\\a b.txt"},
        {"kwrite %f --new ", "kwrite C:\\a b.txt --new"},
        {"edit %l%%%f ", "edit 12%C:\\a b.txt"},
        {"edit 100%% %f%%f ", "edit 100% C:\\a b.txt%f"},
        // Without a mark nothing is changed, and a mark is nothing else.
        {"edit %% ", "edit %% C:\\a b.txt"},
        {"edit %%f ", "edit %%f C:\\a b.txt"},
        {"edit %F %L %u % ", "edit %F %L %u % C:\\a b.txt"},
        {"edit %l%u%", "edit 12%u%C:\\a b.txt"},
    };
    for (const LaunchRow& row : rows) {
        const Launch launch{.command = row.command, .file = "C:\\a b.txt", .line = 12};
        EXPECT_EQ(launch.Text(), row.shown) << row.command;
    }
}

TEST(FileMarks, WhatIsPutInIsNotLookedAtAgain)
{
    EXPECT_EQ(FillMarks("%f:%l", "C:\\100%l%f%%.txt", 3), "C:\\100%l%f%%.txt:3");
}

TEST(FileMarks, CountOnlyInTheCommandOfAnEditor)
{
    const Launch launch{"up %f%l ", "C:\\a.txt", " /l"};
    EXPECT_EQ(launch.Text(), "up %f%l C:\\a.txt /l");
    EXPECT_FALSE(launch.HasMarks());
    EXPECT_FALSE(launch.HasFileMark());
}

TEST(FileMarks, InTheProgramsOwnPathAreNone)
{
    EXPECT_EQ((Launch{.command = "c:\\100%f\\pad ", .file = "C:\\a.txt", .line = 3}.Text()),
              "c:\\100%f\\pad C:\\a.txt");
    EXPECT_EQ((Launch{.command = "\"c:\\my %l\\pad\" +%l ", .file = "C:\\a.txt", .line = 3}.Text()),
              "\"c:\\my %l\\pad\" +3 C:\\a.txt");
    EXPECT_EQ((Launch{.command = "c:\\%l\\pad %f +%l ", .file = "C:\\a.txt", .line = 3}.Text()),
              "c:\\%l\\pad C:\\a.txt +3");
}

TEST(FileMarks, AreToldApart)
{
    EXPECT_FALSE(MarksIn("pad %% %%f %%l %").Any());
    EXPECT_TRUE(MarksIn("pad %%%f").file);
    EXPECT_FALSE(MarksIn("pad %%%f").line);
    EXPECT_TRUE(MarksIn("pad +%l").line);
    EXPECT_FALSE(MarksIn("pad +%l").file);
}

} // namespace
} // namespace kiv
