// A client that says what it is told, byte by byte.
#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace kiv::test {

class RawClient {
  public:
    /// Connects to a port of this machine.
    explicit RawClient(int port);
    RawClient(RawClient&& other) noexcept;
    ~RawClient();

    void Say(std::string_view bytes);
    /// What comes until the other side closes, or until `text` has come, or the time is over.
    std::string Hear(std::string_view text = {},
                     std::chrono::milliseconds time = std::chrono::seconds(20));
    /// The next `count` bytes, fewer when the other side closes before.
    std::string Take(std::size_t count);
    /// Whether the other side closes within a time, whatever it says before.
    bool IsLeft(std::chrono::milliseconds time);

  private:
    class Socket;
    std::unique_ptr<Socket> socket_;
};

/// The whole answer to one request.
std::string Asked(int port, std::string_view bytes);

/// A GET of a target, as a browser that was sent to 127.0.0.1 asks.
std::string Get(int port, std::string_view target, std::string_view more_fields = "");

/// The number behind "HTTP/1.1 "; 0: the connection was closed without an answer.
int StatusOf(std::string_view answer);
/// What stands behind the fields.
std::string BodyOf(std::string_view answer);

} // namespace kiv::test
