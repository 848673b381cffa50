#include "preview/site_requests.h"

#include "platform/native_files.h"
#include "preview/content_marks.h"
#include "preview/live_script.h"
#include "preview/made_pages.h"
#include "preview/media_types.h"
#include "preview/request_target.h"
#include "preview/sent_part.h"
#include "preview/text_answer.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <utility>

namespace kiv {

namespace {

constexpr std::string_view kOwnFolder = "/.kiv/";
constexpr std::string_view kUtf8Page = "text/html; charset=utf-8";

HttpAnswer JsonAnswer(std::string json)
{
    return TextAnswer(200, "application/json", std::move(json));
}

std::string_view PathOf(const HttpRequest& request)
{
    return std::string_view(request.target).substr(0, request.target.find_first_of("?#"));
}

bool IsOwnTarget(const HttpRequest& request)
{
    return PathOf(request).starts_with(kOwnFolder);
}

/// Whether another site's page fetches something here without being gone to.
bool IsFetchedByOthers(const HttpRequest& request)
{
    const bool is_own = request.fetch_site.empty() || request.fetch_site == "same-origin" ||
                        request.fetch_site == "none";
    return !is_own && (request.fetch_mode != "navigate" || IsOwnTarget(request));
}

constexpr std::string_view kScheme = "http://";

/// A target may be a whole address; then the part in it that names the server, else "".
std::string_view ServerIn(std::string_view target)
{
    if (!StartsWithNoCase(target, kScheme))
        return {};
    target.remove_prefix(kScheme.size());
    return target.substr(0, target.find_first_of("/?#"));
}

} // namespace

bool SiteRequests::IsOwnHost(std::string_view host) const
{
    for (const std::string_view name : {"localhost", "127.0.0.1", "[::1]"})
        if (EqualsNoCase(host, name) ||
            EqualsNoCase(host, std::string(name) + ":" + Decimal(port_)))
            return true;
    return false;
}

int SiteRequests::RefusalOf(const HttpRequest& request) const
{
    if (!IsOwnHost(request.host))
        return 421;
    if (StartsWithNoCase(request.target, kScheme))
        return 421; // another server's
    if (!request.target.starts_with('/'))
        return 400;
    if (IsFetchedByOthers(request))
        return 403;
    const bool opens = PathOf(request) == "/.kiv/open";
    if ((request.method == "POST") != opens)
        return 405;
    if (opens && request.origin != "http://" + request.host)
        return 403;
    return 0;
}

void SiteRequests::Answer(const HttpRequest& request, const HttpReply& reply)
{
    const std::string_view server = ServerIn(request.target);
    if (server.empty() || !IsOwnHost(server))
        return AnswerPath(request, reply);
    HttpRequest plain = request;
    plain.target.erase(0, kScheme.size() + server.size());
    if (!plain.target.starts_with('/'))
        plain.target.insert(0, 1, '/');
    AnswerPath(plain, reply);
}

void SiteRequests::AnswerPath(const HttpRequest& request, const HttpReply& reply)
{
    if (const int refusal = RefusalOf(request); refusal != 0)
        reply(RefusalAnswer(refusal));
    else if (IsOwnTarget(request))
        AnswerOwn(request, reply);
    else
        reply(AnswerOf(request));
}

void SiteRequests::AnswerOwn(const HttpRequest& request, const HttpReply& reply)
{
    const std::string_view path = PathOf(request);
    if (path == "/.kiv/live.js")
        reply(TextAnswer(200, "text/javascript; charset=utf-8", std::string(LiveScript())));
    else if (path == "/.kiv/events")
        reply(Events(request));
    else if (path == "/.kiv/place" || path == "/.kiv/story" || path == "/.kiv/open")
        AnswerAboutSource(request, reply);
    else
        reply(RefusalAnswer(404));
}

HttpAnswer SiteRequests::Events(const HttpRequest& request) const
{
    const std::string_view query = QueryOf(request.target);
    const int since = NumericHead(QueryValue(query, "since"));
    const bool is_of_run = QueryValue(query, "run") == live_.Run();
    const std::uint64_t version = is_of_run && since > 0 ? static_cast<std::uint64_t>(since) : 0;
    HttpAnswer answer = TextAnswer(200, "text/event-stream", "retry: 500\n" + live_.Since(version));
    answer.stays_open = request.method == "GET";
    return answer;
}

void SiteRequests::AnswerAboutSource(const HttpRequest& request, const HttpReply& reply)
{
    if (request.secret != secret_)
        return reply(RefusalAnswer(403));
    const auto done = [reply](std::string json) { reply(JsonAnswer(std::move(json))); };
    const std::string_view path = PathOf(request);
    const bool opens = path == "/.kiv/open";
    const std::string_view query = opens ? std::string_view(request.body) : QueryOf(request.target);
    if (opens && !QueryValue(query, "first").empty())
        return desk_.open_first(done);
    PageSpot spot;
    if (!FindSpot(query, spot))
        return reply(RefusalAnswer(404));
    const auto& ask = opens ? desk_.open : path == "/.kiv/place" ? desk_.place : desk_.story;
    ask(spot, done);
}

bool SiteRequests::FindSpot(std::string_view query, PageSpot& spot) const
{
    TargetPath path;
    const std::string page = QueryValue(query, "page");
    const std::string at = QueryValue(query, "at");
    if (!page.starts_with('/') || !Contains(at, ":"))
        return false;
    for (const std::string_view name : Split(std::string_view(page).substr(1), '/'))
        path.names.emplace_back(name);
    const Served served = files_.Find(path);
    spot = {served.native, NumericHead(Before(at, ':')),
            static_cast<std::size_t>(std::max(NumericHead(at.substr(at.find(':') + 1)), 1))};
    return served.kind == Served::Kind::file && spot.line > 0;
}

PageScript SiteRequests::ScriptFor(const std::string& page, const std::string& host) const
{
    return {"http://" + host, live_.Run(), secret_, std::to_string(live_.Version()), page};
}

HttpAnswer SiteRequests::AnswerOf(const HttpRequest& request)
{
    const std::optional<TargetPath> path = ReadTarget(request.target);
    if (!path)
        return RefusalAnswer(400);
    const Served served = files_.Find(*path);
    const std::string shown = SitePath(served.names);
    switch (served.kind) {
    case Served::Kind::file:
        return FileAnswer(served, request);
    case Served::Kind::folder:
        // Without a stamp, the next look compares the names with those that were served.
        live_.Watch(shown, {served.native, {}, MarkOfNames(served.entries), true});
        return TextAnswer(200, kUtf8Page,
                          FolderPage(served, ScriptElement(ScriptFor(shown, request.host))));
    case Served::Kind::to_folder: {
        HttpAnswer answer = TextAnswer(301, "text/plain", "");
        answer.fields.emplace_back("Location", EncodedPath(served.names) + "/");
        return answer;
    }
    case Served::Kind::unreadable:
        return FaultAnswer(served.fault);
    case Served::Kind::missing:
        break;
    }
    // What is there and is not shown, as a link that leads out, may change as it likes.
    if (!NativeStamp(served.native).exists)
        live_.Watch(shown, {served.native, {}});
    return TextAnswer(404, kUtf8Page,
                      MissingPage(served, ScriptElement(ScriptFor(shown, request.host))));
}

HttpAnswer SiteRequests::FileAnswer(const Served& served, const HttpRequest& request)
{
    const std::string path = SitePath(served.names);
    ServedState state{served.native, NativeStamp(served.native)};
    NativeFault fault = NativeFault::none;
    std::shared_ptr<NativeFile> file = files_.Open(served, fault);
    if (!file) {
        live_.Watch(path, std::move(state));
        return FaultAnswer(fault);
    }
    const MediaType& type = MediaTypeOf(served.names.back());
    const bool is_short = file->Size() <= kLargestText;
    const bool is_text = type.shown != ShownAs::other && is_short;
    std::string bytes;
    if (is_text || (is_short && !live_.Knows(path, state.stamp))) {
        bytes = file->Read(0, static_cast<std::size_t>(file->Size()));
        state.content = ContentMark(bytes);
    }
    live_.Watch(path, std::move(state));
    if (is_text)
        return WholePage(served, request.host, std::move(bytes));
    HttpAnswer answer = TextAnswer(200, type.type, "");
    SendPart(answer, std::move(file), request.range);
    return answer;
}

HttpAnswer SiteRequests::WholePage(const Served& served, const std::string& host,
                                   std::string bytes) const
{
    const std::string& name = served.names.back();
    const MediaType& type = MediaTypeOf(name);
    if (type.shown == ShownAs::text) {
        const std::string said = TextType(type, bytes);
        return TextAnswer(200, said, std::move(bytes));
    }
    const PageScript script = ScriptFor(SitePath(served.names), host);
    if (type.shown == ShownAs::script)
        return TextAnswer(200, TextType(type, bytes),
                          ScriptPage(name, bytes, ScriptElement(script)));
    // What the page itself says of its character set is to count.
    return TextAnswer(200, type.type, MarkedPage(bytes, script));
}

} // namespace kiv
