// What a build is told before it begins.
#pragma once

#include "builder/addresses.h"
#include "platform/clock.h"

#include <string>

namespace kiv {

class Trace;

/// What the workspace asks of a build.
struct BuildOptions {
    bool EoyEnabled = false;
    bool UploadListWanted = false;
    std::string UploadCommand;
    Addresses addresses;
    DateTime program_start; // whose day and year the pages tell, however long the window is open
    Trace* trace = nullptr; // who asks for the way of each line; null: nobody
};

} // namespace kiv
