#include "shell/page_fates.h"

#include "platform/drive_path.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>

namespace kiv {

namespace {

std::string KeyOf(const ListedPage& page)
{
    return UpperCase(page.path) + '|' + page.file;
}

/// A warning has the page's name as the build knew it, which loses its folders and its extension
/// when another page has asked for it.
bool IsOf(const Warning& warning, const ListedPage& page)
{
    if (warning.where.page.empty())
        return false;
    const std::string& name = warning.where.page;
    return name == page.file || EqualsNoCase(name, Before(NameOf(page.file), '.'));
}

template <typename Entry>
std::span<const Entry> Part(const std::vector<Entry>& entries, const EntryRange& range)
{
    const std::size_t to = std::min(range.to, entries.size());
    const std::size_t from = std::min(range.from, to);
    return std::span(entries).subspan(from, to - from);
}

/// By upper-cased path; of a file that was written several times the last.
std::map<std::string, WrittenFile> FilesOf(std::span<const WrittenFile> written)
{
    std::map<std::string, WrittenFile> files;
    for (const WrittenFile& file : written)
        files.insert_or_assign(UpperCase(file.path), file);
    return files;
}

PageFate FateOf(const WrittenFile& file)
{
    if (!file.changed)
        return PageFate::same;
    return file.is_new ? PageFate::made : PageFate::changed;
}

std::string WhyUnwritten(const BuiltSection& built, const std::string& error)
{
    if (built.is_whole)
        return "it is no page of its own in this build";
    return error.empty() ? "the build was stopped before it"
                         : "the build ended before it: " + error;
}

} // namespace

void PageFates::TakeSection(const BuiltSection& built, const BuildTale& tale,
                            const SiteSection& section)
{
    const std::map<std::string, WrittenFile> files = FilesOf(Part(tale.written, built.written));
    for (const SitePage& page : section.pages) {
        Fate fate;
        const auto file = files.find(UpperCase(page.listed.path));
        if (page.covered_by != 0)
            fate = {PageFate::unwritten,
                    "page " + Decimal(page.covered_by) + " goes to the same file"};
        else if (file != files.end())
            fate.fate = FateOf(file->second);
        else
            fate = {PageFate::unwritten, WhyUnwritten(built, tale.error)};
        for (const Warning& warning : Part(tale.warnings, built.warnings))
            fate.warnings += IsOf(warning, page.listed) ? 1 : 0;
        fates_.insert_or_assign(KeyOf(page.listed), std::move(fate));
    }
}

void PageFates::Take(const BuildTale& tale, const SitePages& site)
{
    for (const BuiltSection& built : tale.sections)
        for (const SiteSection& section : site.sections)
            if (EqualsNoCase(section.folder, built.folder))
                TakeSection(built, tale, section);
}

void PageFates::AddTo(SitePages& site) const
{
    for (SiteSection& section : site.sections)
        for (SitePage& page : section.pages) {
            const auto known = fates_.find(KeyOf(page.listed));
            if (known == fates_.end())
                continue;
            page.fate = known->second.fate;
            page.reason = known->second.reason;
            page.warnings = known->second.warnings;
        }
}

} // namespace kiv
