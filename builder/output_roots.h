// The folders into which a page list sends its pages.
#pragma once

#include <string>
#include <vector>

namespace kiv {

/// The output roots that a page list declares, as absolute drive paths that end in "\"; "" where it
/// declares none.
struct OutputRoots {
    std::string dir1; // "@DIR1 ="
    std::string asp;  // "@ASP ="
    std::string htm;  // "@HTM ="

    /// Those that are declared, in this order.
    std::vector<std::string> Declared() const
    {
        std::vector<std::string> roots{dir1, asp, htm};
        std::erase(roots, "");
        return roots;
    }
};

} // namespace kiv
