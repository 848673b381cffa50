// Drives by option and environment, the forms of DIR.
#include "cli_desk.h"

namespace kiv {
namespace {

using testing::HasSubstr;

class DriveOptions : public CliTest {
  protected:
    DriveOptions()
    {
        for (const char* below : {"site", "site/sub", "other"}) {
            Put(std::string(below) + "/_html.txt", "@FILE = index\n@TITLE = T\n");
            Put(std::string(below) + "/_template.txt", ";\n");
        }
    }

    /// The first file that a build of `directory` writes.
    std::string Built(const Texts& options, const std::string& directory)
    {
        Texts call = options;
        call.insert(call.end(), {"--json", "build", directory});
        const Json report = Json::Parse(CallBare(call).out);
        return report["files"].Size() == 0 ? KindOf(report) : report["files"][0].Text();
    }
};

TEST_F(DriveOptions, TheOptionBeatsTheEnvironment)
{
    const std::string root = Root().string();
    variables["KIV_DRIVE_C"] = root + "/site";
    EXPECT_EQ(Built({}, "C:\\sub"), "C:\\sub\\index.htm");
    EXPECT_EQ(Built({"--drive-c", root}, "C:\\site"), "C:\\site\\index.htm");
#ifndef _WIN32 // where Z: need not be there
    EXPECT_EQ(Built({"--drive-c", "Z:" + root}, "C:\\site"), "C:\\site\\index.htm");
#endif
}

#ifndef _WIN32 // where C: is the machine's own
TEST_F(DriveOptions, TheUsersDataFolderStandsForDriveC)
{
    const std::string root = Root().string();
    variables["HOME"] = root + "/home";
    EXPECT_EQ(Built({}, "C:\\"), ""); // nothing to build there
    EXPECT_TRUE(Exists("home/.local/share/kiv/drive_c/utils"));
    variables["XDG_DATA_HOME"] = root + "/data";
    EXPECT_EQ(Built({}, "C:\\"), "");
    EXPECT_TRUE(Exists("data/kiv/drive_c/utils"));
}
#endif

TEST_F(DriveOptions, OtherLetters)
{
    const std::string root = Root().string();
    variables["KIV_DRIVE_D"] = root + "/other";
    variables["KIV_DRIVE_Z"] = root + "/other"; // Z: is fixed
    variables["KIV_DRIVE_E"] = "";
    const Texts c = {"--drive-c", root};
    EXPECT_EQ(Built(c, "D:\\"), "D:\\index.htm");
    EXPECT_EQ(Built(c, "d:/"), "D:\\index.htm");
    EXPECT_EQ(Built(c, "E:\\"), "file");
#ifndef _WIN32 // where Z: need not be there
    EXPECT_EQ(Built(c, "Z:" + root + "/other"), Built(c, "Z:" + root + "\\other"));
    EXPECT_THAT(Built(c, "Z:" + root + "/other"), testing::StartsWith("Z:\\"));
#endif
}

TEST_F(DriveOptions, TheLongestDriveThatHoldsANativePathWins)
{
    const std::string root = Root().string();
    variables["KIV_DRIVE_D"] = root + "/site/sub";
    const Texts c = {"--drive-c", root};
    EXPECT_EQ(Built(c, root + "/site"), "C:\\site\\index.htm");
    EXPECT_EQ(Built(c, root + "/site/sub"), "D:\\index.htm");
    EXPECT_EQ(Built(c, root + "/site/sub/.."), "C:\\site\\index.htm");
    EXPECT_EQ(Built(c, root + "//site/./"), "C:\\site\\index.htm");
    EXPECT_EQ(Built({"--drive-c", root + "/other"}, root + "/site"),
              Built({"--drive-c", root + "/other"}, "Z:" + root + "/site"));
}

TEST_F(DriveOptions, FormsOfDrivePaths)
{
    const Texts c = {"--drive-c", Root().string()};
    for (const char* directory :
         {"C:\\site", "c:\\site\\", "C:/site", "C:site", "C:\\other\\..\\site", "C:\\.\\site\\"})
        EXPECT_EQ(Built(c, directory), "C:\\site\\index.htm") << directory;
    EXPECT_EQ(Built(c, "C:\\SITE"), "C:\\SITE\\index.htm"); // spelled as the caller wrote it
    EXPECT_EQ(Built(c, "C:\\gone"), "file");
    EXPECT_EQ(Built(c, "C:\\site\\_html.txt"), "file");
    EXPECT_EQ(Built(c, "\\\\server\\share"), "file");
}

TEST_F(DriveOptions, AFolderThatIsNamedAndNotThereIsNotMade)
{
    const std::string drive = Native("new/c").string();
    variables["KIV_DRIVE_E"] = Root().string();
    struct Row {
        Texts call;
        std::string error;
    };
    for (const Row& row : std::vector<Row>{
             {{"dimensions", "1", "1", "1", "1"}, ""},
             {{"reference", "1"}, ""},
             {{"group", "E:\\site"}, ""},
             {{"convert"}, "error: cannot work in c:\\: no such folder"},
             {{"fix-names", "--dry-run", "C:\\"}, "error: cannot change to C:\\: no such folder"},
             {{"build", "C:\\gone"}, "error: cannot change to C:\\gone: no such folder"}}) {
        Texts all = {"--drive-c", drive};
        all.insert(all.end(), row.call.begin(), row.call.end());
        const std::string err = CallBare(all).err;
        EXPECT_EQ(err.empty(), row.error.empty()) << row.call[0];
        EXPECT_THAT(err, testing::HasSubstr(row.error)) << row.call[0];
        EXPECT_FALSE(Exists("new")) << row.call[0];
    }
}

TEST_F(DriveOptions, TheFolderOfDriveCIsMadeAtTheFirstStart)
{
    variables["KIV_DRIVE_C"] = Native("new/c").string();
    for (const Texts& call : std::vector<Texts>{{"dimensions", "1", "1", "1", "1"},
                                                {"fix-names", "--dry-run", "C:\\"}}) {
        CallBare(call);
        EXPECT_FALSE(Exists("new")) << call[0];
    }
    for (const Texts& call : std::vector<Texts>{{"convert"}, {"build", "C:\\gone"}}) {
        std::filesystem::remove_all(Native("new"));
        CallBare(call);
        EXPECT_TRUE(Exists("new/c/utils")) << call[0];
    }
    // A folder that is there stays as it is.
    std::filesystem::create_directories(Native("bare"));
    CallBare({"--drive-c", Native("bare").string(), "convert", "--mode", "rs"});
    EXPECT_FALSE(Exists("bare/utils"));
}

} // namespace
} // namespace kiv
