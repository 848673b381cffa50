// Commands of a site that ask something before they run, or show what they would do: for a window.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

class Workspace;

struct TaskQuestion {
    enum class Kind { text, folder, choice };
    std::string_view name; // of its field
    std::string_view caption;
    std::string_view tip;
    Kind kind = Kind::text;
    std::span<const std::string_view> choices = {};
};

/// As typed or chosen, one for each question. A folder is UTF-8, as its path is typed elsewhere.
using TaskAnswers = std::vector<std::string>;

/// What a task would do.
struct TaskLook {
    std::vector<std::string> lines = {}; // a file each
    std::string summary = {};            // how many there are, or that there is nothing to do
    bool is_possible = false;            // there is something to do
    bool operator==(const TaskLook&) const = default;
};

struct SiteTask {
    std::string_view command; // its name in the table of commands
    std::string_view button;  // what its button says
    std::string_view explanation;
    std::span<const TaskQuestion> questions = {};
    /// The answers to begin with; null: they are empty.
    TaskAnswers (*first_answers)(Workspace& workspace) = nullptr;
    /// What keeps it from being done with these answers, in a sentence; "": nothing. Null: never
    /// anything. Throws nothing.
    std::string (*fault)(Workspace& workspace, const TaskAnswers& answers) = nullptr;
    /// What it would do, worked out as a command; null: nothing of the user's changes. Throws
    /// RunError and Stopped.
    TaskLook (*look)(Workspace& workspace, const TaskAnswers& answers) = nullptr;
    /// Does it. Throws RunError and Stopped.
    void (*run)(Workspace& workspace, const TaskAnswers& answers) = nullptr;
};

/// The task of a command; null when it has none.
const SiteTask* FindSiteTask(std::string_view command);

} // namespace kiv
