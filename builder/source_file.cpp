#include "builder/source_file.h"

#include "builder/build_state.h"
#include "platform/drive_path.h"
#include "platform/run_error.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <utility>

namespace kiv {

SourceFile::SourceFile(Build& build)
    : build_(build), place_(build.state.place), is_traced_(build.tracer != nullptr)
{
}

bool SourceFile::Open(std::string_view path)
{
    Files& files = build_.machine.files;
    if (!files.FileExists(path))
        return false;
    Sources& sources = build_.state.sources;
    name_ = sources.Keep(AbsolutePath(path, files.CurrentDirectory()));
    content_ = sources.Keep(files.ReadContent(path));
    lines_ = LineScanner(content_);
    sources.AddFile(name_);
    if (build_.tracer) [[unlikely]]
        build_.tracer->TellSource(name_);
    line_ = 0;
    starts_.clear();
    is_open_ = true;
    return true;
}

bool SourceFile::OpenOwn(std::string_view path)
{
    BuildState& state = build_.state;
    const std::string absolute = AbsolutePath(path, build_.machine.files.CurrentDirectory());
    state.place = {state.sources.Keep(absolute), 0, {}};
    return Open(path);
}

void SourceFile::RefuseClosed() const
{
    throw RunError(ErrorKind::file, std::string(name_) + " was closed before its end was found", {},
                   what_to_do_);
}

void SourceFile::RefuseEnd() const
{
    throw RunError(ErrorKind::end_of_file, "read past the end of " + std::string(name_));
}

SourceLine SourceFile::NextLine()
{
    if (AtEnd())
        RefuseEnd();
    if (is_traced_) [[unlikely]]
        starts_.push_back(content_.size() - lines_.Rest().size());
    Triggers triggers = 0;
    const std::string_view text = lines_.Next(triggers);
    place_ = {name_, ++line_, {}};
    return {text, name_, line_, triggers};
}

std::span<const SourceLine> SourceFile::NextLines(std::span<SourceLine> lines, Triggers stops)
{
    lines[0] = NextLine();
    std::size_t count = 1;
    // A trace wants to know of each line where it begins.
    bool goes_on = !is_traced_ && (lines[0].triggers & stops) == 0;
    while (goes_on && count < lines.size() && !lines_.AtEnd()) {
        Triggers triggers = 0;
        const std::string_view text = lines_.Next(triggers);
        lines[count++] = {text, name_, ++line_, triggers};
        goes_on = (triggers & stops) == 0;
    }
    place_ = {name_, line_, {}};
    return lines.first(count);
}

std::string SourceFile::LinesText(int first, int last) const
{
    const bool is_read = first <= line_;
    std::string_view content =
        is_read ? content_.substr(starts_[static_cast<std::size_t>(first) - 1]) : lines_.Rest();
    std::string lines;
    for (int number = first; number <= last && !content.empty(); ++number) {
        if (number > first)
            lines += kCrLf;
        lines += TakeLine(content);
    }
    return lines;
}

void SourceFile::TellUnused(int first, std::string_view reason) const
{
    if (build_.tracer) [[unlikely]]
        build_.tracer->Unused({name_, first, line_}, LinesText(first, line_), reason);
}

void SourceFile::TellUnusedBefore(int first, std::string_view reason) const
{
    if (build_.tracer && first < line_) [[unlikely]]
        build_.tracer->Unused({name_, first, line_ - 1}, LinesText(first, line_ - 1), reason);
}

void SourceFile::TellRest(std::string_view reason) const
{
    int last = line_;
    for (std::string_view rest = lines_.Rest(); build_.tracer && !rest.empty(); TakeLine(rest))
        ++last;
    if (last > line_)
        build_.tracer->Unused({name_, line_ + 1, last}, LinesText(line_ + 1, last), reason);
}

void SourceFile::TellMade(SourceLine& line, int first, std::string_view name,
                          std::string text) const
{
    if (build_.tracer) [[unlikely]]
        build_.tracer->Replace(line, first, LinesText(first, line_), name, std::move(text));
}

std::string_view CutIncludePrefix(std::string_view& line,
                                  std::span<const std::string_view> prefixes, std::string_view mark)
{
    for (const std::string_view prefix : prefixes)
        if (line.size() > prefix.size() && line[prefix.size()] == mark.front() &&
            line.substr(prefix.size()).starts_with(mark) && StartsWithNoCase(line, prefix)) {
            line.remove_prefix(prefix.size());
            return prefix;
        }
    return {};
}

} // namespace kiv
