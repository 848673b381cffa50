#include "tests/server_scripts/server_copy.h"

#include "cli/run_cli.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <sstream>

namespace kiv::test {

FileTree ServerCopy()
{
    namespace fs = std::filesystem;
    const TemporaryFolder folder;
    fs::copy(KIV_EXAMPLE, folder.Path(), fs::copy_options::recursive);
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream err;
    const CliSurroundings around{in, out, err, false,
                                 [](const char*) { return std::optional<std::string>(); }};
    EXPECT_EQ(RunCli({"--drive-c", folder.Path().string(), "group", "C:\\site"}, around), 0);
    EXPECT_EQ(err.str(), "");
    return ReadTree(folder.Path() / "site" / "asp");
}

} // namespace kiv::test
