// Builds of a site "C:\site" on a drive C of the test's own.
#pragma once

#include "builder/build_driver.h"
#include "platform/drives.h"
#include "platform/machine.h"
#include "platform/run_error.h"
#include "tests/support/folders.h"
#include "tests/support/recorders.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace kiv {

class NoPictures : public PictureLoader {
  public:
    PictureSize Size(std::string_view path) override
    {
        throw RunError(ErrorKind::picture, std::string(path));
    }
};

class BuildDesk : public test::DriveFolder {
  public:
    BuildDesk()
    {
        files->ChangeDirectory("C:\\site");
        Put("site/_template.txt", ";\n");
    }

    /// Builds with `used` files; returns the kind of the fatal error, "" when it ends well.
    std::string Build(Files& used)
    {
        Machine machine{used, *files, clock_, clipboard_, programs_, reporter, pictures_};
        BlockMemory blocks;
        OutputRoots roots;
        try {
            BuildSite(machine, options, blocks, roots);
        } catch (const RunError& error) {
            place = error.where.Text();
            return std::string(KindName(error.kind));
        }
        return {};
    }
    std::string Build() { return Build(*files); }

    std::unique_ptr<Drives> files = MakeDriveFiles({{'C', Root().string()}});
    test::RecordingReporter reporter;
    BuildOptions options;
    std::string place; // of the last fatal error

  private:
    FrozenClock clock_{DateTime{}};
    HeldClipboard clipboard_;
    test::StartRecorder programs_;
    NoPictures pictures_;
};

} // namespace kiv
