// The server by itself: what it takes, what it bears, how it ends.
#include "platform/run_error.h"
#include "preview/http_server.h"
#include "raw_client.h"
#include "text/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <iterator>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace kiv {
namespace {

using namespace std::chrono_literals;
using test::Asked;
using test::BodyOf;
using test::RawClient;
using test::StatusOf;
using testing::HasSubstr;

HttpAnswer TextOf(std::string body)
{
    HttpAnswer answer;
    answer.body = std::move(body);
    return answer;
}

class Server : public testing::Test {
  protected:
    /// Serves what was asked as the answer.
    void Start(const HttpBounds& bounds = {})
    {
        server_ = std::make_unique<HttpServer>(0, bounds);
        server_->Serve(
            {[this](const HttpRequest& request, const HttpReply& reply) { Answer(request, reply); },
             [this] { return News(); }});
    }
    int Port() const { return server_->Port(); }

    void Answer(const HttpRequest& request, const HttpReply& reply)
    {
        ++asked_;
        if (request.target == "/later") {
            const std::scoped_lock lock(mutex_);
            later_.push_back(reply);
            return;
        }
        HttpAnswer answer = TextOf(request.method + " " + request.target + " " + request.body);
        if (request.target == "/long" || request.target == "/huge") // more than systems buffer
            answer.body.assign(request.target == "/huge" ? 60'000'000 : 3'000'000, 'x');
        if (request.target == "/events") {
            answer.body = "first\n";
            answer.stays_open = true;
        }
        reply(std::move(answer));
    }
    std::string News()
    {
        const std::scoped_lock lock(mutex_);
        return std::exchange(news_, {});
    }
    void SetNews(std::string news)
    {
        const std::scoped_lock lock(mutex_);
        news_ = std::move(news);
    }

    /// The reply to the first request for "/later", when it has come.
    HttpReply LaterReply()
    {
        while (true) {
            const std::scoped_lock lock(mutex_);
            if (!later_.empty())
                return later_[0];
            std::this_thread::yield();
        }
    }

    std::mutex mutex_;
    std::string news_;
    std::vector<HttpReply> later_;
    std::atomic<int> asked_ = 0;
    std::unique_ptr<HttpServer> server_;
};

TEST_F(Server, AnswersAndCloses)
{
    Start();
    const std::string answer = Asked(Port(), "GET /a HTTP/1.1\r\nHost: x\r\n\r\n");
    EXPECT_EQ(answer, "HTTP/1.1 200 OK\r\nContent-Length: 7\r\nConnection: close\r\n\r\nGET /a ");
}

TEST_F(Server, AHeadRequestGetsTheHeadAlone)
{
    Start();
    EXPECT_EQ(Asked(Port(), "HEAD /a HTTP/1.1\r\nHost: x\r\n\r\n"),
              "HTTP/1.1 200 OK\r\nContent-Length: 8\r\nConnection: close\r\n\r\n");
}

TEST_F(Server, OneRequestAConnection)
{
    Start();
    const std::string two = "GET /a HTTP/1.1\r\nHost: x\r\n\r\nGET /b HTTP/1.1\r\nHost: x\r\n\r\n";
    EXPECT_EQ(BodyOf(Asked(Port(), two)), "GET /a ");
    EXPECT_EQ(asked_, 1);
}

TEST_F(Server, AShortBodyIsTaken)
{
    Start();
    EXPECT_EQ(BodyOf(Asked(Port(), "POST /a HTTP/1.1\r\nHost: x\r\nContent-Length: 2\r\n\r\nhi")),
              "POST /a hi");
}

TEST_F(Server, ALongAnswerComesWhole)
{
    Start();
    EXPECT_EQ(BodyOf(Asked(Port(), "GET /long HTTP/1.1\r\nHost: x\r\n\r\n")).size(), 3'000'000U);
}

struct Rude {
    std::string_view bytes;
    int status;
};

TEST_F(Server, WhatIsNoRequestIsRefused)
{
    const std::string long_field = "GET / HTTP/1.1\r\nHost: x\r\nX: " + std::string(20'000, 'x');
    const std::string long_target = "GET /" + std::string(20'000, 'x') + " HTTP/1.1\r\n";
    const std::string many_fields = [] {
        std::string request = "GET / HTTP/1.1\r\nHost: x\r\n";
        for (int i = 0; i < 5000; ++i)
            request += "X: y\r\n";
        return request + "\r\n";
    }();
    const std::string long_body =
        "POST / HTTP/1.1\r\nHost: x\r\nContent-Length: 5000\r\n\r\n" + std::string(5000, 'x');
    const Rude rows[] = {
        {"\r\n\r\n\r\n\r\n", 400},
        {"hello\r\n\r\n", 400},
        {"GET\r\n\r\n", 400},
        {"GET / HTTP/9.9\r\nHost: x\r\n\r\n", 400},
        {"GET / HTTP/1.1\r\n\r\n", 400}, // no host
        {"GET / HTTP/1.0\r\n\r\n", 400},
        {"GET / HTTP/1.1\r\nHost: x\r\nHost: y\r\n\r\n", 400},
        {"GET / HTTP/1.1\r\nHost x\r\n\r\n", 400},
        {"GET /a b HTTP/1.1\r\nHost: x\r\n\r\n", 400},
        {"GET /\x01 HTTP/1.1\r\nHost: x\r\n\r\n", 400},
        {"POST / HTTP/1.1\r\nHost: x\r\nContent-Length: x\r\n\r\n", 400},
        {"POST / HTTP/1.1\r\nHost: x\r\nContent-Length: -1\r\n\r\n", 400},
        {"POST / HTTP/1.1\r\nHost: x\r\nContent-Length: 99999999999999999999\r\n\r\n", 400},
        {"POST / HTTP/1.1\r\nHost: x\r\nContent-Length: 999999999\r\n\r\n", 413},
        {"POST / HTTP/1.1\r\nHost: x\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\n", 400},
        {"PUT / HTTP/1.1\r\nHost: x\r\nContent-Length: 0\r\n\r\n", 405},
        {"DELETE / HTTP/1.1\r\nHost: x\r\n\r\n", 405},
        {"OPTIONS / HTTP/1.1\r\nHost: x\r\n\r\n", 405},
        {"TRACE / HTTP/1.1\r\nHost: x\r\n\r\n", 405},
        {"CONNECT a:1 HTTP/1.1\r\nHost: x\r\n\r\n", 405},
        {"BREW / HTTP/1.1\r\nHost: x\r\n\r\n", 405},
        {long_field, 431},
        {long_target, 431},
        {many_fields, 431},
        {long_body, 413},
    };
    Start();
    for (const Rude& row : rows)
        EXPECT_EQ(StatusOf(Asked(Port(), row.bytes)), row.status) << row.bytes.substr(0, 60);
    EXPECT_EQ(StatusOf(Asked(Port(), std::string("GET /\0 HTTP/1.1\r\nHost: x\r\n\r\n", 28))), 400);
    EXPECT_EQ(asked_, 0);
}

TEST_F(Server, WhoSaysNothingOrTooSlowlyGoes)
{
    Start({.silence = 200ms});
    RawClient silent(Port());
    RawClient half(Port());
    half.Say("GET / HTTP/1.1\r\nHo");
    RawClient slow(Port());
    std::thread drip([&] {
        for (int i = 0; i < 20; ++i) {
            slow.Say("X");
            std::this_thread::sleep_for(50ms);
        }
    });
    EXPECT_TRUE(silent.IsLeft(5s));
    EXPECT_TRUE(half.IsLeft(5s));
    drip.join();
    EXPECT_TRUE(slow.IsLeft(5s));
    EXPECT_EQ(asked_, 0);
}

TEST_F(Server, WhoTakesNothingGoes)
{
    Start({.slowness = 200ms, .connections = 1});
    RawClient greedy(Port());
    greedy.Say("GET /huge HTTP/1.1\r\nHost: x\r\n\r\n");
    std::this_thread::sleep_for(1s);
    EXPECT_LT(greedy.Hear().size(), 60'000'000U);
}

TEST_F(Server, WhoTakesAnAnswerSlowlyGetsAllOfIt)
{
    constexpr std::size_t kSize = 60'000'000;
    Start({.slowness = 300ms});
    std::size_t taken = 0;
    // On a busy machine a pause may become too long.
    for (int attempt = 0; attempt < 10 && taken < kSize; ++attempt) {
        RawClient slow(Port());
        slow.Say("GET /huge HTTP/1.1\r\nHost: x\r\n\r\n");
        taken = 0;
        for (int pause = 0; pause < 5; ++pause) { // longer than the bound, all together
            taken += slow.Take(6'000'000).size();
            std::this_thread::sleep_for(100ms);
        }
        taken += slow.Take(kSize).size();
    }
    EXPECT_GT(taken, kSize); // there is a head, too
}

/// Files and connections that this process holds open; 0 where nobody tells.
std::ptrdiff_t OpenHandles()
{
    std::error_code error;
    const std::filesystem::directory_iterator handles("/proc/self/fd", error);
    return error ? 0 : std::distance(begin(handles), end(handles));
}

TEST_F(Server, AThousandConnectionsInARowLeaveNothingOpen)
{
    Start();
    const std::ptrdiff_t before = OpenHandles();
    int answered = 0;
    for (int i = 0; i < 1000; ++i)
        answered += StatusOf(Asked(Port(), "GET / HTTP/1.1\r\nHost: x\r\n\r\n")) == 200 ? 1 : 0;
    EXPECT_EQ(answered, 1000);
    const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    // The last are still being closed.
    while (OpenHandles() >= before + 10 && std::chrono::steady_clock::now() < until)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    EXPECT_LT(OpenHandles(), before + 10);
}

TEST_F(Server, TwoHundredThatSayNothingKeepNobodyOut)
{
    Start();
    RawClient listener(Port());
    listener.Say("GET /events HTTP/1.1\r\nHost: x\r\n\r\n");
    EXPECT_THAT(listener.Hear("first"), HasSubstr("first"));
    std::vector<RawClient> silent;
    for (int i = 0; i < 200; ++i) {
        silent.emplace_back(Port());
        if (i % 20 == 0) {
            EXPECT_EQ(StatusOf(Asked(Port(), "GET / HTTP/1.1\r\nHost: x\r\n\r\n")), 200);
        }
    }
    EXPECT_TRUE(silent.front().IsLeft(5s)) << "the one idle longest has not gone";
    EXPECT_FALSE(silent.back().IsLeft(100ms));
    SetNews("second\n");
    EXPECT_THAT(listener.Hear("second"), HasSubstr("second")) << "who listens is not idle";
}

TEST_F(Server, TheOneIdleLongestGoes)
{
    Start({.connections = 2});
    RawClient first(Port());
    std::this_thread::sleep_for(50ms);
    RawClient second(Port());
    std::this_thread::sleep_for(50ms);
    RawClient third(Port());
    EXPECT_TRUE(first.IsLeft(5s));
    second.Say("GET /b HTTP/1.1\r\nHost: x\r\n\r\n");
    EXPECT_EQ(BodyOf(second.Hear()), "GET /b ");
    third.Say("GET /c HTTP/1.1\r\nHost: x\r\n\r\n");
    EXPECT_EQ(BodyOf(third.Hear()), "GET /c ");
}

TEST_F(Server, NewsGoToThoseWhoStay)
{
    Start({.between_news = 10'000ms});
    RawClient one(Port());
    RawClient two(Port());
    for (RawClient* const client : {&one, &two}) {
        client->Say("GET /events HTTP/1.1\r\nHost: x\r\n\r\n");
        EXPECT_THAT(client->Hear("first\n"), HasSubstr("HTTP/1.1 200 OK"));
    }
    SetNews("news\n");
    server_->Nudge();
    EXPECT_EQ(one.Hear("news\n", 5s), "news\n");
    EXPECT_EQ(two.Hear("news\n", 5s), "news\n");
}

TEST_F(Server, WhoLeavesNewsUntakenGoes)
{
    Start({.between_news = 5ms, .waiting_news = 100'000});
    RawClient idle(Port());
    idle.Say("GET /events HTTP/1.1\r\nHost: x\r\n\r\n");
    idle.Hear("first");
    for (int i = 0; i < 400; ++i) {
        SetNews(std::string(90'000, 'n'));
        server_->Nudge();
        std::this_thread::sleep_for(2ms);
    }
    EXPECT_TRUE(idle.IsLeft(10s));
}

TEST_F(Server, AnAnswerMayComeLaterFromAnotherThread)
{
    Start();
    RawClient client(Port());
    client.Say("GET /later HTTP/1.1\r\nHost: x\r\n\r\n");
    const HttpReply reply = LaterReply();
    reply(TextOf("at last"));
    reply(TextOf("twice"));
    EXPECT_EQ(BodyOf(client.Hear()), "at last");
}

TEST_F(Server, EndsAtOnceWhateverGoesOn)
{
    Start();
    RawClient silent(Port());
    RawClient events(Port());
    events.Say("GET /events HTTP/1.1\r\nHost: x\r\n\r\n");
    RawClient later(Port());
    later.Say("GET /later HTTP/1.1\r\nHost: x\r\n\r\n");
    RawClient greedy(Port());
    greedy.Say("GET /long HTTP/1.1\r\nHost: x\r\n\r\n");
    while (asked_ < 3)
        std::this_thread::sleep_for(1ms);
    const auto begin = std::chrono::steady_clock::now();
    server_.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 1s);
    EXPECT_TRUE(silent.IsLeft(5s));
    EXPECT_TRUE(events.IsLeft(5s));
    EXPECT_TRUE(later.IsLeft(5s));
    LaterReply()(TextOf("nobody is there"));
}

TEST_F(Server, APortThatIsTakenIsAnError)
{
    Start();
    try {
        const HttpServer second(Port());
        FAIL() << "two servers at one port";
    } catch (const RunError& error) {
        EXPECT_EQ(error.text,
                  "cannot serve at port " + Decimal(Port()) + ": another program uses it");
        EXPECT_THAT(error.hint, HasSubstr("--port 0"));
    }
}

TEST_F(Server, ItsPortIsFreeAgainAtOnce)
{
    Start();
    const int port = Port();
    Asked(port, "GET / HTTP/1.1\r\nHost: x\r\n\r\n");
    server_.reset();
    EXPECT_EQ(HttpServer(port).Port(), port);
}

} // namespace
} // namespace kiv
