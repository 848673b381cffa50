#include "preview/media_types.h"

#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>

namespace kiv {

namespace {

constexpr MediaType kTypes[] = {
    {"7z", "application/x-7z-compressed"},
    {"aac", "audio/aac"},
    {"aif", "audio/aiff"},
    {"aiff", "audio/aiff"},
    {"asa", "text/html", ShownAs::script},
    {"asf", "video/x-ms-asf"},
    {"asp", "text/html", ShownAs::script},
    {"aspx", "text/html", ShownAs::script},
    {"asx", "video/x-ms-asf"},
    {"atom", "application/atom+xml"},
    {"au", "audio/basic"},
    {"avi", "video/x-msvideo"},
    {"avif", "image/avif"},
    {"bmp", "image/bmp"},
    {"cfm", "text/html", ShownAs::script},
    {"cgi", "text/html", ShownAs::script},
    {"css", "text/css"},
    {"csv", "text/csv", ShownAs::text},
    {"doc", "application/msword"},
    {"docx", "application/vnd.openxmlformats-officedocument.wordprocessingml.document"},
    {"eot", "application/vnd.ms-fontobject"},
    {"epub", "application/epub+zip"},
    {"flac", "audio/flac"},
    {"flv", "video/x-flv"},
    {"gif", "image/gif"},
    {"gz", "application/gzip"},
    {"htc", "text/x-component"},
    {"htm", "text/html", ShownAs::page},
    {"html", "text/html", ShownAs::page},
    {"ico", "image/vnd.microsoft.icon"},
    {"inc", "text/html", ShownAs::script},
    {"ini", "text/plain", ShownAs::text},
    {"jar", "application/java-archive"},
    {"jpe", "image/jpeg"},
    {"jpeg", "image/jpeg"},
    {"jpg", "image/jpeg"},
    {"js", "text/javascript"},
    {"json", "application/json"},
    {"jsp", "text/html", ShownAs::script},
    {"log", "text/plain", ShownAs::text},
    {"m4a", "audio/mp4"},
    {"m4v", "video/mp4"},
    {"map", "application/json"},
    {"md", "text/plain", ShownAs::text},
    {"mid", "audio/midi"},
    {"midi", "audio/midi"},
    {"mjs", "text/javascript"},
    {"mov", "video/quicktime"},
    {"mp3", "audio/mpeg"},
    {"mp4", "video/mp4"},
    {"mpeg", "video/mpeg"},
    {"mpg", "video/mpeg"},
    {"odt", "application/vnd.oasis.opendocument.text"},
    {"oga", "audio/ogg"},
    {"ogg", "audio/ogg"},
    {"ogv", "video/ogg"},
    {"otf", "font/otf"},
    {"pdf", "application/pdf"},
    {"php", "text/html", ShownAs::script},
    {"php3", "text/html", ShownAs::script},
    {"phtml", "text/html", ShownAs::script},
    {"pl", "text/html", ShownAs::script},
    {"png", "image/png"},
    {"ppt", "application/vnd.ms-powerpoint"},
    {"pptx", "application/vnd.openxmlformats-officedocument.presentationml.presentation"},
    {"ra", "audio/vnd.rn-realaudio"},
    {"ram", "audio/vnd.rn-realaudio"},
    {"rm", "application/vnd.rn-realmedia"},
    {"rss", "application/rss+xml"},
    {"rtf", "application/rtf"},
    {"shtml", "text/html", ShownAs::page},
    {"svg", "image/svg+xml"},
    {"swf", "application/x-shockwave-flash"},
    {"tar", "application/x-tar"},
    {"tif", "image/tiff"},
    {"tiff", "image/tiff"},
    {"ttf", "font/ttf"},
    {"txt", "text/plain", ShownAs::text},
    {"vtt", "text/vtt"},
    {"wasm", "application/wasm"},
    {"wav", "audio/wav"},
    {"weba", "audio/webm"},
    {"webm", "video/webm"},
    {"webmanifest", "application/manifest+json"},
    {"webp", "image/webp"},
    {"wma", "audio/x-ms-wma"},
    {"wmv", "video/x-ms-wmv"},
    {"woff", "font/woff"},
    {"woff2", "font/woff2"},
    {"xhtml", "application/xhtml+xml"},
    {"xls", "application/vnd.ms-excel"},
    {"xlsx", "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet"},
    {"xml", "text/xml"},
    {"xsl", "text/xml"},
    {"zip", "application/zip"},
};
static_assert(std::ranges::is_sorted(kTypes, {}, &MediaType::extension));

constexpr MediaType kUnknown{"", "application/octet-stream"};

bool IsUtf8(std::string_view bytes)
{
    while (!bytes.empty()) {
        const std::size_t size = FirstUtf8(bytes).size;
        if (size == 0)
            return false;
        bytes.remove_prefix(size);
    }
    return true;
}

} // namespace

const MediaType& MediaTypeOf(std::string_view name)
{
    const std::size_t dot = name.rfind('.');
    if (dot == npos)
        return kUnknown;
    const std::string extension = LowerCase(name.substr(dot + 1));
    const auto* const row =
        std::ranges::lower_bound(kTypes, std::string_view(extension), {}, &MediaType::extension);
    return row != std::end(kTypes) && row->extension == extension ? *row : kUnknown;
}

std::string TextType(const MediaType& type, std::string_view bytes)
{
    return std::string(type.type) + "; charset=" + (IsUtf8(bytes) ? "utf-8" : "windows-1252");
}

} // namespace kiv
