// A workspace on a machine whose drive C: is a folder of the test's own.
#pragma once

#include "platform/drives.h"
#include "shell/workspace.h"
#include "tests/support/folders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// Notes what it is asked to start; " (minimised)" stands behind what starts so.
class StartRecorder : public Programs {
  public:
    std::vector<std::string> started;
    std::vector<std::string> files; // that they were started for
    void Start(const Launch& launch) override
    {
        if (!launch.file.empty())
            files.push_back(launch.file);
        started.push_back(launch.Text() + (launch.minimised ? " (minimised)" : ""));
    }
};

class WordRecorder : public Reporter {
  public:
    std::vector<std::string> shown;

  protected:
    void Show(std::string_view text) override { shown.emplace_back(text); }
    void Note(std::string_view, const Place&) override {}
};

class ProgressRecorder : public Progress {
  public:
    std::string status;
    std::vector<std::string> calls; // of the folder buttons
    void Status(std::string_view text) override { status = text; }
    void PassStatus(std::string_view) override {}
    void Step(int, int) override {}
    void dirbuttons() override { calls.emplace_back("dirbuttons"); }
    void dirreset() override { calls.emplace_back("dirreset"); }
};

class ShellTest : public testing::Test, public test::DriveFolder {
  protected:
    using Texts = std::vector<std::string>;

    ShellTest() { files->ChangeDirectory("C:\\site"); }

    template <typename Work>
    std::string KindOf(Work work)
    {
        const std::optional<RunError> error = workspace.Run(work);
        return error ? std::string(KindName(error->kind)) : "";
    }

    std::unique_ptr<Drives> files = MakeDriveFiles({{'C', Root().string()}});
    FrozenClock clock{{2004, 3, 5, 14, 7, 9}};
    HeldClipboard clipboard;
    StartRecorder programs;
    WordRecorder reporter;
    HeaderPictureLoader pictures{*files};
    ProgressRecorder progress;
    Machine machine{*files, *files, clock, clipboard, programs, reporter, pictures, progress};
    Workspace workspace{machine};
};

} // namespace kiv
