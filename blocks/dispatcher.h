// Block tags: finds the tag of a line, decides which expander owns it, and hands over.
#pragma once

#include "blocks/block_memory.h"
#include "blocks/line_source.h"
#include "platform/file_reader.h"
#include "platform/reporter.h"

#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// What an expander may use.
struct BlockContext {
    LineSource& lines;
    FileReader& files;
    Reporter& reporter;
    const Place& place;       // of the line last read
    std::string& style_sheet; // the build's table style sheet
    BlockMemory& memory;

    /// Shows a message, with the line last read as its place.
    void reportmsg(std::string_view text) { reporter.reportmsg(text, place); }
    /// Reports a fault in a block's structure: "BIG OOPS! " and the message.
    void bigoops(std::string_view text) { reportmsg(std::string("BIG OOPS! ").append(text)); }
};

/// The tags of all blocks, such as "<zutable>".
std::vector<std::string_view> BlockTagWords();

/// The line that ends the block of a start tag: "</zutable1>" for "<zuTable1>", "" when the block
/// has only one line.
std::string_view EndLineOf(std::string_view tag);

/// Expands the first block tag of `line` in place; a second one stays as written.
void zuloop(std::string& line, BlockContext& context);

} // namespace kiv
