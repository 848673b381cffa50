#include "cli/help.h"

#include <algorithm>
#include <array>

namespace kiv {

namespace {

constexpr std::size_t kWidth = 78;
constexpr std::size_t kColumn = 30; // where it is told what an option is for

#ifdef _WIN32
constexpr std::string_view kPaths =
    "Drives are the machine's own; --drive-c and the environment may put a folder in the place of "
    "one. / and \\ both separate folders, and names ignore case.";
constexpr std::string_view kEnvironment =
    "KIV_DRIVE_X: a folder that stands for drive X, for any letter but Z; --drive-c beats "
    "KIV_DRIVE_C. KIV_THREADS: how many threads may write pages.";
constexpr std::string_view kManual = "manual\\index.htm in the folder that kiv is installed in. "
                                     "The start menu and the window's menu "
                                     "\"Site\" open it in the browser.";
#else
constexpr std::string_view kPaths =
    "A path is a native one or a path with a drive. Z: is the root folder, C: holds the settings "
    "(C:\\utils) and lies in the user's data folder unless told otherwise. / and \\ both part "
    "folders, and names ignore case.";
constexpr std::string_view kEnvironment =
    "KIV_DRIVE_C: the folder of drive C:, when --drive-c is not given; else it is kiv/drive_c in "
    "XDG_DATA_HOME or ~/.local/share. KIV_DRIVE_X: the folder of drive X, for any other letter "
    "but Z. KIV_THREADS: how many threads may write pages.";
constexpr std::string_view kManual =
    "share/doc/kiv/manual/index.htm below the folder that kiv is installed in, /usr for packages. "
    "The window's menu \"Site\" opens it in the browser.";
#endif

constexpr std::array kTopics = std::to_array<Topic>({
    {"Arguments",
     "Options may stand anywhere; those of a command come after its name. --name=value and --name "
     "value are the same, and of an option that is given twice the last counts. What begins with - "
     "and is no number is an option; after -- everything is an argument."},
    {"Paths", kPaths},
    {"Output",
     "Plain: the final status on standard output and what a build has changed, or the result of "
     "convert, dimensions and reference; warnings and errors on standard error as PATH:LINE: "
     "warning: TEXT, with the source line below; what has no place begins with kiv:. Past 50 "
     "warnings the others are counted. On a terminal the words are in colour, unless NO_COLOR is "
     "set. With --json: one object with the keys status, messages, error, files, written, launched "
     "and warnings, and members, renamed, lines, findings, external, adoption or result where "
     "there is one.\n\n"
     "Without --launch no program is started; the report lists what would have been. A dry run "
     "prints the renames and touches nothing; it fails where the renaming would."},
    {"Exit status",
     "0 done; 1 a fatal error of the run; 2 a wrong call, nothing was touched; 3 there was a "
     "warning, and --strict was given, or check or encode --check found what it fails on."},
    {"Environment", kEnvironment},
    {"Files",
     "C:\\utils\\kiv_editpad.txt: the editor command. C:\\utils\\ftplist.txt: the upload list. "
     "C:\\utils\\kivaddr.ini: addresses in generated pages. C:\\utils\\kivnews.ini: the sites of "
     "the news composer."},
    {"Manual", kManual},
});

void AddEntry(std::string& help, std::string_view name, std::string_view about)
{
    std::string line = "  " + std::string(name);
    line.append(line.size() + 2 > kColumn ? 2 : kColumn - line.size(), ' ');
    help.append(line).append(about).append("\n");
}

void AddOptions(std::string& help, std::string_view heading, std::span<const OptionRow> rows)
{
    if (rows.empty())
        return;
    help.append("\n").append(heading).append(":\n");
    for (const OptionRow& row : rows)
        AddEntry(help, WithValue(row), AboutOption(row));
}

std::string ProgramHelp()
{
    std::string help = Wrapped(kAbout, kWidth);
    help.append("Usage: kiv-cli [OPTIONS] COMMAND ...\n");
    AddOptions(help, "Options", GlobalOptions());
    help.append("\nCommands:\n");
    for (const CallRow& row : Calls())
        AddEntry(help, row.name, row.about);
    for (const Topic& topic : Topics())
        help.append("\n").append(topic.heading).append(":\n").append(Wrapped(topic.text, kWidth));
    return help.append("\nkiv-cli COMMAND --help tells more about a command.\n");
}

std::string CommandHelp(const CallRow& row)
{
    std::string help = Wrapped(row.about, kWidth);
    help.append(Wrapped("Usage: kiv-cli [OPTIONS] " + Synopsis(row), kWidth));
    AddOptions(help, "Arguments", row.arguments);
    AddOptions(help, "Options", row.options);
    help.append("\n").append(Wrapped(row.details, kWidth));
    if (row.names != nullptr) {
        help.append("\nNames:\n");
        for (const HelpEntry& entry : row.names())
            AddEntry(help, entry.name, entry.about);
    }
    help.append("\nExample:\n").append(Example(row));
    return help.append("\nkiv-cli --help tells the options that go with every command.\n");
}

} // namespace

std::span<const Topic> Topics()
{
    return kTopics;
}

std::string HelpText(const CallRow* row)
{
    return row == nullptr ? ProgramHelp() : CommandHelp(*row);
}

std::string Synopsis(const CallRow& row)
{
    std::string synopsis(row.name);
    for (const std::span<const OptionRow> rows : {row.arguments, row.options})
        for (const OptionRow& option : rows) {
            if (option.excludes.empty())
                synopsis.append(option.required ? " " : " [").append(WithValue(option));
            else
                synopsis.replace(synopsis.size() - 1, 1, " | ").append(WithValue(option));
            synopsis.append(option.required ? "" : "]");
        }
    return synopsis;
}

std::string WithValue(const OptionRow& row)
{
    std::string option(row.name);
    if (!row.value.empty())
        option.append(" ").append(row.value);
    return option;
}

std::string AboutOption(const OptionRow& row)
{
    std::string about(row.about);
    if (row.choices == nullptr)
        return about;
    std::string_view before = ": ";
    for (const std::string_view choice : row.choices()) {
        about.append(before).append(choice);
        before = ", ";
    }
    return about;
}

std::string Example(const CallRow& row)
{
    std::string example = "  " + std::string(row.example) + "\n";
    for (std::size_t at = example.find('\n'); at + 1 < example.size();
         at = example.find('\n', at + 1))
        example.insert(at + 1, "  ");
    return example;
}

std::string Wrapped(std::string_view text, std::size_t width)
{
    std::string lines;
    while (!text.empty()) {
        std::size_t end = text.find('\n');
        std::size_t next = end == std::string_view::npos ? text.size() : end + 1;
        end = std::min(end, text.size());
        if (end > width) {
            end = text.rfind(' ', width);
            next = end + 1;
        }
        lines.append(text.substr(0, end)).append("\n");
        text.remove_prefix(next);
    }
    return lines;
}

} // namespace kiv
