#include "builder/traced_bounds.h"

#include "builder/build_state.h"
#include "builder/trace.h"
#include "platform/drive_path.h"
#include "platform/site_files.h"

#include <string>

namespace kiv {

namespace {

/// Lines of a page; the closing marker comes from no source.
int LinesOf(const PageLineTable& lines)
{
    int count = 0;
    while (count < kMaxPageLines && lines[count + 1].line != 0)
        ++count;
    return count;
}

void TellPages(const BuildState& state, Trace& trace)
{
    for (int page = 1; page <= state.PageCount; ++page) {
        const PageLineTable& lines = state.PageLines[page];
        const SourceLine& first = lines[1];
        trace.TakeBound({"lines on the page",
                         LinesOf(lines),
                         kMaxPageLines - 1, // the marker behind them is one as well
                         {first.file, first.line, first.line},
                         state.PageTable[page].file});
    }
}

/// Without a body marker there is nothing that a page could use.
void TellTemplate(const BuildState& state, Trace& trace)
{
    if (state.TemplateHeadCount == 0)
        return;
    const SourceSpan where{state.TemplateHead[state.TemplateHeadCount].file};
    trace.TakeBound({"template lines down to <!--BODY HERE-->", state.TemplateHeadCount,
                     kMaxTemplateLines, where});
    trace.TakeBound({"template lines below <!--BODY HERE-->", state.TemplateTailCount,
                     kMaxTemplateLines, where});
}

} // namespace

void TellBounds(const Build& build)
{
    Trace& trace = *build.options.trace;
    const BuildState& state = build.state;
    const std::string list = AbsolutePath(kPageListFile, build.machine.files.CurrentDirectory());
    // The entry behind the last page is the site's start.
    trace.TakeBound({"pages in the page list", state.PageCount, kMaxPages - 1, {list}});
    trace.TakeBound({"lines in the page list and what it takes in",
                     state.SourceLineCount,
                     kMaxSourceLines,
                     {list}});
    TellPages(state, trace);
    TellTemplate(state, trace);
}

} // namespace kiv
