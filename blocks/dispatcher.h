// Block tags: finds the tag of a line, decides which expander owns it, and hands over.
#pragma once

#include "blocks/block_memory.h"
#include "blocks/line_source.h"
#include "platform/file_reader.h"
#include "platform/reporter.h"

#include <span>
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
    bool is_faulty = false; // a message was shown

    /// Shows a message, with the line last read as its place.
    void reportmsg(std::string_view text)
    {
        is_faulty = true;
        reporter.reportmsg(text, place);
    }
    /// Reports a fault in a block's structure: "BIG OOPS! " and the message.
    void bigoops(std::string_view text) { reportmsg(std::string("BIG OOPS! ").append(text)); }
};

/// The tags of all blocks, such as "<zutable>".
std::vector<std::string_view> BlockTagWords();

/// The line that ends the block of a start tag: "</zutable1>" for "<zuTable1>", "" when the block
/// has only one line.
std::string EndLineOf(std::string_view tag);
/// What the message of an unknown tag says behind the tag.
inline constexpr std::string_view kUnknownTagWarning = " is unknown!";

/// A block tag and what ends its block.
struct BlockTagForm {
    std::string_view tag;                   // "<zutable>"
    std::span<const std::string_view> ends; // the end tag begins with one of these
    bool is_one_line = false;               // its end stands in the line of the tag
};

/// The same with their ends.
std::vector<BlockTagForm> BlockTagForms();

/// Expands the first block tag of `line` in place; a second one stays as written.
void zuloop(std::string& line, BlockContext& context);

} // namespace kiv
