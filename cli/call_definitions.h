// All calls of `kiv-cli` as its argument library knows them. Reading a call, its help, the manual
// page and the shell's completion stand on these definitions.
#pragma once

#include "cli/calls.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <functional>
#include <string>

namespace kiv {

/// Stands before an argument that is a value whatever it begins with, so that it is not taken for
/// an option.
inline constexpr char kValueMark = '\x01';
std::string Unmarked(std::string value);

/// The options before the command, as given.
struct GlobalOptions {
    std::string drive_c;
    std::string now;
};

/// Defines every command and option on `app`. Parsing then fills `call` and `given`.
void DefineCalls(CLI::App& app, Call& call, GlobalOptions& given);

/// One command; `texts` of its name are in call_texts.h. `take` is called when the command was
/// chosen and all its options are read.
CLI::App* AddCommand(CLI::App& app, const char* name, std::function<void()> take);

/// An argument of the command by its place.
CLI::Option* AddArgument(CLI::App& command, const char* name, std::string& value,
                         const char* about);
/// The argument DIR.
void AddDirectory(CLI::App& command, Call& call);
/// "--name TYPE". Given twice, the last counts.
CLI::Option* AddValue(CLI::App& command, const char* name, std::string& value, const char* type,
                      const char* about);
/// "--name" without a value.
CLI::Option* AddSwitch(CLI::App& command, const char* name, bool& value, const char* about);

// The commands by what they work on.
void AddSiteCommands(CLI::App& app, Call& call);
void AddNameCommands(CLI::App& app, Call& call);
void AddTextCommands(CLI::App& app, Call& call);
void AddNewsCommand(CLI::App& app, Call& call);

} // namespace kiv
