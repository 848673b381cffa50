// The one unit that knows the argument library. It defines the rows of the table of calls in it,
// and words what is wrong with a call.
#include "cli/arguments.h"

#include "cli/help.h"
#include "cli/values.h"
#include "text/nearest.h"

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

constexpr std::string_view kHelp = "--help";
constexpr std::string_view kShortHelp = "-h";

void DefineOption(CLI::App& app, const OptionRow& row)
{
    const std::string name(row.name);
    if (name == kHelp) {
        app.set_help_flag(name + "," + std::string(kShortHelp));
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

/// Commands whose name is not among the arguments are not called: to define all of them takes a
/// quarter of the time of a small build.
void DefineCalls(CLI::App& app, const Words& arguments)
{
    app.require_subcommand(1);
    app.fallthrough();                      // global options may stand behind the command
    app.allow_windows_style_options(false); // "/site" is a path
    for (const OptionRow& option : GlobalOptions())
        DefineOption(app, option);
    for (const CallRow& row : Calls())
        if (std::ranges::find(arguments, row.name) != arguments.end())
            DefineCall(app, row);
}

/// The option of this name, of whatever command: all of one name are of one kind. Null when there
/// is none.
const OptionRow* OptionNamed(std::string_view name)
{
    const auto among = [&](std::span<const OptionRow> rows) {
        const auto found = std::ranges::find(rows, name, &OptionRow::name);
        return found == rows.end() ? nullptr : &*found;
    };
    const OptionRow* option = among(GlobalOptions());
    for (auto call = Calls().begin(); option == nullptr && call != Calls().end(); ++call)
        option = among(call->options);
    return option;
}

/// What the library is not to see, as it would take it for something else: "++" would end the
/// command, and "--help=false" show the help. "" when `argument` is none of these.
std::string FaultIn(const std::string& argument)
{
    if (argument == "++")
        return "++ is no option; if it is a value, put -- before it";
    const std::string name = argument.substr(0, argument.find('='));
    const OptionRow* const option = OptionNamed(name == kShortHelp ? kHelp : name);
    if (name == argument || option == nullptr || option->takes != Takes::nothing)
        return "";
    return name + " takes no value";
}

/// The arguments for the library, and what is wrong with those that are not among them.
struct LibraryArguments {
    Words words; // the last one first
    std::string fault;
};

/// "--name=" becomes "--name" and an empty value, for which the library would take the next
/// argument.
LibraryArguments ForLibrary(const Words& arguments)
{
    LibraryArguments result;
    Words& words = result.words;
    bool is_value = false;
    for (auto at = arguments.begin(); at != arguments.end(); ++at) {
        if (is_value) {
            words.push_back(*at);
            is_value = false;
        } else if (*at == "--") {
            words.insert(words.end(), at, arguments.end());
            break;
        } else if (std::string fault = FaultIn(*at); !fault.empty()) {
            result.fault = std::move(fault);
        } else {
            const std::string name = at->substr(0, at->size() - (at->ends_with('=') ? 1 : 0));
            const OptionRow* const option = OptionNamed(name);
            const bool takes_value = option != nullptr && option->takes != Takes::nothing;
            is_value = takes_value && name == *at;
            words.push_back(takes_value ? name : *at);
            if (takes_value && !is_value)
                words.emplace_back();
        }
    }
    std::reverse(words.begin(), words.end());
    return result;
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
    if (option->count() > 0)
        given.Set(row.name, "");
}

std::string TooMany(const std::string& argument)
{
    return argument.empty() ? "there is an empty argument too many"
                            : argument + " is one argument too many";
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
        throw CLI::ValidationError(TooMany(*next));
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
    for (const OptionRow& option : call.row->options) {
        TakeOption(command, option, call.given);
        if (call.given.Has(option.name) && call.given.Has(option.excludes))
            throw CLI::ValidationError(std::string(option.excludes) + " and " +
                                       std::string(option.name) +
                                       " do not go together; give one of them");
        if (call.given.Has(option.name) && !option.needs.empty() && !call.given.Has(option.needs))
            throw CLI::ValidationError(std::string(option.name) + " needs " +
                                       std::string(option.needs));
    }
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
    if (name.empty())
        return "the name of the command is empty";
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
        return TooMany(*word);
    return dynamic_cast<const CLI::RequiredError*>(&error) != nullptr && row == nullptr
               ? "a command is missing"
               : error.what();
}

/// What to say instead of running a command. `fault` is what was wrong before the library read the
/// arguments; when it is empty, `error` says what is wrong.
ReadCall Said(const CLI::App& app, const std::string& fault, const CLI::ParseError& error)
{
    const CLI::App* const command = CommandOf(app);
    const CallRow* const row = RowOf(command);
    for (const CLI::App* const asked : {&app, command})
        if (asked != nullptr && asked->get_help_ptr()->count() > 0)
            return {std::nullopt, HelpText(row), 0};
    if (app.count("--version") > 0)
        return {std::nullopt, std::string(kProgram) + " " KIV_VERSION "\n", 0};
    std::string text = "kiv: error: " + (fault.empty() ? WhatIsWrong(app, row, error) : fault) +
                       "\nTry: " + kProgram;
    if (row != nullptr)
        text.append(" ").append(row->name);
    return {std::nullopt, text + " --help\n", 2};
}

} // namespace

ReadCall ReadArguments(const std::vector<std::string>& arguments)
{
    CLI::App app;
    DefineCalls(app, arguments);
    LibraryArguments prepared = ForLibrary(arguments);
    try {
        app.parse(std::move(prepared.words));
        if (!prepared.fault.empty())
            throw CLI::ValidationError(prepared.fault);
        return {Taken(app), {}, 0};
    } catch (const CLI::ArgumentMismatch&) { // only the last option can lack its value
        return Said(app, arguments.back() + " needs a value", CLI::ValidationError(""));
    } catch (const CLI::ParseError& error) {
        return Said(app, prepared.fault, error);
    }
}

} // namespace kiv
