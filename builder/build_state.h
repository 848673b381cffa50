// Everything that lives for one build, sorted by lifetime: the run, the build, the pass, the page.
#pragma once

#include "blocks/dispatcher.h"
#include "builder/build_messages.h"
#include "builder/build_options.h"
#include "builder/line_triggers.h"
#include "builder/output_roots.h"
#include "builder/page_bangs.h"
#include "builder/page_lines.h"
#include "builder/page_record.h"
#include "builder/sources.h"
#include "builder/tracer.h"
#include "builder/upload_list.h"
#include "platform/fixed_table.h"
#include "platform/machine.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

inline constexpr int kMaxSourceLines = 40000;
inline constexpr int kMaxPages = 1000;
inline constexpr int kMaxTemplateLines = 1000;

/// What to do when a page list is too long.
inline constexpr const char* kSplitSection =
    "A page list has room for 999 pages, and for 40000 lines with all that it includes: move some "
    "of its pages into a section of their own, a folder with its own page list.";

struct TemplateSection : FixedTable<SourceLine, 0, kMaxTemplateLines> {
    TemplateSection()
        : FixedTable(
              "template line",
              "A template has room for 1000 lines before <!--BODY HERE--> and 1000 behind it: "
              "move styles and scripts into files of their own.")
    {
    }
};

/// What lives for one page.
struct PageState {
    /// Makes all of it new for another page; texts keep their memory.
    void Begin(int page);

    int number = 0;         // 1-based
    std::string name;       // for warnings
    bool redirects = false; // nothing of the body reaches the file
    OutputFile file;        // the open output file; not used in the single page
    std::string CurrentOutputPath;
    std::string CurrentStem;     // the path up to its first "."
    std::string CurrentBaseStem; // the same without folders
    std::string CurrentTitle;
    PageBangs bangs;
};

/// What lives for one build and is made new by ResetBuildState.
struct BuildState {
    Sources sources;
    Place place; // of the line in work

    FixedTable<SourceLine, 0, kMaxSourceLines> SourceLines{"source line", kSplitSection};
    int SourceLineCount = 0;
    FixedTable<PageRecord, 0, kMaxPages> PageTable{"page", kSplitSection};
    int PageCount = 0;
    FixedTable<PageLineTable, 0, kMaxPages> PageLines{"page", kSplitSection};
    kiv::NumberedVariables NumberedVariables;
    std::string SiteRoot;
    std::string OutputDir1;
    std::string AspOutputDir;
    std::string HtmOutputDir;
    bool AspOutputWanted = false;
    bool HtmOutputWanted = false;
    TemplateSection TemplateHead;
    TemplateSection TemplateTail;
    int TemplateHeadCount = 0;
    int TemplateTailCount = 0;

    std::string style_sheet;     // the styles of tables with a class of their own
    std::string PendingWrapTail; // closing half of the last "[[" wrapper
    std::string output;          // of the page in work; the buffer is kept from page to page
    PageState page;

    std::string page_list;           // the bulleted list of all pages, made once
    bool page_list_is_valid = false; // false when a record's file has changed since
};

/// What a build keeps over its resets.
struct PassState {
    bool SinglePageMode = false;
    bool AspPass = false;
    bool HtmPass = false;
    std::string OutputExtensionWord = "htm";
    std::string ThisDirName;
    std::string TodayText;
    std::string YearText;
};

/// A build in work: what it may use, and its state.
struct Build {
    Build(Machine& machine_used, const BuildOptions& build_options, BlockMemory& block_memory,
          OutputRoots& declared_roots);

    Machine& machine;
    const BuildOptions& options;
    BlockMemory& blocks;
    OutputRoots& roots; // for the caller, over all passes
    UploadList uploads;
    PassState pass;
    BuildState state;
    BuildMessages messages;
    const std::unique_ptr<Tracer> tracer; // null: nobody asks for a trace

    PageRecord& CurrentRecord() { return state.PageTable[state.page.number]; }
    const PageRecord& Record(int page) const { return state.PageTable[page]; }
    /// The file of a record without folders, which the record loses for good, and without the part
    /// from its first ".".
    std::string CutToStem(PageRecord& page);
};

/// Makes the build state new and clears the message latch. What the pass keeps stays.
void ResetBuildState(Build& build);

} // namespace kiv
