// The pages of a page list, without making any of them.
#pragma once

#include "blocks/block_memory.h"
#include "builder/build_options.h"
#include "platform/machine.h"
#include "platform/place.h"

#include <string>
#include <vector>

namespace kiv {

struct ListedPage {
    int number = 0;    // 1-based, in its page list
    std::string file;  // its name as the page list has it, with its extension
    std::string title; // with the variables that it uses filled in
    std::string path;  // absolute drive path that the ordinary output writes it to
    KeptPlace where;   // of its "@FILE =" line
};

/// Reads the page list of the current directory as a build does, in its order; what there is to say
/// goes through the machine's reporter. Folders that the list wants to be there are made: for a
/// look alone the machine's files are to be UnwrittenFiles. Throws RunError as a build does.
std::vector<ListedPage> ListPages(Machine& machine, const BuildOptions& options,
                                  BlockMemory& blocks);

} // namespace kiv
