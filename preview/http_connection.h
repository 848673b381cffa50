// One client of the local server and its one request. Only units that have Boost's headers see
// this.
#pragma once

#include "preview/http_bounds.h"
#include "preview/http_message.h"

#include <utility> // Asio of Boost 1.74 needs it and does not say so

#include <boost/asio.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>

#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

namespace kiv {

class HttpConnection;

/// What a connection needs of its server. All of it happens on the server's thread.
class HttpOwner {
  public:
    HttpOwner() = default;
    HttpOwner(const HttpOwner&) = delete;
    HttpOwner& operator=(const HttpOwner&) = delete;
    virtual const HttpBounds& Bounds() const = 0;
    virtual void Answer(const HttpRequest& request, HttpReply reply) = 0;
    virtual void Forget(const std::shared_ptr<HttpConnection>& connection) = 0;
    virtual std::weak_ptr<boost::asio::io_context> Context() const = 0;

  protected:
    ~HttpOwner() = default;
};

class HttpConnection : public std::enable_shared_from_this<HttpConnection> {
  public:
    using Instant = std::chrono::steady_clock::time_point;

    HttpConnection(boost::asio::ip::tcp::socket socket, HttpOwner& owner);

    /// Waits for a request, or for the client to go.
    bool IsIdle() const { return is_idle_; }
    /// Has got an answer that stays open.
    bool Stays() const { return stays_; }
    Instant LastActive() const { return last_active_; }

    void Begin();
    void Close();
    /// For one who stays.
    void Tell(const std::string& news);

  private:
    using Error = boost::system::error_code;

    void TakeRequest(const Error& error);
    HttpReply ReplyTo();
    void Send(HttpAnswer answer);
    void Write();
    void Written();
    void WritePart();
    void Stay();
    void WriteNews();
    void WaitForEnd();
    void Leave();

    boost::beast::tcp_stream stream_;
    boost::beast::flat_buffer buffer_;
    boost::beast::http::request_parser<boost::beast::http::string_body> parser_;
    HttpOwner& owner_;
    Instant last_active_;
    bool is_idle_ = true;
    bool is_head_ = false;
    bool is_answered_ = false;
    bool is_writing_ = false;
    bool stays_ = false;
    std::string out_;         // what is being written
    std::size_t written_ = 0; // of it
    std::string waiting_;     // news behind it
    std::shared_ptr<NativeFile> file_;
    std::uint64_t next_ = 0; // of the file
    std::uint64_t left_ = 0;
    std::array<char, 16'384> scratch_{};
    std::size_t surplus_ = 0;
};

} // namespace kiv
