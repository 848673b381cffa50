// The manual's own pages: they build without a word, their links lead somewhere, and what an
// example shows is what its test runs.
#include "cli/run_cli.h"
#include "docs/manual/generator/bodies.h"
#include "docs/manual/generator/prose.h"
#include "tests/cases/case_file.h"
#include "tests/manual/manual_text.h"
#include "tests/support/folders.h"
#include "text/text.h"

#include <gmock/gmock.h>

#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string_view>

namespace {

using namespace kiv::test;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
namespace fs = std::filesystem;

std::string Unescaped(std::string html)
{
    html = std::regex_replace(html, std::regex("<span class=\"tab\">|</span>"), "");
    for (const auto& [reference, character] :
         std::map<std::string, std::string>{{"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}})
        kiv::ReplaceEach(html, reference, character);
    for (int code = 0x7F; code <= 0xFF; ++code) {
        const std::string character(1, static_cast<char>(static_cast<unsigned char>(code)));
        kiv::ReplaceEach(html, kiv::manual::Escaped(character), character);
    }
    kiv::ReplaceEach(html, "&amp;", "&");
    return html;
}

/// The manual, built in a folder of its own.
class ManualPages : public testing::Test {
  protected:
    static void SetUpTestSuite()
    {
        folder_ = new TemporaryFolder;
        const fs::path manual = fs::path(KIV_ROOT) / "docs/manual";
        for (const char* const name : {"_html.txt", "_template.txt", "nav.txt", "manual.css"})
            WriteBytes(Folder() / name, ReadBytes(manual / name));
        kiv::manual::WriteBodies(manual.string(), Folder().string());
        std::istringstream in;
        std::ostringstream out;
        std::ostringstream err;
        code_ = kiv::RunCli(
            {"--verbose", "--drive-c", folder_->Path().string(), "build", "C:\\manual"},
            {in, out, err, false, [](const char*) { return std::optional<std::string>(); }});
        said_ = err.str();
    }

    static void TearDownTestSuite() { delete folder_; }

    /// "C:\manual", for the drive whose folder is the test's.
    static fs::path Folder() { return folder_->Path() / "manual"; }

    /// A page of the manual; "": there is none of this name.
    static const std::string& Page(const std::string& name)
    {
        static std::map<std::string, std::string> known; // read once
        const auto [place, is_new] = known.try_emplace(name);
        if (is_new)
            place->second = ReadBytes(Folder() / name);
        return place->second;
    }

    static std::vector<std::string> PageNames()
    {
        std::vector<std::string> names;
        for (const fs::path& chapter : Chapters())
            names.push_back(chapter.stem().string() + ".htm");
        return names;
    }

    static TemporaryFolder* folder_;
    static std::string said_;
    static int code_;
};

TemporaryFolder* ManualPages::folder_ = nullptr;
std::string ManualPages::said_;
int ManualPages::code_ = -1;

TEST_F(ManualPages, BuildWithoutAWord)
{
    EXPECT_EQ(code_, 0);
    EXPECT_EQ(said_, "");
}

TEST_F(ManualPages, EveryChapterIsAPageOfTheMenu)
{
    const std::string& menu = Page("index.htm");
    for (const std::string& name : PageNames()) {
        EXPECT_THAT(Page(name), HasSubstr("</footer>"));
        if (name != "index.htm") {
            EXPECT_THAT(menu, HasSubstr("<li><a href=\"" + name + "\">"));
        }
    }
}

TEST_F(ManualPages, HoldAsciiAlone)
{
    // They would come out in the wrong characters: the chapters write others as %{HH}.
    for (const fs::path& chapter : Chapters())
        for (const char c : ReadBytes(chapter))
            ASSERT_LT(static_cast<unsigned char>(c), 0x7F) << chapter;
}

/// What stands behind each `mark` up to the next quotation mark.
std::set<std::string> QuotedBehind(const std::string& mark, std::string_view page)
{
    std::set<std::string> quoted;
    for (std::size_t at = page.find(mark); at != kiv::npos; at = page.find(mark, at)) {
        at += mark.size();
        quoted.emplace(page.substr(at, page.find('"', at) - at));
    }
    return quoted;
}

TEST_F(ManualPages, LinksLeadSomewhere)
{
    std::map<std::string, std::set<std::string>> places;
    for (const std::string& name : PageNames())
        places[name] = QuotedBehind("id=\"", Page(name));
    std::size_t count = 0;
    for (const std::string& name : PageNames()) {
        // Links inside the examples are escaped, so none of them is taken for one.
        for (const std::string& link : QuotedBehind("href=\"", Page(name))) {
            const std::string file = link.substr(0, link.find('#'));
            if (file.find(':') != kiv::npos) // an address outside
                continue;
            const std::string& target = file.empty() ? name : file;
            EXPECT_FALSE(Page(target).empty()) << name << " links to " << target;
            if (file.size() + 1 < link.size()) {
                EXPECT_THAT(places[target], Contains(link.substr(file.size() + 1))) << name;
            }
            ++count;
        }
    }
    EXPECT_GT(count, 500U);
}

TEST_F(ManualPages, PicturesAreThere)
{
    const std::regex picture("<img src=\"images/([^\"]*)\" alt=\"[^\"]+\">");
    int count = 0;
    for (const std::string& name : PageNames()) {
        const std::string& page = Page(name);
        for (std::sregex_iterator at(page.begin(), page.end(), picture), end; at != end; ++at) {
            const fs::path file = fs::path(KIV_ROOT) / "docs" / "images" / (*at)[1].str();
            EXPECT_TRUE(fs::exists(file)) << name << " shows " << file;
            ++count;
        }
    }
    EXPECT_GT(count, 0);
}

/// What a page shows of an example's file, without CR and with a line end at its end.
std::string ShownFile(const std::string& page, int line, const std::string& kind,
                      const std::string& name)
{
    const std::size_t begin = page.find("id=\"line" + std::to_string(line) + "\"");
    const std::size_t end = std::min(page.find("<div class=\"example\"", begin), page.size());
    const std::string tag =
        "<pre class=\"" + kind + "\" data-name=\"" + kiv::manual::Escaped(name) + "\">";
    const std::size_t at = page.find(tag, begin);
    if (begin == kiv::npos || at == kiv::npos || at > end)
        return "(not shown)";
    std::size_t from = at + tag.size();
    if (page[from] == '\n') // not shown by a browser
        ++from;
    return Unescaped(page.substr(from, page.find("</pre>", at) - from));
}

std::string AsShown(const std::string& name, std::string bytes)
{
    if (bytes.find('\0') != std::string::npos)
        return name.ends_with(".txt") ? "(UTF-16)\n" : "(a picture)\n";
    std::erase(bytes, '\r');
    if (!bytes.empty() && !bytes.ends_with('\n'))
        bytes += '\n';
    return bytes;
}

TEST_F(ManualPages, ShowWhatTheirTestsRun)
{
    int shown = 0;
    for (const fs::path& chapter : Chapters()) {
        std::string page = Page(chapter.stem().string() + ".htm");
        std::erase(page, '\r');
        for (const Case& one : ReadCaseFile(chapter.string())) {
            const int line = std::stoi(one.place.substr(one.place.find(':') + 1));
            for (const auto& [name, bytes] : one.in)
                EXPECT_EQ(ShownFile(page, line, "in", name), AsShown(name, bytes)) << one.place;
            for (const auto& [name, bytes] : one.out)
                EXPECT_EQ(ShownFile(page, line, "out", name), AsShown(name, bytes)) << one.place;
            shown += static_cast<int>(one.in.size() + one.out.size());
        }
    }
    EXPECT_GT(shown, 300);
}

} // namespace
