// Hundreds of saves at random moments, seen by another process: at each rest the pages are those of
// a clean build.
#include "shell/builds.h"
#include "tests/shell/shell_desk.h"
#include "watch_process.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>

namespace kiv {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;
using test::Becomes;
using test::CliProcess;
using test::Ending;

constexpr int kSaves = 400;
constexpr int kRestEvery = 20; // saves
constexpr int kPages = 12;

const std::vector<std::string> kSources = {"_html.txt", "_template.txt", "parts/head.txt",
                                           "parts/deep.txt", "text.txt"};

/// A source as its save number `version` has it. All versions are about as long, most just as long.
std::string SourceText(const std::string& name, int version)
{
    const std::string mark = std::to_string(100'000 + version);
    if (name == "_template.txt")
        return "+parts/deep.txt\n<title>" + mark + "</title>\n" + std::string(3000, 't') +
               "\n<!--BODY HERE-->\n<p>" + mark + "\n";
    if (name == "parts/head.txt")
        return "@1 = " + mark + "\n";
    if (name == "parts/deep.txt")
        return "<p>" + mark + " @1\n";
    if (name == "text.txt")
        return mark + "\n";
    std::string list = "++parts/head.txt\n";
    for (int page = 1; page <= kPages; ++page)
        list += "@FILE = p" + std::to_string(page) + "\n@TITLE = T\n" + mark + " @1\n!++text.txt\n";
    return list;
}

/// Who saves, in all the ways of editors.
class Saver {
  public:
    Saver(const fs::path& site, unsigned seed) : site_(site), random_(seed) {}

    /// Saves until the next rest.
    void SaveSome()
    {
        do {
            const std::string& name = kSources[Below(kSources.size())];
            Save(site_ / name, SourceText(name, ++saves_));
            std::this_thread::sleep_for(milliseconds(Below(4)));
        } while (saves_ % kRestEvery != 0);
    }

  private:
    std::size_t Below(std::size_t bound)
    {
        return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random_);
    }

    void Save(const fs::path& file, const std::string& text)
    {
        const fs::path other = file.string() + "~";
        switch (Below(4)) {
        case 0:
            test::WriteBytes(file, text);
            break;
        case 1:
            test::WriteBytes(other, text);
            fs::rename(other, file);
            break;
        case 2:
            SaveInHalves(file, text);
            break;
        default:
            fs::remove(file);
            std::this_thread::sleep_for(milliseconds(Below(3)));
            test::WriteBytes(file, text);
        }
    }

    void SaveInHalves(const fs::path& file, const std::string& text)
    {
        std::ofstream stream(file, std::ios::binary);
        stream << text.substr(0, text.size() / 2) << std::flush;
        std::this_thread::sleep_for(milliseconds(Below(12)));
        stream << text.substr(text.size() / 2);
    }

    fs::path site_;
    std::mt19937 random_;
    int saves_ = 0;
};

class WatchSaves : public ShellTest {
  protected:
    /// The pages of a site, and the files that a build writes beside them.
    test::FileTree Pages(const std::string& folder) const
    {
        test::FileTree pages;
        for (const std::string& name : NamesIn(folder))
            if (name.ends_with(".htm") || name == "_toc.txt" || name == "_sitemap.txt")
                pages[name] = Content(folder + "/" + name);
        return pages;
    }

    /// Those of the sources as they are now, built by this process.
    test::FileTree CleanPages()
    {
        fs::remove_all(Native("clean"));
        for (const std::string& name : kSources)
            Put("clean/" + name, Content("site/" + name));
        files->Refresh();
        EXPECT_FALSE(workspace.Run([&] {
            workspace.StartUp("C:\\clean");
            BuildWorkDir(workspace);
        }));
        return Pages("clean");
    }

    void ExpectClean(unsigned seed, const CliProcess& watch)
    {
        const test::FileTree clean = CleanPages();
        ASSERT_EQ(clean.size(), kPages + 2U);
        // Windows lets nobody replace a page while it is read: pauses for the build, and time for
        // those that are tried again.
        ASSERT_TRUE(Becomes([&] { return Pages("site") == clean; }, milliseconds(250),
                            std::chrono::seconds(40)))
            << "seed " << seed << "\n"
            << test::Differences(clean, Pages("site")) << "watch has said:\n"
            << watch.Out() << watch.Err();
    }
};

TEST_F(WatchSaves, TheLastStateOfTheSourcesIsAlwaysBuilt)
{
    for (const std::string& name : kSources)
        Put("site/" + name, SourceText(name, 0));
    CliProcess watch(*this, {"watch", "C:\\site"});
    ASSERT_TRUE(watch.HasLines(1));
    const auto seed =
        static_cast<unsigned>(std::chrono::steady_clock::now().time_since_epoch().count());
    Saver saver(Native("site"), seed);
    for (int rest = 0; rest < kSaves / kRestEvery; ++rest) {
        saver.SaveSome();
        ExpectClean(seed, watch);
        if (HasFatalFailure())
            return;
    }
    std::this_thread::sleep_for(milliseconds(500));
    ExpectClean(seed, watch); // and it has stayed so
    EXPECT_GT(watch.Lines(), 5U) << "builds have hardly met the saves";
    EXPECT_THAT(watch.End(Ending::interrupted), test::IsAsked(0));
}

} // namespace
} // namespace kiv
