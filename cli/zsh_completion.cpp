#include "cli/call_table.h"
#include "cli/completion_words.h"
#include "cli/docs.h"

#include <string_view>

namespace kiv {

namespace {

/// Up to the rows of global options. They go with every command, too.
constexpr std::string_view kZshHead = R"(#compdef kiv-cli
# zsh completion for kiv-cli
_kiv-cli_commands()
{
    local -a commands=(
)";

/// Up to the rows of commands. The word of the command and those behind it are completed as a line
/// of their own.
constexpr std::string_view kGlobal = R"(    )
    _describe -t commands command commands
}
_kiv-cli()
{
    local curcontext=$curcontext state line
    local -A opt_args
    local -a global=(
)";

constexpr std::string_view kZshCommands = R"(    )
    _arguments -C $global '1: :_kiv-cli_commands' '*:: :->rest' && return
    [[ $state == rest ]] || return 1
    case $line[1] in
)";

constexpr std::string_view kZshTail = R"(    esac
}
_kiv-cli "$@"
)";

/// A word of the shell, whatever is in `text`.
std::string ZshQuoted(std::string_view text)
{
    std::string word = "'";
    for (const char c : text)
        word.append(c == '\'' ? "'\\''" : std::string(1, c));
    return word + "'";
}

/// Text that stands where a colon or a bracket would end it.
std::string Plain(std::string_view text)
{
    return WithMarks(text, "\\:[]", '\\');
}

/// What completes a value: ":MESSAGE:ACTION".
std::string ValuePart(std::string_view name, const OptionRow& row)
{
    std::string part = ":" + Plain(name) + ":";
    if (row.choices != nullptr)
        part.append("(").append(ChoiceWords(row)).append(")");
    else if (row.listed != nullptr)
        part.append("_sequence compadd - ").append(ListedWords(row));
    else if (row.takes == Takes::folder)
        part.append("_files -/");
    else if (row.takes == Takes::file)
        part.append("_files");
    return part;
}

/// The options that `row` cannot stand with, in brackets.
std::string Excluded(const OptionRow& row, std::span<const OptionRow> all)
{
    std::string names(row.excludes);
    for (const OptionRow& other : all)
        if (other.excludes == row.name)
            AddWord(names, other.name);
    return names.empty() ? names : "(" + names + ")";
}

std::string OptionLines(std::string_view indent, std::span<const OptionRow> options,
                        std::string_view end)
{
    std::string lines;
    for (const OptionRow& row : options) {
        std::string spec = Excluded(row, options);
        spec.append(row.name).append(row.takes == Takes::nothing ? "" : "=");
        spec.append("[").append(Plain(row.about)).append("]");
        if (row.takes != Takes::nothing)
            spec += ValuePart(row.value, row);
        lines.append(indent).append(ZshQuoted(spec)).append(end);
    }
    return lines;
}

/// What is completed behind a command.
std::string CommandCase(const CallRow& call)
{
    std::string lines = "        " + std::string(call.name) + ")\n            _arguments $global";
    lines += OptionLines(" \\\n                ", call.options, "");
    int place = 0;
    for (const OptionRow& argument : call.arguments)
        lines.append(" \\\n                ")
            .append(ZshQuoted(std::to_string(++place) + ":" + ValuePart(argument.name, argument)));
    return lines + " ;;\n";
}

} // namespace

std::string ZshCompletion()
{
    std::string script(kZshHead);
    for (const CallRow& call : Calls())
        script.append("        ")
            .append(ZshQuoted(std::string(call.name) + ":" + Plain(call.about)))
            .append("\n");
    script.append(kGlobal)
        .append(OptionLines("        ", GlobalOptions(), "\n"))
        .append(kZshCommands);
    for (const CallRow& call : Calls())
        script += CommandCase(call);
    return script.append(kZshTail);
}

} // namespace kiv
