// Folders and files for tests.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

/// A new folder, gone with the object.
class TemporaryFolder {
  public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const std::filesystem::path& Path() const { return path_; }

  private:
    std::filesystem::path path_;
};

/// A folder of a test's own that stands for drive C:, with the folders "site" and "utils" in it.
/// Names are native ones below it, "site/a.txt"; what is laid down is laid down behind the
/// program's back.
class DriveFolder {
  public:
    DriveFolder();

    const std::filesystem::path& Root() const { return folder_.Path(); }
    std::filesystem::path Native(const std::string& below) const;
    void Put(const std::string& below, const std::string& bytes = "") const;
    void PutFolder(const std::string& below) const;
    std::string Content(const std::string& below) const;
    bool Exists(const std::string& below) const;
    /// The names in a folder, in byte order.
    std::vector<std::string> NamesIn(const std::string& below) const;

  private:
    TemporaryFolder folder_;
};

/// A path from its UTF-8 form and back, whatever the system takes narrow text for.
std::filesystem::path PathOf(std::string_view utf8);
std::string TextOf(const std::filesystem::path& path);
/// The same with the system's own separators.
std::string NativeTextOf(std::filesystem::path path);

/// Bytes by path below a folder, "site/a.htm".
using FileTree = std::map<std::string, std::string>;

std::string ReadBytes(const std::filesystem::path& path);

/// Writes a file and makes its folder.
void WriteBytes(const std::filesystem::path& path, const std::string& bytes);

/// Every plain file below a folder; none when the folder is missing.
FileTree ReadTree(const std::filesystem::path& root);

/// Bytes as a person can read them in a failure.
std::string Shown(const std::string& bytes);

/// What differs between two trees; "" when nothing does.
std::string Differences(const FileTree& expected, const FileTree& actual);

} // namespace kiv::test
