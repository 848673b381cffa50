// The one unit that knows the argument library. It defines the rows of the table of calls in it,
// and words what is wrong with a call.
#include "cli/arguments.h"

#include "cli/help.h"
#include "cli/values.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <algorithm>
#include <utility>

namespace kiv {

namespace {

using Words = std::vector<std::string>;

/// A place behind the last argument: with none left, the library would read on behind "--" as if it
/// were not there.
constexpr const char* kSurplus = "SURPLUS";

void DefineOption(CLI::App& app, const OptionRow& row)
{
    const std::string name(row.name);
    if (name == "--help") {
        app.set_help_flag("--help,-h");
        return;
    }
    if (name == "--version") {
        app.set_version_flag(name, KIV_VERSION);
        return;
    }
    CLI::Option* const option =
        row.takes == Takes::nothing ? app.add_flag(name) : app.add_option(name);
    option->required(row.required);
    if (row.takes != Takes::nothing)
        option->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    if (!row.excludes.empty())
        option->excludes(app.get_option(std::string(row.excludes)));
}

/// Whether an argument is required is not the library's business: DIR may be left out though others
/// behind it may not.
void DefineCall(CLI::App& app, const CallRow& row)
{
    CLI::App* const command = app.add_subcommand(std::string(row.name));
    for (const OptionRow& argument : row.arguments)
        command->add_option(std::string(argument.name));
    command->add_option(kSurplus);
    for (const OptionRow& option : row.options)
        DefineOption(*command, option);
}

void DefineCalls(CLI::App& app)
{
    app.require_subcommand(1);
    app.fallthrough();                      // global options may stand behind the command
    app.allow_windows_style_options(false); // "/site" is a path
    for (const OptionRow& option : GlobalOptions())
        DefineOption(app, option);
    for (const CallRow& row : Calls())
        DefineCall(app, row);
}

bool TakesAValue(std::string_view name)
{
    const auto is_it = [&](const OptionRow& row) {
        return row.name == name && row.takes != Takes::nothing;
    };
    const auto has_it = [&](const CallRow& call) {
        return std::any_of(call.options.begin(), call.options.end(), is_it);
    };
    return std::any_of(GlobalOptions().begin(), GlobalOptions().end(), is_it) ||
           std::any_of(Calls().begin(), Calls().end(), has_it);
}

/// The arguments, last first, as the library takes them. "--name=" becomes "--name" and an empty
/// value, for which the library would take the next argument; "++", with which it would end the
/// command, is refused.
Words ForLibrary(const Words& arguments)
{
    Words words;
    bool is_value = false;
    for (auto at = arguments.begin(); at != arguments.end(); ++at) {
        if (*at == "--" && !is_value) {
            words.insert(words.end(), at, arguments.end());
            break;
        }
        if (*at == "++" && !is_value)
            throw CLI::ValidationError("++ is no option; if it is a value, put -- before it");
        const std::string name = at->substr(0, at->size() - (at->ends_with('=') ? 1 : 0));
        const bool is_option = !is_value && TakesAValue(name);
        is_value = is_option && name == *at;
        words.push_back(is_option ? name : *at);
        if (is_option && !is_value)
            words.emplace_back();
    }
    std::reverse(words.begin(), words.end());
    return words;
}

const CLI::App* CommandOf(const CLI::App& app)
{
    const std::vector<CLI::App*> chosen = app.get_subcommands();
    return chosen.empty() ? nullptr : chosen[0];
}

const CallRow* RowOf(const CLI::App* command)
{
    for (const CallRow& row : Calls())
        if (command != nullptr && row.name == command->get_name())
            return &row;
    return nullptr;
}

void TakeValue(const OptionRow& row, const std::string& value, GivenValues& given)
{
    if (const std::string fault = ValueFault(row, value); !fault.empty())
        throw CLI::ValidationError(fault);
    given.Set(row.name, value);
}

void TakeOption(const CLI::App& app, const OptionRow& row, GivenValues& given)
{
    const CLI::Option* const option = app.get_option(std::string(row.name));
    if (row.takes != Takes::nothing) {
        for (const std::string& value : option->results())
            TakeValue(row, value, given); // the last one stays
        return;
    }
    try {
        if (option->count() > 0 && option->as<bool>())
            given.Set(row.name, "");
    } catch (const CLI::ConversionError&) {
        throw CLI::ValidationError(std::string(row.name) + " takes true or false, not " +
                                   option->results().back());
    }
}

/// Deals the arguments out to their places. With as many as are required, these are they.
void DealOut(const Words& arguments, const CallRow& row, GivenValues& given)
{
    const auto required = static_cast<std::size_t>(
        std::count_if(row.arguments.begin(), row.arguments.end(),
                      [](const OptionRow& argument) { return argument.required; }));
    std::size_t spare = arguments.size() - std::min(arguments.size(), required);
    auto next = arguments.begin();
    for (const OptionRow& argument : row.arguments) {
        if (!argument.required && spare == 0)
            continue;
        if (next == arguments.end())
            throw CLI::RequiredError(std::string(argument.name));
        spare -= argument.required ? 0 : 1;
        TakeValue(argument, *next++, given);
    }
    if (next != arguments.end())
        throw CLI::ValidationError(*next + " is one argument too many");
}

/// The call that the library has read.
Call Taken(const CLI::App& app)
{
    const CLI::App& command = *CommandOf(app);
    Call call{RowOf(&command), {}};
    Words arguments;
    for (const CLI::Option* const option : command.get_options())
        if (option->get_positional())
            arguments.insert(arguments.end(), option->results().begin(), option->results().end());
    DealOut(arguments, *call.row, call.given);
    for (const OptionRow& option : GlobalOptions())
        TakeOption(app, option, call.given);
    for (const OptionRow& option : call.row->options)
        TakeOption(command, option, call.given);
    return call;
}

bool LooksLikeAnOption(std::string_view argument)
{
    return argument.size() > 1 && argument[0] == '-';
}

/// "there is no …", and the word that was most likely meant.
std::string ThereIsNo(const char* what, const std::string& name, const Choices& names)
{
    const std::string_view nearest = Nearest(name, names);
    std::string sentence = std::string("there is no ") + what + " " + name;
    if (!nearest.empty())
        sentence.append("; did you mean ").append(nearest).append("?");
    else if (LooksLikeAnOption(name))
        sentence.append("; if it is a value, put -- before it");
    return sentence;
}

std::string UnknownOption(const std::string& name, const CallRow* row)
{
    Choices names;
    for (const OptionRow& option : GlobalOptions())
        names.push_back(option.name);
    // Behind "--" stands no option, and a value without a command has no meaning.
    if (row == nullptr && std::find(names.begin(), names.end(), name) != names.end())
        return "a command is missing";
    if (row != nullptr)
        for (const OptionRow& option : row->options)
            names.push_back(option.name);
    if (std::find(names.begin(), names.end(), name) != names.end())
        return name + " must come after " + std::string(row->name);
    return ThereIsNo("option", name, names);
}

std::string UnknownCommand(const std::string& name)
{
    Choices names;
    for (const CallRow& row : Calls())
        names.push_back(row.name);
    return ThereIsNo("command", name, names);
}

/// What is wrong with a call, as a sentence.
std::string WhatIsWrong(const CLI::App& app, const CallRow* row, const CLI::ParseError& error)
{
    Words left = app.remaining(); // what the library could not place
    std::erase(left, "--");
    const auto option = std::find_if(left.begin(), left.end(), LooksLikeAnOption);
    const auto word = std::find_if_not(left.begin(), left.end(), LooksLikeAnOption);
    if (row == nullptr && word != left.end())
        return UnknownCommand(*word);
    if (option != left.end())
        return UnknownOption(option->substr(0, option->find('=')), row);
    if (word != left.end())
        return *word + " is one argument too many";
    return dynamic_cast<const CLI::RequiredError*>(&error) != nullptr && row == nullptr
               ? "a command is missing"
               : error.what();
}

/// What to say instead of running a command.
ReadCall Said(const CLI::App& app, const CLI::ParseError& error)
{
    const CLI::App* const command = CommandOf(app);
    const CallRow* const row = RowOf(command);
    for (const CLI::App* const asked : {&app, command})
        if (asked != nullptr && asked->get_help_ptr()->count() > 0)
            return {std::nullopt, HelpText(row), 0};
    if (app.count("--version") > 0)
        return {std::nullopt, std::string(kProgram) + " " KIV_VERSION "\n", 0};
    std::string text = "kiv: error: " + WhatIsWrong(app, row, error) + "\nTry: " + kProgram;
    if (row != nullptr)
        text.append(" ").append(row->name);
    return {std::nullopt, text + " --help\n", 2};
}

} // namespace

ReadCall ReadArguments(const std::vector<std::string>& arguments)
{
    CLI::App app;
    DefineCalls(app);
    try {
        app.parse(ForLibrary(arguments));
        return {Taken(app), {}, 0};
    } catch (const CLI::ArgumentMismatch&) { // only the last option can lack its value
        return Said(app, CLI::ValidationError(arguments.back() + " needs a value"));
    } catch (const CLI::ParseError& error) {
        return Said(app, error);
    }
}

} // namespace kiv
