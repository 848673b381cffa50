#include "cli/call_definitions.h"

#include "cli/call_texts.h"

#include <memory>
#include <string_view>
#include <utility>

namespace kiv {

namespace {

constexpr std::size_t kWidth = 78;

std::string ProgramFooter()
{
    std::string footer;
    for (const Topic& topic : Topics())
        footer.append(topic.heading).append(":\n").append(Wrapped(topic.text, kWidth)).append("\n");
    return footer + "kiv-cli COMMAND --help tells more about a command.";
}

/// Help with the calls as they are written.
class HelpFormatter : public CLI::Formatter {
  public:
    HelpFormatter()
    {
        label("Positionals", "Arguments");
        label("REQUIRED", ""); // the usage line shows it
        column_width(36);
    }

    std::string make_usage(const CLI::App* app, std::string) const override
    {
        const std::string start = std::string("Usage: ") + kProgram + " [OPTIONS] ";
        if (app->get_parent() == nullptr)
            return start + "COMMAND ...\n";
        return Wrapped(
            start + app->get_name() + " " + std::string(TextOf(app->get_name()).synopsis), kWidth);
    }

    /// The value alone: the usage line shows what goes with what.
    std::string make_option_opts(const CLI::Option* option) const override
    {
        const bool has_value = option->get_items_expected_max() > 0;
        const std::string type = option->get_type_name();
        return has_value && !type.empty() ? " " + type : "";
    }
};

} // namespace

std::string Unmarked(std::string value)
{
    if (!value.empty() && value[0] == kValueMark)
        value.erase(0, 1);
    return value;
}

CLI::App* AddCommand(CLI::App& app, const char* name, std::function<void()> take)
{
    const CommandText& text = TextOf(name);
    CLI::App* const command = app.add_subcommand(name, std::string(text.about));
    std::string details = Wrapped(text.details, kWidth);
    details.pop_back();
    command->footer(std::move(details));
    command->group("Commands");
    command->callback(std::move(take));
    return command;
}

CLI::Option* AddArgument(CLI::App& command, const char* name, std::string& value, const char* about)
{
    return command.add_option(name, value, about)->type_name("")->transform(Unmarked, "", "");
}

void AddDirectory(CLI::App& command, Call& call)
{
    AddArgument(command, "DIR", call.directory, "The site's folder (default: the current one)");
}

CLI::Option* AddValue(CLI::App& command, const char* name, std::string& value, const char* type,
                      const char* about)
{
    return command.add_option(name, value, about)
        ->type_name(type)
        ->transform(Unmarked, "", "")
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

CLI::Option* AddSwitch(CLI::App& command, const char* name, bool& value, const char* about)
{
    return command.add_flag(name, value, about)->disable_flag_override();
}

void DefineCalls(CLI::App& app, Call& call, GlobalOptions& given)
{
    app.name(kProgram);
    app.description(kAbout);
    app.formatter(std::make_shared<HelpFormatter>());
    app.footer(ProgramFooter());
    app.set_help_flag("--help,-h", "Show this help");
    app.set_version_flag("--version", KIV_VERSION, "Show the version");
    app.require_subcommand(1);
    AddValue(app, "--drive-c", given.drive_c, "DIR", "Native folder that stands for drive C:");
    AddValue(app, "--now", given.now, "YYYY-MM-DDTHH:MM:SS", "The date and time that pages see");
    AddSwitch(app, "--json", call.json, "Print one JSON object about the run");
    AddSwitch(app, "--launch", call.launch, "Start the programs that the command starts");
    AddSwitch(app, "--verbose", call.verbose, "Print the warnings that a build keeps back, too");
    AddSiteCommands(app, call);
    AddTextCommands(app, call);
    AddNameCommands(app, call);
    AddNewsCommand(app, call);
}

} // namespace kiv
