#include "inspect/parse_memory.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace kiv {

namespace {

constexpr std::size_t kMost = std::size_t{512} << 20U;
constexpr std::size_t kBlock = std::size_t{64} << 10U;
constexpr std::size_t kAlign = alignof(std::max_align_t);

} // namespace

ParseMemory::~ParseMemory()
{
    while (blocks_ != nullptr) {
        void* before = nullptr;
        std::memcpy(&before, blocks_, sizeof before);
        std::free(std::exchange(blocks_, before));
    }
}

void* ParseMemory::Take(void* memory, std::size_t size)
{
    return static_cast<ParseMemory*>(memory)->Take(size);
}

void* ParseMemory::Take(std::size_t size)
{
    size = (size + kAlign - 1) / kAlign * kAlign;
    if (size > left_)
        AddBlock(std::max(size, kBlock));
    if (++calls_ % 256 == 0 && std::clock() - begin_ >= longest_)
        std::longjmp(way_out_, 1);
    left_ -= size;
    return next_ + left_;
}

void ParseMemory::AddBlock(std::size_t size)
{
    taken_ += size;
    void* const block = taken_ > kMost ? nullptr : std::malloc(size + kAlign);
    if (block == nullptr)
        std::longjmp(way_out_, 1);
    std::memcpy(block, &blocks_, sizeof blocks_);
    blocks_ = block;
    next_ = static_cast<char*>(block) + kAlign;
    left_ = size;
}

} // namespace kiv
