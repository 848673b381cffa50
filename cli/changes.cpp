#include "cli/changes.h"

#include "cli/shown_path.h"
#include "cli/shown_text.h"

#include <algorithm>
#include <ostream>
#include <string_view>

namespace kiv {

namespace {

/// The program that reads the list would take such a name for a comment or an option.
bool NeedsAFolder(const std::string& relative)
{
    return relative.find_first_of("#;-") == 0;
}

/// Tells the first of the files that were written at a place from those behind it.
class EachOnce {
  public:
    explicit EachOnce(std::span<const WrittenFile> files)
    {
        if (files.empty())
            return;
        const auto [least, most] = std::ranges::minmax_element(files, {}, &WrittenFile::place);
        least_ = least->place;
        came_.resize(most->place - least_ + 1);
    }
    bool IsFirst(const WrittenFile& file)
    {
        const std::size_t place = file.place - least_;
        const bool is_first = !came_[place];
        came_[place] = true;
        return is_first;
    }

  private:
    std::size_t least_ = 0;
    std::vector<bool> came_; // by place, from the least one on
};

} // namespace

ChangeCount CountChanges(std::span<const WrittenFile> files)
{
    ChangeCount count;
    EachOnce once(files);
    for (const WrittenFile& file : files) {
        if (!once.IsFirst(file))
            continue;
        ++count.written;
        count.changed += file.changed ? 1 : 0;
    }
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
    EachOnce once(files);
    std::vector<std::string> changed;
    for (const WrittenFile& file : files) {
        if (!file.changed || !once.IsFirst(file))
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
