// What `kiv-cli` says about itself.
#pragma once

#include "cli/call_table.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace kiv {

inline constexpr const char* kProgram = "kiv-cli";
inline constexpr std::string_view kSummary = "build and maintain static websites without a window";
inline constexpr std::string_view kAbout =
    "kiv builds and maintains static websites: a folder of plain text becomes a section of pages.";

/// A topic that concerns all commands.
struct Topic {
    std::string_view heading;
    std::string_view text; // paragraphs with an empty line between
};
std::span<const Topic> Topics();

/// The help of a command, or of the program when `row` is null.
std::string HelpText(const CallRow* row);

/// How a command is called: "rename [DIR] FIND REPLACEMENT [--dry-run]".
std::string Synopsis(const CallRow& row);

/// An option with what stands for its value: "--folder NAME".
std::string WithValue(const OptionRow& row);

/// What an option is for, and its choices.
std::string AboutOption(const OptionRow& row);

/// The example of a call, each line behind two blanks.
std::string Example(const CallRow& row);

/// `text` in lines of at most `width` characters, each with a line end. Line ends of its own stay.
std::string Wrapped(std::string_view text, std::size_t width);

} // namespace kiv
