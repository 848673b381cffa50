#include "cli/manual.h"

#include "cli/call_definitions.h"
#include "cli/call_texts.h"
#include "utilities/conversions.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv {

namespace {

constexpr std::string_view kManualDate = "2026-11-21"; // of the texts, whatever day it is made

/// The definitions, filled by no call.
struct Definitions {
    Definitions() { DefineCalls(app, call, given); }

    std::vector<const CLI::App*> Commands() const
    {
        return std::as_const(app).get_subcommands([](const CLI::App*) { return true; });
    }

    CLI::App app;
    Call call;
    GlobalOptions given;
};

/// Text with what roff would read as its own made plain.
std::string Roff(std::string_view text)
{
    std::string plain;
    bool line_start = true;
    for (const char c : text) {
        if (c == '\\')
            plain += "\\e";
        else if (c == '-')
            plain += "\\-";
        else if (c == '\'')
            plain += "\\(aq"; // straight, to be copied
        else if (c == '~')
            plain += "\\(ti";
        else if (line_start && c == '.')
            plain += "\\&.";
        else
            plain += c;
        line_start = c == '\n';
    }
    return plain;
}

/// Short enough to be read in the source, with what is made plain.
std::string Lines(std::string_view text)
{
    return Roff(Wrapped(text, 72));
}

void AddParagraphs(std::string& page, std::string_view text)
{
    bool is_first = true;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find("\n\n"), text.size());
        page.append(is_first ? "" : ".PP\n").append(Lines(text.substr(0, end)));
        is_first = false;
        text.remove_prefix(std::min(end + 2, text.size()));
    }
}

/// Whether the options of a command hold it; help and version are the program's.
bool IsListed(const CLI::App& app, const CLI::Option& option)
{
    return app.get_parent() == nullptr || &option != app.get_help_ptr();
}

void AddOptions(std::string& page, const CLI::App& app)
{
    for (const CLI::Option* option : app.get_options()) {
        if (!IsListed(app, *option))
            continue;
        const bool positional = option->get_positional();
        page.append(".TP\n\\fB").append(Roff(option->get_name(positional, true))).append("\\fR");
        if (!positional && !option->get_type_name().empty() && option->get_items_expected_max() > 0)
            page.append(" \\fI").append(Roff(option->get_type_name())).append("\\fR");
        page.append("\n").append(Roff(option->get_description())).append("\n");
    }
}

std::string UpperHeading(std::string_view heading)
{
    std::string upper(heading);
    for (char& c : upper)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return upper;
}

/// The option words of an app, with a blank between.
std::string OptionWords(const CLI::App& app)
{
    std::string words;
    for (const CLI::Option* option : app.get_options())
        for (const std::string& name : option->get_lnames())
            words.append(words.empty() ? "--" : " --").append(name);
    return words;
}

bool TakesValue(const CLI::Option& option)
{
    return option.nonpositional() && option.get_items_expected_max() > 0;
}

/// The patterns of a shell's `case` for the options of these apps that take a value, of `type`
/// alone unless that is empty.
std::string ValueOptions(const std::vector<const CLI::App*>& apps, std::string_view type)
{
    std::string patterns;
    for (const CLI::App* app : apps)
        for (const CLI::Option* option : app->get_options())
            if (TakesValue(*option) && (type.empty() || option->get_type_name() == type))
                for (const std::string& name : option->get_lnames())
                    patterns.append(patterns.empty() ? "--" : "|--").append(name);
    return patterns;
}

std::string ModeWords()
{
    std::string words = "ptop";
    for (const ConversionMode& row : ConversionModes())
        if (!row.mode.empty())
            words.append(" ").append(row.mode);
    return words;
}

/// The words of each command for the completion's last "case".
std::string CompletionRows(const std::vector<const CLI::App*>& commands)
{
    std::string rows;
    for (const CLI::App* command : commands) {
        rows.append("        ").append(command->get_name()).append(") options=\"");
        rows.append(OptionWords(*command)).append("\"");
        if (command->get_option_no_throw("DIR") != nullptr)
            rows.append(" folders=yes");
        if (command->get_option_no_throw("SECTION") != nullptr)
            rows.append(" values=\"1 2 3 4\"");
        rows.append(" ;;\n");
    }
    return rows;
}

/// The completion up to the options that take a value. "--mode=r" comes as three words.
constexpr std::string_view kCompletionHead = R"(# bash completion for kiv-cli
_kiv_cli_paths()
{
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen "$1" -- "$2")
}
_kiv_cli_words()
{
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$2")
}
_kiv_cli()
{
    local current=${COMP_WORDS[COMP_CWORD]} last=$((COMP_CWORD - 1))
    local before= command= options= folders= values= word at
    COMPREPLY=()
    if [ "$current" = = ]; then
        current=
    elif [ "${COMP_WORDS[last]}" = = ]; then
        last=$((last - 1))
    fi
    before=${COMP_WORDS[last]}
    for ((at = 1; at < COMP_CWORD; at++)); do
        word=${COMP_WORDS[at]}
        case $word in
            )";

} // namespace

std::string ManualPage()
{
    const Definitions definitions;
    std::string page = ".TH KIV\\-CLI 1 ";
    page.append(kManualDate).append(" \"kiv " KIV_VERSION "\" \"User Commands\"\n.SH NAME\n");
    page.append(Roff(kProgram)).append(" \\- ").append(Roff(kSummary));
    page.append("\n.SH SYNOPSIS\n.B kiv\\-cli\n[\\fIOPTIONS\\fR] \\fICOMMAND\\fR ...\n");
    page.append(".SH DESCRIPTION\n").append(Lines(kAbout)).append(".SH OPTIONS\n");
    AddOptions(page, definitions.app);
    page.append(".SH COMMANDS\n");
    for (const CLI::App* command : definitions.Commands()) {
        const CommandText& text = TextOf(command->get_name());
        page.append(".SS \"").append(Roff(text.name)).append(" ").append(Roff(text.synopsis));
        page.append("\"\n").append(Lines(std::string(text.about) + "."));
        page.append(Lines(text.details));
        AddOptions(page, *command);
    }
    for (const Topic& topic : Topics()) {
        page.append(".SH \"").append(UpperHeading(topic.heading)).append("\"\n");
        AddParagraphs(page, topic.text);
    }
    return page;
}

std::string BashCompletion()
{
    const Definitions definitions;
    std::vector<const CLI::App*> apps = definitions.Commands();
    const std::string rows = CompletionRows(apps);
    std::string names;
    for (const CLI::App* command : apps)
        names.append(names.empty() ? "" : " ").append(command->get_name());
    apps.push_back(&definitions.app);
    const std::string value_options = ValueOptions(apps, "");
    std::string script(kCompletionHead);
    script.append(ValueOptions({&definitions.app}, "")).append(R"()
                [ "${COMP_WORDS[at+1]}" = = ] && at=$((at + 1))
                at=$((at + 1)) ;;
            -*) ;;
            *) command=$word; break ;;
        esac
    done
    case $before in
        )");
    script.append(ValueOptions(apps, "DIR")).append(R"() _kiv_cli_paths -d "$current"; return ;;
        )");
    script.append(ValueOptions(apps, "FILE")).append(R"() _kiv_cli_paths -f "$current"; return ;;
        )");
    script.append(ValueOptions(apps, "MODE")).append(R"() _kiv_cli_words ")");
    script.append(ModeWords()).append(R"(" "$current"; return ;;
        )");
    script.append(value_options).append(R"() return ;;
    esac
    case $command in
        "") options=")");
    script.append(OptionWords(definitions.app)).append("\" values=\"").append(names);
    script.append("\" ;;\n").append(rows).append(R"(    esac
    if [[ $current == -* ]]; then
        _kiv_cli_words "$options" "$current"
    elif [ -n "$folders" ]; then
        _kiv_cli_paths -d "$current"
    else
        _kiv_cli_words "$values" "$current"
    fi
}
complete -F _kiv_cli kiv-cli
)");
    return script;
}

} // namespace kiv
