#include "builder/own_places.h"

#include "platform/run_error.h"
#include "platform/site_files.h"

#include <utility>

namespace kiv {

OwnPlaces::Kind OwnPlaces::KindOf(const OutputFile& page)
{
    Learn();
    const auto found = kinds_.find(files_.PlaceOf(page));
    return found == kinds_.end() ? Kind::nothing : found->second;
}

void OwnPlaces::Learn()
{
    if (kinds_.empty()) {
        for (const std::string_view settings : kOwnSettings)
            Add(settings, Kind::settings);
        for (const std::string_view source : {kQuizScriptFile, kGroupFile})
            Add(source, Kind::source);
    }
    for (; learned_ < sources_.Files().size(); ++learned_)
        Add(sources_.Files()[learned_], Kind::source);
}

/// What cannot be looked up cannot be written over either.
void OwnPlaces::Add(std::string_view path, Kind kind)
{
    try {
        if (std::string place = files_.PlaceOf(files_.Open(path)); !place.empty())
            kinds_.insert_or_assign(std::move(place), kind);
    } catch (const RunError&) {
    }
}

} // namespace kiv
