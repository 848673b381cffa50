// The calls of `kiv-cli` as a table: a row says all about a command. Reading a call, its help, the
// manual page and the shell's completion are made of the rows.
#pragma once

#include <functional>
#include <iosfwd>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

class CliReporter;
class Drives;
class StopRequest;
class Workspace;
struct MessageLook;
struct RunReport;

/// What an option or an argument takes.
enum class Takes { nothing, text, number, date_time, folder, file };

using Choices = std::vector<std::string_view>;

/// An option, or an argument that is known by its place.
struct OptionRow {
    std::string_view name;       // "--folder"; of an argument "DIR"
    std::string_view value = {}; // what stands for an option's value: "NAME"
    std::string_view about;
    Takes takes = Takes::nothing;
    bool required = false;
    Choices (*choices)() = nullptr; // the only values that there are
    std::string_view excludes = {}; // the option above that it cannot stand with
    std::string_view needs = {};    // the option above that it cannot stand without
    /// What is wrong with a value, as a sentence; "" when it is well.
    std::string (*fault)(const std::string& value) = nullptr;
    Choices (*listed)() = nullptr; // what the value lists, a comma between two

    bool IsOption() const { return name.starts_with('-'); }
};

/// What was given, by the names of options and arguments. Values are UTF-8.
class GivenValues {
  public:
    void Set(std::string_view name, const std::string& value);
    /// Whether the option or argument was given, even if empty; of a switch, whether it is on.
    bool Has(std::string_view name) const { return values_.contains(name); }
    /// The value, or `otherwise`.
    std::string Native(std::string_view name, std::string_view otherwise = "") const;
    /// The same as Windows-1252.
    std::string Text(std::string_view name) const;

  private:
    std::map<std::string, std::string, std::less<>> values_;
};

/// What a command needs that goes on, and tells of what it does while it runs.
struct CallOutput {
    std::ostream& out;
    std::ostream& err;
    Drives& drives;
    const MessageLook& look;
    std::ostream* terminal; // for how far a command is; null: there is none
    bool is_json;
    StopRequest& stop;                        // asked when the command is to end
    const std::function<bool()>& out_is_read; // of the surroundings
};

/// What a command works with.
struct CallDesk {
    Workspace& workspace;
    std::istream& in;
    RunReport& report;
    CliReporter& reporter;
    const CallOutput& output;
};

/// What a command finds when it begins.
enum class Start {
    nothing, // it touches no file
    drive_c, // drive C: is there
    site,    // DIR, or the shell's directory, is the working directory
    folder,  // the same, and it is made when it is missing
};

/// A word and what it means, in a line.
struct HelpEntry {
    std::string_view name;
    std::string_view about;
};

struct CallRow {
    std::string_view name;
    std::string_view about;   // in a line
    std::string_view details; // what else is to be known
    std::string_view example; // as it is typed, a line each
    std::span<const OptionRow> arguments = {};
    std::span<const OptionRow> options = {};
    Start start = Start::site;
    bool looks_only = false;      // nothing is written at all
    bool builds = false;          // what it tells without a place is a warning, too
    bool goes_on = false;         // until it is interrupted, and tells of each build itself
    bool starts_programs = false; // by itself, without "--launch"
    bool renames = false;         // the report has the renames, and "--dry-run" touches nothing
    void (*run)(CallDesk& desk, const GivenValues& given) = nullptr;
    std::vector<HelpEntry> (*names)() = nullptr; // that its options take
};

/// All commands, in the order of the help.
std::span<const CallRow> Calls();

/// The options that go with every command.
std::span<const OptionRow> GlobalOptions();

} // namespace kiv
