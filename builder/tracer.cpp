#include "builder/tracer.h"

#include "builder/build_state.h"
#include "builder/trace_words.h"
#include "platform/drive_path.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>
#include <utility>

namespace kiv {

namespace {

/// A story that goes on for longer than anybody would read is cut: the rest is one step.
constexpr std::size_t kMostTold = 4'000'000;
constexpr std::size_t kMostSteps = 2000;

int LinesIn(std::string_view written)
{
    int lines = 0;
    for (std::size_t at = written.find('\n'); at != npos; at = written.find('\n', at + 1))
        ++lines;
    return lines;
}

} // namespace

void Tracer::Reset()
{
    definitions_ = Definitions();
    pasts_.clear();
    open_wrapper_ = 0;
    template_used = false;
}

Tracer::Past& Tracer::PastOf(SourceLine& line)
{
    if (line.past == 0) {
        pasts_.push_back({{line.file, line.line, line.line}, std::string(line.text), {}, {}});
        line.past = static_cast<int>(pasts_.size());
    }
    return pasts_[static_cast<std::size_t>(line.past) - 1];
}

void Tracer::Change(SourceLine& line, std::string_view name, std::string text,
                    std::string_view after)
{
    PastOf(line).steps.push_back({std::string(name), std::move(text), std::string(after)});
}

void Tracer::Replace(SourceLine& line, int first, std::string before, std::string_view name,
                     std::string text)
{
    Past& past = PastOf(line);
    past.span.first = first;
    past.before = std::move(before);
    past.steps.push_back({std::string(name), std::move(text), std::string(line.text)});
}

void Tracer::NoteRole(SourceLine& line, std::string role)
{
    PastOf(line).role = std::move(role);
}

Definition Tracer::DefinitionAt(SourceLine& line)
{
    const Past& past = PastOf(line);
    if (past.is_last_alone)
        return {{past.span.file, past.span.last, past.span.last}, past.steps.front().after};
    return {past.span, past.before};
}

/// Lines that were lost in a block or a stretch would else have the reason of what came of it.
std::string Tracer::ReasonFor(const SourceLine& line, std::string_view reason) const
{
    if (line.past == 0)
        return std::string(reason);
    const Past& past = pasts_[static_cast<std::size_t>(line.past) - 1];
    if (past.span.first == past.span.last)
        return std::string(reason);
    const TracedStep& made = past.steps.front();
    return Joined({made.name, ": ", made.text, ": ", reason});
}

void Tracer::DefineVariable(Family family, int slot, SourceLine& line)
{
    NoteRole(line, DefinitionWords(family, slot));
    const Definition& definition = definitions_.Variable(family, slot) = DefinitionAt(line);
    trace_.TakeDefinition(NumberedMark(family, slot).View(), definition.place);
}

void Tracer::DefineField(int page, PageField field, std::string_view word, SourceLine& line)
{
    NoteRole(line, FieldWords(field, word));
    definitions_.Field(field == PageField::root ? 0 : page, field) = DefinitionAt(line);
}

void Tracer::Unused(const SourceSpan& span, std::string before, std::string_view reason)
{
    LineStory story;
    story.sources = {span};
    story.before = std::move(before);
    story.reason = reason;
    trace_.TakeUnused(story);
}

void Tracer::Unused(const SourceLine& line, std::string_view reason, LinePart part)
{
    Begin(line, part);
    is_open_ = false;
    story_.reason = ReasonFor(line, reason);
    trace_.TakeUnused(story_);
}

void Tracer::UnusedButForRole(const SourceLine& line, std::string_view otherwise)
{
    const std::string role =
        line.past == 0 ? "" : pasts_[static_cast<std::size_t>(line.past) - 1].role;
    Unused(line, role.empty() ? otherwise : role, LinePart::before_pages);
}

bool Tracer::BeginPage(const TracedPage& page)
{
    counted_ = 0;
    lines_ = 0;
    toggles_ = {};
    return trace_.BeginPage(page);
}

void Tracer::Begin(const SourceLine& line, LinePart part)
{
    is_open_ = true;
    told_ = untold_ = 0;
    story_.part = part;
    story_.role.clear();
    story_.reason.clear();
    story_.line = story_.count = 0;
    if (line.past == 0) {
        // A page that has no end goes on with lines that no source has.
        story_.sources.assign(line.file.empty() ? 0 : 1, {line.file, line.line, line.line});
        story_.before = line.text;
        story_.steps.clear();
        return;
    }
    const Past& past = pasts_[static_cast<std::size_t>(line.past) - 1];
    story_.sources.assign(1, past.span);
    story_.before = past.before;
    story_.steps = past.steps;
    story_.role = past.role;
}

void Tracer::Begin(const Definition& definition)
{
    Begin(SourceLine{definition.text, {}, 0}, LinePart::none);
    story_.sources.clear();
    if (!definition.place.file.empty())
        story_.sources.push_back(definition.place);
}

void Tracer::NoteToggle()
{
    const SourceSpan source = story_.sources.empty() ? SourceSpan() : story_.sources.front();
    if (toggles_.sources.empty())
        toggles_.before = story_.before;
    // The uses of one line follow each other.
    if (toggles_.sources.empty() || toggles_.sources.back() != source)
        toggles_.sources.push_back(source);
}

void Tracer::TellToggles()
{
    Begin(SourceLine{toggles_.before, {}, 0}, LinePart::none);
    story_.sources = toggles_.sources;
    NoteWritten("!!showhide[", "the script that the page's toggles call");
    toggles_ = {};
}

void Tracer::NoteWrapper(std::string_view line)
{
    Note(NumberedMark(Family::wrapper, open_wrapper_).View(),
         "the first half of " + VariableWords(*this, Family::wrapper, open_wrapper_), line,
         definitions_.Variable(Family::wrapper, open_wrapper_).place);
}

void Tracer::NoteWrapperEnd(std::string_view line)
{
    if (open_wrapper_ == 0)
        return Note("]]", "no wrapper was opened before, so nothing is left", line);
    Note("]]", "the second half of " + VariableWords(*this, Family::wrapper, open_wrapper_), line,
         definitions_.Variable(Family::wrapper, open_wrapper_).place);
}

void Tracer::NoteWritten(std::string_view name, std::string text)
{
    std::string_view written = std::string_view(build_.state.output).substr(counted_);
    if (written.ends_with("\r\n"))
        written.remove_suffix(2);
    is_open_ = false;
    if (counted_ == build_.state.output.size())
        return;
    Note(name, std::move(text), written);
    End(story_.Text());
}

/// Each line of the file tells where it is from; what follows the last line end is the line in
/// work itself.
void Tracer::PutFile(std::string_view name, std::string_view content)
{
    const std::string_view path =
        build_.state.sources.Keep(AbsolutePath(name, build_.machine.files.CurrentDirectory()));
    const auto told = [&](int line) {
        return Joined({"line ", Decimal(line), " of ", name, ", as it is"});
    };
    trace_.TakeSource(path);
    if (content.empty())
        return Note(kFileTextMark, Joined({name, " is empty"}), "");
    int line = 1;
    for (std::size_t end = content.find('\n'); end != npos; end = content.find('\n'), ++line) {
        Put(content.substr(0, end + 1), kFileTextMark, told(line), {path, line, line}, true);
        content.remove_prefix(end + 1);
    }
    if (content.empty())
        return Note(kFileTextMark,
                    Joined({name, " ends in a line end, so an empty line follows it"}), "");
    const SourceSpan last{path, line, line};
    story_.sources.push_back(last);
    Note(kFileTextMark, told(line), content, last);
}

void Tracer::Note(std::string_view name, std::string text, std::string_view before,
                  std::string_view rest, const SourceSpan& from)
{
    // A long line with thousands of changes must not be copied for each.
    if (untold_ > 0 || told_ > kMostTold || story_.steps.size() >= kMostSteps) {
        ++untold_;
        return;
    }
    std::string after(before);
    after.append(rest);
    if (after == story_.Text())
        return;
    told_ += after.size();
    story_.steps.push_back({std::string(name), std::move(text), std::move(after), from});
}

void Tracer::Put(std::string_view raw, std::string_view name, std::string text,
                 const SourceSpan& from, bool is_source)
{
    std::string_view line = raw;
    if (line.ends_with('\n'))
        line.remove_suffix(line.ends_with("\r\n") ? 2 : 1);
    counted_ += raw.size();
    const bool is_written = !build_.state.page.redirects;
    if (!is_written && !is_source)
        return; // the line in work tells why
    // The line's own story is lent: a copy for each of many lines would eat the time.
    if (is_source)
        story_.sources.push_back(from);
    story_.steps.push_back({std::string(name), std::move(text), std::string(line), from});
    story_.line = is_written ? lines_ + 1 : 0;
    story_.count = is_written ? LinesIn(raw) : 0;
    story_.reason = is_written ? std::string_view() : kRedirectTold;
    lines_ += story_.count;
    trace_.TakeLine(story_);
    story_.reason.clear();
    story_.steps.pop_back();
    if (is_source)
        story_.sources.pop_back();
}

void Tracer::PutWritten(std::string_view name, std::string text, const SourceSpan& from)
{
    Put(std::string_view(build_.state.output).substr(counted_), name, std::move(text), from);
}

void Tracer::End(std::string_view text, std::string_view reason)
{
    if (untold_ > 0)
        story_.steps.push_back(
            {"...", std::to_string(untold_) + " more changes like these", std::string(text)});
    const std::string& output = build_.state.output;
    const int count = LinesIn(std::string_view(output).substr(std::min(counted_, output.size())));
    counted_ = output.size();
    const bool is_written = reason.empty() && count > 0;
    story_.line = is_written ? lines_ + 1 : 0;
    story_.count = is_written ? count : 0;
    lines_ += story_.count;
    story_.reason = reason;
    Emit();
}

void Tracer::EndOfTemplate(std::string_view text)
{
    if (!text.empty())
        return End(text);
    if (story_.steps.empty())
        return End(text, "an empty line of the template is not written");
    const TracedStep& last = story_.steps.back();
    End(text, Joined({last.name, last.name.ends_with(':') ? " " : ": ", last.text}));
}

void Tracer::Skip(const SourceLine& line, LinePart part, std::string_view reason)
{
    Begin(line, part);
    story_.line = story_.count = 0;
    story_.reason = ReasonFor(line, reason);
    Emit();
}

void Tracer::Emit()
{
    is_open_ = false;
    trace_.TakeLine(story_);
}

void Tracer::Fail(std::string_view error)
{
    if (!is_open_)
        return;
    story_.line = story_.count = 0;
    story_.reason = "an error ended the build here: " + std::string(error);
    story_.is_failed = true;
    Emit();
}

std::string Tracer::PlaceText(const SourceSpan& place) const
{
    const std::string folder =
        WithSeparator(AbsolutePath(".", build_.machine.files.CurrentDirectory()));
    std::string_view file = place.file;
    if (StartsWithNoCase(file, folder))
        file.remove_prefix(folder.size());
    return Joined({file, ":", Decimal(place.first)});
}

std::string Tracer::PageText(int number)
{
    if (number < 1)
        return "the start page: no page comes before this one";
    if (number > build_.state.PageCount)
        return "the start page: no page follows this one";
    const PageRecord& page = std::as_const(build_.state.PageTable)[number];
    return Joined({"page ", Decimal(number), " ", Quoted(page.title), " (",
                   PlaceText(definitions_.Field(number, PageField::file).place), ")"});
}

} // namespace kiv
