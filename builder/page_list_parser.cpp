#include "builder/page_list_parser.h"

#include "builder/build_state.h"
#include "builder/page_directives.h"
#include "builder/text_helpers.h"
#include "platform/drive_path.h"
#include "text/text.h"

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <utility>

namespace kiv {

namespace {

/// A name that ends so, in exactly this case, gets no further extension. The list differs from the
/// one that output files are named by.
constexpr std::array<std::string_view, 7> kRecordExtensions = {".asp", ".html", ".htm", ".ram",
                                                               ".asf", ".xml",  ".txt"};

constexpr std::string_view kDir1 = "@DIR1 =";
constexpr std::string_view kAsp = "@ASP =";
constexpr std::string_view kHtm = "@HTM =";

/// `line` begins with "@". Most page directives have another letter behind it than `word`.
bool IsDirective(std::string_view line, std::string_view word)
{
    return line.size() > 1 && AsciiUpper(line[1]) == word[1] && StartsWithNoCase(line, word);
}

class PageListParser {
  public:
    explicit PageListParser(Build& build) : build_(build), state_(build.state) {}

    void Parse();

  private:
    std::span<const SourceLine> PlainLines() const;
    void TakePlainLines(std::span<const SourceLine> lines);
    bool TakeLine();
    void KeepLine(const SourceLine& line);
    bool TakeDefinition(SourceLine& line);
    bool TakeRootOrPage(SourceLine& line);
    void TakeDirective(SourceLine& line);
    bool TakeOutputRoot(std::string_view value, bool may_create, std::string& root,
                        std::string& declared);
    void StartPage(SourceLine& line);
    void CloseList();
    void TellNotParsed() const;
    void TellBeforePages() const;

    Build& build_;
    BuildState& state_;
    int source_line_ = 1;
    int page_ = 0;                   // the output page, 0 before the first "@FILE ="
    PageLineTable* lines_ = nullptr; // of that page
    int line_number_ = 0;            // in that page
};

void PageListParser::Parse()
{
    // A page has two lines at least. Untouched room costs nothing.
    const auto most_pages =
        static_cast<std::size_t>(std::min(state_.SourceLineCount / 2, kMaxPages));
    state_.PageTable.Reserve(most_pages + 2); // with the entries before and behind them
    state_.PageLines.Reserve(most_pages + 1);
    lines_ = &state_.PageLines[0];
    while (source_line_ <= state_.SourceLineCount) {
        if (const auto plain = PlainLines(); !plain.empty())
            TakePlainLines(plain);
        else if (!TakeLine())
            return TellNotParsed();
    }
    CloseList();
}

/// The lines from the present one on that define and direct nothing, as far as the page has room.
std::span<const SourceLine> PageListParser::PlainLines() const
{
    const int room = std::max(kMaxPageLines - line_number_, 0);
    const int last = std::min(state_.SourceLineCount, source_line_ + room - 1);
    const auto lines = std::as_const(state_.SourceLines).Row(source_line_, last);
    const auto is_plain = [](const SourceLine& line) {
        return (line.triggers & (kDirective | kDefining)) == 0;
    };
    std::size_t count = 0;
    while (count < lines.size() && is_plain(lines[count]))
        ++count;
    return lines.first(count);
}

void PageListParser::TakePlainLines(std::span<const SourceLine> lines)
{
    lines_->See(line_number_ + 1, lines);
    const int count = static_cast<int>(lines.size());
    line_number_ += count;
    source_line_ += count;
    state_.place = {lines.back().file, lines.back().line, {}};
}

/// Returns false when the parse ends here.
bool PageListParser::TakeLine()
{
    SourceLine line = std::as_const(state_.SourceLines)[source_line_];
    state_.place = {line.file, line.line, {}};
    ++line_number_;
    if (!TakeDefinition(line) && !TakeRootOrPage(line))
        return false;
    TakeDirective(line);
    // The format also bounds the pages here, by 5000; the page table's own bound is reached
    // before that.
    KeepLine(line);
    ++source_line_;
    return true;
}

/// The parse has no other use for the line, so what became of it takes its place. A trace has.
void PageListParser::KeepLine(const SourceLine& line)
{
    if (build_.tracer) [[unlikely]]
        return lines_->Set(line_number_, line);
    state_.SourceLines.Set(source_line_, line);
    lines_->See(line_number_, std::as_const(state_.SourceLines).Row(source_line_, source_line_));
}

/// A line such as "@@03= text" defines a numbered variable. It stays in the page text.
bool PageListParser::TakeDefinition(SourceLine& line)
{
    const std::string_view text = line.text;
    if ((line.triggers & kDefining) == 0)
        return false;
    for (std::size_t family = 0; family < kFamilyMark.size(); ++family)
        if (text.starts_with(kFamilyMark[family])) {
            const int slot = NumericHead(text.substr(2, 2));
            state_.NumberedVariables[static_cast<Family>(family)][slot] =
                DecodeLineBreaks(FromChar(text, 7));
            if (build_.tracer) [[unlikely]]
                build_.tracer->DefineVariable(static_cast<Family>(family), slot, line);
            return true;
        }
    return false;
}

void PageListParser::TakeDirective(SourceLine& line)
{
    if (!line.text.starts_with('@'))
        return;
    std::string_view text = line.text;
    const TakenDirective taken = TakePageDirective(state_, page_, text);
    if (build_.tracer && !taken.word.empty()) {
        build_.tracer->DefineField(page_, taken.field, taken.word, line);
        if (text.empty())
            build_.tracer->Change(line, Trim(taken.word),
                                  "taken for the page; the line stays, empty", text);
    }
    if (text.empty())
        line.triggers = 0;
    line.text = text;
}

/// For the trace: the parse has ended before the first page was made.
void PageListParser::TellNotParsed() const
{
    for (int i = 1; build_.tracer && i <= state_.SourceLineCount; ++i)
        build_.tracer->Unused(std::as_const(state_.SourceLines)[i],
                              "no page was made: an output folder of the page list is not there");
}

/// Returns false when the parse ends here.
bool PageListParser::TakeRootOrPage(SourceLine& line)
{
    const std::string_view text = line.text;
    if (!text.starts_with('@'))
        return true;
    if (build_.tracer &&
        (IsDirective(text, kDir1) || IsDirective(text, kAsp) || IsDirective(text, kHtm)))
        build_.tracer->NoteRole(line, "names a folder for pages");
    if (IsDirective(text, kDir1))
        return TakeOutputRoot(FromChar(text, 9), false, state_.OutputDir1, build_.roots.dir1);
    if (IsDirective(text, kAsp)) {
        if (!TakeOutputRoot(FromChar(text, 8), true, state_.AspOutputDir, build_.roots.asp))
            return false;
        state_.AspOutputWanted = true;
    } else if (IsDirective(text, kHtm)) {
        if (!TakeOutputRoot(FromChar(text, 8), true, state_.HtmOutputDir, build_.roots.htm))
            return false;
        state_.HtmOutputWanted = true;
    } else if (IsDirective(text, kPageStart)) {
        StartPage(line);
    }
    return true;
}

/// Puts the folder into `root` and its whole path into `declared`. A folder that is not there is
/// reported, and the result is false.
bool PageListParser::TakeOutputRoot(std::string_view value, bool may_create, std::string& root,
                                    std::string& declared)
{
    Files& files = build_.machine.files;
    std::string folder(Trim(value));
    if (!folder.ends_with('\\'))
        folder += '\\';
    if (may_create && !files.FolderExists(folder))
        files.MakeFolder(folder);
    if (!files.FolderExists(folder)) {
        build_.messages.reportmsg("Illegal path: " + folder);
        return false;
    }
    declared = WithSeparator(AbsolutePath(folder, files.CurrentDirectory()));
    root = std::move(folder);
    return true;
}

void PageListParser::StartPage(SourceLine& line)
{
    std::string name(Trim(FromChar(line.text, 9)));
    bool has_extension = false;
    for (const std::string_view extension : kRecordExtensions)
        has_extension = has_extension || name.ends_with(extension);
    if (!has_extension)
        name += build_.pass.AspPass ? ".asp" : ".htm";
    state_.PageTable[page_ + 1].file = std::move(name);
    lines_->Close(line_number_);
    line_number_ = 1;
    ++page_;
    lines_ = &state_.PageLines[page_];
    if (build_.tracer) [[unlikely]]
        build_.tracer->DefineField(page_, PageField::file, kPageStart, line);
}

/// For the trace: what stands before the first page reaches none.
void PageListParser::TellBeforePages() const
{
    const PageLineTable& lines = std::as_const(state_.PageLines)[0];
    for (int i = 1; build_.tracer && lines[i].line != 0; ++i)
        build_.tracer->UnusedButForRole(lines[i], "it stands before the first @FILE =");
}

/// Closes the last page and sets the entries before the first page and after the last one.
void PageListParser::CloseList()
{
    ++line_number_;
    lines_->Close(line_number_);
    state_.PageCount = page_;
    TellBeforePages();
    Files& files = build_.machine.files;
    const std::string start_file = files.FileExists("index.html")  ? "index.html"
                                   : files.FileExists("index.asp") ? "index.asp"
                                                                   : "index.htm";
    for (const int entry : {page_ + 1, 0}) {
        state_.PageTable[entry].file = start_file;
        state_.PageTable[entry].title = "Return to Start";
    }
}

} // namespace

std::vector<std::string_view> ListDirectiveWords()
{
    return {kDir1, kAsp, kHtm, kPageStart};
}

void ParsePageList(Build& build)
{
    build.state.page_list_is_valid = false;
    PageListParser(build).Parse();
}

} // namespace kiv
