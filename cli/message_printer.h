// Warnings, errors and findings, each with its place in a form that editors and terminals can open:
// "site/_html.txt:12: warning: ...".
#pragma once

#include "cli/quoted_sources.h"
#include "inspect/external_links.h"
#include "inspect/finding.h"
#include "platform/drives.h"
#include "platform/reporter.h"
#include "platform/run_error.h"

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>

namespace kiv {

/// How messages are told.
struct MessageLook {
    std::string folder;       // native: paths in it are told relative to it
    bool is_build = false;    // what has no place is a warning of a build, too
    bool has_colours = false; // it is a terminal, and the user wants to see them
    bool tells_all = false;   // however many there are, and each whole
};

/// Nothing of what it prints steers a terminal.
class MessagePrinter {
  public:
    MessagePrinter(std::ostream& out, Drives& drives, MessageLook look)
        : out_(out), drives_(drives), lines_(drives), look_(std::move(look))
    {
    }

    /// A warning, and below it the source line. Past fifty they are only counted.
    void Print(const Warning& warning);
    /// How many were only counted, if any.
    void PrintRest();
    /// An error, the source line and what can be done.
    void Print(const RunError& error);
    /// A finding with its name, the source line and what can be done.
    void Print(const Finding& finding);
    /// An address on another host.
    void Print(const ExternalLink& link);

    static constexpr std::size_t kMostTold = 50;
    static constexpr std::size_t kLongestText = 1000; // characters of a warning or a finding

  private:
    /// "site/_html.txt:12: ", "site/_html.txt: " or "kiv: ".
    std::string PlaceOf(const KeptPlace& where);
    std::string Coloured(std::string_view word, std::string_view colour) const;
    /// What stands below a message: the source line, cut around what `text` is about, and behind
    /// "->" the hint.
    void PrintBelow(const KeptPlace& where, std::string_view text, const std::string& hint);

    std::ostream& out_;
    Drives& drives_;
    QuotedSources lines_;
    MessageLook look_;
    std::size_t told_ = 0;
    std::size_t left_out_ = 0;
};

} // namespace kiv
