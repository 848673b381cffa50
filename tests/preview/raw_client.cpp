#include "raw_client.h"

#include "text/text.h"

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#include <winsock2.h>
#else
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

#include <algorithm>
#include <array>
#include <cstdint>
#include <stdexcept>
#include <utility>

namespace kiv::test {

namespace {

// The few calls in which the systems differ.
#ifdef _WIN32
using SocketHandle = SOCKET;
using ByteCount = int;
constexpr int kQuietly = 0;

void BeginSockets()
{
    static const bool begun = [] {
        WSADATA data{};
        return ::WSAStartup(MAKEWORD(2, 2), &data) == 0;
    }();
    if (!begun)
        throw std::runtime_error("there are no sockets");
}

bool IsOpen(SocketHandle handle)
{
    return handle != INVALID_SOCKET;
}

void CloseSocket(SocketHandle handle)
{
    ::closesocket(handle);
}

int WaitToRead(pollfd& waiting, int milliseconds)
{
    return ::WSAPoll(&waiting, 1, milliseconds);
}
#else
using SocketHandle = int;
using ByteCount = std::size_t;
constexpr int kQuietly = MSG_NOSIGNAL;

void BeginSockets() {}

bool IsOpen(SocketHandle handle)
{
    return handle >= 0;
}

void CloseSocket(SocketHandle handle)
{
    ::close(handle);
}

int WaitToRead(pollfd& waiting, int milliseconds)
{
    return ::poll(&waiting, 1, milliseconds);
}
#endif

} // namespace

class RawClient::Socket {
  public:
    explicit Socket(int port)
    {
        BeginSockets();
        handle_ = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        const auto* const any = reinterpret_cast<const sockaddr*>(&address);
        if (!IsOpen(handle_) || ::connect(handle_, any, sizeof address) != 0) {
            Close();
            throw std::runtime_error("nobody answers at port " + Decimal(port));
        }
    }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;
    ~Socket() { Close(); }

    void Say(std::string_view bytes)
    {
        while (!bytes.empty()) {
            const auto said =
                ::send(handle_, bytes.data(), static_cast<ByteCount>(bytes.size()), kQuietly);
            if (said <= 0)
                return; // the server may refuse before it has heard everything
            bytes.remove_prefix(static_cast<std::size_t>(said));
        }
    }

    /// Nothing when the time is over, "" at the end.
    std::string Hear(std::string_view text, std::chrono::milliseconds time, bool& is_left)
    {
        std::string heard;
        const auto end = std::chrono::steady_clock::now() + time;
        is_left = false;
        while (!is_left && (text.empty() || !Contains(heard, text))) {
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(
                end - std::chrono::steady_clock::now());
            if (left.count() <= 0)
                break;
            pollfd waiting{};
            waiting.fd = handle_;
            waiting.events = POLLIN;
            if (WaitToRead(waiting, static_cast<int>(left.count())) <= 0)
                continue;
            const std::string part = Part(kPart);
            is_left = part.empty();
            heard += part;
        }
        return heard;
    }

    std::string Take(std::size_t count)
    {
        std::string bytes;
        while (bytes.size() < count) {
            const std::string part = Part(std::min(kPart, count - bytes.size()));
            if (part.empty())
                break;
            bytes += part;
        }
        return bytes;
    }

  private:
    static constexpr std::size_t kPart = 4096;

    /// What comes next, at most so much; "" at the end.
    std::string Part(std::size_t count)
    {
        std::array<char, kPart> bytes{};
        const auto heard = ::recv(handle_, bytes.data(), static_cast<ByteCount>(count), 0);
        return {bytes.data(), heard > 0 ? static_cast<std::size_t>(heard) : 0};
    }

    void Close()
    {
        if (IsOpen(handle_))
            CloseSocket(handle_);
    }

    SocketHandle handle_{};
};

RawClient::RawClient(int port) : socket_(std::make_unique<Socket>(port)) {}
RawClient::RawClient(RawClient&& other) noexcept = default;
RawClient::~RawClient() = default;

void RawClient::Say(std::string_view bytes)
{
    socket_->Say(bytes);
}

std::string RawClient::Hear(std::string_view text, std::chrono::milliseconds time)
{
    bool is_left = false;
    return socket_->Hear(text, time, is_left);
}

std::string RawClient::Take(std::size_t count)
{
    return socket_->Take(count);
}

bool RawClient::IsLeft(std::chrono::milliseconds time)
{
    bool is_left = false;
    socket_->Hear({}, time, is_left);
    return is_left;
}

std::string Asked(int port, std::string_view bytes)
{
    RawClient client(port);
    client.Say(bytes);
    return client.Hear();
}

std::string Get(int port, std::string_view target, std::string_view more_fields)
{
    std::string request = "GET " + std::string(target) + " HTTP/1.1\r\nHost: 127.0.0.1:";
    request.append(Decimal(port)).append("\r\n").append(more_fields).append("\r\n");
    return Asked(port, request);
}

int StatusOf(std::string_view answer)
{
    return answer.starts_with("HTTP/1.1 ") ? NumericHead(answer.substr(9, 3)) : 0;
}

std::string BodyOf(std::string_view answer)
{
    const std::size_t end = answer.find("\r\n\r\n");
    return end == npos ? "" : std::string(answer.substr(end + 4));
}

} // namespace kiv::test
