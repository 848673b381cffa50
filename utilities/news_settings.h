// The user's configuration of the news composer: sites, publications, the name to highlight.
#pragma once

#include "platform/files.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// The frame "Website" has so many options.
inline constexpr std::size_t kMaxPresets = 18;

/// One option of the frame "Website".
struct SitePreset {
    std::string label;
    std::string folder; // full path, ends in "\"
    std::string tag;
    std::string reminder;    // shown when the option is chosen
    std::string home_folder; // full path, ends in "\"; empty: no second page list
    bool highlight = false;  // the highlight name is marked in the text
};

/// A publication and the prefix of the file names of its articles.
struct Publication {
    std::string code;
    std::string name;
};

struct NewsSettings {
    std::vector<SitePreset> presets;       // at most 18
    std::vector<Publication> publications; // the two built-in rows first
    std::string highlight_name;
};

/// What the option is called: its label; without one its tag, else its folder.
const std::string& CaptionOf(const SitePreset& preset);

/// Whether this is the scratch site "C:\temp\", whose folders are made when missing.
bool IsScratchSite(const SitePreset& preset);

/// Reads the settings; without a file there is the scratch site alone. Throws RunError of kind
/// `subscript` for a 19th preset.
NewsSettings ReadNewsSettings(Files& files);

} // namespace kiv
