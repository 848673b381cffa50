// What a command that goes on prints of each build.
#pragma once

#include "cli/call_table.h"
#include "cli/face.h"
#include "cli/message_printer.h"
#include "cli/report.h"
#include "preview/watch_loop.h"

#include <optional>
#include <string>

namespace kiv {

/// Builds as the commands `build` and `group` do, and prints a line for each build on standard
/// output, or an object with "--json". Warnings and errors go to standard error, as ever. When
/// standard output takes nothing any more, or has no reader, the command is asked to end.
class BuildTeller : public WatchFace {
  public:
    /// `given` has "--group" where the group is built. Both outlive this.
    BuildTeller(const CallDesk& desk, const GivenValues& given) : desk_(desk), given_(given) {}

    Reporter& Begin() override;
    void Build(Workspace& workspace) override;
    void Built(const BuildRecord& record) override;
    void Refused(const RunError& error) override;
    void IsBack() override;
    void Waits() override;

  private:
    /// What tells of one build: the printer remembers sources, and counts.
    struct Part {
        explicit Part(const CallOutput& output)
            : line(output.terminal), printer(output.err, output.drives, output.look),
              reporter(output.is_json ? nullptr : &printer, line)
        {
        }
        RunReport report;
        TerminalLine line;
        MessagePrinter printer;
        CliReporter reporter;
    };

    const CallDesk& desk_;
    const GivenValues& given_;
    std::optional<Part> part_;
};

/// A build in a line: "14:03:07  41 ms  3 of 412 files changed, 2 warnings".
std::string BuildLine(const BuildRecord& record, const RunReport& report);

} // namespace kiv
