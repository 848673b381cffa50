#include "inspect/address_walk.h"

#include "platform/drive_path.h"
#include "text/nearest.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <utility>
#include <vector>

namespace kiv {

namespace {

bool IsRoot(std::string_view folder)
{
    return NameOf(folder).empty();
}

/// The name that was most likely meant; "" when none is near.
std::string_view NearestName(std::string_view name, const FolderNames& names)
{
    std::vector<std::string_view> known;
    for (const std::vector<std::string>* list : {&names.files, &names.folders})
        for (const std::string& other : *list)
            if (!other.starts_with('_') && !other.starts_with('.'))
                known.emplace_back(other);
    const std::string_view near = Nearest(name, known);
    if (!near.empty() || Contains(name, "."))
        return near;
    for (const std::string_view other : known) // its kind was left out
        if (other.size() > name.size() && other[name.size()] == '.' &&
            UpperCase(other.substr(0, name.size())) == UpperCase(name))
            return other;
    return {};
}

class Walker {
  public:
    Walker(FolderIndex& folders, std::string_view folder, std::string_view path)
        : folders_(folders), rest_(path)
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
            const std::string_view near = NearestName(part, names);
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
        const NameKind kind = folders_.Ask(end_.folder, part);
        end_.spelling.append(part).append(slash);
        if (kind == NameKind::folder) {
            end_.folder = WithSeparator(end_.folder).append(part);
            return true;
        }
        end_.name = part;
        if (kind == NameKind::unknown)
            end_.kind = WalkEnd::Kind::outside;
        else if (kind == NameKind::file && slash.empty())
            end_.kind = WalkEnd::Kind::file;
        else
            end_.kind = WalkEnd::Kind::missing, end_.spelling.clear(), rest_ = {};
        return false;
    }

    FolderIndex& folders_;
    std::string_view rest_;
    WalkEnd end_;
};

} // namespace

std::string WalkEnd::Path() const
{
    return name.empty() ? folder : WithSeparator(folder) + name;
}

WalkEnd Walk(FolderIndex& folders, std::string_view folder, std::string_view path)
{
    return Walker(folders, folder, path).Go();
}

} // namespace kiv
