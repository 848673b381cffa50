// A machine for the utilities: real files on a drive C of its own, the rest recorded.
#pragma once

#include "platform/drive_path.h"
#include "platform/drives.h"
#include "platform/machine.h"
#include "platform/run_error.h"
#include "tests/support/folders.h"
#include "tests/support/recorders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// Picture sizes by name, in whatever folder; a picture without one cannot be read.
class HeldPictures : public PictureLoader {
  public:
    PictureSize Size(std::string_view path) override
    {
        measured.emplace_back(NameOf(path));
        const auto size = sizes.find(measured.back());
        if (size == sizes.end())
            throw RunError(ErrorKind::picture, "cannot read the size of " + measured.back());
        return size->second;
    }

    std::map<std::string, PictureSize> sizes;
    std::vector<std::string> measured;
};

/// The folder "C:\site" is the current directory, and there is "C:\utils".
class UtilityDesk : public test::DriveFolder {
  public:
    UtilityDesk() { files_->ChangeDirectory("C:\\site"); }

    /// Every file of drive C.
    test::FileTree Tree() const { return test::ReadTree(Root()); }

  private:
    std::unique_ptr<Drives> files_ = MakeDriveFiles({{'C', Root().string()}});
    FrozenClock clock_{DateTime{}};

  public:
    HeldClipboard clipboard;
    test::StartRecorder programs;
    test::RecordingReporter reporter;
    HeldPictures pictures;
    Machine machine{*files_, *files_, clock_, clipboard, programs, reporter, pictures};
};

/// The kind of the error that `action` throws; empty when there is none.
template <typename Action>
std::string KindOf(Action action)
{
    try {
        action();
    } catch (const RunError& error) {
        return std::string(KindName(error.kind));
    }
    return {};
}

} // namespace kiv
