// A drive C in a folder of its own, for the tests of files on a real disk.
#pragma once

#include "platform/drives.h"
#include "platform/run_error.h"
#include "tests/support/folders.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <string_view>
#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace kiv {

class DriveTest : public testing::Test {
  protected:
    DriveTest()
    {
        std::filesystem::create_directory(root);
        files = MakeDriveFiles({{'C', root}});
        files->ChangeDirectory("C:\\");
    }

    /// Lays a file down behind the program's back.
    void Put(const std::string& name, std::string_view bytes = "x") const
    {
        std::ofstream(Native(name), std::ios::binary) << bytes;
    }

    void PutFolder(const std::string& name) const
    {
        std::filesystem::create_directories(Native(name));
    }

    std::string Content(const std::string& name) const { return test::ReadBytes(Native(name)); }

    /// The native names in a folder of the drive.
    std::set<std::string> NamesIn(const std::string& folder = ".") const
    {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(Native(folder)))
            names.insert(test::TextOf(entry.path().filename()));
        return names;
    }

    /// The native path of a name on the drive, "Sub/a.txt".
    std::filesystem::path Native(const std::string& name) const
    {
        return test::PathOf(root) / test::PathOf(name);
    }

    /// The same as Files::ToNative gives it.
    std::string Below(const std::string& name) const
    {
        std::string path = test::TextOf(Native(name));
#ifdef _WIN32
        std::replace(path.begin(), path.end(), '/', '\\');
#endif
        return path;
    }

#ifndef _WIN32
    struct stat State(const std::string& name) const
    {
        struct stat state {};
        lstat((root + "/" + name).c_str(), &state);
        return state;
    }
#endif

    test::TemporaryFolder own;
    std::string top = own.Path().string();          // the test's folder
    std::string root = (own.Path() / "c").string(); // drive C
    std::unique_ptr<Drives> files;
};

using Names = std::set<std::string>;

/// The kind and text of the error that `action` throws; empty when there is none.
template <typename Action>
std::string ErrorOf(Action action)
{
    try {
        action();
    } catch (const RunError& error) {
        return std::string(KindName(error.kind)) + ": " + error.text;
    }
    return {};
}

} // namespace kiv
