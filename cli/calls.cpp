#include "cli/calls.h"

#include "cli/call_definitions.h"
#include "cli/call_texts.h"
#include "cli/marked_arguments.h"
#include "text/windows1252.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace kiv {

namespace {

/// The exact form YYYY-MM-DDTHH:MM:SS, and a day and a time that there are.
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
    const std::chrono::year_month_day day{std::chrono::year(now.year),
                                          std::chrono::month(static_cast<unsigned>(now.month)),
                                          std::chrono::day(static_cast<unsigned>(now.day))};
    const bool valid =
        now.year > 0 && day.ok() && now.hour < 24 && now.minute < 60 && now.second < 60;
    return valid ? std::optional(now) : std::nullopt;
}

ReadCall Said(std::string text)
{
    return {std::nullopt, std::move(text), 0};
}

/// `command` is the one that was called, or the program.
ReadCall WrongCall(const CLI::App& command, std::string what)
{
    std::erase(what, kValueMark);
    // The name of an argument keeps its capitals.
    if (what.size() > 1 && what[1] == ToLower(what[1]))
        what[0] = ToLower(what[0]);
    std::string help = kProgram;
    if (command.get_parent() != nullptr)
        help.append(" ").append(command.get_name());
    return {std::nullopt, "kiv: error: " + what + "\nTry: " + help + " --help\n", 2};
}

} // namespace

ReadCall ReadArguments(const std::vector<std::string>& arguments)
{
    Call call;
    GlobalOptions given;
    CLI::App app;
    DefineCalls(app, call, given);
    MarkedArguments marked = MarkArguments(app, arguments);
    if (marked.wants_help)
        return Said(marked.command->help());
    if (marked.wants_version)
        return Said(std::string(kProgram) + " " KIV_VERSION "\n");
    const CLI::App& command = *marked.command;
    if (!marked.fault.empty())
        return WrongCall(command, std::move(marked.fault));
    if (!marked.unknown_command.empty())
        return WrongCall(app, "there is no command " + marked.unknown_command);
    if (&command == &app)
        return WrongCall(app, "a command is missing");
    std::reverse(marked.arguments.begin(), marked.arguments.end()); // taken from the back
    try {
        app.parse(std::move(marked.arguments));
    } catch (const CLI::ParseError& error) {
        return WrongCall(command, error.what());
    }
    if (app.count("--drive-c") > 0) {
        if (given.drive_c.empty())
            return WrongCall(app, "--drive-c needs a folder");
        call.drive_c = given.drive_c;
    }
    if (app.count("--now") > 0) {
        call.now = ParseNow(given.now);
        if (!call.now)
            return WrongCall(app, "--now takes YYYY-MM-DDTHH:MM:SS, not " + given.now);
    }
    return {std::move(call), {}, 0};
}

} // namespace kiv
