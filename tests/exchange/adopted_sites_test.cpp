// What this program has built itself is adopted, too: the pages of every golden site, of the
// example and of the manual.
#include "adoption_desk.h"
#include "text/text.h"

#include <filesystem>

namespace kiv {
namespace {

namespace fs = std::filesystem;

/// Adopts the pages below a folder.
class OwnOutput : public AdoptionTest {
  public:
    explicit OwnOutput(fs::path pages) : pages_(std::move(pages)) {}
    void TestBody() override
    {
        fs::copy(pages_, Native("old"), fs::copy_options::recursive);
        const Adoption adoption = Adopt();
        ExpectSame(adoption);
        EXPECT_FALSE(adoption.pages.empty());
    }

  private:
    fs::path pages_;
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
        ExpectSame(adoption);
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
                          [] { return static_cast<AdoptionTest*>(new OwnOutput(KIV_MANUAL)); });
    testing::RegisterTest("OwnOutput", "example", nullptr, nullptr, __FILE__, __LINE__,
                          [] { return static_cast<AdoptionTest*>(new Example); });
}

const bool is_registered = (RegisterAll(), true);

} // namespace
} // namespace kiv
