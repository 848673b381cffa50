#include "platform/command_lines.h"

#include "platform/drive_path.h"
#include "text/text.h"

#include <algorithm>
#include <utility>

namespace kiv {

namespace {

bool IsBlank(char c)
{
    return c == ' ' || c == '\t';
}

std::size_t SkipBlanks(std::string_view text, std::size_t at)
{
    while (at < text.size() && IsBlank(text[at]))
        ++at;
    return at;
}

/// The word that begins at `at`, which is moved behind it.
std::string TakeWord(std::string_view line, std::size_t& at)
{
    std::string word;
    bool quoted = false;
    while (at < line.size() && (quoted || !IsBlank(line[at]))) {
        const std::size_t end = std::min(line.find_first_not_of('\\', at), line.size());
        const std::size_t backslashes = end - at;
        at = end;
        const bool before_quote = at < line.size() && line[at] == '"';
        word.append(before_quote ? backslashes / 2 : backslashes, '\\');
        if (before_quote) {
            if (backslashes % 2 == 1)
                word.push_back('"');
            else
                quoted = !quoted;
            ++at;
        } else if (backslashes == 0) {
            word.push_back(line[at++]);
        }
    }
    return word;
}

/// The program when the line begins with a quote at `at`; `at` is moved behind the closing quote.
std::string TakeQuotedProgram(std::string_view line, std::size_t& at)
{
    const std::size_t begin = at + 1;
    const std::size_t end = std::min(line.find('"', begin), line.size());
    at = std::min(end + 1, line.size());
    return std::string(line.substr(begin, end - begin));
}

} // namespace

std::vector<std::string> CutArguments(std::string_view arguments)
{
    std::vector<std::string> words;
    for (std::size_t at = SkipBlanks(arguments, 0); at < arguments.size();
         at = SkipBlanks(arguments, at))
        words.push_back(TakeWord(arguments, at));
    return words;
}

std::vector<ProgramReading> ProgramReadings(std::string_view command_line)
{
    std::vector<ProgramReading> readings;
    std::size_t begin = SkipBlanks(command_line, 0);
    if (begin == command_line.size())
        return readings;
    if (command_line[begin] == '"') {
        std::string program = TakeQuotedProgram(command_line, begin);
        readings.push_back({std::move(program), SkipBlanks(command_line, begin)});
        return readings;
    }
    for (std::size_t at = begin; at < command_line.size();) {
        const std::size_t end =
            std::min(command_line.find_first_of(" \t", at), command_line.size());
        at = SkipBlanks(command_line, end);
        readings.push_back({std::string(command_line.substr(begin, end - begin)), at});
    }
    return readings;
}

std::optional<std::string> ExplorerFolder(const Launch& launch)
{
    const std::string_view command = Trim(launch.command);
    const std::string_view program = Before(command, ' ');
    if (!EqualsNoCase(program, "explorer") && !EqualsNoCase(program, "explorer.exe"))
        return std::nullopt;
    if (!launch.file.empty())
        return launch.file;
    std::string_view folder = Trim(command.substr(program.size()));
    if (folder.size() >= 2 && folder.front() == '"' && folder.back() == '"')
        folder = folder.substr(1, folder.size() - 2);
    return std::string(folder);
}

bool IsDrivePath(std::string_view word)
{
    return HasDrive(word) && word.size() > 2 && IsSeparator(word[2]);
}

} // namespace kiv
