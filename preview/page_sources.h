// What a page's script asks about the sources, answered where the drives are worked with.
#pragma once

#include "shell/page_stories.h"

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace kiv {

/// A tag on a page.
struct PageSpot {
    std::string native;     // the page's path
    int line = 0;           // 1-based
    std::size_t column = 0; // 1-based, in bytes
};

/// What answers are made with.
struct SourceTools {
    /// The page at an absolute drive path as a build makes it now.
    std::function<PageStories(const std::string& path)> tell_page;
    /// A native path as a drive path.
    std::function<std::string(const std::string& native)> drive_path;
    /// Opens a file in the editor, at a line (1-based; 0: anywhere). Throws RunError.
    std::function<void(const std::string& path, int line)> edit;
};

/// Pages are built once in memory and kept until the next build. Answers are JSON and have
/// "trouble", why nothing can be told or done; "": all is well. None of these throws.
class PageSources {
  public:
    explicit PageSources(SourceTools tools) : tools_(std::move(tools)) {}

    /// The sources may be others now.
    void Forget() { pages_.clear(); }

    /// {"place": "_html.txt:12"}. A page that this site does not make is its own source.
    std::string Place(const PageSpot& spot);
    /// {"title": "about.htm:3", "parts": [{"title", "words", "text", "begin", "size"}]}.
    std::string Story(const PageSpot& spot);
    /// Opens the place in the editor.
    std::string Open(const PageSpot& spot);
    /// `path` is that of what a build told; "": of nothing, so that no editor is started.
    std::string Open(const std::string& path, int line);

  private:
    const PageStories& PageAt(const std::string& path);
    /// The line's index; nothing when this site does not make the page or the line is another now.
    std::optional<std::size_t> Find(const PageStories& page, const PageSpot& spot,
                                    std::string_view path) const;
    ToldPlace PlaceOf(const PageSpot& spot, std::string& folder);

    SourceTools tools_;
    std::map<std::string, PageStories> pages_; // by drive path
};

} // namespace kiv
