#include "builder/template_reader.h"

#include "builder/build_state.h"
#include "builder/missing_sources.h"
#include "builder/source_file.h"
#include "platform/run_error.h"
#include "platform/site_files.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <string>

namespace kiv {

namespace {

constexpr std::string_view kTemplateIncludePrefixes[] = {"ASP:", "HTM:", "DIR1:"};

SourceLine FirstLine(SourceFile& source)
{
    try {
        return source.NextLine();
    } catch (RunError& error) {
        error.hint = "The template is empty: write a line <!--BODY HERE--> into it, where the text "
                     "of each page goes, or \";\" for pages without a frame.";
        throw;
    }
}

class TemplateReader {
  public:
    explicit TemplateReader(Build& build) : build_(build), state_(build.state) {}

    void Read();

  private:
    void ReadOther(const SourceFile& own, std::string_view name);
    void ReadRest(SourceFile& source);
    void TakeLineOf(const SourceFile& source, SourceLine line);
    void TakeBodyMarker(const SourceLine& line);
    void Include(const SourceFile& source, std::string_view line);
    void TakeIncludedLine(const SourceFile& source, SourceLine line);
    void TellLost(const TemplateSection& section, int first, int last,
                  std::string_view reason) const;
    TemplateSection& Section() { return in_tail_ ? state_.TemplateTail : state_.TemplateHead; }

    Build& build_;
    BuildState& state_;
    bool in_tail_ = false;
    int counter_ = 0;
    std::string_view prefix_; // of the next include
};

/// A first line that begins with "++" names the file that is the template in this one's place.
void TemplateReader::Read()
{
    SourceFile source(build_);
    if (!source.OpenOwn(kTemplateFile)) {
        build_.messages.reportmsg("Oops! _template.txt doesn't exist!");
        return;
    }
    const SourceLine first = FirstLine(source);
    if (first.text.starts_with("++"))
        return ReadOther(source, FromChar(first.text, 3));
    TakeLineOf(source, first);
    ReadRest(source);
}

/// The file `name` is the template in this one's place.
void TemplateReader::ReadOther(const SourceFile& own, std::string_view name)
{
    SourceFile other(build_);
    if (!other.Open(name)) {
        own.TellUnused(1, Joined({"there is no file ", name, ", and so no template"}));
        own.TellRest("never read: there is no template");
        build_.messages.reportmsg("File: " + std::string(name) + " not found... aborting",
                                  WhatIsNoFile(build_.machine.files, name));
        return;
    }
    own.TellUnused(1, Joined({"the file ", name, " is the template"}));
    own.TellRest(Joined({"never read: the file ", name, " is the template"}));
    ReadRest(other);
}

void TemplateReader::ReadRest(SourceFile& source)
{
    while (!source.AtEnd())
        TakeLineOf(source, source.NextLine());
    state_.TemplateTailCount = counter_;
    if (!in_tail_)
        TellLost(state_.TemplateHead, 1, counter_,
                 "the template has no line <!--BODY HERE-->, so none of it is used");
}

/// For the trace: lines of a section that no page gets.
void TemplateReader::TellLost(const TemplateSection& section, int first, int last,
                              std::string_view reason) const
{
    for (int i = first; build_.tracer && i <= last; ++i)
        if (!section[i].file.empty())
            build_.tracer->Unused(section[i], reason, LinePart::frame);
}

/// A second marker, in the tail, is stored in the head, too: the lines between the two are lost by
/// that.
void TemplateReader::TakeBodyMarker(const SourceLine& line)
{
    if (in_tail_) {
        TellLost(state_.TemplateTail, 1, counter_ - 1, "it stands between two <!--BODY HERE-->");
        TellLost(state_.TemplateHead, counter_, state_.TemplateHeadCount,
                 "a second <!--BODY HERE--> has taken its place");
    }
    state_.TemplateHead[counter_] = line;
    state_.TemplateHeadCount = counter_;
    counter_ = 0;
    in_tail_ = true;
}

void TemplateReader::TakeLineOf(const SourceFile& source, SourceLine line)
{
    if (line.text.starts_with(';'))
        return source.TellUnused(line.line, "a comment: it begins with \";\"");
    if (const std::string_view prefix = TakeIncludePrefix(line.text, kTemplateIncludePrefixes, "+");
        !prefix.empty())
        prefix_ = prefix;
    if (line.text.starts_with('+')) {
        Include(source, line.text);
        prefix_ = {};
        return;
    }
    ++counter_;
    if (EqualsNoCase(line.text, "<!--BODY HERE-->"))
        return TakeBodyMarker(line);
    Section()[counter_] = line;
}

/// `line` begins with "+": the file's name stands from the second character on or, when there is no
/// such file, from the third.
void TemplateReader::Include(const SourceFile& source, std::string_view line)
{
    const int number = source.Here({}).line;
    std::string_view name = FromChar(line, 2);
    SourceFile included(build_);
    bool is_open = included.Open(name);
    if (!is_open) {
        name = FromChar(line, 3);
        is_open = included.Open(name);
    }
    if (!is_open) {
        source.TellUnused(
            number, Joined({"there is no file ", FromChar(line, line.starts_with("++") ? 3 : 2)}));
        build_.messages.reportmsg("++ template" + std::string(line) + " Not found");
        return;
    }
    source.TellUnused(number, Joined({"the lines of ", name, " stand in its place"}));
    while (!included.AtEnd())
        TakeIncludedLine(included, included.NextLine());
}

void TemplateReader::TakeIncludedLine(const SourceFile& source, SourceLine line)
{
    if (StartsWithNoCase(line.text, "<TITLE>"))
        return source.TellUnused(line.line, "a <TITLE> line of an include is left out");
    const std::string_view text = state_.sources.Prefixed(prefix_, line.text);
    if (build_.tracer && !prefix_.empty()) [[unlikely]]
        build_.tracer->Change(line, prefix_, "stands before every line of this include", text);
    line.text = text;
    if (!prefix_.empty())
        line.triggers = ScanLine(text);
    Section()[++counter_] = line;
}

} // namespace

void ReadTemplate(Build& build)
{
    TemplateReader(build).Read();
}

} // namespace kiv
