// A site as an inspection sees it: the sources that a build read, the pages that it made, and which
// line came from where.
#pragma once

#include "builder/trace.h"
#include "platform/files.h"
#include "platform/picture_loader.h"
#include "platform/reporter.h"
#include "platform/run_error.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// What the build made of a source line, over all pages.
class LineParts {
  public:
    void Add(LinePart part) { bits_ |= Bit(part); }
    void AddRole() { bits_ |= kRole; }
    bool Has(LinePart part) const { return (bits_ & Bit(part)) != 0; }
    /// Whether it was taken for what it says of its pages or of the site.
    bool HasRole() const { return (bits_ & kRole) != 0; }
    /// Whether it was read as anything.
    bool IsRead() const { return bits_ != 0; }

  private:
    static std::uint8_t Bit(LinePart part)
    {
        return static_cast<std::uint8_t>(1U << static_cast<unsigned>(part));
    }
    static constexpr std::uint8_t kRole = 1; // the bit of LinePart::none, which is never added
    std::uint8_t bits_ = 0;
};

/// A file that the build read lines from.
struct SourceText {
    std::string path;       // absolute drive path
    std::string bytes = {}; // of the whole file
    std::vector<std::string_view> lines =
        {};                            // of `bytes`, without their ends, as the build counts them
    std::vector<LineParts> parts = {}; // of its lines, as far as anything is known
    bool is_page_list = false;
    bool is_template = false;

    /// A line by its number (1-based); empty where there is none.
    std::string_view Line(int number) const
    {
        const auto index = static_cast<std::size_t>(number) - 1;
        return number >= 1 && index < lines.size() ? lines[index] : std::string_view();
    }
    /// What a line (0-based) was read as; nothing where nothing is known.
    LineParts PartsOf(std::size_t index) const
    {
        return index < parts.size() ? parts[index] : LineParts();
    }
    /// Whether it belongs to the page list: lines of it were read, and none for the template.
    bool IsOfPageList() const;
};

/// Lines of a source, 1-based, both ends included.
struct SourceLines {
    std::size_t source = kNone; // 0-based, of SiteView::sources
    int first = 0;
    int last = 0;

    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    bool operator==(const SourceLines&) const = default;
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

/// A number that the page list defines.
struct NumberDefinition {
    std::string mark; // "!!3"
    SourceLines lines;
};

/// A construct in a line, once for all pages that have the line.
struct ConstructUse {
    std::string name; // "!!3", "!!pop", "[[2", "]]"
    std::string text; // the whole of it
    SourceLines lines;
    std::vector<SourceLines> brought_by; // definitions that were put into the line before
};

/// Two pages of the list that are one file.
struct PageTwice {
    SourceLines first; // the lines that begin them
    SourceLines second;
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
    std::string id = {};
    std::string group = {};   // "": it has none of its own
    SourceLines from = {};    // the line that begins it
    std::set<int> as_is = {}; // its lines that a file brought which is put in as it is
    std::string title = {};   // as "@TITLE" gives it
    std::string description = {};
    bool noindex = false;
    bool redirects = false; // to another page

    /// Whether a line (1-based) is one in which the build expands nothing.
    bool IsAsItIs(int line) const { return as_is.contains(line); }
};

class LinkedSite;

struct SiteView {
    SiteView(Files& site_files, PictureLoader& loader) : files(site_files), pictures(loader) {}

    Files& files; // with the pages as the build made them
    PictureLoader& pictures;
    std::string folder;   // the section's, absolute, ends in "\"
    bool is_there = true; // false: a group names it, and there is no such folder
    std::vector<SourceText> sources;
    std::vector<PageText> pages;
    std::vector<UnusedLines> unused;
    std::vector<SourceLines> used;                   // definitions that a page made use of
    std::vector<BlockLines> blocks;                  // each pass tells of them
    std::vector<NumberDefinition> definitions;       // in the order in which they were read
    std::set<std::string, std::less<>> numbers_used; // "!!3", defined or not
    std::vector<ConstructUse> undefined;             // uses of numbers that nobody defines
    std::vector<ConstructUse> references;            // to pages and groups
    std::vector<ConstructUse> unclosed;              // without their end
    std::vector<ConstructUse> unopened;              // ends of nothing
    std::vector<PageTwice> twice;
    std::vector<SkippedLines> skipped;  // closed or not
    std::vector<BoundUse> bounds;       // each pass tells of them
    std::vector<std::string> written;   // every file that the build wrote, absolute drive paths
    std::vector<Warning> warnings;      // of the build
    std::optional<RunError> error;      // that ended it
    bool list_ended_early = false;      // lines of the page list were never read
    std::vector<const SiteView*> group; // all sections that are looked at together, this one, too
    const LinkedSite* linked = nullptr; // their pages and where these lead

    /// Where the line of a page (1-based) came from: the source line and the page. Of the lines of
    /// a block it is the first that holds `words`, else the block's first.
    Place PlaceOf(const PageText& page, int line, std::string_view words = {}) const;
    /// The first of the lines, which must be of a source, that holds `words`, else the very first.
    Place PlaceOf(const SourceLines& lines, std::string_view words) const;
    /// Where a construct stands: in its line, or in a definition that brought it there.
    Place PlaceOf(const ConstructUse& use) const;
    /// "_html.txt:12", the file as one says it in the section's folder.
    std::string PlaceText(const Place& place) const;
    /// The page list or the template, null where it is not there.
    const SourceText* PageList() const;
    const SourceText* Template() const;
    /// Whether one of the two, by its name, is not there; not where the disk cannot tell.
    bool Lacks(std::string_view list) const;
    /// Whether there may be pages that this build did not come to.
    bool IsCutShort() const { return error.has_value() || list_ended_early; }
    /// A line (1-based) of a source.
    Place PlaceOf(const SourceText& source, int line) const { return {source.path, line, {}}; }
};

} // namespace kiv
