// The part of a picture file that says its size.
#pragma once

#include "platform/file_reader.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv {

/// Where the sides stand in the header of a PNG, four bytes each, the highest first.
constexpr std::string_view kPng = "a PNG";
constexpr std::size_t kPngWidth = 16;
constexpr std::size_t kPngHeight = 20;

struct PictureHeader {
    std::string kind;  // what the file is taken for: "a JPEG", "text"; empty: nothing known
    std::string bytes; // a header that says the size; empty: there is none, or it is cut off
};

/// Looks at no more of a file than it needs. Throws RunError of kind `file` when it cannot be read.
PictureHeader ReadPictureHeader(FileReader& files, std::string_view path);

} // namespace kiv
