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
        else if (line_start && (c == '.' || c == '\''))
            plain.append("\\&").append(1, c);
        else
            plain += c;
        line_start = c == '\n';
    }
    return plain;
}

void AddParagraphs(std::string& page, std::string_view text)
{
    while (!text.empty()) {
        const std::size_t end = std::min(text.find("\n\n"), text.size());
        page.append(".PP\n").append(Roff(text.substr(0, end))).append("\n");
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

/// The patterns of a `case` for the options that take a value of `type`, over all commands.
std::string OptionsOfType(const Definitions& definitions, std::string_view type)
{
    std::string patterns;
    std::vector<const CLI::App*> apps = definitions.Commands();
    apps.push_back(&definitions.app);
    for (const CLI::App* app : apps)
        for (const CLI::Option* option : app->get_options())
            if (option->nonpositional() && option->get_type_name() == type)
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

} // namespace

std::string ManualPage()
{
    const Definitions definitions;
    std::string page = ".TH KIV\\-CLI 1 \"\" \"kiv " KIV_VERSION "\" \"User Commands\"\n.SH NAME\n";
    page.append(Roff(kProgram)).append(" \\- ").append(Roff(kSummary));
    page.append("\n.SH SYNOPSIS\n.B kiv\\-cli\n[\\fIOPTIONS\\fR] \\fICOMMAND\\fR ...\n");
    page.append(".SH DESCRIPTION\n").append(Roff(kAbout)).append("\n.SH OPTIONS\n");
    AddOptions(page, definitions.app);
    page.append(".SH COMMANDS\n");
    for (const CLI::App* command : definitions.Commands()) {
        const CommandText& text = TextOf(command->get_name());
        page.append(".SS \"").append(Roff(text.name)).append(" ").append(Roff(text.synopsis));
        page.append("\"\n").append(Roff(text.about)).append(".\n");
        page.append(Roff(text.details)).append("\n");
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
    std::string names;
    std::string rows;
    for (const CLI::App* command : definitions.Commands()) {
        names.append(names.empty() ? "" : " ").append(command->get_name());
        rows.append("        ").append(command->get_name()).append(") options=\"");
        rows.append(OptionWords(*command)).append("\" ;;\n");
    }
    std::string script =
        "# bash completion for kiv-cli\n"
        "_kiv_cli()\n{\n"
        "    local current=${COMP_WORDS[COMP_CWORD]} before= command= options word at\n"
        "    COMPREPLY=()\n"
        "    [ \"$COMP_CWORD\" -gt 0 ] && before=${COMP_WORDS[COMP_CWORD-1]}\n"
        "    for ((at = 1; at < COMP_CWORD; at++)); do\n"
        "        word=${COMP_WORDS[at]}\n"
        "        case \" ";
    script.append(names).append(" \" in *\" $word \"*) command=$word; break ;; esac\n    done\n");
    script.append("    case $before in\n");
    script.append("        ").append(OptionsOfType(definitions, "DIR"));
    script.append(") mapfile -t COMPREPLY < <(compgen -d -- \"$current\"); return ;;\n        ");
    script.append(OptionsOfType(definitions, "FILE"));
    script.append(") mapfile -t COMPREPLY < <(compgen -f -- \"$current\"); return ;;\n        ");
    script.append(OptionsOfType(definitions, "MODE"));
    script.append(") mapfile -t COMPREPLY < <(compgen -W \"").append(ModeWords());
    script.append("\" -- \"$current\"); return ;;\n    esac\n    case $command in\n");
    script.append("        \"\") options=\"").append(OptionWords(definitions.app));
    script.append(" ").append(names).append("\" ;;\n").append(rows).append("    esac\n");
    script.append("    if [ -z \"$command\" ] || [[ $current == -* ]]; then\n"
                  "        mapfile -t COMPREPLY < <(compgen -W \"$options\" -- \"$current\")\n"
                  "    else\n"
                  "        mapfile -t COMPREPLY < <(compgen -d -- \"$current\")\n"
                  "    fi\n}\ncomplete -o filenames -F _kiv_cli kiv-cli\n");
    return script;
}

} // namespace kiv
