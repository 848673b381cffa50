#include "utilities/news_settings.h"

#include "platform/drive_path.h"
#include "platform/reporter.h"
#include "platform/run_error.h"
#include "platform/site_files.h"
#include "text/text.h"

#include <algorithm>

namespace kiv {

namespace {

constexpr std::string_view kSitesFolder = "C:\\internet\\";
constexpr std::string_view kScratchFolder = "C:\\temp\\";

/// A folder as it is configured, as a full path with "\" at its end.
std::string SiteFolder(std::string_view folder)
{
    std::string path(FromChar(folder, 2).starts_with(':') ? "" : kSitesFolder);
    path.append(folder);
    if (!path.ends_with('\\'))
        path += '\\';
    return path;
}

/// The trimmed field number `index` (0-based) of a line; empty when it is missing.
std::string Field(const std::vector<std::string_view>& fields, std::size_t index)
{
    return std::string(index < fields.size() ? Trim(fields[index]) : "");
}

SitePreset PresetOf(std::string_view line)
{
    const std::vector<std::string_view> fields = Split(line, '|');
    SitePreset preset;
    preset.label = Field(fields, 0);
    preset.folder = SiteFolder(Field(fields, 1));
    preset.tag = Field(fields, 2);
    preset.reminder = Field(fields, 3);
    const std::string home_folder = Field(fields, 4);
    if (!home_folder.empty())
        preset.home_folder = SiteFolder(home_folder);
    preset.highlight = !Field(fields, 5).empty();
    return preset;
}

void TakeSetting(NewsSettings& settings, std::string_view line)
{
    if (line.starts_with('*')) {
        settings.highlight_name = Trim(line.substr(1));
        return;
    }
    if (line.starts_with(';') || !Contains(line, "|"))
        return;
    if (line.starts_with('=')) {
        const std::vector<std::string_view> fields = Split(line.substr(1), '|');
        settings.publications.push_back({Field(fields, 0), Field(fields, 1)});
        return;
    }
    if (settings.presets.size() == kMaxPresets)
        throw RunError(ErrorKind::subscript, "more than 18 news sites", {},
                       "There is room for 18: take one out, or put \";\" before its line.");
    settings.presets.push_back(PresetOf(line));
}

} // namespace

const std::string& CaptionOf(const SitePreset& preset)
{
    if (!preset.label.empty())
        return preset.label;
    return preset.tag.empty() ? preset.folder : preset.tag;
}

bool IsScratchSite(const SitePreset& preset)
{
    return EqualsNoCase(preset.folder, kScratchFolder);
}

NewsSettings ReadNewsSettings(Files& files)
{
    NewsSettings settings;
    settings.publications = {{"pr", "Press Release"}, {"proc", "Proclamation"}};
    if (!files.FileExists(kNewsSettingsFile)) {
        settings.presets.push_back({"Scratch", std::string(kScratchFolder), "", "", "", false});
        return settings;
    }
    const std::string bytes = files.ReadFile(kNewsSettingsFile);
    int line_number = 0;
    for (std::string_view rest = bytes; !rest.empty();) {
        const std::string_view line = TakeLine(rest);
        ++line_number;
        try {
            TakeSetting(settings, line);
        } catch (RunError& error) {
            error.where = Place{kNewsSettingsFile, line_number, {}};
            throw;
        }
    }
    return settings;
}

} // namespace kiv
