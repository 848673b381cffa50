// A whole session: pages, builds and questions, as a browser has them.
#include "platform/run_error.h"
#include "preview/preview_session.h"
#include "raw_client.h"
#include "tests/shell/shell_desk.h"
#include "text/text.h"

#include <condition_variable>
#include <mutex>

namespace kiv {
namespace {

using test::BodyOf;
using test::Get;
using testing::HasSubstr;

class Sessions : public ShellTest {
  protected:
    Sessions()
    {
        Put("site/_template.txt", "<!--BODY HERE-->\r\n");
        Put("site/_html.txt", "@FILE = a\r\n@TITLE = One\r\n<p>text\r\n");
        Put("site/a.htm", "<!--BODY HERE-->\r\n<p>text\r\n");
        workspace.switchto("C:\\site");
        session_.emplace(
            PreviewSite{files->ToNative("C:\\site"), files->ToNative("C:\\"),
                        files->ToNative("C:\\site"), 0},
            *files,
            SourceTools{[this](const std::string& path) { return TellPage(workspace, path); },
                        [this](const std::string& native) { return files->FromNative(native); },
                        [this](const std::string& path, int line) {
                            edited_ = path + ":" + std::to_string(line);
                        }},
            [this](std::function<void()> task) { Post(std::move(task)); });
        const std::string address = session_->Address();
        port_ = NumericHead(address.substr(address.rfind(':') + 1));
    }
    ~Sessions() override { session_.reset(); }

    /// From the server's thread.
    void Post(std::function<void()> task)
    {
        const std::scoped_lock lock(mutex_);
        task_ = std::move(task);
        has_task_.notify_one();
    }
    /// Does the one task that comes, in the thread of the drives.
    void Work()
    {
        std::unique_lock lock(mutex_);
        ASSERT_TRUE(
            has_task_.wait_for(lock, std::chrono::seconds(20), [&] { return task_ != nullptr; }));
        const std::function<void()> task = std::exchange(task_, nullptr);
        lock.unlock();
        task();
    }

    /// The answer to a question of a page's script.
    std::string Ask(const std::string& method, const std::string& target, const std::string& body)
    {
        const std::string page = Get(port_, "/site/a.htm");
        const std::string mark = "data-secret=\"";
        const std::string secret = page.substr(page.find(mark) + mark.size(), 32);
        const std::string host = "127.0.0.1:" + Decimal(port_);
        test::RawClient client(port_);
        client.Say(method + " " + target + " HTTP/1.1\r\nHost: " + host + "\r\nOrigin: http://" +
                   host + "\r\nX-Kiv-Secret: " + secret +
                   "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body);
        Work();
        return BodyOf(client.Hear());
    }

    std::optional<PreviewSession> session_;
    int port_ = 0;
    std::mutex mutex_;
    std::condition_variable has_task_;
    std::function<void()> task_;
    std::string edited_;
};

TEST_F(Sessions, TheAddressIsThatOfTheFolderBelowTheRoot)
{
    EXPECT_EQ(session_->Address(), "http://127.0.0.1:" + Decimal(port_) + "/site/");
    EXPECT_EQ(session_->AddressOf(files->ToNative("C:\\site\\a.htm")),
              session_->Address() + "a.htm");
    EXPECT_THAT(BodyOf(Get(port_, "/site/")), HasSubstr("a.htm"));
}

TEST_F(Sessions, EachRunHasItsOwnSecret)
{
    const std::string page = Get(port_, "/site/a.htm");
    const std::size_t at = page.find("data-secret=\"") + 13;
    EXPECT_EQ(page.substr(at, 32).find_first_not_of("0123456789abcdef"), npos);
    EXPECT_EQ(page[at + 32], '"');
    const PreviewSession other(
        {files->ToNative("C:\\site"), files->ToNative("C:\\"), files->ToNative("C:\\site"), 0},
        *files, {}, {});
    const std::string address = other.Address();
    const std::string theirs = Get(NumericHead(address.substr(17)), "/site/a.htm");
    EXPECT_NE(theirs.substr(at, 32), page.substr(at, 32));
}

TEST_F(Sessions, QuestionsAreAnsweredInTheThreadOfTheDrives)
{
    EXPECT_EQ(Ask("GET", "/.kiv/place?page=/site/a.htm&at=2:1", ""),
              "{\"trouble\":\"\",\"place\":\"_html.txt:3\"}");
    EXPECT_THAT(Ask("GET", "/.kiv/story?page=/site/a.htm&at=2:1", ""),
                HasSubstr("\"title\":\"a.htm:2\""));
    EXPECT_EQ(Ask("POST", "/.kiv/open", "page=/site/a.htm&at=2:1"), "{\"trouble\":\"\"}");
    EXPECT_EQ(edited_, "C:\\site\\_html.txt:3");
}

TEST_F(Sessions, HowABuildEndedIsToldAndItsPlaceOpened)
{
    const RunError error(ErrorKind::file, "odd", {"C:\\site\\_html.txt", 7, ""}, "Mend it.");
    session_->BuildBegins();
    session_->BuildEnds(reporter, error, {});
    test::RawClient client(port_);
    client.Say("GET /.kiv/events HTTP/1.1\r\nHost: localhost\r\n\r\n");
    EXPECT_THAT(client.Hear("\"build\":{\"failed\":true,\"warnings\":0,\"text\":\"odd\",\"place\":"
                            "\"_html.txt:7\",\"hint\":\"Mend it.\"}"),
                HasSubstr("_html.txt:7"));
    Ask("POST", "/.kiv/open", "first=1");
    EXPECT_EQ(edited_, "C:\\site\\_html.txt:7");
}

TEST_F(Sessions, APlaceThatWasMendedIsNotOpened)
{
    const RunError error(ErrorKind::file, "odd", {"C:\\site\\_html.txt", 7, ""}, "");
    EXPECT_THAT(Ask("POST", "/.kiv/open", "first=1"), HasSubstr("there is none to open"));
    session_->BuildEnds(reporter, error, {});
    session_->BuildEnds(reporter, {}, {});
    EXPECT_THAT(Ask("POST", "/.kiv/open", "first=1"), HasSubstr("there is none to open"));
    EXPECT_EQ(edited_, "");
}

TEST_F(Sessions, WarningsAndThePagesThatWentAreTold)
{
    session_->BuildEnds(reporter, {}, {"C:\\site\\a.htm", "C:\\site\\b.htm", "Z:\\none"});
    reporter.reportmsg("first", {"C:\\site\\_html.txt", 2, "a.htm"});
    reporter.reportmsg("second");
    session_->BuildEnds(reporter, {}, {"C:\\site\\a.htm", "C:\\site\\c.htm"});
    test::RawClient client(port_);
    client.Say("GET /.kiv/events HTTP/1.1\r\nHost: localhost\r\n\r\n");
    const std::string event = client.Hear("\"fresh\":[");
    EXPECT_THAT(event, HasSubstr("\"warnings\":2,\"text\":\"first\",\"place\":\"_html.txt:2\""));
    EXPECT_THAT(event, HasSubstr("\"gone\":[\"/site/b.htm\"]"));
}

TEST_F(Sessions, ATaskThatComesTooLateDoesNoHarm)
{
    test::RawClient client(port_);
    const std::string page = Get(port_, "/site/a.htm");
    const std::string secret = page.substr(page.find("data-secret=\"") + 13, 32);
    client.Say("GET /.kiv/place?page=/site/a.htm&at=2:1 HTTP/1.1\r\nHost: localhost\r\n"
               "X-Kiv-Secret: " +
               secret + "\r\n\r\n");
    std::unique_lock lock(mutex_);
    ASSERT_TRUE(
        has_task_.wait_for(lock, std::chrono::seconds(20), [&] { return task_ != nullptr; }));
    session_.reset();
    task_();
    EXPECT_TRUE(client.IsLeft(std::chrono::seconds(5)));
}

} // namespace
} // namespace kiv
