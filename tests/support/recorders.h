// A reporter, a progress and programs that keep what they were told, for a test to look at.
#pragma once

#include "platform/programs.h"
#include "platform/progress.h"
#include "platform/reporter.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::test {

/// Keeps the messages. Warnings that are kept from the user are not among them.
class WordRecorder : public Reporter {
  public:
    std::vector<std::string> shown;

  protected:
    void Show(std::string_view text) override { shown.emplace_back(text); }
    void Note(std::string_view, const Place&) override {}
};

class ProgressRecorder : public Progress {
  public:
    std::string status; // the last
    std::vector<std::string> statuses;
    std::vector<std::string> passes;
    std::vector<std::pair<int, int>> steps;
    std::vector<std::string> folder_buttons; // "dirbuttons" and "dirreset", as they came

    void Status(std::string_view text) override
    {
        status = text;
        statuses.emplace_back(text);
    }
    void PassStatus(std::string_view text) override { passes.emplace_back(text); }
    void Step(int done, int all) override { steps.emplace_back(done, all); }
    void dirbuttons() override { folder_buttons.emplace_back("dirbuttons"); }
    void dirreset() override { folder_buttons.emplace_back("dirreset"); }
};

/// Keeps the command lines; " (minimised)" stands behind what starts so.
class StartRecorder : public Programs {
  public:
    std::vector<std::string> started;
    void Start(const std::string& command_line, bool minimised) override
    {
        started.push_back(command_line + (minimised ? " (minimised)" : ""));
    }
};

} // namespace kiv::test
