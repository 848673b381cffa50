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
    /// `least`: pages that must go through a template again.
    explicit OwnOutput(fs::path pages, std::size_t least = 0)
        : pages_(std::move(pages)), least_(least)
    {
    }
    void TestBody() override
    {
        fs::copy(pages_, Native("old"), fs::copy_options::recursive);
        const Adoption adoption = Adopt();
        ExpectSameBytes(adoption);
        EXPECT_FALSE(adoption.pages.empty());
        const auto templated =
            std::ranges::count(adoption.pages, std::string_view("template"), &AdoptedPage::way);
        EXPECT_GE(static_cast<std::size_t>(templated), least_);
    }

  private:
    fs::path pages_;
    std::size_t least_;
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
                          [] { return static_cast<AdoptionTest*>(new OwnOutput(KIV_MANUAL, 30)); });
    testing::RegisterTest("OwnOutput", "example", nullptr, nullptr, __FILE__, __LINE__,
                          [] { return static_cast<AdoptionTest*>(new Example); });
}

const bool is_registered = (RegisterAll(), true);

} // namespace
} // namespace kiv
