// A workspace on a machine whose drive C: is a folder of the test's own.
#pragma once

#include "platform/drives.h"
#include "shell/workspace.h"
#include "tests/support/folders.h"
#include "tests/support/recorders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kiv {

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
    test::StartRecorder programs;
    test::RecordingReporter reporter;
    HeaderPictureLoader pictures{*files};
    Machine machine{*files, *files, clock, clipboard, programs, reporter, pictures};
    Workspace workspace{machine};
};

} // namespace kiv
