// What a command has built, section by section: a group build goes through many.
#pragma once

#include <cstddef>
#include <string>

namespace kiv {

/// Which of the entries of a list, both counted from 0; `to` is not among them.
struct EntryRange {
    std::size_t from = 0;
    std::size_t to = 0;
};

struct BuiltSection {
    std::string folder;    // absolute drive path, ends in "\"
    EntryRange written;    // of the files written by the command
    EntryRange warnings;   // of its warnings
    bool is_whole = false; // false: an error or the user ended the build
};

} // namespace kiv
