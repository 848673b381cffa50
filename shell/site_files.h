// Files of a site that the workspace looks for, and the batch file of its upload.
#pragma once

#include <string_view>

namespace kiv {

inline constexpr std::string_view kTemplateFile = "_template.txt";
inline constexpr std::string_view kPageListFile = "_html.txt";
inline constexpr std::string_view kGroupFile = "_group.txt";
inline constexpr std::string_view kSiteMapFile = "_sitemap.txt";
inline constexpr std::string_view kUploadBatch = "c:\\guestout2.bat";

} // namespace kiv
