// Block tags: finds the tag of a line, decides which expander owns it, and hands over.
#pragma once

#include "blocks/line_source.h"
#include "platform/file_reader.h"
#include "platform/reporter.h"

#include <string>
#include <string_view>

namespace kiv {

/// What lives as long as the program, over builds and working directories.
struct BlockMemory {
    std::string last_unknown_tag;
};

/// What an expander may use.
struct BlockContext {
    LineSource& lines;
    FileReader& files;
    Reporter& reporter;
    std::string& style_sheet; // the build's table style sheet
    BlockMemory& memory;
};

/// Expands the first block tag of `line` in place. `block_mode` is kept for the format's sake:
/// callers pass 1.
void zuloop(std::string& line, int block_mode, BlockContext& context);

} // namespace kiv
