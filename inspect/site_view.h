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

    /// A line by its number (1-based); empty where there is none.
    std::string_view Line(int number) const
    {
        const auto index = static_cast<std::size_t>(number) - 1;
        return number >= 1 && index < lines.size() ? lines[index] : std::string_view();
    }
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

/// A stretch of lines between two marks, left out by a build; the opening mark is its first line.
struct SkippedLines {
    enum class Mark { year_end, stop };
    SourceLines lines;
    Mark mark = Mark::year_end;
};

/// A block that a build has worked out, with its tags.
struct BlockLines {
    SourceLines lines;
    std::string tag; // as it is written, "<zutable>"
};

/// How much of one of the format's bounds the sources take up.
struct BoundUse {
    std::string what; // "pages in the page list"
    int count = 0;
    int most = 0; // that there may be
    KeptPlace where;
};

/// A page that the build made.
struct PageText {
    std::string name; // its file's, as the page list has it
    std::string path; // absolute drive path
    int number = 0;   // 1-based; of the single page 0
    std::string bytes;
    std::vector<SourceLines> origins; // of its lines; [0] is line 1
};

struct SiteView {
    SiteView(Files& site_files, PictureLoader& loader) : files(site_files), pictures(loader) {}

    Files& files; // with the pages as the build made them
    PictureLoader& pictures;
    std::string folder;   // the section's, absolute, ends in "\"
    bool is_there = true; // false: a group names it, and there is no such folder
    std::vector<SourceText> sources;
    std::vector<PageText> pages;
    std::vector<UnusedLines> unused;
    std::vector<SourceLines> used;      // definitions that a page made use of
    std::vector<SkippedLines> skipped;  // closed or not
    std::vector<BlockLines> blocks;     // each pass tells of them
    std::vector<BoundUse> bounds;       // each pass tells of them
    std::vector<std::string> written;   // every file that the build wrote, absolute drive paths
    std::vector<Warning> warnings;      // of the build
    std::optional<RunError> error;      // that ended it
    std::vector<const SiteView*> group; // all sections that are looked at together, this one, too

    /// Where the line of a page (1-based) came from: the source line and the page. Of the lines of
    /// a block it is the first that holds `words`, else the block's first.
    Place PlaceOf(const PageText& page, int line, std::string_view words = {}) const;
    /// The page list or the template, null where it is not there.
    const SourceText* PageList() const;
    const SourceText* Template() const;
    /// Whether one of the two, by its name, is not there; not where the disk cannot tell.
    bool Lacks(std::string_view list) const;
    /// A line (1-based) of a source.
    Place PlaceOf(const SourceText& source, int line) const { return {source.path, line, {}}; }
};

} // namespace kiv
