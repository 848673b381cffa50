// What block tags remember of the builds before.
#pragma once

#include <string>

namespace kiv {

/// What lives as long as the program, over builds and working directories.
struct BlockMemory {
    std::string last_unknown_tag;
};

} // namespace kiv
