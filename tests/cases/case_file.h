// Case files: small sites as text, see README.md.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace kiv::test {

/// One case of a case file; all contents are bytes with their line ends, escapes decoded.
struct Case {
    std::string title;
    std::string place; // "merge.cases:12"
    std::vector<std::string> arguments = {"build", "C:\\site"};
    std::map<std::string, std::string> in; // by name as the case has it
    std::vector<std::string> folders;
    std::optional<std::string> standard_input;
    std::map<std::string, std::string> out;
    std::set<std::string> absent;
    std::vector<std::string> messages;
    std::vector<std::string> warnings;
    std::optional<std::string> status;
    std::optional<std::vector<std::string>> files;
    std::vector<std::string> launched;
    std::optional<std::vector<std::string>> renamed;
    std::optional<std::string> result;
    /// A question about the site as it is laid out: the arguments of "why" behind its folder, and
    /// the lines that are printed.
    struct Question {
        std::vector<std::string> arguments;
        std::vector<std::string> answer;
    };
    std::vector<Question> questions;
    std::optional<std::vector<std::string>> findings; // of "check"
    std::map<std::string, std::string> mends;         // files with which nothing is found
    std::string error;                                // kind; empty: none
    std::optional<std::string> where;                 // of the error
    std::optional<std::string> hint;
    std::string not_on_windows; // the reason; empty: the case holds there too
};

/// The cases of a file. Throws std::runtime_error with the place of what it cannot read.
std::vector<Case> ReadCaseFile(const std::string& path);

/// Lines without the blanks at their ends, and without empty ones behind the last.
std::vector<std::string> WithoutBlankEnds(std::vector<std::string> lines);

} // namespace kiv::test
