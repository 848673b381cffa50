// Memory for large files, had at once: page by page, at the first touch of each, the system takes
// longer to give it than it takes to use it.
#pragma once

#include <cstddef>
#include <span>

namespace kiv {

/// Has the kernel give a large buffer its memory. A kernel that cannot do so refuses.
void Populate(std::span<char> buffer);

/// Before a content of so many bytes comes. What is made of the first large one takes several times
/// its room: the heap grows once, by large pages where the system has some. No more than a wish:
/// nothing happens where the memory is not to be had.
void GrowHeapFor(std::size_t content);

} // namespace kiv
