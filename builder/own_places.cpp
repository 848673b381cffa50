#include "builder/own_places.h"

#include "builder/output_path.h"
#include "platform/drive_path.h"
#include "platform/run_error.h"
#include "platform/site_files.h"
#include "text/windows1252.h"

#include <algorithm>
#include <utility>

namespace kiv {

namespace {

/// Whether two names in UTF-8 may be one, case aside. A letter takes as many bytes as its capital.
bool MayBeAlike(std::string_view name, std::string_view other)
{
    const auto may_be = [](char a, char b) {
        const auto is_beyond = [](char c) { return (static_cast<unsigned char>(c) & 0x80U) != 0; };
        return ToLower(a) == ToLower(b) || (is_beyond(a) && is_beyond(b));
    };
    return name.size() == other.size() && std::ranges::equal(name, other, may_be);
}

} // namespace

/// Few pages bear the name of such a file, and only for these is the place worked out.
OwnPlaces::Kind OwnPlaces::KindOf(const OutputFile& page)
{
    Learn();
    const std::string_view name = WithoutFolders(page.native);
    if (std::ranges::none_of(names_, [&](const std::string& one) { return MayBeAlike(one, name); }))
        return Kind::nothing;
    const auto found = kinds_.find(files_.PlaceOf(page));
    return found == kinds_.end() ? Kind::nothing : found->second;
}

void OwnPlaces::Learn()
{
    if (kinds_.empty()) {
        for (const std::string_view settings : kOwnSettings)
            Add(settings, Kind::settings);
        for (const std::string_view source : {kQuizScriptFile, kGroupFile, kCheckFile})
            Add(source, Kind::source);
    }
    for (; learned_ < sources_.Files().size(); ++learned_)
        Add(sources_.Files()[learned_], Kind::source);
}

/// What cannot be looked up cannot be written over either. Most users have no settings at all:
/// their folder is looked for once, and nothing is thrown for it, which would take longer than a
/// small build.
void OwnPlaces::Add(std::string_view path, Kind kind)
{
    try {
        const std::string absolute = AbsolutePath(path, files_.CurrentDirectory());
        const std::string_view folder = FolderOf(absolute);
        const auto [known, is_new] = folders_.try_emplace(UpperCase(folder));
        if (is_new)
            known->second = files_.FolderExists(folder);
        if (!known->second)
            return;
        const OutputFile file = files_.Open(path);
        std::string place = files_.PlaceOf(file);
        if (place.empty())
            return;
        kinds_.insert_or_assign(std::move(place), kind);
        names_.emplace_back(WithoutFolders(file.native));
    } catch (const RunError&) {
    }
}

} // namespace kiv
