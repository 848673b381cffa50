// The lines of one source file. LF ends a line, a CR right before it goes with it; a last line
// needs no end.
#pragma once

#include "blocks/line_source.h"
#include "builder/sources.h"
#include "platform/place.h"

#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv {

struct Build;

/// A source file open for reading. Each line read becomes the build's place.
class SourceFile : public LineSource {
  public:
    explicit SourceFile(Build& build);

    /// Begins with the first line of a file, whose bytes and name are kept by the build. Returns
    /// false, and changes nothing, when there is no such file; throws `file` when reading fails.
    bool Open(std::string_view path);
    /// The same for a source that no line names: the file itself becomes the build's place.
    bool OpenOwn(std::string_view path);
    /// Nothing can be read any more; `what_to_do` is told to who comes to see that in an error.
    void Close(std::string what_to_do)
    {
        is_open_ = false;
        what_to_do_ = std::move(what_to_do);
    }

    /// Whether no byte is left. Throws `file` when no file is open.
    bool AtEnd() const
    {
        if (!is_open_)
            RefuseClosed();
        return lines_.AtEnd();
    }
    /// Throws `end-of-file` past the last line, `file` when no file is open.
    SourceLine NextLine();
    /// Reads lines into `lines` until it is full, up to the file's last one, or up to the first
    /// that has any of `stops`. Returns those that were read, one at least; throws as NextLine.
    std::span<const SourceLine> NextLines(std::span<SourceLine> lines, Triggers stops);
    std::string_view Next() override { return NextLine().text; }

    /// `text` in the place of the line last read.
    SourceLine Here(std::string_view text) const { return {text, name_, line_, ScanLine(text)}; }

    // For the trace; they do nothing where nobody asks.

    /// Lines from `first` to the one last read come to no page.
    void TellUnused(int first, std::string_view reason) const;
    /// The same without the line last read.
    void TellUnusedBefore(int first, std::string_view reason) const;
    /// No further line is read.
    void TellRest(std::string_view reason) const;
    /// Lines from `first` to `last`, joined by CR LF; `first` was read, or is the next to be read.
    /// Only where there is a trace.
    std::string LinesText(int first, int last) const;
    /// `line` is what the lines from `first` to the one last read became.
    void TellMade(SourceLine& line, int first, std::string_view name, std::string text) const;

  private:
    [[noreturn]] void RefuseClosed() const;
    [[noreturn]] void RefuseEnd() const;

    Build& build_;
    Place& place_; // the build's
    const bool is_traced_;
    std::string_view content_; // of the whole file
    LineScanner lines_;
    std::string_view name_; // absolute drive path
    int line_ = 0;          // that was read last, 1-based
    bool is_open_ = false;
    std::string what_to_do_;          // when it was closed
    std::vector<std::size_t> starts_; // where in the content each line read begins; for the trace
};

std::string_view CutIncludePrefix(std::string_view& line,
                                  std::span<const std::string_view> prefixes,
                                  std::string_view mark);

/// Cuts the prefix of a pass off a line such as "ASP:++menu.txt", where `mark` stands behind it,
/// and returns it; "" when the line has none of `prefixes`.
inline std::string_view TakeIncludePrefix(std::string_view& line,
                                          std::span<const std::string_view> prefixes,
                                          std::string_view mark)
{
    // A prefix ends in ":", its fourth or fifth character; few lines have one there.
    const bool may_have_one = line.size() > 4 && (line[3] == ':' || line[4] == ':');
    return may_have_one ? CutIncludePrefix(line, prefixes, mark) : std::string_view();
}

} // namespace kiv
