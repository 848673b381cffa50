// What `kiv-cli` says about itself: in its help, on the manual page and to the shell.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace kiv {

inline constexpr const char* kProgram = "kiv-cli";
inline constexpr std::string_view kSummary = "build and maintain static websites without a window";
inline constexpr const char* kAbout =
    "kiv builds and maintains static websites: a folder of plain text becomes a section of pages.";

/// A command: how it is called, what it does in a line, and what else is to be known.
struct CommandText {
    std::string_view name;
    std::string_view synopsis; // behind the name
    std::string_view about;
    std::string_view details;
};
std::span<const CommandText> CommandTexts();
const CommandText& TextOf(std::string_view name);

/// A topic that concerns all commands.
struct Topic {
    std::string_view heading;
    std::string_view text; // paragraphs, parted by an empty line
};
std::span<const Topic> Topics();

/// `text` in lines of at most `width` characters, each with a line end. Line ends of its own stay.
std::string Wrapped(std::string_view text, std::size_t width);

} // namespace kiv
