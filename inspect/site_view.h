// A site as an inspection sees it: the sources that a build read, the pages that it made, and which
// line came from where.
#pragma once

#include "platform/files.h"
#include "platform/picture_loader.h"
#include "platform/reporter.h"
#include "platform/run_error.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// A file that the build read lines from.
struct SourceText {
    std::string path;       // absolute drive path
    std::string bytes = {}; // of the whole file
    std::vector<std::string_view> lines =
        {}; // of `bytes`, without their ends, as the build counts them
    bool is_page_list = false;
    bool is_template = false;
};

/// Lines of a source, 1-based, both ends included.
struct SourceLines {
    std::size_t source = kNone; // 0-based, of SiteView::sources
    int first = 0;
    int last = 0;

    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
};

/// Source lines that wrote nothing.
struct UnusedLines {
    SourceLines lines;
    std::string reason; // as "why" tells it
};

/// A page that the build made.
struct PageText {
    std::string name; // its file's, as the page list has it
    std::string path; // absolute drive path
    int number = 0;   // 1-based; of the single page 0
    std::string bytes;
    std::vector<SourceLines> origins; // of its lines; [0] is line 1
};

class LinkedSite;

struct SiteView {
    SiteView(Files& site_files, PictureLoader& loader) : files(site_files), pictures(loader) {}

    Files& files; // with the pages as the build made them
    PictureLoader& pictures;
    std::string folder; // the section's, absolute, ends in "\"
    std::vector<SourceText> sources;
    std::vector<PageText> pages;
    std::vector<UnusedLines> unused;
    std::vector<SourceLines> used;      // definitions that a page made use of
    std::vector<std::string> written;   // every file that the build wrote, absolute drive paths
    std::vector<Warning> warnings;      // of the build
    std::optional<RunError> error;      // that ended it
    std::vector<const SiteView*> group; // all sections that are looked at together, this one, too
    const LinkedSite* linked = nullptr; // their pages and where these lead

    /// Where the line of a page (1-based) came from: the source line and the page. Of the lines of
    /// a block it is the first that holds `words`, else the block's first.
    Place PlaceOf(const PageText& page, int line, std::string_view words = {}) const;
    /// A line (1-based) of a source.
    Place PlaceOf(const SourceText& source, int line) const { return {source.path, line, {}}; }
};

} // namespace kiv
