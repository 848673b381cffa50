// Old pages on a drive of the test's own, and the site that is made of them.
#pragma once

#include "builder/build_driver.h"
#include "exchange/adoption.h"
#include "platform/drives.h"
#include "tests/support/folders.h"
#include "tests/support/recorders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

namespace kiv {

class AdoptionTest : public testing::Test, public test::DriveFolder {
  protected:
    /// Adopts a folder into "new".
    Adoption Adopt(const std::string& folder = "C:\\old")
    {
        PutFolder("new");
        return AdoptSite(machine, folder, "C:\\new");
    }

    /// Builds the new site, or a further section of it.
    void Build(const std::string& folder = "C:\\new")
    {
        files->Refresh();
        files->ChangeDirectory(folder);
        BlockMemory blocks;
        OutputRoots roots;
        BuildSite(machine, {.UploadCommand = {}, .addresses = {}, .program_start = clock.Now()},
                  blocks, roots);
    }

    /// Every page of an adoption gives back its old bytes, or lines.
    static void ExpectSame(const Adoption& adoption)
    {
        for (const AdoptedPage& page : adoption.pages)
            EXPECT_NE(page.comparison.likeness, Likeness::different)
                << page.name << ": " << page.comparison.was << " | " << page.comparison.is;
    }

    static std::string WayOf(const Adoption& adoption, std::string_view name)
    {
        const auto page = std::ranges::find(adoption.pages, name, &AdoptedPage::name);
        return page == adoption.pages.end() ? "not there" : std::string(page->way);
    }

    std::unique_ptr<Drives> files = MakeDriveFiles({{'C', Root().string()}});
    FrozenClock clock{{2004, 3, 5, 14, 7, 9}};
    HeldClipboard clipboard;
    test::StartRecorder programs;
    test::RecordingReporter reporter;
    HeaderPictureLoader pictures{*files};
    Machine machine{*files, *files, clock, clipboard, programs, reporter, pictures};
};

} // namespace kiv
