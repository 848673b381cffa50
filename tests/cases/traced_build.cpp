#include "tests/cases/traced_build.h"

#include "blocks/dispatcher.h"
#include "builder/trace.h"
#include "platform/drive_path.h"
#include "platform/drives.h"
#include "platform/look_log.h"
#include "platform/site_files.h"
#include "platform/unwritten_files.h"
#include "shell/builds.h"
#include "shell/groups.h"
#include "shell/workspace.h"
#include "tests/support/folders.h"
#include "tests/support/recorders.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <sstream>

namespace kiv::test {

namespace {

namespace fs = std::filesystem;

/// Lines without their ends, the first at 0.
std::vector<std::string> LinesIn(std::string_view content)
{
    std::vector<std::string> lines;
    while (!content.empty())
        lines.emplace_back(TakeLine(content));
    return lines;
}

/// Keeps which files with anything in them were read.
class ReadFiles : public LookLog {
  public:
    void Looks(const std::string& /*absolute*/) override {}
    void Opens(const std::string& /*absolute*/) override {}
    void HasRead(const std::string& absolute, std::string_view bytes) override
    {
        if (!bytes.empty())
            paths_.insert(absolute);
    }
    void HasWritten(const OutputFile& /*file*/, const std::string_view* /*bytes*/) override {}

    /// Those that pages are made of: settings, the list of a group and old pages are none.
    std::set<std::string> Sources() const
    {
        std::set<std::string> sources;
        for (const std::string& path : paths_)
            if (!StartsWithNoCase(path, "C:\\utils\\") && NameOf(path) != kGroupFile)
                sources.insert(path);
        return sources;
    }

  private:
    std::set<std::string> paths_;
};

/// Looks at each story as it comes.
class CheckingTrace : public Trace {
  public:
    CheckingTrace(Files& disk, const UnwrittenFiles& written) : disk_(disk), written_(written) {}

    bool BeginPage(const TracedPage& page) override
    {
        page_ = UpperCase(page.path);
        pages_[page_].clear();
        return true;
    }

    void TakeLine(const LineStory& story) override
    {
        Check(story);
        if (story.line == 0)
            return;
        std::vector<std::string>& lines = pages_[page_];
        if (story.line != static_cast<int>(lines.size()) + 1)
            Blame(story, "does not follow line " + std::to_string(lines.size()));
        const std::vector<std::string> made = LinesIn(story.Text() + "\r\n");
        if (static_cast<int>(made.size()) != story.count)
            Blame(story, "tells of " + std::to_string(story.count) + " lines");
        lines.insert(lines.end(), made.begin(), made.end());
    }

    void TakeUnused(const LineStory& story) override
    {
        Check(story);
        if (story.line != 0)
            Blame(story, "was not used, and has a line");
    }

    /// Every page that was told of must be what the stories lead to.
    void ComparePages()
    {
        for (const auto& [path, lines] : pages_) {
            const std::string* const content = written_.Content(path);
            const bool is_replaced = path.ends_with("_TOC.TXT") || path.ends_with("_SITEMAP.TXT");
            if (content != nullptr && !is_replaced && LinesIn(*content) != lines)
                faults_ << path << " is not what its stories tell:\n"
                        << *content << "but\n"
                        << Text(lines);
        }
    }

    /// Every line of every source must have been told of.
    void CompareSources(const std::set<std::string>& sources)
    {
        for (const std::string& path : sources)
            if (!told_.contains(path))
                faults_ << path << ": it was read, and nothing is told of it\n";
        for (const auto& [path, told] : told_)
            for (std::size_t line = 1; line <= LinesToTell(path); ++line)
                if (!told.contains(static_cast<int>(line)))
                    faults_ << path << ", line " << line << ": nothing is told of it\n";
    }

    std::string Faults() const { return faults_.str(); }

  private:
    static std::string Text(const std::vector<std::string>& lines)
    {
        std::string text;
        for (const std::string& line : lines)
            text += line + "\n";
        return text;
    }

    /// The lines of a source before the build; none where the build made it.
    const std::vector<std::string>& OnDisk(const std::string& path)
    {
        const auto found = sources_.find(path);
        if (found != sources_.end())
            return found->second;
        return sources_[path] =
                   LinesIn(disk_.FileExists(path) ? disk_.ReadFile(path) : std::string());
    }

    /// How many lines of a source are read at least, before the build or another section's writes
    /// over it, or after.
    std::size_t LinesToTell(const std::string& path)
    {
        const std::string* const content = written_.Content(path);
        const std::size_t before = OnDisk(path).size();
        return content == nullptr ? before : std::min(before, LinesIn(*content).size());
    }

    /// Whether a source has `text` where it should. A build may write over its own sources, which
    /// later passes read.
    bool Holds(const SourceSpan& source, const std::string& text)
    {
        const std::string path(source.file);
        const std::string* const content = written_.Content(path);
        return JoinedLinesOf(OnDisk(path), source) == text ||
               (content != nullptr && JoinedLinesOf(LinesIn(*content), source) == text);
    }

    static std::optional<std::string> JoinedLinesOf(const std::vector<std::string>& lines,
                                                    const SourceSpan& source)
    {
        std::string text;
        for (int line = source.first; line <= source.last; ++line) {
            if (line < 1 || line > static_cast<int>(lines.size()))
                return std::nullopt;
            text += (line > source.first ? "\r\n" : "") + lines[static_cast<std::size_t>(line) - 1];
        }
        return text;
    }

    void Blame(const LineStory& story, const std::string& what)
    {
        faults_ << "the story of [" << story.before << "] -> [" << story.Text() << "] " << what
                << "\n";
    }

    void Check(const LineStory& story)
    {
        for (const SourceSpan& source : story.sources)
            for (int line = source.first; line <= source.last; ++line)
                told_[std::string(source.file)].insert(line);
        if (story.sources.empty() ? !story.before.empty()
                                  : !Holds(story.sources.front(), story.before))
            Blame(story, "does not begin as its source does");
        if (story.line == 0 && story.reason.empty())
            Blame(story, "has no reason");
        if (story.line != 0 && !story.reason.empty())
            Blame(story, "has a reason: " + story.reason);
        const std::string* before = &story.before;
        for (const TracedStep& step : story.steps) {
            if (step.name.empty() || step.text.empty())
                Blame(story, "has a step without words: [" + step.name + "] " + step.text);
            if (step.after == *before && step.name != kFileText)
                Blame(story, "has a step that does nothing: " + step.name);
            before = &step.after;
        }
    }

    static constexpr std::string_view kFileText =
        "!++"; // its file may be one line that names itself

    Files& disk_;
    const UnwrittenFiles& written_;
    std::string page_;
    std::map<std::string, std::vector<std::string>> pages_; // lines by path
    std::map<std::string, std::vector<std::string>> sources_;
    std::map<std::string, std::set<int>> told_; // lines by source
    std::ostringstream faults_;
};

} // namespace

class TracedBuild::Run {
  public:
    Run(const fs::path& drive_c, std::string_view directory, What what, bool eoy)
        : files_(MakeDriveFiles({{'C', TextOf(drive_c)}, {'Z', "/"}})), before_(ReadTree(drive_c))
    {
        workspace_.EoyEnabled = eoy;
        error_ = workspace_.Run([&] {
            workspace_.LookAt(directory);
            files_->TellLooksTo(&read_);
            what == What::group ? BuildGroup() : Build();
        });
        files_->TellLooksTo(nullptr);
        trace_.ComparePages();
        if (!error_)
            trace_.CompareSources(read_.Sources());
        if (ReadTree(drive_c) != before_)
            faults_ << "a traced build has changed the disk\n";
        faults_ << trace_.Faults();
    }

    std::string Differences(const std::vector<std::string>& messages,
                            const std::vector<std::string>& files)
    {
        if (reporter_.shown != messages)
            faults_ << "a traced build says something else\n";
        files_->Refresh(); // the real build was another one's
        for (const std::string& file : files) {
            const std::string* const content = unwritten_.Content(file);
            if (EqualsNoCase(file, kUploadBatchFile))
                continue; // an order to upload, which a build that writes nothing does not give
            if (content == nullptr || *content != files_->ReadFile(file))
                faults_ << file << " is another one when it is traced\n";
        }
        return faults_.str();
    }

  private:
    void Build() { BuildUnwritten(workspace_, unwritten_, reporter_, trace_); }

    /// As a build of the group goes from folder to folder.
    void BuildGroup()
    {
        if (!unwritten_.FileExists(kGroupFile))
            return;
        workspace_.EoyEnabled = true;
        const std::string folder = WithSeparator(unwritten_.CurrentDirectory());
        const std::vector<std::string> entries = GroupEntries(unwritten_);
        if (unwritten_.FileExists(kPageListFile) && unwritten_.FileExists(kTemplateFile))
            BuildMember();
        for (const std::string& entry : entries) {
            unwritten_.ChangeDirectory(folder + entry);
            BuildMember();
        }
    }

    /// A build that is written remembers the last unknown tag for the next one.
    void BuildMember()
    {
        Build();
        for (const std::string_view text : reporter_.shown)
            if (text.ends_with(kUnknownTagWarning))
                workspace_.memory.blocks.last_unknown_tag =
                    text.substr(0, text.size() - kUnknownTagWarning.size());
    }

    std::unique_ptr<Drives> files_;
    FrozenClock clock_{{2004, 3, 5, 14, 7, 9}};
    HeldClipboard clipboard_;
    StartRecorder programs_;
    RecordingReporter reporter_;
    HeaderPictureLoader pictures_{*files_};
    Machine machine_{*files_, *files_, clock_, clipboard_, programs_, reporter_, pictures_};
    Workspace workspace_{machine_};
    UnwrittenFiles unwritten_{*files_};
    ReadFiles read_;
    CheckingTrace trace_{*files_, unwritten_};
    FileTree before_;
    std::optional<RunError> error_;
    std::ostringstream faults_;
};

TracedBuild::TracedBuild(const Case& one, const fs::path& drive_c)
{
    std::vector<std::string> arguments = one.arguments;
    const bool eoy = std::erase(arguments, "--eoy") > 0;
    if (arguments.size() != 2 || !HasDrive(arguments[1]))
        return;
    if (arguments[0] == "build")
        run_ = std::make_unique<Run>(drive_c, arguments[1], What::section, eoy);
    else if (arguments[0] == "group")
        run_ = std::make_unique<Run>(drive_c, arguments[1], What::group, eoy);
}

TracedBuild::TracedBuild(const std::string& section, What what, const fs::path& drive_c)
    : run_(std::make_unique<Run>(drive_c, section, what, false))
{
}

TracedBuild::~TracedBuild() = default;

std::string TracedBuild::Differences(const std::vector<std::string>& messages,
                                     const std::vector<std::string>& files) const
{
    return run_ ? run_->Differences(messages, files) : "";
}

} // namespace kiv::test
