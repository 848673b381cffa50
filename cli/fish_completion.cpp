#include "cli/call_table.h"
#include "cli/completion_words.h"
#include "cli/docs.h"

#include <string_view>

namespace kiv {

namespace {

/// Up to the global options that a value follows.
constexpr std::string_view kFishHead = R"(# fish completion for kiv-cli
# The command on the line, if one is there already; the value of an option is none.
function __kiv_cli_command
    set -l words (commandline --tokenize --current-process --cut-at-cursor)
    set -e words[1]
    while set -q words[1]
        switch $words[1]
            case )";

/// Up to the rows. Files are offered only where something takes them.
constexpr std::string_view kRows = R"fish(
                set -e words[1]
            case '-*'
            case '*'
                echo $words[1]
                return
        end
        set -e words[1]
    end
end
function __kiv_cli_behind
    test "$(__kiv_cli_command)" = "$argv[1]"
end
complete -c kiv-cli -f
)fish";

constexpr std::string_view kNoCommand = "''";

std::string Quoted(std::string_view text)
{
    return "'" + WithMarks(text, "\\'", '\\') + "'";
}

/// What completes a value.
std::string ValuePart(const OptionRow& row)
{
    std::string part;
    if (row.choices != nullptr)
        part.append(" -a ").append(Quoted(ChoiceWords(row)));
    else if (row.listed != nullptr)
        part.append(" -a '(__fish_complete_list , \"string split , ")
            .append(ListedWords(row, ","))
            .append("\")'");
    else if (row.takes == Takes::folder)
        part.append(" -a '(__fish_complete_directories)'");
    else if (row.takes == Takes::file)
        part.append(" -F");
    return part;
}

/// "--name" as a long option, "-0" as one of a single letter.
std::string Name(std::string_view name)
{
    return name.starts_with("--") ? " -l " + std::string(name.substr(2))
                                  : " -s " + std::string(name.substr(1));
}

/// A line for each option; `condition` says when it is offered, or is empty.
std::string OptionLines(std::string_view condition, std::span<const OptionRow> options)
{
    std::string lines;
    for (const OptionRow& row : options) {
        lines.append("complete -c kiv-cli").append(condition).append(Name(row.name));
        if (row.takes != Takes::nothing)
            lines.append(row.takes == Takes::file ? " -r" : " -x").append(ValuePart(row));
        lines.append(" -d ").append(Quoted(row.about)).append("\n");
    }
    return lines;
}

/// The condition that this command, or none when it is "''", is on the line already.
std::string Behind(std::string_view command)
{
    return " -n \"__kiv_cli_behind " + std::string(command) + "\"";
}

/// What is offered for the arguments of a command, whichever place they have.
std::string ArgumentLines(const CallRow& call)
{
    std::string lines;
    for (const OptionRow& argument : call.arguments)
        if (const std::string part = ValuePart(argument); !part.empty())
            lines.append("complete -c kiv-cli").append(Behind(call.name)).append(part).append("\n");
    return lines;
}

} // namespace

std::string FishCompletion()
{
    std::string script(kFishHead);
    script.append(GlobalOptionsWithValue(" "))
        .append(kRows)
        .append(OptionLines("", GlobalOptions()));
    for (const CallRow& call : Calls())
        script.append("complete -c kiv-cli")
            .append(Behind(kNoCommand))
            .append(" -a ")
            .append(call.name)
            .append(" -d ")
            .append(Quoted(call.about))
            .append("\n");
    for (const CallRow& call : Calls())
        script.append(OptionLines(Behind(call.name), call.options)).append(ArgumentLines(call));
    return script;
}

} // namespace kiv
