#include "inspect/address_walk.h"

#include "platform/drive_path.h"
#include "text/text.h"

#include <utility>

namespace kiv {

namespace {

bool IsRoot(std::string_view folder)
{
    return NameOf(folder).empty();
}

/// The name that was most likely meant; "": none is near.
std::string NearestName(std::string_view name, const FolderNames& names, bool is_last,
                        NameKind kind)
{
    if (name.starts_with('_'))
        return {}; // no visitor is to see what has such a name
    const std::string_view file =
        is_last ? NearestFileName(name, names.files, kind) : std::string_view();
    return std::string(file.empty() ? NearestFileName(name, names.folders, NameKind::same_extension)
                                    : file);
}

class Walker {
  public:
    Walker(FolderIndex& folders, std::string_view folder, std::string_view path, NameKind kind)
        : folders_(folders), rest_(path), kind_(kind)
    {
        end_.folder = folder;
        end_.kind = WalkEnd::Kind::folder;
    }

    WalkEnd Go()
    {
        while (!rest_.empty() && Step()) {
        }
        if (end_.kind == WalkEnd::Kind::missing)
            end_.spelling.append(rest_);
        return std::move(end_);
    }

  private:
    /// Returns whether the way goes on.
    bool Step()
    {
        const std::string_view part = Before(rest_, '/');
        const bool is_last = part.size() == rest_.size();
        rest_.remove_prefix(is_last ? part.size() : part.size() + 1);
        const std::string slash = is_last ? "" : "/";
        if (part.empty() || part == "." || part == "..") {
            end_.spelling.append(part).append(slash);
            return part != ".." || GoUp();
        }
        return GoInto(part, slash);
    }

    bool GoUp()
    {
        if (IsRoot(end_.folder)) {
            end_.kind = WalkEnd::Kind::outside;
            return false;
        }
        end_.folder = std::string(FolderOf(end_.folder));
        return true;
    }

    bool GoInto(std::string_view part, const std::string& slash)
    {
        const FolderNames& names = folders_.Of(end_.folder);
        if (!names.is_known)
            return GoUnlisted(part, slash);
        const std::string* const folder = FolderNames::Find(names.folders, part);
        const std::string* const file =
            slash.empty() ? FolderNames::Find(names.files, part) : nullptr;
        const std::string* const found = file != nullptr ? file : folder;
        if (found == nullptr) {
            end_.kind = WalkEnd::Kind::missing;
            end_.name = part;
            const std::string near = NearestName(part, names, slash.empty(), kind_);
            if (near.empty())
                end_.spelling.clear(), rest_ = {};
            else
                end_.spelling.append(near).append(slash);
            return false;
        }
        end_.is_misspelled |= *found != part;
        end_.spelling.append(*found).append(slash);
        if (file != nullptr) {
            end_.kind = WalkEnd::Kind::file;
            end_.name = *file;
            return false;
        }
        end_.folder = WithSeparator(end_.folder) + *folder;
        return true;
    }

    /// Nothing can be said of spelling there.
    bool GoUnlisted(std::string_view part, const std::string& slash)
    {
        const EntryKind kind = folders_.Ask(end_.folder, part);
        end_.spelling.append(part).append(slash);
        if (kind == EntryKind::folder) {
            end_.folder = WithSeparator(end_.folder).append(part);
            return true;
        }
        end_.name = part;
        if (kind == EntryKind::unknown)
            end_.kind = WalkEnd::Kind::outside;
        else if (kind == EntryKind::file && slash.empty())
            end_.kind = WalkEnd::Kind::file;
        else
            end_.kind = WalkEnd::Kind::missing, end_.spelling.clear(), rest_ = {};
        return false;
    }

    FolderIndex& folders_;
    std::string_view rest_;
    NameKind kind_;
    WalkEnd end_;
};

} // namespace

std::string WalkEnd::Path() const
{
    return name.empty() ? folder : WithSeparator(folder) + name;
}

WalkEnd Walk(FolderIndex& folders, std::string_view folder, std::string_view path, NameKind kind)
{
    return Walker(folders, folder, path, kind).Go();
}

} // namespace kiv
