#include "preview/preview_session.h"

#include "platform/drive_path.h"
#include "platform/native_paths.h"
#include "platform/reporter.h"
#include "platform/run_error.h"
#include "preview/http_server.h"
#include "preview/live_state.h"
#include "preview/served_files.h"
#include "preview/site_requests.h"
#include "shell/story_parts.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <random>
#include <utility>

namespace kiv {

namespace {

/// Words of 32 random bits that nobody can guess, in hexadecimal digits.
std::string RandomDigits(int words)
{
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::random_device device;
    std::string digits;
    for (int i = 0; i < words; ++i)
        for (std::uint32_t bits = device(), k = 0; k < 8; ++k, bits >>= 4)
            digits.push_back(kDigits[bits & 0xF]);
    return digits;
}

/// The names that lead from the root to a path in it.
std::vector<std::string> NamesBelow(std::string_view root, std::string_view native)
{
    std::vector<std::string> names;
    for (const std::string_view name : Split(native.substr(root.size()), kNativeSeparator))
        if (!name.empty())
            names.emplace_back(name);
    return names;
}

} // namespace

class PreviewSession::Parts {
  public:
    Parts(const PreviewSite& site, NativePaths& paths, SourceTools tools, PostTask post)
        : site_(site), paths_(paths), sources_(std::make_shared<PageSources>(std::move(tools))),
          post_(std::move(post)), files_(site.root), live_(RandomDigits(2)),
          requests_(files_, live_, RandomDigits(4), DeskOf()),
          folder_(WithSeparator(paths.FromNative(site.folder))), server_(site.port)
    {
        requests_.SetPort(server_.Port());
        server_.Serve({[this](const HttpRequest& request, const HttpReply& reply) {
                           requests_.Answer(request, reply);
                       },
                       [this] { return live_.News(); }});
    }

    std::string AddressOf(const std::string& native, bool is_folder) const
    {
        const std::vector<std::string> names = NamesBelow(site_.root, native);
        std::string path = EncodedPath(names);
        if (is_folder && !names.empty())
            path += "/";
        return "http://127.0.0.1:" + Decimal(server_.Port()) + path;
    }
    int Port() const { return server_.Port(); }
    std::string Address() const { return AddressOf(site_.start, true); }

    void Begins() { live_.BuildBegins(); }

    void Ends(const Reporter& said, const std::optional<RunError>& error,
              const std::vector<std::string>& written)
    {
        sources_->Forget();
        *first_ = {};
        BuildNews news;
        news.has_failed = error.has_value();
        news.warnings = said.Warnings().size();
        if (error)
            Tell(news, error->text, error->where, error->hint);
        else if (!said.Warnings().empty())
            Tell(news, said.Warnings()[0].text, said.Warnings()[0].where, said.Warnings()[0].hint);
        for (const std::string& path : written)
            if (const std::string native = paths_.ToNative(path); LiesIn(native, site_.root))
                news.made.insert(SitePath(NamesBelow(site_.root, native)));
        live_.BuildEnds(std::move(news));
        server_.Nudge();
    }

  private:
    void Tell(BuildNews& news, const std::string& text, const KeptPlace& where,
              const std::string& hint)
    {
        first_->file = where.file;
        first_->first = first_->last = where.line;
        news.text = ToUtf8(text);
        news.hint = ToUtf8(hint);
        if (!where.file.empty())
            news.place = ToUtf8(PlaceWords(*first_, folder_));
    }

    /// Questions go to the thread of the drives.
    SourceDesk DeskOf()
    {
        using Answer = std::string (PageSources::*)(const PageSpot&);
        const auto ask = [post = post_, sources = sources_](Answer answer) {
            return [=](const PageSpot& spot, const SourceDesk::Done& done) {
                post([=] { done((sources.get()->*answer)(spot)); });
            };
        };
        const auto open_first = [post = post_, sources = sources_,
                                 first = first_](const SourceDesk::Done& done) {
            post([=] { done(sources->Open(first->file, first->first)); });
        };
        return {ask(&PageSources::Place), ask(&PageSources::Story), ask(&PageSources::Open),
                open_first};
    }

    const PreviewSite site_;
    NativePaths& paths_;
    // Tasks that wait may outlive the session.
    const std::shared_ptr<PageSources> sources_;
    const std::shared_ptr<ToldPlace> first_ = std::make_shared<ToldPlace>();
    const PostTask post_;
    const ServedFiles files_;
    LiveState live_;
    SiteRequests requests_;
    const std::string folder_;
    HttpServer server_; // the last: its thread uses all others
};

PreviewSession::PreviewSession(const PreviewSite& site, NativePaths& paths, SourceTools tools,
                               PostTask post)
    : parts_(std::make_unique<Parts>(site, paths, std::move(tools), std::move(post)))
{
}

PreviewSession::~PreviewSession() = default;

std::string PreviewSession::Address() const
{
    return parts_->Address();
}

std::string PreviewSession::AddressOf(const std::string& native) const
{
    return parts_->AddressOf(native, false);
}

int PreviewSession::Port() const
{
    return parts_->Port();
}

void PreviewSession::BuildBegins()
{
    parts_->Begins();
}

void PreviewSession::BuildEnds(const Reporter& said, const std::optional<RunError>& error,
                               const std::vector<std::string>& written)
{
    parts_->Ends(said, error, written);
}

} // namespace kiv
