// The "_t" pictures that picture lists pair with their originals.
#pragma once

#include "exchange/thumbnail.h"

#include <string_view>

namespace kiv {

class Workspace;

struct ThumbnailWish {
    ThumbnailLook look = {};
    std::string_view folder = {}; // below the working directory; empty: that one itself
    bool over_others = false;     // also over thumbnails that kiv did not make
};

/// Makes the thumbnail of every *.jpg and *.gif that has none, or one of kiv's own that was made of
/// other bytes or is to look otherwise now. The thumbnail of boat.jpg is boat_t.jpg, and so is that
/// of boat.gif. What others have made stays. The status tells how many were made; a picture that
/// cannot be read gets a warning. Throws RunError of kind `file` for what cannot be read or
/// written.
void MakeThumbnails(Workspace& workspace, const ThumbnailWish& wish);

} // namespace kiv
