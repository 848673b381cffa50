#include "builder/page_list_reader.h"

#include "blocks/tables.h"
#include "builder/source_file.h"
#include "platform/site_files.h"
#include "text/text.h"

#include <string>

namespace kiv {

namespace {

/// The switches begin with "@@", which few lines do.
bool IsStop(std::string_view line)
{
    return StartsWithNoCase(line, "@@stop");
}

bool IsEoy(std::string_view line)
{
    return StartsWithNoCase(line, "@@EOY");
}

/// Whether a "<zu" stands in the line. Many lines hold a "<", few a "z".
bool HoldsBlockTag(std::string_view line)
{
    for (std::size_t z = line.find('z'); z != npos; z = line.find('z', z + 1))
        if (z > 0 && line[z - 1] == '<' && line.substr(z + 1).starts_with('u'))
            return true;
    return false;
}

/// Skips from a "@@stop" line on to what follows "@@start", which becomes `line`. A "@@start" that
/// ends the file goes on as the line itself. Returns false when the file ends first.
bool SkipStopped(SourceFile& source, std::string_view& line)
{
    do {
        if (source.AtEnd())
            return false;
        line = source.Next();
    } while (!StartsWithNoCase(line, "@@start"));
    if (!source.AtEnd())
        line = source.Next();
    return true;
}

class PageListReader {
  public:
    explicit PageListReader(Build& build) : build_(build), state_(build.state) {}

    void Read();

  private:
    bool TakeLineOf(SourceFile& list, std::string_view line);
    void TakeIncludePrefix(std::string_view& line);
    bool Include(std::string_view name);
    bool TakeIncludedLine(SourceFile& source, std::string_view line);
    bool SkipYearEndOf(SourceFile& source, std::string_view& line);
    std::string_view ExpandBlock(SourceFile& source, std::string_view line);
    std::string_view ExpandIncludedBlock(SourceFile& source, std::string_view line);
    void MissingStart();
    void Store(std::string_view text, int line_number);

    Build& build_;
    BuildState& state_;
    const std::string* file_ = nullptr;
    // Once set it stays for every later include of the read: the format has it so.
    std::string_view prefix_;
};

void PageListReader::Read()
{
    const std::string_view bytes = build_.ReadSource(kPageListFile, file_);
    state_.SourceLines.Reserve(kMaxSourceLines + 1); // untouched room costs nothing
    SourceFile list(bytes, *file_, build_.machine.reporter);
    while (!list.AtEnd())
        if (!TakeLineOf(list, list.Next()))
            return;
}

/// Returns false when the read ends here.
bool PageListReader::TakeLineOf(SourceFile& list, std::string_view line)
{
    if (IsStop(line) && !SkipStopped(list, line)) {
        MissingStart();
        return false;
    }
    if (IsEoy(line)) {
        if (!build_.options.EoyEnabled)
            while (!list.AtEnd() && !IsEoy(list.Next())) {
            }
        line = {};
    }
    if (line.starts_with(';'))
        return true;
    TakeIncludePrefix(line);
    if (line.starts_with("++"))
        return Include(FromChar(line, 3));
    ++state_.SourceLineCount;
    if (HoldsBlockTag(line))
        line = ExpandBlock(list, line);
    Store(line, list.line());
    return true;
}

void PageListReader::TakeIncludePrefix(std::string_view& line)
{
    // "DIR1:++" knows no prefix here: six characters of the line are held against its seven, which
    // never match.
    for (const std::string_view prefix : {"ASP:", "HTM:"})
        if (StartsWithNoCase(line, prefix) && line.substr(prefix.size()).starts_with("++")) {
            prefix_ = prefix;
            line.remove_prefix(prefix.size());
            return;
        }
}

/// Returns false when the whole read ends here.
bool PageListReader::Include(std::string_view name)
{
    if (!build_.machine.files.FileExists(name)) {
        build_.machine.reporter.reportmsg("File " + std::string(name) + " not found... aborting");
        return false;
    }
    const std::string* const list_file = file_;
    const std::string_view bytes = build_.ReadSource(name, file_);
    SourceFile source(bytes, *file_, build_.machine.reporter);
    while (!source.AtEnd())
        if (!TakeIncludedLine(source, source.Next()))
            return false;
    file_ = list_file;
    return true;
}

/// Returns false when the whole read ends here.
bool PageListReader::TakeIncludedLine(SourceFile& source, std::string_view line)
{
    if (IsStop(line) && !SkipStopped(source, line)) {
        MissingStart();
        return false;
    }
    if (IsEoy(line)) {
        if (build_.options.EoyEnabled)
            line = {};
        else if (!SkipYearEndOf(source, line))
            return true;
    }
    if (line.starts_with(';'))
        return true;
    ++state_.SourceLineCount;
    if (HoldsBlockTag(line))
        line = ExpandIncludedBlock(source, line);
    if (!prefix_.empty())
        line = build_.Keep(std::string(prefix_) + std::string(line));
    Store(line, source.line());
    return true;
}

/// Skips a switched-off "@@EOY" stretch of an included file; the line after it becomes `line`.
/// Returns false when no line follows. When the stretch is not closed, `line` is the file's last
/// line and the file is closed, so that the next look at it is fatal.
bool PageListReader::SkipYearEndOf(SourceFile& source, std::string_view& line)
{
    do {
        if (source.AtEnd()) {
            source.Close();
            return true;
        }
        line = source.Next();
    } while (!IsEoy(line));
    if (source.AtEnd())
        return false;
    line = source.Next();
    return true;
}

std::string_view PageListReader::ExpandBlock(SourceFile& source, std::string_view line)
{
    std::string current(line);
    BlockContext context{source, build_.machine.files, build_.machine.reporter, state_.style_sheet,
                         build_.blocks};
    zuloop(current, 1, context);
    return build_.Keep(std::move(current));
}

std::string_view PageListReader::ExpandIncludedBlock(SourceFile& source, std::string_view line)
{
    if (!Contains(line, "<zutab")) {
        build_.machine.reporter.reportmsg("You can't do <zu... stuff inside ++ files -- sorry!");
        return line;
    }
    std::string current(line);
    BlockContext context{source, build_.machine.files, build_.machine.reporter, state_.style_sheet,
                         build_.blocks};
    zutabtable2(current, context);
    return build_.Keep(std::move(current));
}

void PageListReader::MissingStart()
{
    build_.machine.reporter.reportmsg("Missing @@start");
}

void PageListReader::Store(std::string_view text, int line_number)
{
    state_.SourceLines[state_.SourceLineCount] = {text, file_, line_number};
}

} // namespace

void ReadPageList(Build& build)
{
    // The pass for HTM comes without a reset, and its lines take the place of the former ones.
    build.state.SourceLineCount = 0;
    if (!build.machine.files.FileExists(kPageListFile)) {
        build.machine.reporter.reportmsg("Oops! _html.txt doesn't exist!");
        return;
    }
    PageListReader(build).Read();
}

} // namespace kiv
