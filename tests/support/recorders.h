// A reporter and programs that keep what they were told, for a test to look at.
#pragma once

#include "platform/programs.h"
#include "platform/reporter.h"

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::test {

/// A face that shows nothing and keeps everything that a command tells.
class RecordingReporter : public Reporter {
  public:
    std::vector<std::string> shown; // the messages
    std::string status;             // the last text of the status line
    std::vector<std::string> statuses;
    std::vector<std::string> passes; // texts of the pass status
    std::vector<std::pair<int, int>> steps;

    void Status(std::string_view text) override
    {
        status = text;
        statuses.push_back(status);
    }
    void PassStatus(std::string_view text) override { passes.emplace_back(text); }

  protected:
    void ShowStep(int done, int all) override { steps.emplace_back(done, all); }
    void Show(std::string_view text) override { shown.emplace_back(text); }
};

/// Keeps the command lines; " (minimised)" stands behind what starts so.
class StartRecorder : public Programs {
  public:
    std::vector<std::string> started;
    std::vector<std::string> files;           // that they were started for
    std::set<std::string, std::less<>> there; // the commands whose programs are found
    bool Finds(std::string_view command) override { return there.contains(command); }
    std::vector<std::string> inputs; // of the programs that were run
    std::vector<int> codes;          // that the next ones end with; 0 past their end
    int Run(const Launch& launch, std::string_view input,
            const WhileRunning& while_running) override
    {
        started.push_back(launch.Text());
        inputs.emplace_back(input);
        if (while_running)
            while_running();
        return inputs.size() <= codes.size() ? codes[inputs.size() - 1] : 0;
    }
    void Start(const Launch& launch) override
    {
        if (!launch.file.empty())
            files.push_back(launch.file);
        started.push_back(launch.Text() + (launch.minimised ? " (minimised)" : ""));
    }
};

} // namespace kiv::test
