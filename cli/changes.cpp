#include "cli/changes.h"

#include "cli/shown_path.h"
#include "cli/shown_text.h"

#include <ostream>
#include <string_view>
#include <unordered_set>

namespace kiv {

namespace {

/// The program that reads the list would take such a name for a comment or an option.
bool NeedsAFolder(const std::string& relative)
{
    return relative.find_first_of("#;-") == 0;
}

} // namespace

ChangeCount CountChanges(std::span<const WrittenFile> files)
{
    std::unordered_set<std::string_view> places;
    places.reserve(files.size());
    ChangeCount count;
    for (const WrittenFile& file : files)
        if (places.insert(file.place).second)
            count.changed += file.changed ? 1 : 0;
    count.written = places.size();
    return count;
}

std::string ChangeWords(const ChangeCount& count)
{
    return std::to_string(count.changed) + " of " + std::to_string(count.written) +
           (count.written == 1 ? " file changed" : " files changed");
}

std::vector<std::string> ChangedPaths(std::span<const WrittenFile> files, NativePaths& paths,
                                      const std::string& folder)
{
    const std::string native_folder = NativeOrDrive(paths, folder);
    std::unordered_set<std::string_view> places;
    std::vector<std::string> changed;
    for (const WrittenFile& file : files) {
        if (!file.changed || !places.insert(file.place).second)
            continue;
        std::string path = SeenFrom(native_folder, NativeOrDrive(paths, file.path));
        changed.push_back(NeedsAFolder(path) ? "./" + path : std::move(path));
    }
    return changed;
}

void PrintPaths(std::ostream& out, const std::vector<std::string>& paths, bool ends_in_nul,
                bool is_terminal)
{
    for (const std::string& path : paths) {
        out << (is_terminal ? ShownUtf8Line(path) : path);
        out.put(ends_in_nul ? '\0' : '\n');
    }
}

} // namespace kiv
