// A drive C in a folder of its own, for the tests of files on a real disk.
#pragma once

#include "platform/drives.h"
#include "platform/run_error.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <stdlib.h>
#include <string>
#include <string_view>
#include <sys/stat.h>

namespace kiv {

class DriveTest : public testing::Test {
  protected:
    DriveTest()
    {
        std::string folder = (std::filesystem::temp_directory_path() / "kiv-XXXXXX").string();
        top = mkdtemp(folder.data());
        root = top + "/c";
        std::filesystem::create_directory(root);
        files = MakeDriveFiles({{'C', root}});
        files->ChangeDirectory("C:\\");
    }

    ~DriveTest() override
    {
        std::error_code ignored;
        std::filesystem::remove_all(top, ignored);
    }

    /// Lays a file down behind the program's back.
    void Put(const std::string& name, std::string_view bytes = "x") const
    {
        std::ofstream(root + "/" + name, std::ios::binary) << bytes;
    }

    void PutFolder(const std::string& name) const
    {
        std::filesystem::create_directories(root + "/" + name);
    }

    std::string Content(const std::string& name) const
    {
        std::ifstream file(root + "/" + name, std::ios::binary);
        std::ostringstream content;
        content << file.rdbuf();
        return content.str();
    }

    /// The native names in a folder of the drive.
    std::set<std::string> NamesIn(const std::string& folder = ".") const
    {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(root + "/" + folder))
            names.insert(entry.path().filename().string());
        return names;
    }

    struct stat State(const std::string& name) const
    {
        struct stat state {};
        lstat((root + "/" + name).c_str(), &state);
        return state;
    }

    std::string top;  // the test's folder
    std::string root; // drive C
    std::unique_ptr<Files> files;
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
