// What the local server bears.
#pragma once

#include <chrono>
#include <cstddef>

namespace kiv {

struct HttpBounds {
    std::chrono::milliseconds silence{10'000};  // a request must be whole by then
    std::chrono::milliseconds slowness{30'000}; // something of an answer must be taken by then
    std::chrono::milliseconds between_news{200};
    std::size_t connections = 64; // when there are more, the one idle longest goes
    std::size_t header = 16'384;  // bytes
    std::size_t body = 4'096;
    std::size_t waiting_news = 1'000'000; // bytes that one who stays may leave untaken
};

} // namespace kiv
