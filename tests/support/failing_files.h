// Files that fail at a step of the test's choice.
#pragma once

#include "platform/files.h"
#include "platform/run_error.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

/// Passes everything on until the given step, which fails like a disk that is full or taken away.
class FailingFiles : public Files {
  public:
    FailingFiles(Files& files, int failing_step) : files_(files), left_(failing_step) {}

    bool Failed() const { return left_ < 0; }

    const std::string& CurrentDirectory() const override { return files_.CurrentDirectory(); }
    void ChangeDirectory(std::string_view path) override { Step().ChangeDirectory(path); }
    bool FileExists(std::string_view path) override { return Step().FileExists(path); }
    bool FolderExists(std::string_view path) override { return Step().FolderExists(path); }
    std::string RealFolder(std::string_view path) override { return Step().RealFolder(path); }
    bool IsLink(std::string_view path) override { return Step().IsLink(path); }
    FileStamp Stamp(std::string_view path) override { return Step().Stamp(path); }
    std::string ReadFile(std::string_view path) override { return Step().ReadFile(path); }
    std::string ReadPart(std::string_view path, std::uint64_t offset, std::size_t count) override
    {
        return Step().ReadPart(path, offset, count);
    }
    OutputFile Open(std::string_view path) override { return Step().Open(path); }
    std::string PlaceOf(const OutputFile& file) override { return files_.PlaceOf(file); }
    void Commit(const OutputFile& file, std::string_view bytes) override
    {
        Step().Commit(file, bytes);
    }
    void AppendToFile(std::string_view path, std::string_view bytes) override
    {
        Step().AppendToFile(path, bytes);
    }
    void CommitSource(const OutputFile& file, std::string_view bytes,
                      const Expectation& expected) override
    {
        Step().CommitSource(file, bytes, expected);
    }
    void FlushWritten() override { Step().FlushWritten(); }
    const std::vector<std::string>& Losses() const override { return files_.Losses(); }
    std::unique_ptr<FolderLock> LockFolder(std::string_view folder) override
    {
        return Step().LockFolder(folder);
    }
    bool MakeFolder(std::string_view path) override { return Step().MakeFolder(path); }
    bool DeleteFile(std::string_view path) override { return Step().DeleteFile(path); }
    NameChange RenameFile(std::string_view from, std::string_view to) override
    {
        return Step().RenameFile(from, to);
    }
    NameChange RenameExactly(std::string_view from, std::string_view to) override
    {
        return Step().RenameExactly(from, to);
    }
    bool NameIsTooLong(std::string_view exact) override { return files_.NameIsTooLong(exact); }
    bool IsHalfRenamed(std::string_view from, std::string_view to) override
    {
        return Step().IsHalfRenamed(from, to);
    }
    bool FinishRename(std::string_view from, std::string_view to) override
    {
        return Step().FinishRename(from, to);
    }
    FolderListing List(std::string_view folder, std::string_view pattern) override
    {
        return Step().List(folder, pattern);
    }
    std::vector<std::string> ListFolders(std::string_view folder) override
    {
        return Step().ListFolders(folder);
    }
    const std::vector<std::string>& Written() const override { return files_.Written(); }
    std::vector<WrittenFile> WrittenFiles() override { return files_.WrittenFiles(); }
    void Refresh() override { files_.Refresh(); }

  private:
    Files& Step()
    {
        if (left_ >= 0 && left_-- == 0)
            throw RunError(ErrorKind::file, "no space left on the device");
        return files_;
    }

    Files& files_;
    int left_;
};

} // namespace kiv::test
