#include "preview/http_connection.h"

#include "preview/text_answer.h"
#include "text/text.h"

#include <algorithm>
#include <optional>

namespace kiv {

namespace {

namespace net = boost::asio;
namespace http = boost::beast::http;
using boost::system::error_code;
using net::ip::tcp;
using Request = http::request<http::string_body>;

constexpr std::size_t kPart = 262'144; // of a file, bytes at a time
/// Of an answer, in bytes: Windows tells of a write only when all of it has been taken.
constexpr std::size_t kMostAtOnce = 262'144;

/// The first lines of an answer. The connection ends with it, so nobody has to guess its length.
std::string HeadOf(const HttpAnswer& answer, std::uint64_t size)
{
    const std::string reason(
        http::obsolete_reason(http::int_to_status(static_cast<unsigned>(answer.status))));
    std::string head = "HTTP/1.1 " + Decimal(answer.status) + " " + reason + "\r\n";
    for (const auto& [name, value] : answer.fields)
        head.append(name).append(": ").append(value).append("\r\n");
    if (!answer.stays_open)
        head.append("Content-Length: ").append(std::to_string(size)).append("\r\n");
    return head.append("Connection: close\r\n\r\n");
}

/// The code for what could not be read; nothing when the client has gone.
std::optional<int> RefusalOf(const error_code& error)
{
    if (error == http::error::header_limit || error == http::error::buffer_overflow)
        return 431;
    if (error == http::error::body_limit)
        return 413;
    if (error == http::error::end_of_stream || error == http::error::partial_message)
        return std::nullopt;
    if (error.category() == http::make_error_code(http::error::end_of_stream).category())
        return 400;
    return std::nullopt;
}

std::optional<int> FaultOf(const Request& request)
{
    const http::verb verb = request.method();
    if (verb != http::verb::get && verb != http::verb::head && verb != http::verb::post)
        return 405;
    if (request.count(http::field::host) != 1)
        return 400;
    return std::nullopt;
}

HttpRequest Plain(const Request& request)
{
    const auto text = [](auto view) { return std::string(view.data(), view.size()); };
    return {.method = text(request.method_string()),
            .target = text(request.target()),
            .host = text(request[http::field::host]),
            .origin = text(request[http::field::origin]),
            .fetch_site = text(request["Sec-Fetch-Site"]),
            .fetch_mode = text(request["Sec-Fetch-Mode"]),
            .secret = text(request["X-Kiv-Secret"]),
            .range = text(request[http::field::range]),
            .body = request.body()};
}

} // namespace

HttpConnection::HttpConnection(tcp::socket socket, HttpOwner& owner)
    : stream_(std::move(socket)), buffer_(owner.Bounds().header + owner.Bounds().body),
      owner_(owner), last_active_(std::chrono::steady_clock::now())
{
    parser_.header_limit(static_cast<std::uint32_t>(owner.Bounds().header));
    parser_.body_limit(owner.Bounds().body);
}

void HttpConnection::Begin()
{
    stream_.expires_after(owner_.Bounds().silence);
    http::async_read(stream_, buffer_, parser_,
                     [self = shared_from_this()](const error_code& error, std::size_t) {
                         self->TakeRequest(error);
                     });
}

void HttpConnection::Close()
{
    error_code ignored;
    stream_.socket().close(ignored);
    stream_.cancel();
    owner_.Forget(shared_from_this());
}

void HttpConnection::TakeRequest(const error_code& error)
{
    last_active_ = std::chrono::steady_clock::now();
    is_idle_ = false;
    if (error) {
        const std::optional<int> refusal = RefusalOf(error);
        return refusal ? Send(RefusalAnswer(*refusal)) : Close();
    }
    const Request& request = parser_.get();
    is_head_ = request.method() == http::verb::head;
    if (const std::optional<int> fault = FaultOf(request))
        return Send(RefusalAnswer(*fault));
    owner_.Answer(Plain(request), ReplyTo());
}

HttpReply HttpConnection::ReplyTo()
{
    // Whoever hands in the answer later may outlive the server.
    return [weak = weak_from_this(), context = owner_.Context()](HttpAnswer answer) {
        const std::shared_ptr<net::io_context> alive = context.lock();
        if (!alive)
            return;
        net::post(*alive, [weak, kept = std::move(answer)]() mutable {
            if (const std::shared_ptr<HttpConnection> self = weak.lock())
                self->Send(std::move(kept));
        });
    };
}

void HttpConnection::Send(HttpAnswer answer)
{
    if (is_answered_)
        return;
    is_answered_ = true;
    is_idle_ = false;
    stays_ = answer.stays_open;
    const bool has_file = answer.file != nullptr;
    out_ = HeadOf(answer, has_file ? answer.count : answer.body.size());
    if (!is_head_ && !has_file)
        out_ += answer.body;
    file_ = is_head_ ? nullptr : std::move(answer.file);
    next_ = answer.from;
    left_ = file_ ? answer.count : 0;
    Write();
}

/// Whatever is taken counts: a long page may take its time on a slow line.
void HttpConnection::Write()
{
    is_writing_ = true;
    stream_.expires_after(owner_.Bounds().slowness);
    stream_.async_write_some(
        net::buffer(out_.data() + written_, std::min(kMostAtOnce, out_.size() - written_)),
        [self = shared_from_this()](const error_code& error, std::size_t size) {
            self->last_active_ = std::chrono::steady_clock::now();
            self->written_ += size;
            if (error)
                self->Close();
            else if (self->written_ < self->out_.size())
                self->Write();
            else
                self->Written();
        });
}

void HttpConnection::Written()
{
    is_writing_ = false;
    if (left_ > 0)
        return WritePart();
    if (stays_)
        return Stay();
    Leave();
}

void HttpConnection::WritePart()
{
    const auto size = static_cast<std::size_t>(std::min<std::uint64_t>(left_, kPart));
    out_ = file_->Read(next_, size);
    written_ = 0;
    if (out_.size() != size)
        return Close(); // the file has become shorter: the client must see that this is not all
    next_ += size;
    left_ -= size;
    Write();
}

void HttpConnection::Stay()
{
    stream_.expires_never();
    WaitForEnd();
    WriteNews();
}

void HttpConnection::Tell(const std::string& news)
{
    waiting_ += news;
    if (waiting_.size() > owner_.Bounds().waiting_news)
        Close();
    else if (!is_writing_)
        WriteNews();
}

void HttpConnection::WriteNews()
{
    if (waiting_.empty() || !is_answered_)
        return;
    out_ = std::exchange(waiting_, {});
    is_writing_ = true;
    net::async_write(stream_, net::buffer(out_),
                     [self = shared_from_this()](const error_code& error, std::size_t) {
                         self->is_writing_ = false;
                         error ? self->Close() : self->WriteNews();
                     });
}

/// Ends the connection when the client does, or says too much.
void HttpConnection::WaitForEnd()
{
    stream_.async_read_some(net::buffer(scratch_),
                            [self = shared_from_this()](const error_code& error, std::size_t size) {
                                self->surplus_ += size;
                                const bool is_over =
                                    error || self->surplus_ > self->scratch_.size();
                                is_over ? self->Close() : self->WaitForEnd();
                            });
}

/// Closes only when the client has taken the answer: what it had still to say would tear it off.
void HttpConnection::Leave()
{
    is_idle_ = true;
    error_code ignored;
    stream_.socket().shutdown(tcp::socket::shutdown_send, ignored);
    stream_.expires_after(std::chrono::seconds(1));
    WaitForEnd();
}

} // namespace kiv
