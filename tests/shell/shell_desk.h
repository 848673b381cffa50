// A workspace on a machine whose drive C: is a folder of the test's own.
#pragma once

#include "platform/drives.h"
#include "shell/workspace.h"
#include "tests/support/folders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// Notes what it is asked to start; " (minimised)" stands behind what starts so.
class StartRecorder : public Programs {
  public:
    std::vector<std::string> started;
    void Start(const std::string& command_line, bool minimised) override
    {
        started.push_back(command_line + (minimised ? " (minimised)" : ""));
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

class ShellTest : public testing::Test {
  protected:
    using Texts = std::vector<std::string>;

    ShellTest()
    {
        std::filesystem::create_directories(Native("site"));
        std::filesystem::create_directories(Native("utils"));
        files->ChangeDirectory("C:\\site");
    }

    std::filesystem::path Native(const std::string& below) const
    {
        return folder.Path() / test::PathOf(below);
    }

    /// A file below drive C: by its native path, "site/a.txt".
    void Put(const std::string& below, const std::string& bytes = "")
    {
        test::WriteBytes(Native(below), bytes);
    }
    std::string Content(const std::string& below) const { return test::ReadBytes(Native(below)); }
    bool Exists(const std::string& below) const { return std::filesystem::exists(Native(below)); }
    /// The names in a folder below drive C:, in byte order.
    Texts NamesIn(const std::string& below) const
    {
        Texts names;
        for (const auto& entry : std::filesystem::directory_iterator(Native(below)))
            names.push_back(test::TextOf(entry.path().filename()));
        std::sort(names.begin(), names.end());
        return names;
    }

    template <typename Work>
    std::string KindOf(Work work)
    {
        const std::optional<RunError> error = workspace.Run(work);
        return error ? std::string(KindName(error->kind)) : "";
    }

    test::TemporaryFolder folder;
    std::unique_ptr<Files> files = MakeDriveFiles({{'C', folder.Path().string()}});
    FrozenClock clock{{2004, 3, 5, 14, 7, 9}};
    HeldClipboard clipboard;
    StartRecorder programs;
    WordRecorder reporter;
    HeaderPictureLoader pictures{*files};
    ProgressRecorder progress;
    Machine machine{*files, clock, clipboard, programs, reporter, pictures, progress};
    Workspace workspace{machine};
};

} // namespace kiv
