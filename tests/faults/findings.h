// What can be wrong after a try, and the tables of it.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::faults {

enum class Kind : std::uint8_t {
    loss,          // a file is gone, emptied, or half
    crash,         // a signal, a sanitizer's report, an exit code that there is not
    hang,          //
    false_success, // told as done, and it is not
    left_over,     // a file of the program's own stays
    unfinished,    // the same command again does not end well
    report,        // the JSON report is not whole, or does not fit
    rights         // owner, mode or attributes of a file changed
};

constexpr std::array<std::string_view, 8> kKindNames = {
    "loss", "crash", "hang", "false success", "left over", "unfinished", "report", "rights"};

struct Complaint {
    Kind kind;
    std::string text;
    bool operator==(const Complaint&) const = default;
};

using Complaints = std::vector<Complaint>;

/// What one try has shown.
struct Verdict {
    std::string place; // where it was struck: "openat _html.txt"
    Complaints complaints;
};

/// Counts tries and keeps what was found, by cause.
class Tally {
  public:
    void Count(const std::string& attack, const std::string& scenario, const std::string& id,
               const Verdict& verdict);
    /// Adds what another has counted, as it wrote it.
    void Add(const std::string& written);
    std::string Written() const;

    long Tries() const;
    bool FoundAny() const { return !causes_.empty(); }
    /// A row for each scenario, one for each attack, and what was found.
    std::string Tables() const;

  private:
    struct Row {
        long tries = 0;
        std::array<long, kKindNames.size()> found{};
        Row& operator+=(const Row& other);
    };
    /// Found the same way at the same call.
    struct Cause {
        Kind kind;
        std::string scenario;
        std::string place;
        std::string text;
        bool operator<(const Cause& other) const;
    };
    struct Found {
        long times = 0;
        std::string id; // of the first
    };
    using Rows = std::map<std::string, Row>;

    static std::string TableOf(const std::string& head, const Rows& rows);
    std::string Causes() const;

    std::map<std::pair<std::string, std::string>, Row> rows_; // by attack and scenario
    std::map<Cause, Found> causes_;
};

} // namespace kiv::faults
