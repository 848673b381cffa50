#include "cli/call_table.h"
#include "cli/completion_words.h"
#include "cli/docs.h"

#include <string_view>

namespace kiv {

namespace {

/// The completion up to the global options that take a value. "--mode=r" comes as three words.
constexpr std::string_view kBashHead = R"(# bash completion for kiv-cli
_kiv_cli_paths()
{
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen "$1" -- "$2")
}
_kiv_cli_words()
{
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$2")
}
_kiv_cli_list()
{
    local before=
    [[ $2 == *,* ]] && before=${2%,*},
    compopt -o nospace 2>/dev/null # a comma may follow
    mapfile -t COMPREPLY < <(compgen -P "$before" -W "$1" -- "${2##*,}")
}
_kiv_cli()
{
    local current=${COMP_WORDS[COMP_CWORD]} last=$((COMP_CWORD - 1))
    local command= options= paths= values= word at
    COMPREPLY=()
    if [ "$current" = = ]; then
        current=
    elif [ "${COMP_WORDS[last]}" = = ]; then
        last=$((last - 1))
    fi
    for ((at = 1; at < COMP_CWORD; at++)); do
        word=${COMP_WORDS[at]}
        case $word in
            )";

/// Up to the rows of options and their values.
constexpr std::string_view kValues = R"()
                [ "${COMP_WORDS[at+1]}" = = ] && at=$((at + 1))
                at=$((at + 1)) ;;
            -*) ;;
            *) command=$word; break ;;
        esac
    done
    case "$command ${COMP_WORDS[last]}" in
)";

/// Up to the rows of commands.
constexpr std::string_view kCommands = R"(    esac
    case $command in
)";

constexpr std::string_view kTail = R"(    esac
    if [[ $current == -* ]]; then
        _kiv_cli_words "$options" "$current"
    elif [ -n "$paths" ]; then
        _kiv_cli_paths "$paths" "$current"
    else
        _kiv_cli_words "$values" "$current"
    fi
}
complete -F _kiv_cli kiv-cli
)";

/// What the shell lists for a path: "-d" folders, "-f" files, "" nothing.
std::string_view PathsFor(const OptionRow& row)
{
    return row.takes == Takes::folder ? "-d" : row.takes == Takes::file ? "-f" : "";
}

/// What is offered for the value of each option; `command` is the pattern of the command.
std::string ValueRows(std::string_view command, std::span<const OptionRow> options)
{
    std::string rows;
    for (const OptionRow& row : options) {
        if (row.takes == Takes::nothing)
            continue;
        rows.append("        ").append(command).append("\" ").append(row.name).append("\") ");
        if (row.choices != nullptr)
            rows.append("_kiv_cli_words \"").append(ChoiceWords(row)).append("\" \"$current\"; ");
        else if (row.listed != nullptr)
            rows.append("_kiv_cli_list \"").append(ListedWords(row)).append("\" \"$current\"; ");
        else if (!PathsFor(row).empty())
            rows.append("_kiv_cli_paths ").append(PathsFor(row)).append(" \"$current\"; ");
        rows.append("return ;;\n");
    }
    return rows;
}

std::string OptionWords(std::span<const OptionRow> options)
{
    std::string words;
    for (const std::span<const OptionRow> rows : {options, GlobalOptions()})
        for (const OptionRow& row : rows)
            AddWord(words, row.name);
    return words;
}

/// What is offered behind a command.
std::string CommandRow(const CallRow& call)
{
    std::string row = "        " + std::string(call.name) + ") options=\"";
    row.append(OptionWords(call.options)).append("\"");
    for (const OptionRow& argument : call.arguments)
        if (argument.choices != nullptr)
            row.append(" values=\"").append(ChoiceWords(argument)).append("\"");
        else if (!PathsFor(argument).empty())
            row.append(" paths=").append(PathsFor(argument));
    return row.append(" ;;\n");
}

} // namespace

std::string BashCompletion()
{
    std::string names;
    std::string value_rows = ValueRows("*", GlobalOptions());
    std::string command_rows;
    for (const CallRow& call : Calls()) {
        AddWord(names, call.name);
        value_rows += ValueRows(call.name, call.options);
        command_rows += CommandRow(call);
    }
    std::string script(kBashHead);
    script.append(GlobalOptionsWithValue("|")).append(kValues).append(value_rows).append(kCommands);
    script.append("        \"\") options=\"").append(OptionWords({}));
    script.append("\" values=\"").append(names).append("\" ;;\n").append(command_rows);
    return script.append(kTail);
}

} // namespace kiv
