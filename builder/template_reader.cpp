#include "builder/template_reader.h"

#include "builder/build_state.h"
#include "builder/source_file.h"
#include "platform/site_files.h"
#include "text/text.h"

#include <string>

namespace kiv {

namespace {

constexpr std::string_view kIncludePrefixes[] = {"ASP:", "HTM:", "DIR1:"};

class TemplateReader {
  public:
    explicit TemplateReader(Build& build) : build_(build), state_(build.state) {}

    void Read();

  private:
    void TakeLineOf(SourceLine line);
    void Include(std::string_view line);
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
    if (!source.Open(kTemplateFile)) {
        build_.messages.reportmsg("Oops! _template.txt doesn't exist!");
        return;
    }
    const SourceLine first = source.NextLine();
    if (!first.text.starts_with("++")) {
        TakeLineOf(first);
    } else if (const std::string_view other = FromChar(first.text, 3); !source.Open(other)) {
        build_.messages.reportmsg("File: " + std::string(other) + " not found... aborting");
        return;
    }
    while (!source.AtEnd())
        TakeLineOf(source.NextLine());
    state_.TemplateTailCount = counter_;
}

void TemplateReader::TakeLineOf(SourceLine line)
{
    if (line.text.starts_with(';'))
        return;
    if (const std::string_view prefix = TakeIncludePrefix(line.text, kIncludePrefixes, "+");
        !prefix.empty())
        prefix_ = prefix;
    if (line.text.starts_with('+')) {
        Include(line.text);
        prefix_ = {};
        return;
    }
    ++counter_;
    if (EqualsNoCase(line.text, "<!--BODY HERE-->")) {
        // A second marker, in the tail, is stored in the head, too: the lines between the two are
        // lost by that.
        state_.TemplateHead[counter_] = line;
        state_.TemplateHeadCount = counter_;
        counter_ = 0;
        in_tail_ = true;
        return;
    }
    Section()[counter_] = line;
}

/// `line` begins with "+": the file's name stands from the second character on or, when there is no
/// such file, from the third.
void TemplateReader::Include(std::string_view line)
{
    SourceFile source(build_);
    if (!source.Open(FromChar(line, 2)) && !source.Open(FromChar(line, 3))) {
        build_.messages.reportmsg("++ template" + std::string(line) + " Not found");
        return;
    }
    while (!source.AtEnd()) {
        SourceLine included = source.NextLine();
        if (StartsWithNoCase(included.text, "<TITLE>"))
            continue;
        included.text = state_.sources.Prefixed(prefix_, included.text);
        Section()[++counter_] = included;
    }
}

} // namespace

void ReadTemplate(Build& build)
{
    TemplateReader(build).Read();
}

} // namespace kiv
