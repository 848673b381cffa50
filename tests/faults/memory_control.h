// How the attack and the program whose memory fails speak to each other: a page that both see.
#pragma once

#include <cstdint>

namespace kiv::faults {

struct MemoryControl {
    std::uint64_t fail_at = 0;  // the number of the request that fails, from 1; 0: none
    std::uint64_t onward = 0;   // 1: so do all that follow
    std::uint64_t requests = 0; // how many there were
};

/// The environment variable that names the open file with that page.
constexpr const char* kMemoryControl = "KIV_MEMORY_CONTROL";

} // namespace kiv::faults
