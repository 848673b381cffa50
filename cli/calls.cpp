#include "cli/calls.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace kiv {

namespace {

constexpr const char* kAbout =
    "kiv builds and maintains static websites: a folder of plain text becomes a section of pages.";

/// Stands before an argument that is a value whatever it begins with, so that it is not taken for an option.
constexpr char kValueMark = '\x01';

std::string Unmarked(std::string value)
{
    if (!value.empty() && value[0] == kValueMark)
        value.erase(0, 1);
    return value;
}

bool TakesValue(const CLI::App& app, const std::string& argument)
{
    const CLI::Option* const option = app.get_option_no_throw(argument);
    return option != nullptr && option->get_items_expected_max() > 0;
}

const CLI::App* CommandOf(const CLI::App& app, const std::string& name)
{
    const std::vector<const CLI::App*> found = app.get_subcommands(
        [&](const CLI::App* command) { return command->get_name() == name; });
    return found.empty() ? nullptr : found[0];
}

/// Only "--name" is an option: "-5" and "-" are values, an option's value is the next argument whatever it is, and "--"
/// ends the options.
std::vector<std::string> MarkValues(const CLI::App& app, const std::vector<std::string>& arguments)
{
    std::vector<std::string> marked;
    const CLI::App* current = &app;
    bool options_ended = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        const bool is_option = !options_ended && (argument.starts_with("--") || argument == "-h");
        if (is_option && argument == "--") {
            options_ended = true;
            continue;
        }
        if (!is_option && current == &app) {
            const CLI::App* const command = CommandOf(app, argument);
            if (command != nullptr) {
                current = command;
                marked.push_back(argument);
                continue;
            }
        }
        marked.push_back(is_option ? argument : kValueMark + argument);
        if (is_option && TakesValue(*current, argument) && i + 1 < arguments.size())
            marked.push_back(kValueMark + arguments[++i]);
    }
    return marked;
}

/// The exact form YYYY-MM-DDTHH:MM:SS.
std::optional<DateTime> ParseNow(const std::string& text)
{
    constexpr std::string_view kForm = "dddd-dd-ddTdd:dd:dd";
    if (text.size() != kForm.size())
        return std::nullopt;
    for (std::size_t i = 0; i < kForm.size(); ++i) {
        const bool digit = text[i] >= '0' && text[i] <= '9';
        if (kForm[i] == 'd' ? !digit : text[i] != kForm[i])
            return std::nullopt;
    }
    const auto number = [&](std::size_t from, std::size_t count) {
        return std::stoi(text.substr(from, count));
    };
    const DateTime now{number(0, 4),  number(5, 2),  number(8, 2),
                       number(11, 2), number(14, 2), number(17, 2)};
    const bool valid = now.year > 0 && now.month >= 1 && now.month <= 12 && now.day >= 1 &&
                       now.day <= 31 && now.hour < 24 && now.minute < 60 && now.second < 60;
    return valid ? std::optional(now) : std::nullopt;
}

/// The options before the command.
struct GlobalOptions {
    std::string drive_c;
    std::string now;
};

void AddGlobalOptions(CLI::App& app, Call& call, GlobalOptions& given)
{
    const auto last = CLI::MultiOptionPolicy::TakeLast;
    app.add_option("--drive-c", given.drive_c, "Native folder that stands for drive C:")
        ->type_name("DIR")
        ->multi_option_policy(last);
    app.add_option("--now", given.now, "The date and time that pages see")
        ->type_name("YYYY-MM-DDTHH:MM:SS")
        ->multi_option_policy(last);
    app.add_flag("--json", call.json, "Print one JSON object about the run");
    app.add_flag("--launch", call.launch, "Start the programs that the command starts");
    app.add_flag("--verbose", call.verbose, "Print the warnings that a build keeps back, too");
}

CLI::App* AddCommand(CLI::App& app, Call& call, const char* name, const char* about,
                     std::function<void(Workspace&)> run)
{
    CLI::App* const command = app.add_subcommand(name, about);
    command->callback([&call, run = std::move(run)] { call.run = run; });
    return command;
}

void AddDirectory(CLI::App& command, Call& call)
{
    command.add_option("DIR", call.directory, "The site's folder (default: the current directory)")
        ->type_name("");
}

void AddCommands(CLI::App& app, Call& call)
{
    const auto eoy = std::make_shared<bool>(false);
    CLI::App* const build =
        AddCommand(app, call, "build", "Build the pages of a site section (\"Do it!\")",
                   [eoy](Workspace& workspace) {
                       workspace.EoyEnabled = *eoy;
                       workspace.BuildWorkDir();
                   });
    AddDirectory(*build, call);
    build->add_flag("--eoy", *eoy, "Switch the New Year blocks on");
    AddDirectory(*AddCommand(app, call, "group",
                             "Build a site section and every folder of its _group.txt",
                             [](Workspace& workspace) { workspace.BuildGroup(); }),
                 call);
    AddDirectory(*AddCommand(app, call, "sitemap",
                             "Merge the site maps of a group into _sitemap-master.txt",
                             [](Workspace& workspace) { workspace.AssembleSiteMap(); }),
                 call);
}

ReadCall WrongCall(std::string what)
{
    std::erase(what, kValueMark);
    return {std::nullopt, "kiv: error: " + what + "\nTry: kiv-cli --help\n", 2};
}

} // namespace

ReadCall ReadArguments(const std::vector<std::string>& arguments)
{
    Call call;
    GlobalOptions given;
    CLI::App app(kAbout, "kiv-cli");
    app.set_help_flag("--help,-h", "Show this help");
    app.set_version_flag("--version", "kiv-cli " KIV_VERSION, "Show the version");
    app.require_subcommand(1);
    AddGlobalOptions(app, call, given);
    AddCommands(app, call);
    std::vector<std::string> marked = MarkValues(app, arguments);
    std::reverse(marked.begin(), marked.end()); // the library takes them from the back
    try {
        app.parse(std::move(marked));
    } catch (const CLI::CallForHelp&) {
        const std::vector<CLI::App*> chosen = app.get_subcommands();
        return {std::nullopt, chosen.empty() ? app.help() : chosen[0]->help(), 0};
    } catch (const CLI::CallForVersion&) {
        return {std::nullopt, "kiv-cli " KIV_VERSION "\n", 0};
    } catch (const CLI::ParseError& error) {
        return WrongCall(error.what());
    }
    call.directory = Unmarked(call.directory);
    if (!given.drive_c.empty())
        call.drive_c = Unmarked(given.drive_c);
    if (!given.now.empty()) {
        call.now = ParseNow(Unmarked(given.now));
        if (!call.now)
            return WrongCall("--now takes YYYY-MM-DDTHH:MM:SS, not " + Unmarked(given.now));
    }
    return {std::move(call), {}, 0};
}

} // namespace kiv
