// What this program has built itself is adopted, too: the pages of every golden site, of the
// example and of the manual.
#include "adoption_desk.h"
#include "text/text.h"

#include <filesystem>

namespace kiv {
namespace {

namespace fs = std::filesystem;

/// What a build has written ends each line with CR LF, so nothing at all may differ.
void ExpectSameBytes(const Adoption& adoption)
{
    for (const AdoptedPage& page : adoption.pages) {
        EXPECT_EQ(page.comparison.likeness, Likeness::same_bytes)
            << page.name << ": " << page.comparison.was << " | " << page.comparison.is;
    }
}

/// Adopts the pages below a folder.
class OwnOutput : public AdoptionTest {
  public:
    explicit OwnOutput(fs::path pages) : pages_(std::move(pages)) {}
    void TestBody() override
    {
        fs::copy(pages_, Native("old"), fs::copy_options::recursive);
        const Adoption adoption = Adopt();
        ExpectSameBytes(adoption);
        EXPECT_FALSE(adoption.pages.empty());
    }

  private:
    fs::path pages_;
};

/// The manual as visitors get it: four of five pages go through its template again, at the least,
/// and that has the menu. Its pages' texts are included as they are, with LF at the ends of their
/// lines, where lines of a list get CR LF.
class Manual : public AdoptionTest {
  public:
    void TestBody() override
    {
        fs::create_directory(Native("old"));
        for (const fs::directory_entry& file : fs::directory_iterator(KIV_MANUAL))
            if (file.is_regular_file())
                fs::copy(file.path(), Native("old"));
        const Adoption adoption = Adopt();
        ExpectSame(adoption);
        const auto templated =
            std::ranges::count(adoption.pages, std::string_view("template"), &AdoptedPage::way);
        EXPECT_GE(static_cast<std::size_t>(templated) * 5, adoption.pages.size() * 4);
        EXPECT_GT(adoption.pages.size(), 20U);
        EXPECT_NE(Content("new/_template.txt").find("\r\n??1[index.htm|Contents]\r\n"),
                  std::string::npos);
    }
};

/// The example, built with its group.
class Example : public AdoptionTest {
  public:
    void TestBody() override
    {
        fs::copy(KIV_EXAMPLE, Root(), fs::copy_options::recursive);
        std::string group = Content("site/_group.txt");
        for (std::string_view rest = group; !rest.empty();)
            Build("C:\\site\\" + std::string(TakeLine(rest)));
        Build("C:\\site");
        const Adoption adoption = Adopt("C:\\site");
        ExpectSameBytes(adoption);
        EXPECT_GT(adoption.pages.size(), 20U);
    }
};

void RegisterAll()
{
    for (const fs::directory_entry& site : fs::directory_iterator(KIV_SITES))
        if (fs::is_directory(site.path() / "out"))
            testing::RegisterTest("OwnOutput", site.path().filename().string().c_str(), nullptr,
                                  nullptr, __FILE__, __LINE__, [path = site.path() / "out"] {
                                      return static_cast<AdoptionTest*>(new OwnOutput(path));
                                  });
    testing::RegisterTest("OwnOutput", "manual", nullptr, nullptr, __FILE__, __LINE__,
                          [] { return static_cast<AdoptionTest*>(new Manual); });
    testing::RegisterTest("OwnOutput", "example", nullptr, nullptr, __FILE__, __LINE__,
                          [] { return static_cast<AdoptionTest*>(new Example); });
}

const bool is_registered = (RegisterAll(), true);

} // namespace
} // namespace kiv
