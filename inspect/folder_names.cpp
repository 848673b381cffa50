#include "inspect/folder_names.h"

#include "platform/drive_path.h"
#include "platform/run_error.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>

namespace kiv {

const std::string* FolderNames::Find(const std::vector<std::string>& names, std::string_view name)
{
    const std::string upper = UpperCase(name);
    const auto upper_of = [](const std::string& other) { return UpperCase(other); };
    const auto first = std::ranges::lower_bound(names, upper, {}, upper_of);
    const std::string* found = nullptr;
    for (auto other = first; other != names.end() && UpperCase(*other) == upper; ++other)
        if (found == nullptr || *other == name)
            found = &*other;
    return found;
}

void FolderIndex::AddWritten(const std::string& path)
{
    try {
        const std::string native = files_.Open(path).native;
        const std::string name = FromUtf8(native.substr(native.find_last_of("/\\") + 1));
        if (UpperCase(name) == UpperCase(NameOf(path)))
            spelled_[UpperCase(path)] = name;
    } catch (const RunError&) {
        return; // it may not be written there, whatever its spelling
    }
}

EntryKind FolderIndex::Ask(std::string_view folder, std::string_view name)
{
    const FolderNames& names = Of(folder);
    if (FolderNames::Find(names.files, name) != nullptr)
        return EntryKind::file;
    if (names.is_known)
        return FolderNames::Find(names.folders, name) != nullptr ? EntryKind::folder
                                                                 : EntryKind::nothing;
    const std::string path = WithSeparator(folder).append(name);
    try {
        if (files_.FileExists(path))
            return EntryKind::file;
        return files_.FolderExists(path) ? EntryKind::folder : EntryKind::nothing;
    } catch (const RunError&) {
        return EntryKind::unknown;
    }
}

const FolderNames& FolderIndex::Of(std::string_view folder)
{
    const auto [entry, is_new] = folders_.try_emplace(UpperCase(folder));
    FolderNames& names = entry->second;
    if (!is_new)
        return names;
    try {
        names.files = files_.ListFiles(folder, "*.*");
        names.folders = files_.ListFolders(folder);
    } catch (const RunError&) {
        names.files.clear();
        names.is_known = false;
    }
    const std::string before = UpperCase(WithSeparator(folder));
    for (std::string& name : names.files)
        if (const auto spelled = spelled_.find(before + UpperCase(name)); spelled != spelled_.end())
            name = spelled->second;
    return names;
}

} // namespace kiv
