#include "builder/page_list_reader.h"

#include "blocks/tables.h"
#include "builder/build_state.h"
#include "builder/source_file.h"
#include "platform/site_files.h"
#include "text/text.h"

#include <string>
#include <utility>

namespace kiv {

namespace {

/// "DIR1:++" knows no prefix here: six characters of the line are held against its seven, which
/// never match.
constexpr std::string_view kIncludePrefixes[] = {"ASP:", "HTM:"};

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

class PageListReader {
  public:
    explicit PageListReader(Build& build) : build_(build), state_(build.state) {}

    void Read(SourceFile& list);

  private:
    bool TakeLineOf(SourceFile& list, SourceLine line);
    bool Include(std::string_view name);
    bool TakeIncludedLine(SourceFile& source, SourceLine line);
    bool SkipStopped(SourceFile& source, SourceLine& line);
    bool SkipYearEndOf(SourceFile& source, SourceLine& line);
    void ExpandBlock(SourceFile& source, SourceLine& line,
                     void (*expand)(std::string& line, BlockContext& context));

    Build& build_;
    BuildState& state_;
    // Once set it stays for every later include of the read: the format has it so.
    std::string_view prefix_;
};

void PageListReader::Read(SourceFile& list)
{
    state_.SourceLines.Reserve(kMaxSourceLines + 1); // untouched room costs nothing
    while (!list.AtEnd())
        if (!TakeLineOf(list, list.NextLine()))
            return;
}

/// Returns false when the read ends here.
bool PageListReader::TakeLineOf(SourceFile& list, SourceLine line)
{
    if (IsStop(line.text) && !SkipStopped(list, line))
        return false;
    if (IsEoy(line.text)) {
        if (!build_.options.EoyEnabled)
            while (!list.AtEnd() && !IsEoy(list.Next())) {
            }
        line = list.Here({});
    }
    if (line.text.starts_with(';'))
        return true;
    if (const std::string_view prefix = TakeIncludePrefix(line.text, kIncludePrefixes, "++");
        !prefix.empty())
        prefix_ = prefix;
    if (line.text.starts_with('+') && line.text.starts_with("++"))
        return Include(FromChar(line.text, 3));
    ++state_.SourceLineCount;
    if (HoldsBlockTag(line.text))
        ExpandBlock(list, line, zuloop);
    state_.SourceLines[state_.SourceLineCount] = line;
    return true;
}

/// Returns false when the whole read ends here.
bool PageListReader::Include(std::string_view name)
{
    SourceFile source(build_);
    if (!source.Open(name)) {
        build_.messages.reportmsg("File " + std::string(name) + " not found... aborting");
        return false;
    }
    while (!source.AtEnd())
        if (!TakeIncludedLine(source, source.NextLine()))
            return false;
    return true;
}

/// Returns false when the whole read ends here.
bool PageListReader::TakeIncludedLine(SourceFile& source, SourceLine line)
{
    if (IsStop(line.text) && !SkipStopped(source, line))
        return false;
    if (IsEoy(line.text)) {
        if (build_.options.EoyEnabled)
            line.text = {};
        else if (!SkipYearEndOf(source, line))
            return true;
    }
    if (line.text.starts_with(';'))
        return true;
    ++state_.SourceLineCount;
    if (HoldsBlockTag(line.text)) {
        if (Contains(line.text, "<zutab"))
            ExpandBlock(source, line, zutabtable2);
        else
            build_.messages.reportmsg("You can't do <zu... stuff inside ++ files -- sorry!");
    }
    line.text = state_.sources.Prefixed(prefix_, line.text);
    state_.SourceLines[state_.SourceLineCount] = line;
    return true;
}

/// Skips from a "@@stop" line on to what follows "@@start", which becomes `line`. A "@@start" that
/// ends the file goes on as the line itself. When the file ends first, that is reported, and the
/// result is false.
bool PageListReader::SkipStopped(SourceFile& source, SourceLine& line)
{
    do {
        if (source.AtEnd()) {
            build_.messages.reportmsg("Missing @@start");
            return false;
        }
        line = source.NextLine();
    } while (!StartsWithNoCase(line.text, "@@start"));
    if (!source.AtEnd())
        line = source.NextLine();
    return true;
}

/// Skips a switched-off "@@EOY" stretch of an included file; the line after it becomes `line`.
/// Returns false when no line follows. When the stretch is not closed, `line` is the file's last
/// line and the file is closed, so that the next look at it is fatal.
bool PageListReader::SkipYearEndOf(SourceFile& source, SourceLine& line)
{
    do {
        if (source.AtEnd()) {
            source.Close();
            return true;
        }
        line = source.NextLine();
    } while (!IsEoy(line.text));
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
    BlockContext context{source,       build_.machine.files, build_.machine.reporter,
                         state_.place, state_.style_sheet,   build_.blocks};
    expand(current, context);
    line = source.Here(state_.sources.Keep(std::move(current)));
}

} // namespace

void ReadPageList(Build& build)
{
    // The pass for HTM comes without a reset, and its lines take the place of the former ones.
    build.state.SourceLineCount = 0;
    SourceFile list(build);
    if (list.Open(kPageListFile))
        PageListReader(build).Read(list);
    else
        build.messages.reportmsg("Oops! _html.txt doesn't exist!");
}

} // namespace kiv
