// Answers the requests of browsers: which of them are taken, and what each of them gets.
#pragma once

#include "preview/http_message.h"
#include "preview/live_state.h"
#include "preview/marked_page.h"
#include "preview/page_sources.h"
#include "preview/served_files.h"

#include <functional>
#include <string>

namespace kiv {

/// Questions that are answered elsewhere, later; `done` takes the answer, JSON, from any thread.
struct SourceDesk {
    using Done = std::function<void(std::string json)>;
    std::function<void(const PageSpot& spot, Done done)> place;
    std::function<void(const PageSpot& spot, Done done)> story;
    /// Opens the place in the editor.
    std::function<void(const PageSpot& spot, Done done)> open;
    /// Opens the place of the last build's error or first warning.
    std::function<void(Done done)> open_first;
};

/// On the server's thread. All outlive it.
class SiteRequests {
  public:
    SiteRequests(const ServedFiles& files, LiveState& live, std::string secret, SourceDesk desk)
        : files_(files), live_(live), secret_(std::move(secret)), desk_(std::move(desk))
    {
    }

    /// The port is part of the names by which the server may be called.
    void SetPort(int port) { port_ = port; }

    void Answer(const HttpRequest& request, const HttpReply& reply);

  private:
    /// The code with which a request is refused; 0: it is taken.
    int RefusalOf(const HttpRequest& request) const;
    bool IsOwnHost(std::string_view host) const;
    /// When the target is a path.
    void AnswerPath(const HttpRequest& request, const HttpReply& reply);
    void AnswerOwn(const HttpRequest& request, const HttpReply& reply);
    HttpAnswer Events(const HttpRequest& request) const;
    void AnswerAboutSource(const HttpRequest& request, const HttpReply& reply);
    HttpAnswer AnswerOf(const HttpRequest& request);
    HttpAnswer FileAnswer(const Served& served, const HttpRequest& request);
    HttpAnswer WholePage(const Served& served, const std::string& host, std::string bytes) const;
    PageScript ScriptFor(const std::string& page, const std::string& host) const;
    bool FindSpot(std::string_view query, PageSpot& spot) const;

    const ServedFiles& files_;
    LiveState& live_;
    const std::string secret_;
    SourceDesk desk_;
    int port_ = 0;
};

} // namespace kiv
