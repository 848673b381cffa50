#include "shell/published_pages.h"

#include "exchange/web_address.h"
#include "exchange/xml_characters.h"
#include "inspect/declared_charset.h"
#include "platform/drive_path.h"
#include "platform/machine.h"
#include "platform/native_files.h"
#include "platform/run_error.h"
#include "shell/built_sections.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <array>

namespace kiv {

namespace {

bool IsDocument(std::string_view name)
{
    constexpr std::array<std::string_view, 3> kDocuments = {".htm", ".html", ".asp"};
    return std::ranges::any_of(kDocuments, [&](std::string_view extension) {
        return EqualsNoCase(LastChars(name, extension.size()), extension);
    });
}

bool LiesBelow(std::string_view path, const std::string& folder)
{
    return UpperCase(path).starts_with(UpperCase(folder));
}

std::string FolderOfSite(Machine& machine, const BuiltSections& sections)
{
    if (!sections.Roots().empty() && !sections.Roots().front().dir1.empty())
        return sections.Roots().front().dir1;
    return WithSeparator(AbsolutePath(".", machine.files.CurrentDirectory()));
}

/// Whether a page is one that a further pass wrote for another server.
bool IsCopy(const PageText& page, const OutputRoots& roots)
{
    return (!roots.asp.empty() && LiesBelow(page.path, roots.asp)) ||
           (!roots.htm.empty() && LiesBelow(page.path, roots.htm));
}

/// What keeps pages out of the files for the web.
struct LeftOutPages {
    std::size_t absent = 0;
    std::size_t elsewhere = 0;
};

void Tell(Reporter& reporter, const LeftOutPages& left_out, const std::string& folder)
{
    if (left_out.absent > 0)
        reporter.Withhold(Joined({"pages of the list that are not built yet and left out: ",
                                  std::to_string(left_out.absent)}),
                          {}, "Build the site first.");
    if (left_out.elsewhere > 0)
        reporter.Withhold(Joined({"pages of the group that do not lie in ", folder,
                                  " and are left out: ", std::to_string(left_out.elsewhere)}));
}

class Collector {
  public:
    Collector(Machine& machine, const BuiltSections& sections, std::string_view base)
        : machine_(machine), base_(base), site_{FolderOfSite(machine, sections), {}}
    {
    }

    void Add(const SiteView& view, const OutputRoots& roots)
    {
        for (const PageText& page : view.pages)
            if (page.number > 0 && !page.noindex && !page.redirects && IsDocument(page.path) &&
                !IsCopy(page, roots))
                Add(view, page);
    }

    PublishedSite Finish()
    {
        Tell(machine_.reporter, left_out_, site_.folder);
        if (site_.pages.empty())
            throw RunError(ErrorKind::file, "there are no pages in " + site_.folder, {site_.folder},
                           "Build the site first.");
        return std::move(site_);
    }

  private:
    void Add(const SiteView& view, const PageText& page)
    {
        if (!LiesBelow(page.path, site_.folder)) {
            ++left_out_.elsewhere;
            return;
        }
        if (!machine_.files.FileExists(page.path)) {
            ++left_out_.absent;
            return;
        }
        const std::string charset = DeclaredCharset(page.bytes);
        site_.pages.push_back(
            {&view, &page,
             WebAddress(base_, ToUtf8(std::string_view(page.path).substr(site_.folder.size()))),
             NativeFileTime(machine_.native_paths.ToNative(page.path)),
             charset == "utf-8" || charset == "utf8"});
    }

    Machine& machine_;
    std::string_view base_;
    PublishedSite site_;
    LeftOutPages left_out_;
};

} // namespace

std::string WebText(std::string_view text, bool is_utf8)
{
    return XmlCharacters(is_utf8 ? std::string(text) : ToUtf8(text));
}

PublishedSite PublishedPages(Machine& machine, const BuiltSections& sections, std::string_view base)
{
    Collector collector(machine, sections, base);
    for (std::size_t i = 0; i < sections.Views().size(); ++i)
        collector.Add(sections.Views()[i], sections.Roots()[i]);
    return collector.Finish();
}

void WriteMarkedFile(Machine& machine, const BuiltSections& sections, const std::string& path,
                     std::string_view mark, std::string_view text)
{
    constexpr std::size_t kLookedAt = 200;
    for (const SiteView& view : sections.Views())
        for (const PageText& page : view.pages)
            if (EqualsNoCase(page.path, path))
                throw RunError(ErrorKind::file, "a page of the list is written to " + path, {path},
                               "Call the page otherwise, or do without this file.");
    if (machine.files.NameIsTaken(path) &&
        (!machine.files.FileExists(path) ||
         !Contains(machine.files.ReadPart(path, 0, kLookedAt), mark)))
        throw RunError(ErrorKind::file, path + " is there already, and not made by kiv", {path},
                       "Move it away or call it otherwise: kiv writes over no file of yours.");
    machine.files.WriteFile(path, text);
}

} // namespace kiv
