#include "builder/page_list_reader.h"

#include "blocks/tables.h"
#include "builder/build_state.h"
#include "builder/missing_sources.h"
#include "builder/source_file.h"
#include "platform/drive_path.h"
#include "platform/run_error.h"
#include "platform/site_files.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <string>
#include <utility>

namespace kiv {

namespace {

/// "DIR1:++" knows no prefix here: six characters of the line are held against its seven, which
/// never match.
constexpr std::string_view kIncludePrefixes[] = {"ASP:", "HTM:"};

// What the trace tells of lines that are not kept.
constexpr std::string_view kComment = "a comment: it begins with \";\"";
constexpr std::string_view kStopped = "between @@stop and @@start";

/// What a line holds that is to be kept as it is has none of these.
constexpr Triggers kTakenHere = kDirective | kListSign | kPrefix | kBlockTag;

/// It begins with "@", which few lines do.
bool IsStop(std::string_view line)
{
    return line.starts_with('@') && StartsWithNoCase(line, kStopMark);
}

/// The block tag of a line, as far as it goes.
std::string_view TagOf(std::string_view line)
{
    line.remove_prefix(std::min(line.find("<zu"), line.size()));
    const std::size_t end = line.find('>');
    return line.substr(0, end == npos ? npos : end + 1);
}

/// What to do when a block that begins in line `line` runs into the end of its file.
std::string UnclosedHint(std::string_view tag, int line)
{
    constexpr std::size_t kShown = 40;
    return Joined({"\"", FirstChars(tag, kShown), "\" of line ", Decimal(line),
                   " has no end: add \"", EndLineOf(tag), "\" in a line of its own."});
}

class PageListReader {
  public:
    explicit PageListReader(Build& build) : build_(build), state_(build.state) {}

    void Read(SourceFile& list);

  private:
    std::optional<SourceLine> KeepLines(SourceFile& source);
    bool TakeLineOf(SourceFile& list, SourceLine line);
    bool Include(const SourceFile& list, std::string_view name);
    void TakeYearEndOf(SourceFile& list, SourceLine& line);
    bool TakeIncludedLine(SourceFile& source, SourceLine line);
    void AddPrefix(SourceLine& line);
    bool SkipStopped(SourceFile& source, SourceLine& line);
    bool SkipYearEndOf(SourceFile& source, SourceLine& line);
    void ExpandBlock(SourceFile& source, SourceLine& line,
                     void (*expand)(std::string& line, BlockContext& context));
    void TellBlock(const SourceFile& source, SourceLine& line, int first, std::string_view tag,
                   bool is_faulty) const;

    Build& build_;
    BuildState& state_;
    static constexpr std::size_t kLinesAtOnce = 64;
    std::array<SourceLine, kLinesAtOnce> lines_; // that were read last
    // Once set it stays for every later include of the read: the format has it so.
    std::string_view prefix_;
};

void PageListReader::Read(SourceFile& list)
{
    state_.SourceLines.Reserve(kMaxSourceLines + 1); // untouched room costs nothing
    while (!list.AtEnd())
        if (const auto line = KeepLines(list); line && !TakeLineOf(list, *line))
            return list.TellRest(kReadEnded);
}

/// Reads and keeps lines as they are, as many as there is room for. Returns the first that is not
/// to be kept so.
std::optional<SourceLine> PageListReader::KeepLines(SourceFile& source)
{
    constexpr int kMost = static_cast<int>(kLinesAtOnce);
    // The line past the last for which there is room is read alone: it is the place of the error.
    const int room = std::clamp(kMaxSourceLines - state_.SourceLineCount, 1, kMost);
    auto read =
        source.NextLines(std::span(lines_).first(static_cast<std::size_t>(room)), kTakenHere);
    std::optional<SourceLine> other;
    if ((read.back().triggers & kTakenHere) != 0) {
        other = read.back();
        read = read.first(read.size() - 1);
    }
    state_.SourceLines.SetRow(state_.SourceLineCount + 1, read);
    state_.SourceLineCount += static_cast<int>(read.size());
    return other;
}

/// Returns false when the read ends here.
bool PageListReader::TakeLineOf(SourceFile& list, SourceLine line)
{
    if (IsStop(line.text) && !SkipStopped(list, line))
        return false;
    if (IsYearEnd(line.text))
        TakeYearEndOf(list, line);
    if (line.text.starts_with(';')) {
        list.TellUnused(line.line, kComment);
        return true;
    }
    if (const std::string_view prefix = TakeIncludePrefix(line.text, kIncludePrefixes, "++");
        !prefix.empty())
        prefix_ = prefix;
    if (line.text.starts_with('+') && line.text.starts_with("++"))
        return Include(list, FromChar(line.text, 3));
    ++state_.SourceLineCount;
    if ((line.triggers & kBlockTag) != 0)
        ExpandBlock(list, line, zuloop);
    state_.SourceLines.Set(state_.SourceLineCount, line);
    return true;
}

/// A "@@EOY" line of the page list, with what is switched off behind it, becomes one empty line.
void PageListReader::TakeYearEndOf(SourceFile& list, SourceLine& line)
{
    const int first = line.line;
    const bool enabled = build_.options.EoyEnabled;
    if (!enabled)
        while (!list.AtEnd() && !IsYearEnd(list.Next())) {
        }
    line = list.Here({});
    list.TellMade(line, first, kYearEndMark,
                  enabled ? "the New Year text is on; the mark leaves an empty line"
                          : "the New Year text is off; it leaves an empty line");
}

/// Returns false when the whole read ends here.
bool PageListReader::Include(const SourceFile& list, std::string_view name)
{
    const int line = list.Here({}).line;
    SourceFile source(build_);
    if (!source.Open(name)) {
        list.TellUnused(line, Joined({"there is no file ", name, kReadEndsHere}));
        build_.messages.reportmsg("File " + std::string(name) + " not found... aborting",
                                  WhatIsNoFile(build_.machine.files, name));
        return false;
    }
    list.TellUnused(line, Joined({"the lines of ", name, " stand in its place"}));
    while (!source.AtEnd()) {
        const auto other = prefix_.empty() ? KeepLines(source) : source.NextLine();
        if (other && !TakeIncludedLine(source, *other)) {
            source.TellRest(kReadEnded);
            return false;
        }
    }
    return true;
}

/// Returns false when the whole read ends here.
bool PageListReader::TakeIncludedLine(SourceFile& source, SourceLine line)
{
    if (IsStop(line.text) && !SkipStopped(source, line))
        return false;
    if (IsYearEnd(line.text)) {
        if (build_.options.EoyEnabled) {
            line = source.Here({});
            source.TellMade(line, line.line, kYearEndMark,
                            "the New Year text is on; the mark leaves an empty line");
        } else if (!SkipYearEndOf(source, line)) {
            return true;
        }
    }
    if (line.text.starts_with(';')) {
        source.TellUnused(line.line, kComment);
        return true;
    }
    ++state_.SourceLineCount;
    if ((line.triggers & kBlockTag) != 0) {
        if (Contains(line.text, "<zutab"))
            ExpandBlock(source, line, zutabtable2);
        else
            build_.messages.reportmsg("You can't do <zu... stuff inside ++ files -- sorry!");
    }
    AddPrefix(line);
    state_.SourceLines.Set(state_.SourceLineCount, line);
    return true;
}

void PageListReader::AddPrefix(SourceLine& line)
{
    if (prefix_.empty())
        return;
    const std::string_view text = state_.sources.Prefixed(prefix_, line.text);
    if (build_.tracer) [[unlikely]]
        build_.tracer->Change(line, prefix_,
                              Joined({"stands before every included line since ", prefix_, "++"}),
                              text);
    line.text = text;
    line.triggers = ScanLine(text);
}

/// Skips from a "@@stop" line on to what follows "@@start", which becomes `line`. A "@@start" that
/// ends the file goes on as the line itself. When the file ends first, that is reported, and the
/// result is false.
bool PageListReader::SkipStopped(SourceFile& source, SourceLine& line)
{
    const int first = line.line;
    do {
        if (source.AtEnd()) {
            source.TellUnused(first, kOpenStop);
            build_.messages.reportmsg("Missing @@start");
            return false;
        }
        line = source.NextLine();
    } while (!StartsWithNoCase(line.text, kStartMark));
    if (!source.AtEnd()) {
        source.TellUnused(first, kStopped);
        line = source.NextLine();
    } else {
        source.TellUnusedBefore(first, kStopped);
    }
    return true;
}

/// Skips a switched-off "@@EOY" stretch of an included file; the line after it becomes `line`.
/// Returns false when no line follows. When the stretch is not closed, `line` is the file's last
/// line and the file is closed, so that the next look at it is fatal.
bool PageListReader::SkipYearEndOf(SourceFile& source, SourceLine& line)
{
    const int first = line.line;
    do {
        if (source.AtEnd()) {
            source.TellUnusedBefore(first, kNewYearOff);
            source.Close(Joined({"\"@@EOY\" of line ", Decimal(first),
                                 " has no end: add a second \"@@EOY\" in a line of its own."}));
            return true;
        }
        line = source.NextLine();
    } while (!IsYearEnd(line.text));
    source.TellUnused(first, kNewYearOff);
    if (source.AtEnd())
        return false;
    line = source.NextLine();
    return true;
}

/// The finished block stands at the line last read.
void PageListReader::ExpandBlock(SourceFile& source, SourceLine& line,
                                 void (*expand)(std::string& line, BlockContext& context))
{
    std::string current(line.text);
    const std::string_view tag = TagOf(line.text);
    BlockContext context{source,       build_.machine.files, build_.machine.reporter,
                         state_.place, state_.style_sheet,   build_.blocks};
    const int first = line.line;
    try {
        expand(current, context);
    } catch (RunError& error) {
        if (error.kind == ErrorKind::end_of_file)
            error.hint = UnclosedHint(tag, first);
        throw;
    }
    const bool is_changed = line.text != current;
    line = source.Here(state_.sources.Keep(std::move(current)));
    if (build_.tracer && (is_changed || line.line > first)) [[unlikely]]
        TellBlock(source, line, first, tag, context.is_faulty);
}

/// For the trace: a block that began in line `first` has become `line`. A fault leaves the line
/// that has ended the block, where nothing was made of that line before.
void PageListReader::TellBlock(const SourceFile& source, SourceLine& line, int first,
                               std::string_view tag, bool is_faulty) const
{
    if (!is_faulty)
        return source.TellMade(line, first, tag, "the block is worked out");
    if (line.line == first || source.LinesText(line.line, line.line) != line.text)
        return source.TellMade(line, first, tag,
                               "a fault, see the warning, ends the block; this is left");
    source.TellMade(line, first, tag,
                    "a fault, see the warning, ends the block; its last line is left");
    build_.tracer->LeaveLastLine(line);
}

} // namespace

void ReadPageList(Build& build)
{
    // The pass for HTM comes without a reset, and its lines take the place of the former ones. What
    // these have left in the pages stays.
    for (PageLineTable& lines : build.state.PageLines.Entries())
        lines.TakeOver();
    build.state.SourceLineCount = 0;
    SourceFile list(build);
    if (list.OpenOwn(kPageListFile))
        PageListReader(build).Read(list);
    else
        build.messages.reportmsg("Oops! _html.txt doesn't exist!");
}

} // namespace kiv
