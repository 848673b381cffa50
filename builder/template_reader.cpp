#include "builder/template_reader.h"

#include "builder/source_file.h"
#include "platform/site_files.h"
#include "text/text.h"

#include <array>
#include <string>

namespace kiv {

namespace {

class TemplateReader {
  public:
    explicit TemplateReader(Build& build) : build_(build), state_(build.state) {}

    void Read(std::string_view path);

  private:
    void TakeLineOf(const SourceFile& source, std::string_view line);
    void TakeIncludePrefix(std::string_view& line);
    void Include(std::string_view line);
    void Store(std::string_view line, int line_number);

    Build& build_;
    BuildState& state_;
    const std::string* file_ = nullptr;
    bool in_tail_ = false;
    int counter_ = 0;
    std::string_view prefix_; // of the next include
};

void TemplateReader::Read(std::string_view path)
{
    const std::string_view bytes = build_.ReadSource(path, file_);
    SourceFile source(bytes, *file_, build_.machine.reporter);
    while (!source.AtEnd())
        TakeLineOf(source, source.Next());
    state_.TemplateTailCount = counter_;
}

void TemplateReader::TakeLineOf(const SourceFile& source, std::string_view line)
{
    if (line.starts_with(';'))
        return;
    TakeIncludePrefix(line);
    if (line.starts_with('+')) {
        const std::string* const template_file = file_;
        Include(line);
        file_ = template_file;
        prefix_ = {};
        return;
    }
    ++counter_;
    if (EqualsNoCase(line, "<!--BODY HERE-->")) {
        // A second marker, in the tail, is stored in the head too: lines between the markers are
        // lost.
        state_.TemplateHead[counter_] = {line, file_, source.line()};
        state_.TemplateHeadCount = counter_;
        counter_ = 0;
        in_tail_ = true;
        return;
    }
    Store(line, source.line());
}

void TemplateReader::TakeIncludePrefix(std::string_view& line)
{
    constexpr std::array<std::string_view, 3> kPrefixes = {"ASP:", "HTM:", "DIR1:"};
    for (const std::string_view prefix : kPrefixes)
        if (StartsWithNoCase(line, prefix) && line.substr(prefix.size()).starts_with('+')) {
            prefix_ = prefix;
            line.remove_prefix(prefix.size());
            return;
        }
}

/// `line` begins with "+": the file's name stands from the second character on or, when there is no
/// such file, from the third.
void TemplateReader::Include(std::string_view line)
{
    Files& files = build_.machine.files;
    std::string_view name = FromChar(line, 2);
    if (!files.FileExists(name))
        name = FromChar(line, 3);
    if (!files.FileExists(name)) {
        build_.machine.reporter.reportmsg("++ template" + std::string(line) + " Not found");
        return;
    }
    const std::string_view bytes = build_.ReadSource(name, file_);
    SourceFile source(bytes, *file_, build_.machine.reporter);
    while (!source.AtEnd()) {
        const std::string_view included = source.Next();
        if (StartsWithNoCase(included, "<TITLE>"))
            continue;
        ++counter_;
        Store(prefix_.empty() ? included
                              : build_.Keep(std::string(prefix_) + std::string(included)),
              source.line());
    }
}

void TemplateReader::Store(std::string_view line, int line_number)
{
    TemplateSection& section = in_tail_ ? state_.TemplateTail : state_.TemplateHead;
    section[counter_] = {line, file_, line_number};
}

} // namespace

void ReadTemplate(Build& build)
{
    Files& files = build.machine.files;
    if (!files.FileExists(kTemplateFile)) {
        build.machine.reporter.reportmsg("Oops! _template.txt doesn't exist!");
        return;
    }
    const std::string* name = nullptr;
    const std::string_view bytes = build.ReadSource(kTemplateFile, name);
    const std::string_view first = SourceFile(bytes, *name, build.machine.reporter).Next();
    if (!first.starts_with("++")) {
        TemplateReader(build).Read(kTemplateFile);
        return;
    }
    const std::string_view other = FromChar(first, 3);
    if (!files.FileExists(other)) {
        build.machine.reporter.reportmsg("File: " + std::string(other) + " not found... aborting");
        return;
    }
    TemplateReader(build).Read(other);
}

} // namespace kiv
