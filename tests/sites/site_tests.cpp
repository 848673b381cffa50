// Runs the kiv-cli program over every golden site of this folder, see README.md.
//   site_tests [KIV-CLI]    that of the build, or another one
#include "tests/support/folders.h"
#include "tests/support/json.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <vector>

namespace {

namespace fs = std::filesystem;
using kiv::test::FileTree;
using kiv::test::Json;

std::vector<std::string> LinesOf(const fs::path& path)
{
    std::vector<std::string> lines;
    std::ifstream stream(path);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

class SiteTest : public testing::Test {
  public:
    SiteTest(fs::path program, fs::path site) : program_(std::move(program)), site_(std::move(site))
    {
    }

    void TestBody() override
    {
        const fs::path drive = folder_.Path() / "c";
        LayOut(drive);
        const Json expected = Json::Parse(kiv::test::ReadBytes(site_ / "report.json"));
        const fs::path output = folder_.Path() / "report.json";
        const int code = Run(drive, output);
        const Json report = Json::Parse(kiv::test::ReadBytes(output));
        EXPECT_EQ(code == 0, expected["error"].IsNull()) << code;
        EXPECT_EQ(expected.CompletedFrom(report).Dump(), report.Dump());
        const std::string differences =
            kiv::test::Differences(ExpectedTree(), kiv::test::ReadTree(drive));
        EXPECT_TRUE(differences.empty()) << differences;
    }

  private:
    void LayOut(const fs::path& drive) const
    {
        fs::create_directories(drive);
        fs::copy(site_ / "in", drive, fs::copy_options::recursive);
        for (const auto& [name, bytes] : kiv::test::ReadTree(drive))
            if (fs::path(name).filename() == ".keep")
                fs::remove(drive / kiv::test::PathOf(name));
    }

    int Run(const fs::path& drive, const fs::path& output) const
    {
        const std::string arguments = LinesOf(site_ / "cmd").at(0);
        std::ostringstream command;
        command << "\"" << fs::absolute(program_).make_preferred().string() << "\" --drive-c \""
                << drive.string() << "\" --now 2004-03-05T14:07:09 --json " << arguments << " > \""
                << output.string() << "\"";
#ifdef _WIN32
        // The shell takes the outermost quotes away.
        return std::system(("\"" + command.str() + "\"").c_str());
#else
        return std::system(command.str().c_str());
#endif
    }

    FileTree ExpectedTree() const
    {
        FileTree tree = kiv::test::ReadTree(site_ / "in");
        std::erase_if(tree,
                      [](const auto& file) { return fs::path(file.first).filename() == ".keep"; });
        for (const auto& [name, bytes] : kiv::test::ReadTree(site_ / "out"))
            tree[name] = bytes;
        for (const std::string& name : LinesOf(site_ / "deleted"))
            tree.erase(name);
        return tree;
    }

    fs::path program_;
    fs::path site_;
    kiv::test::TemporaryFolder folder_;
};

/// A "-" in a test's name would read as "and not" in a filter.
std::string TestName(const fs::path& site)
{
    std::string name = site.filename().string();
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

} // namespace

int main(int count, char** arguments)
{
    testing::InitGoogleTest(&count, arguments);
    const fs::path program = count > 1 ? arguments[1] : KIV_CLI;
    std::vector<fs::path> sites;
    for (const auto& entry : fs::directory_iterator(KIV_SITES))
        if (fs::exists(entry.path() / "cmd"))
            sites.push_back(entry.path());
    std::sort(sites.begin(), sites.end());
    for (const fs::path& site : sites)
        testing::RegisterTest(
            "sites", TestName(site).c_str(), nullptr, nullptr, __FILE__, __LINE__,
            [program, site]() -> testing::Test* { return new SiteTest(program, site); });
    return RUN_ALL_TESTS();
}
