// A page that a build gives, and the one that was.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

enum class Likeness { same_bytes, same_lines, different };

struct PageComparison {
    Likeness likeness = Likeness::different;
    int line = 0;    // the first one that differs, from 1
    std::string was; // that line, shortened; of the old page
    std::string is;  // of the new one
};

/// "same bytes", "same but for line ends", "line 3 differs".
std::string LikenessWords(const PageComparison& comparison);

PageComparison ComparePages(std::string_view old_bytes, std::string_view new_bytes);

} // namespace kiv
