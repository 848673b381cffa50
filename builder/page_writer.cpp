#include "builder/page_writer.h"

#include "builder/at_variables.h"
#include "builder/bang_macros.h"
#include "builder/build_state.h"
#include "builder/line_triggers.h"
#include "builder/output_path.h"
#include "builder/own_places.h"
#include "builder/page_shells.h"
#include "builder/template_lines.h"
#include "builder/template_merge.h"
#include "builder/text_helpers.h"
#include "builder/trace_words.h"
#include "builder/write_line.h"
#include "platform/drive_path.h"
#include "platform/run_error.h"
#include "platform/site_files.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <string>
#include <utility>
#include <vector>

namespace kiv {

namespace {

constexpr std::string_view kSinglePageStyle =
    "<style>\r\n"
    ".sub99 {clear:both;margin:15px 0;padding:4px;color:white;background-color:black;width:100%;"
    "font-size:16px;font-weight:bold;}\r\n"
    "</style>\r\n";

// What the trace tells of lines that are not written.
constexpr std::string_view kNotOnSingle =
    "a page with \"singlehtml\" in its first line is left out of the single page";
constexpr std::string_view kThirdLine = "an empty line right behind the title is not written";

/// A template section as it is written: runs of lines that nothing acts on are one piece of
/// finished text.
struct TemplatePiece {
    std::string finished; // lines with their CR LF; empty: `line` is to be merged
    SourceLine line;
    Triggers triggers = 0;                  // of `line`
    CutLine cut;                            // `line` for most pages, its position code apart
    std::vector<const MetaTag*> metas = {}; // of `line`
};

using TemplatePieces = std::vector<TemplatePiece>;

/// An empty line right after the title is dropped.
bool IsDropped(int number, std::string_view line)
{
    return number == 3 && line.empty();
}

TemplatePiece PieceOf(const SourceLine& line, Triggers triggers, const Build& build)
{
    std::string_view text = line.text;
    if ((triggers & kPosition) != 0 && StandsHere(text[1], build.state))
        text.remove_prefix(kPositionCode);
    TemplatePiece piece{{}, line, triggers, CutLine(text, build.state)};
    if ((triggers & kMeta) != 0)
        piece.metas = MetaTagsIn(line.text);
    return piece;
}

/// A line that nothing acts on, on any page; "" where something may.
std::string_view FinishedLine(const TemplatePiece& piece)
{
    constexpr Triggers kByPage = kMeta | kPosition;
    return (piece.triggers & kByPage) == 0 ? piece.cut.Fixed() : std::string_view();
}

/// Joins the lines that nothing acts on. Empty lines are never written, so they drop out here.
TemplatePieces Prepare(const TemplateSection& section, int count, const Build& build)
{
    TemplatePieces pieces;
    for (int i = 1; i <= count; ++i) {
        const SourceLine& line = section[i];
        if (line.text.empty())
            continue;
        const Triggers triggers = line.triggers & kMerged & ~kBodyOnly;
        TemplatePiece piece = PieceOf(line, triggers, build);
        const std::string_view text = triggers == 0 ? line.text : FinishedLine(piece);
        if (text.empty()) {
            pieces.push_back(std::move(piece));
            continue;
        }
        if (pieces.empty() || pieces.back().finished.empty())
            pieces.emplace_back();
        WriteLine(pieces.back().finished, text);
    }
    return pieces;
}

/// For the trace, which wants every line by itself, the empty ones, too.
TemplatePieces PrepareTraced(const TemplateSection& section, int count, const Build& build)
{
    TemplatePieces pieces;
    for (int i = 1; build.tracer && i <= count; ++i)
        if (const SourceLine& line = section[i]; !line.text.empty() || !line.file.empty())
            pieces.push_back({{}, line, line.triggers & kMerged & ~kBodyOnly, {}});
    return pieces;
}

/// A section of the template, ready to be written.
struct PreparedSection {
    PreparedSection(const TemplateSection& section, int count, const Build& build)
        : pieces(Prepare(section, count, build)), traced(PrepareTraced(section, count, build))
    {
    }

    TemplatePieces pieces;
    TemplatePieces traced; // for the pages that are asked for
};

class PageWriter {
  public:
    explicit PageWriter(Build& build)
        : build_(build), state_(build.state), line_(build),
          places_(build.machine.files, build.state.sources),
          head_(build.state.TemplateHead, build.state.TemplateHeadCount, build),
          tail_(build.state.TemplateTail, build.state.TemplateTailCount, build)
    {
    }

    void Write();

  private:
    void WriteAll();
    void BeginPage(int number);
    void WriteSinglePage();
    void WriteFilePage();
    std::string FullDescription() const;
    void OpenPage();
    void WarnOfPlace();
    void SetNames();
    void WriteStart();
    void WriteShell(std::string_view text, std::string_view told);
    void BeginTrace(const TracedPage& page);
    void WriteBody();
    void WriteLinesOfBody();
    int WritePlainLines(const PageLineTable& lines, int number);
    void WriteBodyLine(int number, std::string_view line);
    void TellLeftOut();
    void WriteSeparator();
    void ClosePage();
    void WriteEnd();
    void WriteTemplate(const PreparedSection& section);
    bool WriteCut(const TemplatePiece& piece);
    void SetPlace(const SourceLine& line);
    void PutFileText();
    void TellHeadLines();
    void TellEndOfBody(int number);
    void TellOwnText(const Definition& definition, std::string told);
    void TellTemplateUnused();

    std::string_view LineOf(int page, int number) const
    {
        return std::as_const(state_.PageLines)[page][number].text;
    }

    Build& build_;
    BuildState& state_;
    MergedLine line_;
    OwnPlaces places_;
    const PreparedSection head_;
    const PreparedSection tail_;
};

/// However it ends, the pages that were made are there then; a failure of one of these comes before
/// that of any page behind it.
void PageWriter::Write()
{
    Files& files = build_.machine.files;
    try {
        WriteAll();
    } catch (...) {
        files.EndHandOvers();
        throw;
    }
    files.EndHandOvers();
}

void PageWriter::WriteAll()
{
    OutputFile single_page;
    state_.output.clear();
    if (!build_.pass.SinglePageMode)
        build_.machine.files.ExpectHandOvers(static_cast<std::size_t>(state_.PageCount));
    for (int page = 1; page <= state_.PageCount; ++page) {
        BeginPage(page);
        if (!build_.pass.SinglePageMode) {
            WriteFilePage();
        } else {
            if (page == 1) {
                single_page = build_.machine.files.Open(kSinglePageFile);
                build_.machine.reporter.Status("creating singlehtml...");
                state_.output = kSinglePageStyle;
                BeginTrace({kSinglePageFile, single_page.path, 0});
                TellOwnText({}, "the style that a single page begins with");
            }
            WriteSinglePage();
        }
        build_.machine.reporter.Step(page, state_.PageCount);
    }
    if (build_.pass.SinglePageMode && state_.PageCount > 0)
        build_.machine.files.Commit(single_page, state_.output);
    TellTemplateUnused();
}

void PageWriter::BeginPage(int number)
{
    state_.page.Begin(number);
    const PageRecord& record = build_.CurrentRecord();
    state_.page.name = record.file;
    state_.page.redirects = record.mode.starts_with('>');
    SetPlace(std::as_const(state_.PageLines)[number][1]);
}

void PageWriter::BeginTrace(const TracedPage& page)
{
    line_.tracer = nullptr;
    if (build_.tracer && build_.tracer->BeginPage(page)) [[unlikely]]
        line_.tracer = build_.tracer.get();
}

/// For the trace: a text of the program's own was written for the sake of a definition.
void PageWriter::TellOwnText(const Definition& definition, std::string told)
{
    if (line_.tracer == nullptr)
        return;
    line_.tracer->Begin(definition);
    line_.tracer->NoteWritten(kSinglePageFile, std::move(told));
}

/// A page that is itself about the single page is left out whole.
void PageWriter::WriteSinglePage()
{
    const int page = state_.page.number;
    if (Contains(LowerCase(LineOf(page, 1)), "singlehtml"))
        return TellLeftOut();
    WriteBody();
    if (page + 1 <= state_.PageCount)
        WriteSeparator();
}

/// For the trace. A page of one line has no end where it is looked for.
void PageWriter::TellLeftOut()
{
    const PageLineTable& lines = std::as_const(state_.PageLines)[state_.page.number];
    for (int number = 3; line_.tracer != nullptr && lines[number].line != 0; ++number)
        line_.tracer->Skip(lines[number], LinePart::body, kNotOnSingle);
}

/// The line that opens the next page.
void PageWriter::WriteSeparator()
{
    const int next = state_.page.number + 1;
    std::string& output = state_.output;
    output.append("<a name=\"p").append(FromChar(LineOf(next, 1), 9));
    output.append("\"></a><div class=\"sub99\">").append(FromChar(LineOf(next, 2), 10));
    WriteLine(output, "</div>");
    if (line_.tracer != nullptr) [[unlikely]]
        TellOwnText(line_.tracer->Known().Field(next, PageField::file),
                    "the line that separates two pages on a single page");
}

void PageWriter::WriteFilePage()
{
    state_.output.clear();
    OpenPage();
    WriteBody();
    ClosePage();
}

/// The page's description with the values of its "@@1" and "%%1", as pages have it.
std::string PageWriter::FullDescription() const
{
    std::string text = build_.CurrentRecord().description;
    for (const Family family : {Family::at, Family::percent})
        for (int digit = 1; digit <= 9; ++digit)
            ReplaceEach(text, NumberedMark(family, digit).View(),
                        state_.NumberedVariables[family][digit]);
    return text;
}

/// The path always holds a ".": a name without a known extension gets one.
void PageWriter::OpenPage()
{
    PageState& page = state_.page;
    SetNames();
    ShowPath(build_.machine.reporter, page.CurrentOutputPath);
    page.file = build_.machine.files.Open(page.CurrentOutputPath);
    WarnOfPlace();
    TracedPage traced{page.name, page.file.path, page.number};
    std::string description;
    if (build_.tracer) [[unlikely]] {
        const PageRecord& record = build_.CurrentRecord();
        traced.id = record.id;
        traced.group = record.group;
        traced.title = page.CurrentTitle;
        traced.description = description = FullDescription();
        traced.noindex = record.noindex;
        traced.redirects = page.redirects;
        traced.from = build_.tracer->Known().Field(page.number, PageField::file).place;
    }
    BeginTrace(traced);
    TellHeadLines();
    if (build_.options.UploadListWanted)
        build_.uploads.RecordUpload(page.CurrentOutputPath);
    WriteStart();
}

/// A page may be written anywhere, but one in such a place is most likely a slip, or somebody's
/// intent. It is told without a box: what a build shows there stays as it was.
void PageWriter::WarnOfPlace()
{
    const std::string& path = state_.page.file.path;
    const OwnPlaces::Kind kind = places_.KindOf(state_.page.file);
    if (kind == OwnPlaces::Kind::source)
        build_.messages.NoteBuildMessage("The page \"" + state_.page.name +
                                         "\" is written over a source of this build: " + path);
    else if (kind == OwnPlaces::Kind::settings)
        build_.messages.NoteBuildMessage("The page \"" + state_.page.name +
                                         "\" is written over a settings file of kiv: " + path);
}

void PageWriter::SetNames()
{
    PageState& page = state_.page;
    page.CurrentOutputPath = OutputPath(FromChar(LineOf(page.number, 1), 9), state_, build_.pass);
    page.CurrentStem = Before(page.CurrentOutputPath, '.');
    page.CurrentBaseStem = WithoutFolders(page.CurrentStem);
    page.CurrentTitle = FromChar(LineOf(page.number, 2), 10);
    ExpandTitleVariables(page.CurrentTitle, state_.NumberedVariables[Family::at]);
}

/// For the trace: the lines that are never written.
void PageWriter::TellHeadLines()
{
    if (line_.tracer == nullptr)
        return;
    const PageLineTable& lines = std::as_const(state_.PageLines)[state_.page.number];
    line_.tracer->Skip(lines[1], LinePart::page_start, "it begins the page and names its file");
    if (lines[2].line != 0)
        line_.tracer->Skip(lines[2], LinePart::title,
                           "a page's second line is its title, which is not written");
}

void PageWriter::WriteStart()
{
    const PageRecord& record = build_.CurrentRecord();
    const std::string_view mode = record.mode;
    if (const PageShell* const shell = FindPageShell(mode))
        WriteShell(ShellOpening(*shell, record.title), "what stands before the page's text");
    else if (mode.starts_with(">>"))
        WriteShell(MakeRedirectPage(2, mode.substr(2), record.title), "the redirect page");
    else if (mode.starts_with('>'))
        WriteShell(MakeRedirectPage(1, mode.substr(1), record.title), "the redirect page");
    else
        WriteTemplate(head_);
}

void PageWriter::WriteShell(std::string_view text, std::string_view told)
{
    if (text.empty())
        return;
    WriteLine(state_.output, text);
    if (line_.tracer == nullptr)
        return;
    const Definition& mode = line_.tracer->Known().Field(state_.page.number, PageField::mode);
    line_.tracer->Begin(mode);
    line_.tracer->NoteWritten(mode.text, std::string(told));
}

/// A page of one line has its end where others have their title, and so is written past it.
void PageWriter::WriteBody()
{
    try {
        WriteLinesOfBody();
    } catch (RunError& error) {
        if (LineOf(state_.page.number, 2) == kEndMarker)
            error.hint = "A page has two lines at least: put \"@TITLE =\" below its \"@FILE =\".";
        throw;
    }
}

/// Lines 1 and 2 are the page's name and title and are never written. The lines of a redirect page
/// are merged like any, so that their faults are told, but nothing of them reaches the file.
void PageWriter::WriteLinesOfBody()
{
    const std::size_t start = state_.output.size();
    const PageLineTable& lines = std::as_const(state_.PageLines)[state_.page.number];
    int number = 3;
    while (lines[number].text != kEndMarker) {
        const SourceLine& line = lines[number];
        const Triggers triggers = line.triggers & kMerged & ~kTemplateOnly;
        if (triggers == 0 && line_.tracer == nullptr) {
            number = WritePlainLines(lines, number);
            continue;
        }
        if (line_.tracer != nullptr) [[unlikely]]
            line_.tracer->Begin(line, LinePart::body);
        if (triggers == 0) {
            WriteBodyLine(number++, line.text);
            continue;
        }
        SetPlace(line);
        line_.Begin(line.text, triggers);
        MergeLine(line_);
        if (line_.text.starts_with('!') && line_.text.starts_with("!++"))
            PutFileText();
        WriteBodyLine(number++, line_.text);
    }
    if (state_.page.redirects)
        state_.output.resize(start);
    if (line_.tracer != nullptr) [[unlikely]]
        TellEndOfBody(number);
}

/// Writes the lines from `number` on that nothing acts on, and returns the number of the first
/// other one. Those that follow each other in a source are copied in one go, with what ends them.
int PageWriter::WritePlainLines(const PageLineTable& lines, int number)
{
    const auto written = lines.Behind(number - 1);
    if (written.empty()) { // a page of one line goes on up to the bound of its table
        WriteBodyLine(number, {});
        return number + 1;
    }
    std::string_view run;
    for (const SourceLine& line : written) {
        if ((line.triggers & kMerged & ~kTemplateOnly) != 0 || line.text == kEndMarker)
            break;
        const bool has_end = (line.triggers & kEndBehind) != 0;
        if (has_end && line.text.data() == run.data() + run.size()) {
            run = {run.data(), run.size() + line.text.size() + kCrLf.size()};
        } else {
            state_.output.append(run);
            run = {};
            if (has_end && !IsDropped(number, line.text))
                run = {line.text.data(), line.text.size() + kCrLf.size()};
            else
                WriteBodyLine(number, line.text);
        }
        ++number;
    }
    state_.output.append(run);
    return number;
}

/// A line such as "!++text.txt" becomes the text of a file, as it is.
void PageWriter::PutFileText()
{
    Files& files = build_.machine.files;
    const std::string name(Trim(FromChar(line_.text, 4)));
    line_.text = files.ReadFile(name);
    state_.sources.AddFile(AbsolutePath(name, files.CurrentDirectory()));
    if (line_.tracer != nullptr) [[unlikely]]
        line_.tracer->PutFile(name, line_.text);
}

void PageWriter::WriteBodyLine(int number, std::string_view line)
{
    const bool is_dropped = IsDropped(number, line);
    if (!is_dropped)
        WriteLine(state_.output, line);
    if (line_.tracer != nullptr) [[unlikely]]
        line_.tracer->End(line, state_.page.redirects ? kRedirectTold
                                : is_dropped          ? kThirdLine
                                                      : "");
}

/// For the trace; `number` is that of the line that ended the page.
void PageWriter::TellEndOfBody(int number)
{
    line_.tracer->Rewind(state_.output.size());
    const PageLineTable& lines = std::as_const(state_.PageLines)[state_.page.number];
    for (; lines[number].line != 0; ++number)
        line_.tracer->Skip(lines[number], LinePart::none,
                           "a line @@ENDOFFILE@@ has ended the page");
}

void PageWriter::ClosePage()
{
    WriteEnd();
    // Other pages are in work by the time a failure of this one is told.
    const auto tell_place = [&reporter = build_.machine.reporter, file = state_.place.file,
                             line = state_.place.line, page = state_.page.name,
                             path = state_.page.CurrentOutputPath](RunError& error) {
        error.where = Place{file, line, page};
        ShowPath(reporter, path);
    };
    build_.machine.files.HandOver(state_.page.file, state_.output, tell_place);
}

void PageWriter::WriteEnd()
{
    if (state_.page.redirects)
        return;
    WriteShowHideScript(state_.output, state_.page.bangs);
    if (line_.tracer != nullptr) [[unlikely]]
        line_.tracer->TellToggles();
    if (const PageShell* const shell = FindPageShell(build_.CurrentRecord().mode))
        WriteShell(shell->closing, "what stands behind the page's text");
    else
        WriteTemplate(tail_);
}

void PageWriter::WriteTemplate(const PreparedSection& section)
{
    if (build_.tracer) [[unlikely]]
        build_.tracer->template_used = true;
    for (const TemplatePiece& piece : line_.tracer != nullptr ? section.traced : section.pieces) {
        if (!piece.finished.empty()) {
            state_.output.append(piece.finished);
            continue;
        }
        SetPlace(piece.line);
        if (WriteCut(piece))
            continue;
        if (line_.tracer != nullptr) [[unlikely]]
            line_.tracer->Begin(piece.line, LinePart::frame);
        line_.Begin(piece.line.text, piece.triggers);
        WriteTemplateLine(line_);
        if (line_.tracer != nullptr) [[unlikely]]
            line_.tracer->EndOfTemplate(line_.text);
    }
}

/// Returns false where the line has to go through its steps.
bool PageWriter::WriteCut(const TemplatePiece& piece)
{
    if (!piece.metas.empty()) {
        const MetaWriting meta = WriteMetaTag(piece.metas, build_.CurrentRecord(), state_.output);
        if (meta != MetaWriting::stays)
            return meta == MetaWriting::written;
    }
    if (piece.cut.IsEmpty())
        return false;
    if ((piece.triggers & kPosition) != 0 && !StandsHere(piece.line.text[1], state_).value_or(true))
        return true;
    return piece.cut.Write(build_, line_.store, state_.output);
}

/// For the trace.
void PageWriter::TellTemplateUnused()
{
    if (!build_.tracer || build_.tracer->template_used)
        return;
    for (const PreparedSection* const section : {&head_, &tail_})
        for (const TemplatePiece& piece : section->traced)
            build_.tracer->Unused(piece.line, "no page is framed by the template", LinePart::frame);
}

void PageWriter::SetPlace(const SourceLine& line)
{
    state_.place = {line.file, line.line, state_.page.name};
}

} // namespace

void WritePages(Build& build)
{
    PageWriter(build).Write();
}

} // namespace kiv
