// The part of a picture file that says its size.
#pragma once

#include "platform/file_reader.h"

#include <string>
#include <string_view>

namespace kiv {

struct PictureHeader {
    std::string kind;  // what the file is taken for: "a JPEG", "text"; empty: nothing known
    std::string bytes; // a header for the picture library; empty: there is none, or it is cut off
};

/// Looks at no more of a file than it needs. Throws RunError of kind `file` when it cannot be read.
PictureHeader ReadPictureHeader(FileReader& files, std::string_view path);

} // namespace kiv
