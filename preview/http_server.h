// A small server for the browsers of this machine: bound to the loopback, with a thread of its own.
#pragma once

#include "preview/http_bounds.h"
#include "preview/http_message.h"

#include <functional>
#include <memory>
#include <string>

namespace kiv {

/// What the server asks for, always on its own thread. Nothing of it may throw.
struct HttpService {
    /// Answers a request, at once or later.
    std::function<void(const HttpRequest& request, HttpReply reply)> answer;
    /// What those who stay are to be told now; "" when there is nothing.
    std::function<std::string()> news;
};

class HttpServer {
  public:
    /// Takes a port; 0 is a free one. Throws RunError when it cannot be had.
    explicit HttpServer(int port, const HttpBounds& bounds = {});
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;
    /// Ends at once, whoever is connected.
    ~HttpServer();

    int Port() const;
    /// Begins to serve; once.
    void Serve(HttpService service);
    /// Asks for news now; from any thread.
    void Nudge();

  private:
    class Core;
    std::unique_ptr<Core> core_;
};

} // namespace kiv
