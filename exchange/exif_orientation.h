#pragma once

#include <string_view>

namespace kiv {

/// How the camera was held when a JPEG was taken: 1 to 8 as Exif counts, 1 for upright and for
/// every file that does not say. Any bytes may be given.
int ExifOrientation(std::string_view jpeg);

} // namespace kiv
