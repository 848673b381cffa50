// The version and its day stand in CMakeLists.txt; what is not made from there is held against it.
#include "cli/docs.h"
#include "tests/support/folders.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace kiv {
namespace {

using testing::HasSubstr;

std::string SourceFile(const char* name)
{
    return test::ReadBytes(std::filesystem::path(KIV_ROOT) / name);
}

TEST(Version, IsTheSameForThePackageManager)
{
    EXPECT_THAT(SourceFile("vcpkg.json"), HasSubstr("\"version-string\": \"" KIV_VERSION "\","));
}

TEST(Version, HasTheTopmostEntryOfTheChanges)
{
    const std::string changes = SourceFile("CHANGELOG.md");
    const std::size_t entry = changes.find("\n## ");
    ASSERT_NE(entry, std::string::npos);
    EXPECT_THAT(changes.substr(entry, 40),
                testing::StartsWith("\n## " KIV_VERSION " (" KIV_RELEASE_DATE ")\n"));
}

TEST(Version, StandsInTheManualPages)
{
    const std::string head = KIV_RELEASE_DATE " \"kiv " KIV_VERSION "\" \"User Commands\"\n";
    EXPECT_THAT(ManualPage(), testing::StartsWith(".TH KIV\\-CLI 1 " + head));
    EXPECT_THAT(WindowManualPage(), testing::StartsWith(".TH KIV 1 " + head));
}

} // namespace
} // namespace kiv
