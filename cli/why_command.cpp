// The command that tells why a line of a page looks so, and where a line of a source went.
#include "cli/commands.h"
#include "cli/report.h"
#include "cli/shown_path.h"
#include "cli/values.h"
#include "platform/drive_path.h"
#include "platform/reporter.h"
#include "platform/site_files.h"
#include "shell/line_stories.h"
#include "shell/workspace.h"
#include "text/nearest.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <string>
#include <string_view>
#include <utility>

namespace kiv {

namespace {

/// Passes on what a build says, but not how far it is: nothing is built.
class WordsOfBuild : public Reporter {
  public:
    explicit WordsOfBuild(Reporter& face) : face_(face) {}

  protected:
    void Show(std::string_view text) override
    {
        face_.reportmsg(text, Warnings().back().where.View());
    }

  private:
    Reporter& face_;
};

/// Cuts the number off a place such as "visit.htm:12"; 0 when it has none.
int TakeLineNumber(std::string& place)
{
    constexpr std::size_t kMostDigits = 9;
    const std::size_t colon = place.rfind(':');
    const std::string digits = colon == npos ? "" : place.substr(colon + 1);
    if (digits.empty() || digits.find_first_not_of("0123456789") != npos)
        return 0;
    if (digits.size() > kMostDigits)
        throw RunError(ErrorKind::invalid_argument, "nothing has a line " + digits);
    place.resize(colon);
    const int line = std::stoi(digits);
    if (line == 0)
        throw RunError(ErrorKind::invalid_argument, "lines are counted from 1");
    return line;
}

StoryQuestion QuestionOf(CallDesk& desk, const GivenValues& given)
{
    StoryQuestion question;
    std::string native = given.Native("PLACE");
    question.line = TakeLineNumber(native);
    question.place = FromUtf8(native);
    question.paths.push_back(desk.workspace.machine().native_paths.FromNative(native));
    if (given.Has("--find"))
        question.find = given.Text("--find");
    if (question.find && question.find->empty())
        throw RunError(ErrorKind::invalid_argument, "--find needs a text to look for");
    return question;
}

/// Outside a section, a place says by its path in which one it is.
void EnterSection(Workspace& workspace, const GivenValues& given, const std::string& path)
{
    Files& files = workspace.machine().files;
    if (given.Has("DIR") || files.FileExists(kPageListFile))
        return;
    const std::string section = SectionOf(files, path);
    if (!section.empty())
        workspace.LookAt(section);
}

std::string Counted(int lines)
{
    if (lines == 0)
        return "no lines";
    return lines == 1 ? "one line" : Decimal(lines) + " lines";
}

/// What to do about a place that lies in another section; "": it does not.
std::string OtherSectionHint(Machine& machine, const GivenValues& given,
                             const StoryQuestion& question)
{
    const std::string directory = machine.files.CurrentDirectory();
    const std::string section =
        SectionOf(machine.files, given.Has("DIR") ? AbsolutePath(question.place, directory)
                                                  : question.paths.front());
    if (section.empty() || EqualsNoCase(section, directory))
        return {};
    return FromUtf8(NativeOrDrive(machine.native_paths, section)) +
           " is a section of its own: ask with this folder as DIR.";
}

[[noreturn]] void RefuseUnknown(const Stories& stories, const std::string& place, std::string hint)
{
    std::string text = "no page and no source of this site is called \"" + place + "\"";
    Choices names(stories.names.begin(), stories.names.end());
    for (const std::string& name : stories.names)
        names.push_back(Before(name, '.')); // a page may be called without its extension, too
    const std::string_view near = Nearest(place, names);
    if (!near.empty())
        text.append("; ").append(DidYouMean(near));
    throw RunError(ErrorKind::invalid_argument, text, {}, std::move(hint));
}

} // namespace

void RunWhy(CallDesk& desk, const GivenValues& given)
{
    desk.workspace.EoyEnabled = given.Has("--eoy");
    const StoryQuestion question = QuestionOf(desk, given);
    EnterSection(desk.workspace, given, question.paths.front());
    WordsOfBuild words(desk.workspace.machine().reporter);
    Stories stories = TellStories(desk.workspace, question, words);
    if (stories.kind == Stories::Kind::none)
        RefuseUnknown(stories, question.place,
                      OtherSectionHint(desk.workspace.machine(), given, question));
    if (question.line > stories.line_count && !stories.error)
        throw RunError(ErrorKind::invalid_argument, "there is no line " + Decimal(question.line) +
                                                        ": " + stories.shown + " has " +
                                                        Counted(stories.line_count));
    const std::optional<RunError> error = stories.error;
    desk.report.stories = std::move(stories);
    desk.report.story_line = question.line;
    desk.report.is_story_long = question.line != 0 || question.find.has_value();
    if (error)
        throw RunError(*error);
}

} // namespace kiv
