#include "raw_client.h"

#include "text/text.h"

#include <utility>

#include <boost/asio.hpp>

#include <array>

namespace kiv::test {

namespace net = boost::asio;

class RawClient::Socket {
  public:
    explicit Socket(int port)
    {
        socket_.connect({net::ip::address_v4::loopback(), static_cast<std::uint16_t>(port)});
    }

    void Say(std::string_view bytes)
    {
        boost::system::error_code gone; // the server may refuse before it has heard everything
        net::write(socket_, net::buffer(bytes.data(), bytes.size()), gone);
    }

    /// Nothing when the time is over, "" at the end.
    std::string Hear(std::string_view text, std::chrono::milliseconds time, bool& is_left)
    {
        std::string heard;
        const auto end = std::chrono::steady_clock::now() + time;
        is_left = false;
        while (!is_left && (text.empty() || !Contains(heard, text))) {
            const auto left = end - std::chrono::steady_clock::now();
            if (left <= std::chrono::seconds(0))
                break;
            heard += HearPart(left, is_left);
        }
        return heard;
    }

    std::string Take(std::size_t count)
    {
        std::string bytes(count, '\0');
        boost::system::error_code gone;
        bytes.resize(net::read(socket_, net::buffer(bytes), gone));
        return bytes;
    }

  private:
    std::string HearPart(std::chrono::steady_clock::duration time, bool& is_left)
    {
        std::array<char, 4096> bytes{};
        std::size_t count = 0;
        socket_.async_read_some(net::buffer(bytes),
                                [&](const boost::system::error_code& error, std::size_t size) {
                                    count = size;
                                    is_left = error && error != net::error::operation_aborted;
                                });
        context_.restart();
        if (context_.run_for(time) == 0) {
            socket_.cancel();
            context_.run();
        }
        return {bytes.data(), count};
    }

    net::io_context context_;
    net::ip::tcp::socket socket_{context_};
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
