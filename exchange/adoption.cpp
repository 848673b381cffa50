#include "exchange/adoption.h"

#include "exchange/adopted_sections.h"
#include "exchange/page_links.h"
#include "exchange/page_titles.h"
#include "exchange/protected_line.h"
#include "exchange/trial_build.h"
#include "platform/drive_path.h"
#include "platform/exact_names.h"
#include "platform/file_errors.h"
#include "platform/folder_work.h"
#include "platform/run_error.h"
#include "platform/site_files.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <set>
#include <utility>

namespace kiv {

namespace {

constexpr std::size_t kLongestTitle = 300;

std::string StemOf(const std::string& name)
{
    const std::size_t slash = name.rfind('/');
    return std::string(Before(std::string_view(name).substr(slash == npos ? 0 : slash + 1), '.'));
}

/// A title that a list can hold, and that comes out of a build as it is.
std::string TitleFor(const std::string& title, const std::string& name)
{
    const bool is_plain =
        !title.empty() && title.size() <= kLongestTitle && ProtectedPart(title) == title;
    return is_plain ? title : StemOf(name);
}

/// What a page record says of a name: only these endings are known there.
std::string RecordName(const std::string& name)
{
    const bool is_known =
        name.ends_with(".htm") || name.ends_with(".html") || name.ends_with(".asp");
    return is_known ? name : name + ".htm";
}

/// A build that finds such a page takes it for the start.
bool HasOtherStart(const PlannedPage& page)
{
    return EqualsNoCase(page.name, "index.html") || EqualsNoCase(page.name, "index.asp");
}

/// What the variables of page `i` of a list stand for. Before the first and behind the last page is
/// a start page; where that depends on what was built before, it is left open.
CodeValues ValuesOf(const std::vector<PlannedPage>& pages, std::size_t i, bool writes_above)
{
    CodeValues values;
    const auto neighbour = [&](std::size_t at, Code file, Code title) {
        values[title] = pages[at].title;
        if (!pages[at].name.starts_with(".."))
            values[file] = RecordName(pages[at].name);
    };
    const bool knows_start = std::ranges::none_of(pages, HasOtherStart);
    const auto start = [&](Code file, Code title) {
        values[title] = "Return to Start";
        values[file] = knows_start ? "index.htm" : "";
    };
    if (i > 0)
        neighbour(i - 1, Code::prev, Code::prev_title);
    else
        start(Code::prev, Code::prev_title);
    if (i + 1 < pages.size())
        neighbour(i + 1, Code::next, Code::next_title);
    else
        start(Code::next, Code::next_title);
    values[Code::title] = pages[i].title;
    values[Code::file] = RecordName(pages[i].name);
    if (!writes_above)
        values[Code::stem] = Before(pages[i].name, '.');
    values[Code::number] = std::to_string(i + 1);
    values[Code::count] = std::to_string(pages.size());
    values.menu_name = RecordName(pages[i].name);
    return values;
}

/// One list and its pages, until they come out right.
class SectionWork {
  public:
    SectionWork(Machine& machine, const OldSite& site, const SectionPages& section,
                const std::vector<PageHints>& hints, const std::string& target);

    /// Finds sources that give back the pages, page by page in the freest way that does.
    void FindSources();
    const SourceTexts& Texts() const { return texts_; }
    const std::string& Folder() const { return folder_; }
    void Tell(Adoption& adoption) const;

  private:
    void PlanWays(std::vector<ComparedPage> compared);
    bool TryOnce();
    void Compare(const UnwrittenFiles& files);
    bool StepDown(const Trial& trial);
    void GoOnWith(std::size_t page, const std::string& why);

    Machine& machine_;
    const SectionPages& section_;
    std::string folder_;       // of the list
    std::string pages_folder_; // that its pages are written into
    SectionPlan plan_;
    SourceTexts texts_;
    std::vector<PageComparison> results_;
    std::vector<std::string> reasons_;
};

/// Folders for what is included that nothing of the old site has the name of.
std::string FreeName(const OldSite& site, const SectionPages& section, std::string name)
{
    const auto is_taken = [&](const std::string& file) {
        return StartsWithNoCase(file, section.pages_folder + name + "/");
    };
    while (std::ranges::any_of(site.others, is_taken) ||
           std::ranges::any_of(site.pages, is_taken, &FoundPage::name))
        name += '_';
    return name;
}

SectionWork::SectionWork(Machine& machine, const OldSite& site, const SectionPages& section,
                         const std::vector<PageHints>& hints, const std::string& target)
    : machine_(machine), section_(section), folder_(AbsolutePath(section.folder, target)),
      pages_folder_(AbsolutePath(section.pages_folder, target)), results_(section.pages.size()),
      reasons_(section.pages.size())
{
    plan_.name = NameOf(site.folder);
    plan_.writes_above = section.writes_above;
    plan_.parts = FreeName(site, section, "_parts");
    plan_.texts = FreeName(site, section, "_text");
    std::vector<std::string> titles;
    for (const std::size_t page : section.pages)
        titles.push_back(hints[page].title);
    titles = ShortTitles(titles);
    for (std::size_t i = 0; i < section.pages.size(); ++i) {
        PlannedPage& page = plan_.pages.emplace_back();
        page.page = &site.pages[section.pages[i]];
        page.name = page.page->name.substr(section.pages_folder.size());
        page.title = TitleFor(titles[i], page.name);
        page.way = Way::naked;
    }
    // A page reference cuts the folders off a page's name for good: with such names there are none.
    const bool has_folders = std::ranges::any_of(
        plan_.pages, [](const PlannedPage& page) { return Contains(page.name, "/"); });
    std::vector<ComparedPage> compared;
    for (std::size_t i = 0; i < plan_.pages.size(); ++i) {
        compared.push_back(
            {&plan_.pages[i].page->lines, ValuesOf(plan_.pages, i, plan_.writes_above)});
        if (has_folders)
            compared.back().values.menu_name.clear();
    }
    PlanWays(std::move(compared));
}

/// The template for those that have its mark; what the others share.
void SectionWork::PlanWays(std::vector<ComparedPage> compared)
{
    std::vector<std::string> names;
    names.reserve(compared.size());
    for (const ComparedPage& page : compared)
        names.push_back(page.values.menu_name);
    MenuForms menus(names);
    plan_.fit = FitTemplate(compared, menus);
    static const std::vector<std::string_view> no_lines;
    for (std::size_t i = 0; i < plan_.pages.size(); ++i)
        if (plan_.fit.pages[i].fits) {
            plan_.pages[i].way = Way::templated;
            compared[i].lines = &no_lines;
        }
    plan_.families = FindFamilies(compared, menus);
    for (std::size_t family = 0; family < plan_.families.size(); ++family)
        for (const std::size_t page : plan_.families[family].pages) {
            plan_.pages[page].way = Way::shared;
            plan_.pages[page].family = family;
        }
    for (std::size_t i = 0; i < plan_.pages.size(); ++i)
        if (plan_.pages[i].way == Way::naked)
            reasons_[i] = "it has too little of what the others share";
    std::vector<OwnText> own;
    for (std::size_t i = 0; i < plan_.pages.size(); ++i)
        own.push_back({&plan_.pages[i].page->lines, OwnSpansOf(plan_, i)});
    plan_.pieces = FindPieces(own);
}

void SectionWork::Compare(const UnwrittenFiles& files)
{
    for (std::size_t i = 0; i < plan_.pages.size(); ++i) {
        const std::string* const made =
            files.Content(AbsolutePath(plan_.pages[i].name, pages_folder_));
        results_[i] = ComparePages(plan_.pages[i].page->bytes, made == nullptr ? "" : *made);
        if (made == nullptr)
            results_[i].likeness = Likeness::different;
    }
}

void SectionWork::GoOnWith(std::size_t page, const std::string& why)
{
    const bool is_literal = plan_.pages[page].way == Way::naked;
    plan_.pages[page].way = is_literal ? Way::as_is : Way::naked;
    reasons_[page] = why;
}

/// Takes the pages that did not come out as they were in a more literal way. Returns whether there
/// is one that can.
bool SectionWork::StepDown(const Trial& trial)
{
    bool is_changed = false;
    for (std::size_t i = 0; i < plan_.pages.size(); ++i) {
        const bool is_stopped =
            trial.fault && (trial.fault_page.empty() || trial.fault_page == plan_.pages[i].name ||
                            trial.fault_page == RecordName(plan_.pages[i].name));
        const bool is_different = !trial.fault && results_[i].likeness == Likeness::different;
        const bool is_warned = trial.warned.contains(plan_.pages[i].name) ||
                               trial.warned.contains(RecordName(plan_.pages[i].name));
        if (plan_.pages[i].way == Way::as_is || !(is_stopped || is_different || is_warned))
            continue;
        GoOnWith(i, is_stopped     ? *trial.fault
                    : is_different ? LikenessWords(results_[i]) + " in a freer way"
                                   : "a build would have warned of it");
        is_changed = true;
    }
    return is_changed;
}

bool SectionWork::TryOnce()
{
    texts_ = MakeSources(plan_);
    UnwrittenFiles files(machine_.files);
    const Trial trial = BuildTrial(machine_, files, folder_, texts_);
    Compare(files);
    return !StepDown(trial);
}

void SectionWork::FindSources()
{
    // A page has three ways, and a fault that stops a build is found for one page at a time.
    for (std::size_t tries = 0; tries < 2 * plan_.pages.size() + 2; ++tries)
        if (TryOnce())
            return;
}

void SectionWork::Tell(Adoption& adoption) const
{
    adoption.sections.push_back(section_.folder);
    for (std::size_t i = 0; i < plan_.pages.size(); ++i)
        adoption.pages.push_back({plan_.pages[i].page->name, section_.folder,
                                  WayWords(plan_.pages[i].way), results_[i], reasons_[i]});
}

void Report(Reporter& reporter, const Adoption& adoption)
{
    std::size_t bytes = 0;
    std::size_t lines = 0;
    for (const AdoptedPage& page : adoption.pages) {
        bytes += page.comparison.likeness == Likeness::same_bytes ? 1U : 0U;
        lines += page.comparison.likeness == Likeness::same_lines ? 1U : 0U;
        if (page.comparison.likeness == Likeness::different)
            reporter.reportmsg(
                Joined({OnOneLine(page.name), " does not come out as it was: line ",
                        Decimal(page.comparison.line), " was \"", page.comparison.was,
                        "\" and is \"", page.comparison.is, "\""}),
                {}, "Look at this page in the new site before you put it out.");
    }
    for (const LeftOut& left_out : adoption.left_out)
        reporter.reportmsg(Joined({OnOneLine(left_out.name), " was left out: it ", left_out.why}));
    std::string status = Joined({Decimal(static_cast<long long>(adoption.pages.size())),
                                 adoption.pages.size() == 1 ? " page" : " pages",
                                 " adopted: ", std::to_string(bytes), " with the same bytes, ",
                                 std::to_string(lines), " the same but for line ends"});
    if (bytes + lines < adoption.pages.size())
        Append(status, {", ", std::to_string(adoption.pages.size() - bytes - lines), " different"});
    reporter.Status(status);
}

/// What stands beside the pages, and pages that no list can write.
class Copies {
  public:
    Copies(Files& files, const OldSite& site, const std::string& target)
        : files_(files), site_(site), target_(target)
    {
    }

    void MakeFolders()
    {
        std::set<std::string> made;
        const auto make = [&](const std::string& name) {
            const std::string folder(FolderOf(AbsolutePath(name, target_)));
            if (made.insert(folder).second)
                NeedFolder(files_, folder);
        };
        for (const FoundPage& page : site_.pages)
            make(page.name);
        std::ranges::for_each(site_.others, make);
    }

    void CopyOthers()
    {
        for (const std::string& name : site_.others)
            files_.WriteFile(AbsolutePath(name, target_),
                             files_.ReadFile(AbsolutePath(name, site_.folder)));
    }

    /// The page is compared with what is there then.
    AdoptedPage CopyPage(const FoundPage& page)
    {
        const std::string path = AbsolutePath(page.name, target_);
        files_.WriteFile(path, page.bytes);
        return {page.name, "", "copied", ComparePages(page.bytes, files_.ReadFile(path)),
                "a page list writes no page of this name"};
    }

  private:
    Files& files_;
    const OldSite& site_;
    const std::string& target_;
};

void WriteSources(Files& files, const SectionWork& section)
{
    for (const auto& [name, text] : section.Texts()) {
        const std::string path = AbsolutePath(name, section.Folder());
        NeedFolder(files, std::string(FolderOf(path)));
        files.WriteNewSource(path, text);
    }
}

void WriteGroup(Files& files, const std::vector<SectionPages>& sections, const std::string& target)
{
    std::string group;
    for (const SectionPages& section : sections)
        if (!section.folder.empty())
            group += section.folder + "\r\n";
    if (!group.empty())
        files.WriteNewSource(AbsolutePath(kGroupFile, target), group);
}

/// The nearest folder that is there, at or above a path.
std::string FolderThatIsThere(Files& files, std::string path)
{
    while (!files.FolderExists(path) && FolderOf(path) != path)
        path = FolderOf(path);
    return path;
}

} // namespace

std::string_view WayWords(Way way)
{
    switch (way) {
    case Way::templated:
        return "template";
    case Way::shared:
        return "shared";
    case Way::naked:
        return "naked";
    case Way::as_is:
        break;
    }
    return "as it is";
}

void RefuseTarget(Files& files, const std::string& folder, const std::string& target)
{
    if (!files.FolderExists(folder))
        Refuse("read", folder, kNoSuchFolder);
    const auto place_of = [&](const std::string& path) {
        return UpperCase(NativeName(files.RealFolder(path)));
    };
    if (IsAtOrBelow(UpperCase(target), UpperCase(folder)) ||
        IsAtOrBelow(place_of(FolderThatIsThere(files, target)), place_of(folder)))
        throw RunError(ErrorKind::invalid_argument, "the new site would lie in the old folder", {},
                       "Name a folder outside it with --to: nothing is ever written there.");
    if (!files.FolderExists(target))
        return;
    const bool is_empty =
        files.List(target, "*.*").files.empty() && files.ListFolders(target).empty();
    if (!is_empty)
        throw RunError(ErrorKind::invalid_argument, target + " is not empty", {target, 0, {}},
                       "Name a new folder with --to: what is there is not written over.");
}

Adoption AdoptSite(Machine& machine, const std::string& folder, const std::string& target)
{
    Files& files = machine.files;
    const OldSite site = ReadOldSite(machine, folder);
    std::vector<PageHints> hints;
    for (const FoundPage& page : site.pages)
        hints.push_back(HintsOf(page.bytes));
    PageOrder order = OrderPages(site.pages, hints);
    std::vector<std::size_t> copied = order.pages;
    const auto can_be_written = [&](std::size_t page) {
        return CanBeWritten(site.pages[page].name);
    };
    std::erase_if(copied, can_be_written);
    std::erase_if(order.pages, [&](std::size_t page) { return !can_be_written(page); });
    const std::vector<SectionPages> sections = PartIntoSections(site.pages, order.pages);

    Adoption adoption;
    adoption.folder = folder;
    adoption.target = target;
    adoption.left_out = site.left_out;
    adoption.ordered_by = order.by;
    adoption.others = site.others.size();
    machine.reporter.Status("Begun but not finished: nothing is adopted yet");
    Copies copies(files, site, target);
    copies.MakeFolders();
    int done = 0;
    for (const SectionPages& pages : sections) {
        NeedFolder(files, AbsolutePath(pages.folder, target));
        SectionWork section(machine, site, pages, hints, target);
        section.FindSources();
        WriteSources(files, section);
        section.Tell(adoption);
        machine.reporter.Step(++done, static_cast<int>(sections.size()));
    }
    WriteGroup(files, sections, target);
    for (const std::size_t page : copied)
        adoption.pages.push_back(copies.CopyPage(site.pages[page]));
    copies.CopyOthers();
    files.FlushWritten();
    Report(machine.reporter, adoption);
    return adoption;
}

} // namespace kiv
