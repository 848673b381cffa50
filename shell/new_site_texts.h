// The texts of a new site's files, as somebody finds them who begins with it. Lines end in LF here;
// who writes them makes CR LF of it. All is ASCII, so that no editor takes it for another code
// page.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

extern const std::string_view kNewStyleSheet;
/// A drawing, 704 wide and 352 high.
extern const std::string_view kNewPicture;

// Names of these files that the pages know.
inline constexpr std::string_view kNewStyleSheetFile = "style.css";
inline constexpr std::string_view kNewPictureFile = "hills.svg";

/// The template of the site; `menu` is what its menu has besides the pages, whole lines.
std::string NewTemplateText(std::string_view menu);
/// The page list of the site. `name` is what the site is called.
std::string NewPageListText(std::string_view name, bool has_site_map);
/// What the first build makes of that list as its "_sitemap.txt", for a page that shows it needs it
/// before there was a build. It has the page of the site map.
std::string NewSiteMapText();

/// A line of the menu that leads to a section.
std::string MenuLine(std::string_view folder, std::string_view title);

// What the page lists define and the templates show: the name of the site and that of a section.
inline constexpr std::string_view kNameDefinition = "@@1 = ";
inline constexpr std::string_view kSectionDefinition = "@@2 = ";

// The character set that the templates tell.
inline constexpr std::string_view kNewCharset = "windows-1252";

// A further section, in a folder below the site's.
extern const std::string_view kSectionTemplate;
std::string SectionPageListText(std::string_view name, std::string_view title);
std::string SectionSiteMapText(std::string_view title);

// The news, in the folder "news" below the site's.
extern const std::string_view kNewsTemplate;
/// With the two marks behind which the composer puts an item.
std::string NewsPageListText(std::string_view name);

} // namespace kiv
