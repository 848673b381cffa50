// What a build tells of each line, to those who ask: where it came from, what was made of it step
// by step, and where it went. The views live only as long as the call that hands them over.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// Lines of a source, 1-based, both ends included.
struct SourceSpan {
    std::string_view file; // absolute drive path; "": none
    int first = 0;
    int last = 0;

    bool operator==(const SourceSpan&) const = default;
};

/// One thing that was done to a line.
struct TracedStep {
    std::string name;     // what did it, in the format's words: "=2=", "@PREV", "!!3["
    std::string text;     // what happened, as a sentence would say it, without its full stop
    std::string after;    // the line as it then stood
    SourceSpan from = {}; // the definition that was used
};

/// The step that puts in the text of a file as it is.
inline constexpr std::string_view kFileTextMark = "!++";

/// What the build reads a source line as.
enum class LinePart {
    none,         // nothing: it was skipped, or has gone into something else
    before_pages, // of the page list, above its first page
    page_start,   // a page's first line, with its file
    title,        // a page's second line
    body,
    frame, // of the template
};

/// The way of one source line, or of a block of them, to the lines that it makes on a page.
struct LineStory {
    std::vector<SourceSpan> sources; // first the lines that `before` shows, then what else went in
    std::string before;              // as the source has it; lines are joined by CR LF
    std::vector<TracedStep> steps;   // in the order in which they ran
    int line = 0;           // the first of its lines on the page, 1-based; 0: nothing was written
    int count = 0;          // of its lines
    std::string reason;     // why nothing was written
    bool is_failed = false; // an error ended the build in it
    LinePart part = LinePart::none;
    std::string role; // what it says of its pages or of the site: "gives the page its title"

    /// What it became.
    const std::string& Text() const { return steps.empty() ? before : steps.back().after; }
};

/// A page, or the single page.
struct TracedPage {
    std::string_view name; // its file's, as the page list has it
    std::string_view path; // absolute drive path
    int number = 0;        // 1-based; of the single page 0
    std::string_view id = {};
    std::string_view group = {}; // "": it has none of its own
    SourceSpan from = {};        // the line that begins it
    std::string_view title = {}; // as "@TITLE" gives it
    std::string_view description = {};
    bool noindex = false;
    bool redirects = false; // to another page
};

/// A construct that stands in a line in work.
struct TracedUse {
    std::string_view name; // "!!3", "??1", "!!pop", "[[2", "]]", "@@4"
    std::string_view text; // the whole of it as it stands, with its fields where it has any
    bool is_closed = true; // false: its "]" is missing, and `text` is all that follows
};

/// How much of one of the format's bounds a pass takes up.
struct TracedBound {
    std::string_view what; // "pages in the page list"
    int count = 0;
    int most = 0;               // that there may be
    SourceSpan where = {};      // what it is told of; `first` 0: the whole file
    std::string_view page = {}; // the name of its file; "": none
};

/// Who asks. A build without one does nothing for it.
class Trace {
  public:
    Trace() = default;
    Trace(const Trace&) = delete;
    Trace& operator=(const Trace&) = delete;
    virtual ~Trace() = default;

    /// A page begins. Returns whether its lines are asked for. A later page at the same path takes
    /// its place.
    virtual bool BeginPage(const TracedPage& page) = 0;
    /// The next lines of the page, or source lines that wrote nothing there.
    virtual void TakeLine(const LineStory& story) = 0;
    /// Source lines that came to no page. Each pass of a build reads its sources, and tells of
    /// them.
    virtual void TakeUnused(const LineStory& story) = 0;
    /// The page list defines a number, such as "!!3". Told before any page begins, in the order of
    /// the lines.
    virtual void TakeDefinition(std::string_view /*mark*/, const SourceSpan& /*from*/) {}
    /// A construct is about to be expanded in a line of the page; `story` is that line's as far as
    /// it has come.
    virtual void TakeUse(const LineStory& /*story*/, const TracedUse& /*use*/) {}
    /// A source is about to be read, be it one without any line.
    virtual void TakeSource(std::string_view /*file*/) {}
    /// The sources of a pass are read.
    virtual void TakeBound(const TracedBound&) {}
};

} // namespace kiv
