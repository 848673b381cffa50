// The example site, checked as a whole and section by section.
#include "cli_desk.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace kiv {

namespace {

namespace fs = std::filesystem;

/// The findings above a note, as lines.
std::string Findings(const test::Json& report)
{
    std::string lines;
    for (const test::Json& finding : report["findings"].Items())
        if (!(finding["severity"] == "note"))
            lines += finding["name"].Text() + ": " + finding["text"].Text() + "\n";
    return lines;
}

class ExampleCheckTest : public CliTest {
  protected:
    /// The example is a drive C:.
    ExampleCheckTest()
    {
        fs::copy(KIV_EXAMPLE, Root(),
                 fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    }
};

TEST_F(ExampleCheckTest, NothingAboveANote)
{
    int sections = 0;
    for (const auto& entry : fs::recursive_directory_iterator(Native("site"))) {
        if (entry.path().filename() != "_html.txt")
            continue;
        ++sections;
        const std::string folder = entry.path().parent_path().string();
        EXPECT_EQ(Findings(Report({"check", folder})), "") << folder;
    }
    EXPECT_GE(sections, 4);
}

} // namespace

} // namespace kiv
