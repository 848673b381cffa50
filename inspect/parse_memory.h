// The memory of a parser that is written in C.
#pragma once

#include <csetjmp>
#include <cstddef>
#include <ctime>

namespace kiv {

/// Hands out memory and takes it back at once, at its end: a tree that is given back node by node
/// takes a call for each of its levels. Who asks for too much, or takes too long, is left in the
/// middle by the way out.
class ParseMemory {
  public:
    /// `longest`: what may be taken of a processor's time, others may keep it busy.
    explicit ParseMemory(std::clock_t longest) : longest_(longest) {}
    ParseMemory(const ParseMemory&) = delete;
    ParseMemory& operator=(const ParseMemory&) = delete;
    ~ParseMemory();

    /// To be set by `setjmp` before the first Take, in a function that is still there at each.
    std::jmp_buf& WayOut() { return way_out_; }

    /// `memory` is a ParseMemory. Aligned for everything; never null.
    static void* Take(void* memory, std::size_t size);

  private:
    void* Take(std::size_t size);
    void AddBlock(std::size_t size);

    std::jmp_buf way_out_{};
    void* blocks_ = nullptr; // the last one; each has the one before it in its head
    char* next_ = nullptr;   // what is free of it
    std::size_t left_ = 0;
    std::size_t taken_ = 0; // in bytes, of all blocks
    std::size_t calls_ = 0;
    std::clock_t begin_ = std::clock();
    std::clock_t longest_;
};

} // namespace kiv
