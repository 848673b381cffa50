// A site that is shown to the browsers of this machine while it is worked on.
#pragma once

#include "platform/place.h"
#include "preview/page_sources.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kiv {

class NativePaths;
class Reporter;
struct RunError;

/// What is shown. Paths are native and absolute.
struct PreviewSite {
    std::string folder; // of the page list
    std::string root;   // nothing above it is served
    std::string start;  // the folder in it that is shown first
    int port = 0;       // 0: a free one
};

/// Runs a task where the drives are worked with, as soon as may be.
using PostTask = std::function<void(std::function<void()> task)>;

/// All but the constructor's tools is used from the thread that builds.
class PreviewSession {
  public:
    /// Begins to serve. Throws RunError when the port cannot be had.
    PreviewSession(const PreviewSite& site, NativePaths& paths, SourceTools tools, PostTask post);
    PreviewSession(const PreviewSession&) = delete;
    PreviewSession& operator=(const PreviewSession&) = delete;
    ~PreviewSession();

    /// Where the browser finds the folder that is shown first, or a page (a native path).
    std::string Address() const;
    std::string AddressOf(const std::string& native) const;
    int Port() const;

    void BuildBegins();
    /// A build is over: what it said, what ended it, and the drive paths of what it wrote.
    void BuildEnds(const Reporter& said, const std::optional<RunError>& error,
                   const std::vector<std::string>& written);

  private:
    class Parts;
    std::unique_ptr<Parts> parts_;
};

/// The port that is tried first when nobody names one: a page that is open finds the preview again.
inline constexpr int kPreviewPort = 8098;

} // namespace kiv
