#include "builder/source_file.h"

#include "builder/build_state.h"
#include "platform/drive_path.h"
#include "platform/run_error.h"
#include "text/text.h"

#include <utility>

namespace kiv {

bool SourceFile::Open(std::string_view path)
{
    Files& files = build_.machine.files;
    if (!files.FileExists(path))
        return false;
    Sources& sources = build_.state.sources;
    name_ = sources.Keep(AbsolutePath(path, files.CurrentDirectory()));
    content_ = sources.Keep(files.ReadFile(path));
    rest_ = content_;
    sources.AddFile(name_);
    line_ = 0;
    is_open_ = true;
    return true;
}

void SourceFile::RefuseClosed() const
{
    throw RunError(ErrorKind::file, std::string(name_) + " was closed before its end was found");
}

SourceLine SourceFile::NextLine()
{
    if (AtEnd())
        throw RunError(ErrorKind::end_of_file, "read past the end of " + std::string(name_));
    const std::string_view line = TakeLine(rest_);
    ++line_;
    build_.state.place = {name_, line_, {}};
    return Here(line);
}

void SourceFile::TellUnused(int first, std::string_view reason) const
{
    if (build_.tracer) [[unlikely]]
        build_.tracer->Unused({name_, first, line_}, content_, reason);
}

void SourceFile::TellUnusedBefore(int first, std::string_view reason) const
{
    if (build_.tracer && first < line_) [[unlikely]]
        build_.tracer->Unused({name_, first, line_ - 1}, content_, reason);
}

void SourceFile::TellRest(std::string_view reason) const
{
    int last = line_;
    for (std::string_view rest = rest_; build_.tracer && !rest.empty(); TakeLine(rest))
        ++last;
    if (last > line_)
        build_.tracer->Unused({name_, line_ + 1, last}, content_, reason);
}

void SourceFile::TellMade(SourceLine& line, int first, std::string_view name,
                          std::string text) const
{
    if (build_.tracer) [[unlikely]]
        build_.tracer->Replace(line, first, content_, name, std::move(text));
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
