// The part of a file that a browser asks for, as it does for sound and video.
#pragma once

#include "preview/http_message.h"

#include <memory>
#include <string_view>

namespace kiv {

/// Makes the answer that of the whole file, or of the one range that `range` names, "bytes=0-99".
/// What is no such range counts as none; one behind the file's end is refused.
void SendPart(HttpAnswer& answer, std::shared_ptr<NativeFile> file, std::string_view range);

} // namespace kiv
