#include "inspect/page_names.h"

#include "text/text.h"

#include <algorithm>

namespace kiv {

namespace {

constexpr std::string_view kPages[] = {"htm",  "html", "xhtml", "shtml", "shtm", "asp",
                                       "aspx", "php",  "jsp",   "cfm",   "cgi"};
constexpr std::string_view kPictures[] = {"gif", "jpg", "jpeg", "png", "bmp", "webp", "svg"};

std::string_view ExtensionOf(std::string_view name)
{
    const std::size_t point = name.rfind('.');
    return point == npos ? std::string_view() : name.substr(point + 1);
}

} // namespace

bool IsPageName(std::string_view name)
{
    return std::ranges::any_of(
        kPages, [&](std::string_view kind) { return EqualsNoCase(ExtensionOf(name), kind); });
}

bool IsIndexName(std::string_view name)
{
    const std::string_view stem = Before(name, '.');
    return IsPageName(name) && (EqualsNoCase(stem, "index") || EqualsNoCase(stem, "default"));
}

bool IsPictureName(std::string_view name)
{
    return std::ranges::any_of(
        kPictures, [&](std::string_view kind) { return EqualsNoCase(ExtensionOf(name), kind); });
}

} // namespace kiv
