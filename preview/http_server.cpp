#include "preview/http_server.h"

#include "platform/run_error.h"
#include "preview/http_connection.h"
#include "text/text.h"

#include <algorithm>
#include <set>
#include <thread>
#include <vector>

namespace kiv {

namespace {

namespace net = boost::asio;
using boost::system::error_code;
using net::ip::tcp;

constexpr auto kPause = std::chrono::milliseconds(50);
constexpr int kNewsBetweenBeats = 75; // a beat shows whether who stays is still there

#ifdef _WIN32
// There, to use an address again is to take it away from whoever listens.
using HoldPort = net::detail::socket_option::boolean<SOL_SOCKET, SO_EXCLUSIVEADDRUSE>;
#else
using HoldPort = net::socket_base::reuse_address;
#endif

[[noreturn]] void RefusePort(int port, const error_code& error)
{
    const bool is_taken = error == net::error::address_in_use;
    throw RunError(ErrorKind::file,
                   "cannot serve at port " + Decimal(port) + ": " +
                       (is_taken ? "another program uses it" : error.message()),
                   {}, "Name another port: --port 0 takes a free one.");
}

void Listen(tcp::acceptor& acceptor, const net::ip::address& address, int port, error_code& error)
{
    const tcp::endpoint place(address, static_cast<std::uint16_t>(port));
    acceptor.open(place.protocol(), error);
    if (!error && address.is_v6())
        acceptor.set_option(net::ip::v6_only(true), error);
    if (!error)
        acceptor.set_option(HoldPort(true), error);
    if (!error)
        acceptor.bind(place, error);
    if (!error)
        acceptor.listen(net::socket_base::max_listen_connections, error);
}

} // namespace

class HttpServer::Core final : public HttpOwner {
  public:
    Core(int port, const HttpBounds& bounds) : bounds_(bounds)
    {
        error_code error;
        Listen(old_acceptor_, net::ip::address_v4::loopback(), port, error);
        if (error)
            RefusePort(port, error);
        port_ = old_acceptor_.local_endpoint(error).port();
        // The same port under the other name of this machine, where it has one.
        Listen(new_acceptor_, net::ip::address_v6::loopback(), port_, error);
        has_both_names_ = !error;
    }

    void Serve(HttpService service)
    {
        service_ = std::move(service);
        Accept(old_acceptor_);
        if (has_both_names_)
            Accept(new_acceptor_);
        WaitForNews();
        thread_ = std::thread([this] { context_->run(); });
    }

    int Port() const { return port_; }

    void Nudge()
    {
        net::post(*context_, [this] { TellNews(); });
    }

    void End()
    {
        if (!thread_.joinable())
            return;
        net::post(*context_, [this] { CloseAll(); });
        thread_.join();
    }

    const HttpBounds& Bounds() const override { return bounds_; }
    std::weak_ptr<net::io_context> Context() const override { return context_; }
    void Answer(const HttpRequest& request, HttpReply reply) override
    {
        service_.answer(request, std::move(reply));
    }
    void Forget(const std::shared_ptr<HttpConnection>& connection) override
    {
        connections_.erase(connection);
    }

  private:
    void Accept(tcp::acceptor& acceptor)
    {
        acceptor.async_accept([this, &acceptor](const error_code& error, tcp::socket socket) {
            if (!acceptor.is_open())
                return;
            if (error && error != net::error::connection_aborted)
                return AcceptLater(acceptor);
            if (!error)
                Admit(std::move(socket));
            Accept(acceptor);
        });
    }

    /// Most likely too many files are open.
    void AcceptLater(tcp::acceptor& acceptor)
    {
        CloseIdlest();
        const auto pause = std::make_shared<net::steady_timer>(*context_, kPause);
        pause->async_wait([this, &acceptor, pause](const error_code&) {
            if (acceptor.is_open())
                Accept(acceptor);
        });
    }

    void Admit(tcp::socket socket)
    {
        if (connections_.size() >= bounds_.connections)
            CloseIdlest();
        const auto connection = std::make_shared<HttpConnection>(std::move(socket), *this);
        connections_.insert(connection);
        connection->Begin();
    }

    void CloseIdlest()
    {
        const auto idlest = std::ranges::min_element(connections_, {}, [](const auto& connection) {
            return std::pair(!connection->IsIdle(), connection->LastActive());
        });
        if (idlest != connections_.end())
            (*idlest)->Close(); // takes itself off the list, and holds itself as long
    }

    void WaitForNews()
    {
        timer_.expires_after(bounds_.between_news);
        timer_.async_wait([this](const error_code& error) {
            if (error)
                return;
            TellNews();
            WaitForNews();
        });
    }

    void TellNews()
    {
        std::vector<std::shared_ptr<HttpConnection>> listeners;
        for (const std::shared_ptr<HttpConnection>& connection : connections_)
            if (connection->Stays())
                listeners.push_back(connection);
        if (listeners.empty())
            return; // nobody looks, so nothing need be looked at
        std::string news = service_.news();
        if (news.empty() && ++silent_ >= kNewsBetweenBeats)
            news = ":\n\n";
        if (news.empty())
            return;
        silent_ = 0;
        for (const std::shared_ptr<HttpConnection>& listener : listeners)
            listener->Tell(news);
    }

    void CloseAll()
    {
        error_code ignored;
        old_acceptor_.close(ignored);
        new_acceptor_.close(ignored);
        timer_.cancel();
        const std::set<std::shared_ptr<HttpConnection>> last = connections_;
        for (const std::shared_ptr<HttpConnection>& connection : last)
            connection->Close();
        context_->stop();
    }

    HttpService service_;
    const HttpBounds bounds_;
    std::shared_ptr<net::io_context> context_ = std::make_shared<net::io_context>(1);
    tcp::acceptor old_acceptor_{*context_};
    tcp::acceptor new_acceptor_{*context_};
    net::steady_timer timer_{*context_};
    std::set<std::shared_ptr<HttpConnection>> connections_;
    bool has_both_names_ = false;
    int port_ = 0;
    int silent_ = 0;
    std::thread thread_;
};

HttpServer::HttpServer(int port, const HttpBounds& bounds)
    : core_(std::make_unique<Core>(port, bounds))
{
}

HttpServer::~HttpServer()
{
    core_->End();
}

int HttpServer::Port() const
{
    return core_->Port();
}

void HttpServer::Serve(HttpService service)
{
    core_->Serve(std::move(service));
}

void HttpServer::Nudge()
{
    core_->Nudge();
}

} // namespace kiv
