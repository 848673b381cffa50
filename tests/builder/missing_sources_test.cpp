// What stands beside the message that page list or template are missing: the place, and what to do.
#include "tests/builder/build_desk.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace kiv {
namespace {

class MissingSources : public testing::Test {
  protected:
    const Warning& Told()
    {
        EXPECT_EQ(desk.Build(), "");
        EXPECT_EQ(desk.reporter.Warnings().size(), 1U);
        EXPECT_EQ(desk.reporter.Warnings().back().text, "OOPS! Missing _html.txt, _template.txt");
        return desk.reporter.Warnings().back();
    }

    BuildDesk desk; // with a template
};

TEST_F(MissingSources, APageListIsToBeWritten)
{
    const Warning& told = Told();
    EXPECT_EQ(told.where.Text(), "C:\\site\\_html.txt");
    EXPECT_EQ(told.hint, "There is no _html.txt in C:\\site. Write one: each page begins with "
                         "\"@FILE =\" and \"@TITLE =\".");
}

TEST_F(MissingSources, ATemplateIsToBeWritten)
{
    desk.Put("site/_html.txt", "@FILE = a\n");
    std::filesystem::remove(desk.Root() / "site/_template.txt");
    const Warning& told = Told();
    EXPECT_EQ(told.where.Text(), "C:\\site\\_template.txt");
    EXPECT_EQ(told.hint, "There is no _template.txt in C:\\site. Write one: a single \";\" will do "
                         "for pages without a frame.");
}

TEST_F(MissingSources, WithoutBothTheFolderMayBeAnother)
{
    std::filesystem::remove(desk.Root() / "site/_template.txt");
    desk.Put("site/template.htm", "a page");
    const Warning& told = Told();
    EXPECT_EQ(told.where.Text(), "C:\\site\\_html.txt");
    EXPECT_EQ(told.hint, "There is neither _html.txt nor _template.txt in C:\\site. Is this the "
                         "folder of the site?");
}

TEST_F(MissingSources, AFileThatIsMeantIsNamed)
{
    for (const char* const name : {"_html.txt.txt", "_HTML.htm", "_html", "html.txt"}) {
        desk.Put(std::string("site/") + name, "@FILE = a\n");
        EXPECT_EQ(Told().hint, std::string("There is no _html.txt in C:\\site. Is it \"") + name +
                                   "\"? Then give that file this name.");
        std::filesystem::remove(desk.Root() / "site" / name);
        desk.reporter.ForgetWarnings();
    }
}

TEST_F(MissingSources, AFolderInTheWayIsNamedAndBothAreTold)
{
    std::filesystem::remove(desk.Root() / "site/_template.txt");
    std::filesystem::create_directory(desk.Root() / "site/_html.txt");
    EXPECT_EQ(Told().hint,
              "There is no _html.txt in C:\\site. A folder has this name: give the folder another "
              "one. There is no _template.txt in C:\\site. Write one: a single \";\" will do for "
              "pages without a frame.");
}

/// A link to nothing stands for pipes and devices, which not every system has.
TEST_F(MissingSources, AnIncludeThatIsThereButNoFileIsTold)
{
    std::vector<std::pair<std::string, std::string>> told = {
        {"folder.txt", "A folder has this name: give the folder another one."},
        {"none.txt", ""},
        {"", ""}};
    std::filesystem::create_directory(desk.Root() / "site/folder.txt");
#ifndef _WIN32 // where only administrators make links
    std::filesystem::create_symlink("nothing", desk.Root() / "site/link.txt");
    told.emplace_back("link.txt", "Something has this name that is no plain file: a pipe, a device "
                                  "or a link to nothing. Put a file in its place.");
#endif
    for (const auto& [name, hint] : told) {
        desk.Put("site/_html.txt", "@FILE = a\n@TITLE = A\n++" + name + "\n");
        EXPECT_EQ(desk.Build(), "");
        ASSERT_EQ(desk.reporter.Warnings().size(), 1U) << name;
        EXPECT_EQ(desk.reporter.Warnings()[0].text, "File " + name + " not found... aborting");
        EXPECT_EQ(desk.reporter.Warnings()[0].hint, hint);
        desk.reporter.ForgetWarnings();
    }
}

TEST_F(MissingSources, AFolderInPlaceOfTheTemplateThatIsNamedIsTold)
{
    std::filesystem::create_directory(desk.Root() / "site/frame.txt");
    desk.Put("site/_template.txt", "++frame.txt\n");
    desk.Put("site/_html.txt", "@FILE = a\n@TITLE = A\n");
    EXPECT_EQ(desk.Build(), "");
    ASSERT_FALSE(desk.reporter.Warnings().empty());
    EXPECT_EQ(desk.reporter.Warnings()[0].hint,
              "A folder has this name: give the folder another one.");
}

} // namespace
} // namespace kiv
