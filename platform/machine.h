// The machine behind small interfaces. The faces make the real one, tests make their own.
#pragma once

#include "platform/clipboard.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/native_paths.h"
#include "platform/picture_loader.h"
#include "platform/programs.h"
#include "platform/reporter.h"

namespace kiv {

struct Machine {
    Files& files;
    NativePaths& native_paths; // drive letters, and paths as the user types them in a shell
    Clock& clock;
    Clipboard& clipboard;
    Programs& programs;
    Reporter& reporter;
    PictureLoader& pictures;
};

} // namespace kiv
