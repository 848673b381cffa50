#include "platform/unwritten_files.h"

#include "platform/drive_path.h"
#include "platform/file_errors.h"
#include "platform/run_error.h"
#include "text/windows1252.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace kiv {

std::string UnwrittenFiles::KeyOf(std::string_view path) const
{
    return UpperCase(AbsolutePath(path, CurrentDirectory()));
}

const UnwrittenFiles::Kept* UnwrittenFiles::Find(std::string_view path) const
{
    if (path.empty() || IsSeparator(path.back()))
        return nullptr; // the name of no file
    const auto found = kept_.find(KeyOf(path));
    return found == kept_.end() ? nullptr : &found->second;
}

void UnwrittenFiles::Keep(std::string_view path, std::string bytes)
{
    std::string absolute = AbsolutePath(path, CurrentDirectory());
    if (std::ranges::find(written_, absolute) == written_.end())
        written_.push_back(absolute);
    kept_.insert_or_assign(UpperCase(absolute), Kept{absolute, std::move(bytes)});
}

const std::string* UnwrittenFiles::Content(std::string_view path) const
{
    const Kept* const kept = Find(path);
    return kept != nullptr && kept->bytes ? &*kept->bytes : nullptr;
}

bool UnwrittenFiles::IsAsOnDisk(const std::string& path)
{
    const std::string* const content = Content(path);
    try {
        return content != nullptr && real_.FileExists(path) && real_.ReadFile(path) == *content;
    } catch (const RunError&) {
        return false;
    }
}

std::vector<WrittenFile> UnwrittenFiles::WrittenFiles()
{
    std::vector<WrittenFile> files;
    std::unordered_map<std::string, std::size_t> places;
    for (const std::string& path : written_) {
        const std::size_t place = places.try_emplace(KeyOf(path), places.size()).first->second;
        files.push_back({path, place, !IsAsOnDisk(path)});
    }
    return files;
}

bool UnwrittenFiles::FileExists(std::string_view path)
{
    const Kept* const kept = Find(path);
    return kept != nullptr ? kept->bytes.has_value() : real_.FileExists(path);
}

std::string UnwrittenFiles::ReadFile(std::string_view path)
{
    const std::string* const content = Content(path);
    return content != nullptr ? *content : real_.ReadFile(path);
}

FileContent UnwrittenFiles::ReadContent(std::string_view path)
{
    const std::string* const content = Content(path);
    return content != nullptr ? FileContent(*content) : real_.ReadContent(path);
}

std::string UnwrittenFiles::ReadPart(std::string_view path, std::uint64_t offset, std::size_t count)
{
    const std::string* const content = Content(path);
    if (content == nullptr)
        return real_.ReadPart(path, offset, count);
    return offset < content->size() ? content->substr(offset, count) : std::string();
}

bool UnwrittenFiles::FolderExists(std::string_view path)
{
    return made_.contains(KeyOf(path)) || real_.FolderExists(path);
}

FileStamp UnwrittenFiles::Stamp(std::string_view path)
{
    const Kept* const kept = Find(path);
    if (kept == nullptr)
        return real_.Stamp(path);
    return kept->bytes ? FileStamp{kept->bytes->size(), 0, true} : FileStamp{};
}

/// In a folder that was made here there is nothing underneath to ask.
OutputFile UnwrittenFiles::Open(std::string_view path)
{
    const std::string absolute = AbsolutePath(path, CurrentDirectory());
    if (made_.contains(UpperCase(absolute)))
        Refuse("write", absolute, kFolderInTheWay);
    if (made_.contains(UpperCase(FolderOf(absolute))))
        return {absolute, {}, FileExists(path)};
    return real_.Open(path);
}

void UnwrittenFiles::Commit(const OutputFile& file, std::string_view bytes)
{
    Keep(file.path, std::string(bytes));
}

void UnwrittenFiles::AppendToFile(std::string_view path, std::string_view bytes)
{
    std::string content = FileExists(path) ? ReadFile(path) : std::string();
    Keep(path, content.append(bytes));
}

void UnwrittenFiles::CommitSource(const OutputFile& file, std::string_view bytes,
                                  const Expectation&)
{
    Keep(file.path, std::string(bytes));
}

/// Nobody else sees what is written here.
std::unique_ptr<FolderLock> UnwrittenFiles::LockFolder(std::string_view)
{
    return std::make_unique<FolderLock>();
}

bool UnwrittenFiles::MakeFolder(std::string_view path)
{
    const std::string absolute = AbsolutePath(path, CurrentDirectory());
    const bool is_place = !absolute.empty() && absolute.find('\0') == std::string::npos;
    if (!is_place || !FolderExists(FolderOf(absolute)) || NameIsTaken(absolute))
        return false;
    made_[UpperCase(absolute)] = absolute;
    return true;
}

bool UnwrittenFiles::DeleteFile(std::string_view path)
{
    if (!FileExists(path))
        return false;
    kept_[KeyOf(path)] = {AbsolutePath(path, CurrentDirectory()), std::nullopt};
    return true;
}

NameChange UnwrittenFiles::RenameFile(std::string_view from, std::string_view)
{
    Refuse("rename", from, "nothing is written to the disk");
}

NameChange UnwrittenFiles::RenameExactly(std::string_view from, std::string_view to)
{
    return RenameFile(from, to);
}

FolderListing UnwrittenFiles::List(std::string_view folder, std::string_view pattern)
{
    FolderListing listing;
    const std::string place = KeyOf(folder);
    if (!made_.contains(place))
        listing = real_.List(folder, pattern);
    const std::string before = WithSeparator(place);
    std::erase_if(listing.files, [&](const FileName& file) {
        return kept_.contains(before + UpperCase(file.text));
    });
    for (const auto& [key, kept] : kept_) {
        if (FolderOf(key) != place)
            continue;
        const std::string name(NameOf(kept.path));
        if (kept.bytes && FitsPattern(name, pattern))
            listing.files.push_back({name, name});
    }
    std::ranges::stable_sort(listing.files, {},
                             [](const FileName& file) { return UpperCase(file.text); });
    return listing;
}

std::vector<std::string> UnwrittenFiles::ListFolders(std::string_view folder)
{
    std::vector<std::string> folders;
    const std::string place = KeyOf(folder);
    if (!made_.contains(place))
        folders = real_.ListFolders(folder);
    for (const auto& [key, path] : made_)
        if (FolderOf(key) == place)
            folders.emplace_back(NameOf(path));
    std::ranges::stable_sort(folders, {}, [](const std::string& name) { return UpperCase(name); });
    return folders;
}

} // namespace kiv
