// The drive in memory answers as a real one does: cases about files end alike on both.
#include "cli/run_cli.h"
#include "tests/cases/case_file.h"
#include "tests/fuzz/desk.h"
#include "tests/support/folders.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <gtest/gtest.h>

#include <optional>
#include <sstream>

namespace {

using namespace kiv;
using test::Case;

struct Ending {
    int code = 0;
    std::string report;
    test::FileTree files;
};

Ending Ended(const Case& one, std::vector<std::string> arguments, Drives* drives)
{
    arguments.insert(arguments.end(), {"--json", "--now", "2004-03-05T14:07:09"});
    for (const std::string& argument : one.arguments)
        arguments.push_back(ToUtf8(argument));
    std::istringstream in(ToUtf8(one.standard_input.value_or("")));
    std::ostringstream out;
    std::ostringstream err;
    const auto unset = [](const char*) { return std::optional<std::string>(); };
    const int code = RunCli(arguments, {in, out, err, false, unset, false, drives});
    return {code, out.str(), {}};
}

Ending InMemory(const Case& one)
{
    fuzz::Desk desk;
    for (const auto& [name, bytes] : one.in)
        desk.drives.Put(fuzz::NativeBelow(name), bytes);
    for (const std::string& name : one.folders)
        desk.drives.PutFolder(fuzz::NativeBelow(name));
    Ending ending = Ended(one, {}, &desk.drives);
    ending.files = desk.drives.Tree();
    return ending;
}

Ending OnDisk(const Case& one)
{
    const test::DriveFolder drive;
    for (const auto& [name, bytes] : one.in)
        drive.Put(fuzz::NativeBelow(name), bytes);
    for (const std::string& name : one.folders)
        drive.PutFolder(fuzz::NativeBelow(name));
    Ending ending = Ended(one, {"--drive-c", drive.Root().string()}, nullptr);
    // The report's native paths name where the drive is.
    ReplaceEach(ending.report, drive.Root().string(), "/c");
    ending.files = test::ReadTree(drive.Root());
    return ending;
}

class CasesOnBothDrives : public testing::TestWithParam<const char*> {};

TEST_P(CasesOnBothDrives, EndAlike)
{
    const std::string file = std::string(KIV_CASES) + "/" + GetParam() + ".cases";
    for (const Case& one : test::ReadCaseFile(file)) {
        SCOPED_TRACE(one.place + ": " + one.title);
        const Ending memory = InMemory(one);
        const Ending disk = OnDisk(one);
        EXPECT_EQ(memory.code, disk.code);
        EXPECT_EQ(memory.report, disk.report);
        EXPECT_EQ(test::Differences(disk.files, memory.files), "");
    }
}

INSTANTIATE_TEST_SUITE_P(Files, CasesOnBothDrives,
                         testing::Values("folders_and_names", "directory_tools", "news_composer",
                                         "group_and_sitemap", "settings_and_lists"));

} // namespace
