// Arguments made ready for the argument library: what is a value and what an option is decided
// here.
#pragma once

#include <CLI/App.hpp>

#include <string>
#include <vector>

namespace kiv {

struct MarkedArguments {
    std::vector<std::string> arguments; // values begin with kValueMark
    const CLI::App* command = nullptr;  // the command chosen, else the program
    bool wants_help = false;
    bool wants_version = false;
    std::string unknown_command; // what stands where a command should
    std::string fault; // what is wrong with an option, as a sentence; "" when all are well
};

/// Only "--name" and "-h" are options: "-5" and "-" are values, an option's value is the next
/// argument whatever it is, and "--" ends the options. Help and version may stand anywhere.
MarkedArguments MarkArguments(const CLI::App& app, const std::vector<std::string>& arguments);

} // namespace kiv
