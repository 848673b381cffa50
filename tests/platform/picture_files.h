// Pictures for a loader, held in memory.
#pragma once

#include "platform/files.h"
#include "platform/run_error.h"

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// Holds pictures in memory and counts the bytes that are read.
class PictureFiles : public Files {
  public:
    std::map<std::string, std::string, std::less<>> pictures;
    std::size_t read = 0;

    std::string ReadPart(std::string_view path, std::uint64_t offset, std::size_t count) override
    {
        const auto picture = pictures.find(path);
        if (picture == pictures.end())
            throw RunError(ErrorKind::file, "no such file");
        const std::string& bytes = picture->second;
        const std::size_t from = std::min<std::size_t>(offset, bytes.size());
        std::string part = bytes.substr(from, count);
        read += part.size();
        return part;
    }

    const std::string& CurrentDirectory() const override { return unused_; }
    void ChangeDirectory(std::string_view /*path*/) override {}
    bool FileExists(std::string_view path) override { return pictures.count(path) != 0; }
    bool FolderExists(std::string_view /*path*/) override { return false; }
    FileStamp Stamp(std::string_view /*path*/) override { return {}; }
    std::string ReadFile(std::string_view path) override { return ReadPart(path, 0, SIZE_MAX); }
    OutputFile Open(std::string_view /*path*/) override { return {}; }
    void Commit(const OutputFile& /*file*/, std::string_view /*bytes*/) override {}
    void AppendToFile(std::string_view /*path*/, std::string_view /*bytes*/) override {}
    bool MakeFolder(std::string_view /*path*/) override { return false; }
    void DeleteFile(std::string_view /*path*/) override {}
    void RenameFile(std::string_view /*from*/, std::string_view /*to*/) override {}
    std::vector<std::string> ListFiles(std::string_view /*folder*/,
                                       std::string_view /*pattern*/) override
    {
        return {};
    }
    std::vector<std::string> ListFolders(std::string_view /*folder*/) override { return {}; }
    std::string DriveLetters() override { return {}; }
    std::string FromNative(std::string_view /*utf8*/) override { return {}; }
    std::string ToNative(std::string_view /*path*/) override { return {}; }
    const std::vector<std::string>& Written() const override { return written_; }
    void Refresh() override {}

  private:
    std::string unused_;
    std::vector<std::string> written_;
};

} // namespace kiv
