#include "inspect/near_names.h"

#include "inspect/page_names.h"
#include "text/nearest.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <cstddef>

namespace kiv {

namespace {

constexpr std::size_t kLongestName = 100; // letters; nobody is told the name of a longer one

/// Files whose names begin so are none that visitors are to see.
bool IsHidden(std::string_view name)
{
    return name.starts_with('_') || name.starts_with('.');
}

bool IsOfKind(std::string_view name, NameKind kind)
{
    return (kind == NameKind::page && IsPageName(name)) ||
           (kind == NameKind::picture && IsPictureName(name));
}

/// The name before its extension.
std::string_view StemOf(std::string_view name)
{
    return name.substr(0, std::min(name.rfind('.'), name.size()));
}

/// How many letters differ; npos: the one is never meant by the other.
std::size_t StepsTo(std::string_view name, std::string_view other, NameKind kind)
{
    const std::string stem = LowerCase(StemOf(name));
    const std::string other_stem = LowerCase(StemOf(other));
    const std::string extension = LowerCase(name.substr(stem.size()));
    const std::string other_extension = LowerCase(other.substr(other_stem.size()));
    const bool is_of_kind = IsOfKind(other, kind);
    if (extension.empty() && is_of_kind)
        return stem == other_stem ? 0 : npos;
    if (extension != other_extension && !is_of_kind)
        return npos;
    const bool is_same = extension == other_extension || IsOfKind(name, kind);
    const std::size_t most = stem.size() / 3;
    const std::size_t shorter = std::min(stem.size(), other_stem.size());
    const std::size_t longer = std::max(stem.size(), other_stem.size());
    if (longer - shorter > most)
        return npos;
    return EditDistance(stem, other_stem, most) +
           (is_same ? 0 : EditDistance(extension, other_extension));
}

} // namespace

std::string_view NearestFileName(std::string_view name, std::span<const std::string> names,
                                 NameKind kind)
{
    if (name.size() > kLongestName)
        return {};
    std::string_view nearest;
    std::size_t least = StemOf(name).size() / 3 + 1;
    for (const std::string& other : names) {
        if (IsHidden(other) && !IsHidden(name))
            continue;
        const std::size_t steps = StepsTo(name, other, kind);
        if (steps < least) {
            least = steps;
            nearest = other;
        }
    }
    return nearest;
}

} // namespace kiv
