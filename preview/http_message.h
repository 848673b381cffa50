// What goes in and out of the local server.
#pragma once

#include "platform/native_files.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kiv {

/// A request whose form is right. Fields that were not sent are empty.
struct HttpRequest {
    std::string method; // GET, HEAD or POST
    std::string target; // as sent, "/a.htm?x=1"
    std::string host;
    std::string origin;
    std::string fetch_site; // whose page asks, as the browser says
    std::string fetch_mode;
    std::string secret;
    std::string range;
    std::string body;
};

struct HttpAnswer {
    int status = 200;
    std::vector<std::pair<std::string, std::string>> fields = {};
    std::string body = {};
    std::shared_ptr<NativeFile> file = {}; // instead of a body
    std::uint64_t from = 0;                // of the file, 0-based
    std::uint64_t count = 0;               // how many bytes of it
    bool stays_open = false;               // news follow the body, as long as the browser listens
};

/// Hands in the answer, from any thread; that of a client that has gone is dropped.
using HttpReply = std::function<void(HttpAnswer)>;

} // namespace kiv
