// The build's side of the trace: it gathers the story of the line in work, and knows what was done
// to lines while they were read and where everything is defined. It exists only in builds that
// somebody wants to know about.
#pragma once

#include "builder/definitions.h"
#include "builder/sources.h"
#include "builder/trace.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

struct Build;

class Tracer {
  public:
    /// The build may still be in the making.
    Tracer(Trace& trace, Build& build) : trace_(trace), build_(build) {}

    /// The build begins anew: what was read is read again.
    void Reset();

    // While sources are read.

    /// `file`: an absolute drive path.
    void TellSource(std::string_view file) { trace_.TakeSource(file); }
    /// Keeps what happens to a line before it comes to a page; its text is the caller's to change.
    /// `name`, `text` and `after` are those of TracedStep.
    void Change(SourceLine& line, std::string_view name, std::string text, std::string_view after);
    /// The same for the line that a stretch of its file becomes, from line `first` to its own;
    /// `before` is the stretch's text.
    void Replace(SourceLine& line, int first, std::string before, std::string_view name,
                 std::string text);
    /// Of that stretch the last line alone is left, as it stands there.
    void LeaveLastLine(SourceLine& line) { PastOf(line).is_last_alone = true; }
    /// Keeps what a line says of its pages or of the site: "sets the page's title".
    void NoteRole(SourceLine& line, std::string role);
    void DefineVariable(Family family, int slot, SourceLine& line);
    void DefineField(int page, PageField field, std::string_view word, SourceLine& line);

    /// Lines that come to no page; `before` is their text.
    void Unused(const SourceSpan& span, std::string before, std::string_view reason);
    void Unused(const SourceLine& line, std::string_view reason, LinePart part = LinePart::none);
    /// The same for a line above the first page. One that speaks of the pages tells that; else the
    /// reason is `otherwise`.
    void UnusedButForRole(const SourceLine& line, std::string_view otherwise);

    // While a page is written.

    /// Returns whether the page's lines are asked for.
    bool BeginPage(const TracedPage& page);
    /// A line begins its way.
    void Begin(const SourceLine& line, LinePart part);
    /// A text of the program's own begins, which is there because of a definition.
    void Begin(const Definition& definition);
    /// Something has been made of the line, which is `before` and `rest` now.
    void Note(std::string_view name, std::string text, std::string_view before,
              std::string_view rest, const SourceSpan& from = {});
    void Note(std::string_view name, std::string text, std::string_view line,
              const SourceSpan& from = {})
    {
        Note(name, std::move(text), line, {}, from);
    }
    /// The line in work is about to have a construct expanded.
    void TellUse(const TracedUse& use) { trace_.TakeUse(story_, use); }
    /// The line in work has a toggle, for which the page gets a script.
    void NoteToggle();
    /// That script, if any, was written.
    void TellToggles();
    /// Lines that the line in work puts before itself; `raw` has them with their line ends. `from`
    /// is the definition that made them, or, where `is_source`, the lines that they are.
    void Put(std::string_view raw, std::string_view name, std::string text, const SourceSpan& from,
             bool is_source = false);
    /// The same for what was added to the page's output since.
    void PutWritten(std::string_view name, std::string text, const SourceSpan& from);
    /// The line has become `text`. What was added to the page's output since the last line is its
    /// part of the page; with a `reason` there is none.
    void End(std::string_view text, std::string_view reason = {});
    /// What was added to the page's output since the last line is what the text that has begun
    /// became; `name` and `text` are those of TracedStep. Nothing was added: there is no such text.
    void NoteWritten(std::string_view name, std::string text);
    /// A wrapper is opened, be it on a page that nobody asks for: its second half may come later.
    void OpenWrapper(int digit) { open_wrapper_ = digit; }
    /// The line in work has opened it, and has become its first half.
    void NoteWrapper(std::string_view line);
    /// It closes the wrapper that was opened last, and has become its second half.
    void NoteWrapperEnd(std::string_view line);
    /// The line in work is the text of a file.
    void PutFile(std::string_view name, std::string_view content);
    /// The same for a line of the template, which is not written when it is empty.
    void EndOfTemplate(std::string_view text);
    /// A line of the page that is never written.
    void Skip(const SourceLine& line, LinePart part, std::string_view reason);
    /// What was written since the page's output was `size` long is taken back.
    void Rewind(std::size_t size) { counted_ = size; }
    /// An error ends the build in the line in work, if there is one.
    void Fail(std::string_view error);

    // What the words of a step need.

    Definitions& Known() { return definitions_; }
    bool template_used = false; // by any page since the last Reset

    /// "_html.txt:12", the file as one says it in the site's folder.
    std::string PlaceText(const SourceSpan& place) const;
    /// `page 1 "The museum" (_html.txt:4)`.
    std::string PageText(int number);

  private:
    /// What is known of a source line before a page has it.
    struct Past {
        SourceSpan span;
        std::string before;
        std::vector<TracedStep> steps;
        std::string role;
        bool is_last_alone = false; // of the span its last line is left, and nothing else
    };
    Past& PastOf(SourceLine& line);
    Definition DefinitionAt(SourceLine& line);
    /// A reason that holds for the line, as it is told for all the lines that it was made of.
    std::string ReasonFor(const SourceLine& line, std::string_view reason) const;
    void Emit();

    Trace& trace_;
    Build& build_;
    Definitions definitions_;
    std::vector<Past> pasts_;
    int open_wrapper_ = 0; // the digit of the wrapper that was opened last
    LineStory story_;      // of the line in work
    LineStory toggles_;    // sources and the first line of what has a toggle on this page
    bool is_open_ = false;
    std::size_t told_ = 0;    // characters in the story's steps
    std::size_t untold_ = 0;  // changes that the story has no room for
    std::size_t counted_ = 0; // of the page's output
    int lines_ = 0;           // of the page, that were written
};

} // namespace kiv
