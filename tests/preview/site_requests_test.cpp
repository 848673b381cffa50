// A site served over a real connection: what is shown, and a table of what is refused.
#include "platform/native_files.h"
#include "preview/http_server.h"
#include "preview/site_requests.h"
#include "raw_client.h"
#include "tests/support/folders.h"
#include "text/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <mutex>
#ifndef _WIN32
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace kiv {
namespace {

using test::Asked;
using test::BodyOf;
using test::Get;
using test::StatusOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class Site : public testing::Test {
  protected:
    Site()
    {
        Put("site/a.htm", "<html><head></head><body><p>A</body></html>");
        Put("site/index.htm", "<p>start");
        Put("site/main.css", "p{}");
        Put("site/guest.asp", "<% secret %>");
        Put("site/notes.txt", "caf\xE9");
        Put("site/film.mp4", "0123456789");
        Put("site/sub/x.gif", "GIF");
        Put("secret.txt", "SECRET");
        requests_.SetPort(server_.Port());
        server_.Serve({[this](const HttpRequest& request, const HttpReply& reply) {
                           requests_.Answer(request, reply);
                       },
                       [this] { return live_.News(); }});
    }

    void Put(const std::string& name, const std::string& bytes)
    {
        test::WriteBytes(folder_.Path() / name, bytes);
    }

    int Port() const { return server_.Port(); }
    std::string Host() const { return "127.0.0.1:" + Decimal(Port()); }

    /// The answer to a request whose "%P" is the port.
    std::string Ask(std::string request) const
    {
        ReplaceEach(request, "%P", Decimal(Port()));
        return Asked(Port(), request);
    }

    SourceDesk Desk()
    {
        const auto note = [this](const char* what) {
            return [this, what](const PageSpot& spot, const SourceDesk::Done& done) {
                const std::scoped_lock lock(mutex_);
                asked_ = std::string(what) + " " +
                         spot.native.substr(spot.native.find_last_of("\\/") + 1) + " " +
                         std::to_string(spot.line) + ":" + std::to_string(spot.column);
                done("{\"told\":1}");
            };
        };
        return {note("place"), note("story"), note("open"), [this](const SourceDesk::Done& done) {
                    const std::scoped_lock lock(mutex_);
                    asked_ = "first";
                    done("{}");
                }};
    }
    std::string WhatWasAsked()
    {
        const std::scoped_lock lock(mutex_);
        return std::exchange(asked_, {});
    }

    /// The site's folder, which must be there before it is served.
    std::string RootOf()
    {
        Put("site/.hidden", "hidden");
        return test::TextOf(folder_.Path() / "site");
    }

    test::TemporaryFolder folder_;
    std::mutex mutex_;
    std::string asked_;
    const ServedFiles files_{RootOf()};
    LiveState live_{"run1"};
    SiteRequests requests_{files_, live_, "5ec3e7", Desk()};
    HttpServer server_{0};
};

TEST_F(Site, PagesHaveTheScriptAndSayTheirCharacterSetThemselves)
{
    const std::string answer = Get(Port(), "/a.htm");
    EXPECT_THAT(answer, StartsWith("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\n"));
    EXPECT_EQ(BodyOf(answer),
              "<html><head><script src=\"http://" + Host() +
                  "/.kiv/live.js\" nonce=\"run1\" data-run=\"run1\" data-secret=\"5ec3e7\" "
                  "data-version=\"1\" data-page=\"/a.htm\"></script></head>"
                  "<body data-kiv-at=\"1:20\"><p data-kiv-at=\"1:26\">A</body></html>");
    for (const char* const field :
         {"Cache-Control: no-store", "X-Content-Type-Options: nosniff",
          "X-Frame-Options: SAMEORIGIN", "Cross-Origin-Resource-Policy: same-origin"})
        EXPECT_THAT(answer, HasSubstr(field));
}

TEST_F(Site, OtherFilesAreWhatTheyAre)
{
    EXPECT_EQ(BodyOf(Get(Port(), "/main.css")), "p{}");
    EXPECT_THAT(Get(Port(), "/main.css"), HasSubstr("Content-Type: text/css\r\n"));
    EXPECT_EQ(BodyOf(Get(Port(), "/notes.txt")), "caf\xE9");
    EXPECT_THAT(Get(Port(), "/notes.txt"), HasSubstr("text/plain; charset=windows-1252"));
    EXPECT_THAT(BodyOf(Get(Port(), "/guest.asp")), HasSubstr("&lt;% secret %&gt;"));
    EXPECT_THAT(Get(Port(), "/guest.asp"), HasSubstr("Content-Type: text/html; charset="));
    EXPECT_THAT(BodyOf(Get(Port(), "/")), StartsWith("<script src=\"http://" + Host()));
    EXPECT_THAT(BodyOf(Get(Port(), "/")), EndsWith("></script><p data-kiv-at=\"1:1\">start"));
    EXPECT_THAT(Get(Port(), "/sub"), HasSubstr("301 Moved Permanently"));
    EXPECT_THAT(Get(Port(), "/sub"), HasSubstr("Location: /sub/\r\n"));
    EXPECT_THAT(BodyOf(Get(Port(), "/sub/")), HasSubstr("<a href=\"./x.gif\">x.gif</a>"));
    EXPECT_EQ(StatusOf(Get(Port(), "/A.htm")), 404);
    EXPECT_THAT(BodyOf(Get(Port(), "/A.htm")), HasSubstr("But there is <a href=\"/a.htm\">"));
}

TEST_F(Site, OnlyPagesOfSomeMegabytesAreMarked)
{
    const std::string longest = "<p>" + std::string(3'999'997, 'x');
    Put("site/longest.htm", longest);
    EXPECT_THAT(BodyOf(Get(Port(), "/longest.htm")),
                HasSubstr("</script><p data-kiv-at=\"1:1\">xxx"));
    Put("site/longest.htm", longest + "x");
    EXPECT_TRUE(BodyOf(Get(Port(), "/longest.htm")) == longest + "x"); // too long to be printed
}

struct RangeRow {
    const char* range;
    int status;
    const char* body;
    const char* field;
};

TEST_F(Site, PartsOfAFile)
{
    constexpr RangeRow kRows[] = {
        {"bytes=0-3", 206, "0123", "Content-Range: bytes 0-3/10\r\n"},
        {"bytes=4-", 206, "456789", "Content-Range: bytes 4-9/10\r\n"},
        {"bytes=-2", 206, "89", "Content-Range: bytes 8-9/10\r\n"},
        {"bytes=-99", 206, "0123456789", "Content-Range: bytes 0-9/10\r\n"},
        {"bytes=8-99", 206, "89", "Content-Range: bytes 8-9/10\r\n"},
        {"bytes=10-", 416, "", "Content-Range: bytes */10\r\n"},
        {"bytes=-0", 416, "", "Content-Range: bytes */10\r\n"},
        {"bytes=5-4", 200, "0123456789", "Content-Length: 10\r\n"},
        {"bytes=-", 200, "0123456789", "Content-Length: 10\r\n"},
        {"bytes=a-b", 200, "0123456789", "Content-Length: 10\r\n"},
        {"bytes=0-1,3-4", 200, "0123456789", "Content-Length: 10\r\n"},
        {"bytes=99999999999999999999-", 200, "0123456789", "Content-Length: 10\r\n"},
        {"lines=1-2", 200, "0123456789", "Content-Length: 10\r\n"},
    };
    for (const RangeRow& row : kRows) {
        const std::string field = "Range: " + std::string(row.range) + "\r\n";
        const std::string answer = Get(Port(), "/film.mp4", field);
        EXPECT_EQ(StatusOf(answer), row.status) << row.range;
        EXPECT_EQ(BodyOf(answer), row.body) << row.range;
        EXPECT_THAT(answer, HasSubstr(row.field)) << row.range;
    }
}

struct RefusedRow {
    const char* target;
    int status;
};

TEST_F(Site, TargetsThatAreRefused)
{
    constexpr RefusedRow kRows[] = {
        {"/../secret.txt", 400},
        {"/sub/../../secret.txt", 400},
        {"/..", 400},
        {"/../", 400},
        {"/./a.htm", 400},
        {"/%2e%2e/secret.txt", 400},
        {"/%2E%2e/secret.txt", 400},
        {"/.%2e/secret.txt", 400},
        {"/%2e./secret.txt", 400},
        {"/..%2fsecret.txt", 400},
        {"/..%2Fsecret.txt", 400},
        {"/%2e%2e%2fsecret.txt", 400},
        {"/..%5csecret.txt", 400},
        {"/..\\secret.txt", 400},
        {"/sub\\..\\..\\secret.txt", 400},
        {"/%252e%252e/secret.txt", 404}, // a name of percent signs and letters
        {"/..%252fsecret.txt", 404},
        {"/%c0%ae%c0%ae/secret.txt", 404},
        {"/%c0%ae%c0%ae%c0%afsecret.txt", 404},
        {"/%ef%bc%8e%ef%bc%8e/secret.txt", 404},
        {"/..;/secret.txt", 404},
        {"/.../secret.txt", 404},
        {"/..%20/secret.txt", 404},
        {"/%00", 400},
        {"/a.htm%00", 400},
        {"/a.htm%00.txt", 400},
        {"/a.htm%0d%0aX:y", 400},
        {"/%", 400},
        {"/%2", 400},
        {"/%g0", 400},
        {"//etc/passwd", 404},
        {"//127.0.0.1/a.htm", 404},
        {"/etc/passwd", 404},
        {"/C:/secret.txt", 404},
        {"/C:%5csecret.txt", 400},
        {"/c%3a/", 404},
        {"/CON", 404},
        {"/nul.htm", 404},
        {"/a.htm::$DATA", 404},
        {"/a.htm.", 404},
        {"/a.htm/", 404},
        {"/.hidden", 404},
        {"/.kiv/", 404},
        {"/.kiv/secret", 404},
        {"/.kiv/open", 405},
        {"http://a.example/a.htm", 421}, // as to a proxy
        {"http://127.0.0.1:1/a.htm", 421},
        {"http://127.0.0.1@a.example/a.htm", 421},
        {"http:///a.htm", 421},
        {"http://127.0.0.1/../secret.txt", 400},
        {"https://127.0.0.1/a.htm", 400},
        {"*", 400},
        {"a.htm", 400},
    };
    for (const RefusedRow& row : kRows) {
        const std::string answer = Get(Port(), row.target);
        EXPECT_EQ(StatusOf(answer), row.status) << row.target;
        EXPECT_THAT(answer, Not(HasSubstr("SECRET"))) << row.target;
    }
}

#ifndef _WIN32
TEST_F(Site, WhatCannotBeReadSaysWhy)
{
    ASSERT_EQ(::mkfifo((folder_.Path() / "site/pipe.htm").c_str(), 0600), 0);
    const std::string pipe = Get(Port(), "/pipe.htm");
    EXPECT_EQ(StatusOf(pipe), 403);
    EXPECT_THAT(BodyOf(pipe), HasSubstr("no plain file"));
    if (::geteuid() == 0)
        return; // who may read everything
    Put("site/closed.htm", "<p>");
    std::filesystem::permissions(folder_.Path() / "site/closed.htm", std::filesystem::perms::none);
    EXPECT_EQ(StatusOf(Get(Port(), "/closed.htm")), 403);
    EXPECT_THAT(BodyOf(Get(Port(), "/closed.htm")), HasSubstr("permissions"));
}

/// As many files as may be open, as long as it lives.
class NoFileLeft {
  public:
    NoFileLeft()
    {
        ::getrlimit(RLIMIT_NOFILE, &before_);
        rlimit none = before_;
        none.rlim_cur = 0; // those that are open stay
        ::setrlimit(RLIMIT_NOFILE, &none);
    }
    NoFileLeft(const NoFileLeft&) = delete;
    NoFileLeft& operator=(const NoFileLeft&) = delete;
    ~NoFileLeft() { ::setrlimit(RLIMIT_NOFILE, &before_); }

  private:
    rlimit before_{};
};

TEST_F(Site, TooManyOpenFilesAreNoMissingPage)
{
    HttpRequest request;
    request.method = "GET";
    request.host = "localhost";
    for (const char* const target : {"/a.htm", "/sub/", "/none.htm"}) {
        request.target = target;
        HttpAnswer answer;
        {
            const NoFileLeft no_file_left;
            requests_.Answer(request, [&](HttpAnswer made) { answer = std::move(made); });
        }
        EXPECT_EQ(answer.status, 503) << target;
        EXPECT_THAT(answer.body, HasSubstr("Too many files are open")) << target;
    }
}

TEST_F(Site, ALinkThatLeadsOutIsNotThere)
{
    std::filesystem::create_symlink(folder_.Path() / "secret.txt", folder_.Path() / "site/out.txt");
    std::filesystem::create_symlink(folder_.Path(), folder_.Path() / "site/up");
    EXPECT_EQ(StatusOf(Get(Port(), "/out.txt")), 404);
    EXPECT_EQ(StatusOf(Get(Port(), "/up/secret.txt")), 404);
    EXPECT_EQ(StatusOf(Get(Port(), "/up/")), 404);
}

TEST_F(Site, ALinkThatLeadsOutIsNotWatched)
{
    LiveState live("run2");
    SiteRequests requests(files_, live, "", Desk());
    const auto news_after = [&](const char* target) {
        HttpRequest request;
        request.method = "GET";
        request.target = target;
        request.host = "localhost";
        requests.Answer(request, [](const HttpAnswer&) {});
        return live.News() + live.News() + live.News();
    };
    std::filesystem::create_symlink("../../secret.txt", folder_.Path() / "site/sub/index.htm");
    EXPECT_EQ(news_after("/sub/"), "");
    EXPECT_EQ(news_after("/sub/index.htm"), "");
    Put("secret.txt", "ANOTHER SECRET");
    EXPECT_EQ(news_after("/sub/"), "");
    Put("site/bare/x.gif", "GIF");
    EXPECT_EQ(news_after("/bare/"), "");
    Put("site/bare/index.htm", "<p>");
    EXPECT_THAT(live.News() + live.News(), HasSubstr("\"changed\":[\"/bare\"]"));
}
#endif

TEST_F(Site, OnlyItsOwnNamesAreAnswered)
{
    const std::string port = ":" + Decimal(Port());
    const auto status = [&](const std::string& host) {
        return StatusOf(Asked(Port(), "GET /a.htm HTTP/1.1\r\nHost: " + host + "\r\n\r\n"));
    };
    for (const char* const name : {"localhost", "127.0.0.1", "[::1]", "LocalHost"}) {
        EXPECT_EQ(status(name), 200) << name;
        EXPECT_EQ(status(name + port), 200) << name;
    }
    for (const char* const host :
         {"", "a.example", "localhost.a.example", "localhost:1", "127.0.0.1:1", "127.0.0.2",
          "0.0.0.0", "[::]", "::1", "localhost:", "a.example:80", "127.0.0.1@a.example",
          "localhost a.example", "127.1", "2130706433"})
        EXPECT_EQ(status(host), 421) << host;
    EXPECT_EQ(status("a.example" + port), 421);
}

TEST_F(Site, AWholeAddressIsATarget)
{
    for (const std::string& server : {std::string("http://127.0.0.1"), "http://" + Host(),
                                      std::string("HTTP://LocalHost"), std::string("http://[::1]")})
        EXPECT_THAT(BodyOf(Get(Port(), server + "/main.css?x")), "p{}") << server;
    EXPECT_THAT(BodyOf(Get(Port(), "http://localhost")), HasSubstr("start"));
    EXPECT_THAT(BodyOf(Get(Port(), "http://localhost?x")), HasSubstr("start"));
    EXPECT_EQ(StatusOf(Get(Port(), "http://localhost/.kiv/place?page=/a.htm&at=1:20")), 403);
    EXPECT_EQ(StatusOf(Ask("GET http://localhost/a.htm HTTP/1.1\r\nHost: a.example\r\n\r\n")), 421);
}

TEST_F(Site, WhatIsRefusedBeforeItIsReadHasTheFieldsOfAll)
{
    for (const char* const request :
         {"hello\r\n\r\n", "PUT /a.htm HTTP/1.1\r\nHost: localhost\r\n\r\n",
          "POST / HTTP/1.1\r\nHost: localhost\r\nContent-Length: 999999999\r\n\r\n"}) {
        const std::string answer = Ask(request);
        for (const char* const field :
             {"Content-Type: text/plain; charset=utf-8", "Cache-Control: no-store",
              "X-Content-Type-Options: nosniff", "X-Frame-Options: SAMEORIGIN",
              "Cross-Origin-Resource-Policy: same-origin"})
            EXPECT_THAT(answer, HasSubstr(field)) << request;
    }
    EXPECT_THAT(Ask("PUT /a.htm HTTP/1.1\r\nHost: localhost\r\n\r\n"),
                HasSubstr("Allow: GET, HEAD\r\n"));
}

TEST_F(Site, AListOfAFolderFollowsIt)
{
    EXPECT_THAT(BodyOf(Get(Port(), "/sub/")), Not(HasSubstr("y.gif")));
    Put("site/sub/y.gif", "GIF");
    EXPECT_THAT(live_.News() + live_.News(), HasSubstr("\"changed\":[\"/sub\"]"));
    EXPECT_THAT(BodyOf(Get(Port(), "/sub/")), HasSubstr("y.gif"));
}

struct AskRow {
    const char* request;
    int status;
};

// What another page than this preview's own may not do.
constexpr AskRow kRefusedQuestions[] = {
    {"GET /.kiv/place?page=/a.htm&at=1:20 HTTP/1.1\r\nHost: localhost\r\n\r\n", 403},
    {"GET /.kiv/story?page=/a.htm&at=1:20 HTTP/1.1\r\nHost: localhost\r\nX-Kiv-Secret: "
     "5\r\n\r\n",
     403},
    {"GET /.kiv/place?page=/none.htm&at=1:20 HTTP/1.1\r\nHost: localhost\r\nX-Kiv-Secret: "
     "5ec3e7\r\n\r\n",
     404},
    {"GET /.kiv/place?page=/../secret.txt&at=1:2 HTTP/1.1\r\nHost: localhost\r\nX-Kiv-Secret: "
     "5ec3e7\r\n\r\n",
     404},
    {"GET /.kiv/place?page=/a.htm&at=x HTTP/1.1\r\nHost: localhost\r\nX-Kiv-Secret: "
     "5ec3e7\r\n\r\n",
     404},
    // The one that acts: the secret and the page's own origin.
    {"POST /.kiv/open HTTP/1.1\r\nHost: localhost:%P\r\nX-Kiv-Secret: "
     "5ec3e7\r\nContent-Length: "
     "20\r\n\r\npage=/a.htm&at=1:20&",
     403},
    {"POST /.kiv/open HTTP/1.1\r\nHost: localhost:%P\r\nOrigin: http://a.example\r\n"
     "X-Kiv-Secret: 5ec3e7\r\nContent-Length: 20\r\n\r\npage=/a.htm&at=1:20&",
     403},
    {"POST /.kiv/open HTTP/1.1\r\nHost: localhost:%P\r\nOrigin: null\r\n"
     "X-Kiv-Secret: 5ec3e7\r\nContent-Length: 20\r\n\r\npage=/a.htm&at=1:20&",
     403},
    {"POST /.kiv/open HTTP/1.1\r\nHost: localhost:%P\r\nOrigin: http://localhost\r\n"
     "X-Kiv-Secret: 5ec3e7\r\nContent-Length: 20\r\n\r\npage=/a.htm&at=1:20&",
     403},
    {"POST /.kiv/open HTTP/1.1\r\nHost: localhost:%P\r\nOrigin: http://localhost:%P\r\n"
     "Content-Length: 20\r\n\r\npage=/a.htm&at=1:20&",
     403},
    {"POST /.kiv/open HTTP/1.1\r\nHost: localhost:%P\r\nOrigin: http://localhost:%P\r\n"
     "X-Kiv-Secret: 5ec3e8\r\nContent-Length: 20\r\n\r\npage=/a.htm&at=1:20&",
     403},
    {"POST /.kiv/open HTTP/1.1\r\nHost: a.example\r\nOrigin: http://a.example\r\n"
     "X-Kiv-Secret: 5ec3e7\r\nContent-Length: 20\r\n\r\npage=/a.htm&at=1:20&",
     421},
    {"POST /.kiv/open HTTP/1.1\r\nHost: localhost:%P\r\nOrigin: http://localhost:%P\r\n"
     "Sec-Fetch-Site: cross-site\r\nX-Kiv-Secret: 5ec3e7\r\nContent-Length: "
     "20\r\n\r\npage=/a.htm&at=1:20&",
     403},
    {"POST /a.htm HTTP/1.1\r\nHost: localhost\r\nContent-Length: 0\r\n\r\n", 405},
    {"POST /.kiv/place HTTP/1.1\r\nHost: localhost\r\nX-Kiv-Secret: 5ec3e7\r\nContent-Length: "
     "0\r\n\r\n",
     405},
    // What another site's page fetches.
    {"GET /a.htm HTTP/1.1\r\nHost: localhost\r\nSec-Fetch-Site: cross-site\r\nSec-Fetch-Mode: "
     "no-cors\r\n\r\n",
     403},
    {"GET /a.htm HTTP/1.1\r\nHost: localhost\r\nSec-Fetch-Site: same-site\r\nSec-Fetch-Mode: "
     "cors\r\n\r\n",
     403},
    {"GET /a.htm HTTP/1.1\r\nHost: localhost\r\nSec-Fetch-Site: cross-site\r\nSec-Fetch-Mode: "
     "navigate\r\n\r\n",
     200},
    {"GET /.kiv/events HTTP/1.1\r\nHost: localhost\r\nSec-Fetch-Site: cross-site\r\n"
     "Sec-Fetch-Mode: navigate\r\n\r\n",
     403},
};

TEST_F(Site, OnlyThePagesOwnScriptMayAskAndAct)
{
    for (const AskRow& row : kRefusedQuestions) {
        EXPECT_EQ(StatusOf(Ask(row.request)), row.status) << row.request;
        EXPECT_EQ(WhatWasAsked(), "") << row.request;
    }
}

TEST_F(Site, QuestionsOfThePagesScriptAreHandedOn)
{
    const std::string secret = "X-Kiv-Secret: 5ec3e7\r\n";
    const std::string answer = Get(Port(), "/.kiv/place?page=%2Fa.htm&at=1:26", secret);
    EXPECT_EQ(BodyOf(answer), "{\"told\":1}");
    EXPECT_THAT(answer, HasSubstr("Content-Type: application/json\r\n"));
    EXPECT_EQ(WhatWasAsked(), "place a.htm 1:26");
    Get(Port(), "/.kiv/story?page=%2Fguest.asp&at=1:1", secret);
    EXPECT_EQ(WhatWasAsked(), "story guest.asp 1:1");
    const std::string open = "POST /.kiv/open HTTP/1.1\r\nHost: 127.0.0.1:%P\r\nOrigin: "
                             "http://127.0.0.1:%P\r\nX-Kiv-Secret: 5ec3e7\r\n";
    EXPECT_EQ(StatusOf(Ask(open + "Content-Length: 23\r\n\r\npage=%2Fa.htm&at=12:345")), 200);
    EXPECT_EQ(WhatWasAsked(), "open a.htm 12:345");
    EXPECT_EQ(StatusOf(Ask(open + "Content-Length: 7\r\n\r\nfirst=1")), 200);
    EXPECT_EQ(WhatWasAsked(), "first");
}

TEST_F(Site, EventsTellOfWhatWasServed)
{
    Get(Port(), "/main.css");
    test::RawClient client(Port());
    client.Say("GET /.kiv/events?run=run1&since=1 HTTP/1.1\r\nHost: localhost\r\n\r\n");
    const std::string first = client.Hear("\"fresh\":[]}");
    EXPECT_THAT(first, HasSubstr("Content-Type: text/event-stream\r\n"));
    EXPECT_THAT(first,
                HasSubstr("retry: 500\ndata: {\"run\":\"run1\",\"version\":1,\"changed\":[]"));
    Put("site/main.css", "p{color:red}");
    EXPECT_THAT(client.Hear("\n\n"), HasSubstr("\"version\":2,\"changed\":[\"/main.css\"]"));
}

} // namespace
} // namespace kiv
