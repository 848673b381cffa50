#include "platform/file_errors.h"
#include "platform/windows/api.h"
#include "platform/windows/drive_files.h"

#include <algorithm>

namespace kiv {

std::string WindowsDriveFiles::PossibleFile(std::string_view path, std::string_view action) const
{
    std::string absolute = FileToUse(path, action);
    if (!HasGoodNames(absolute))
        Refuse(action, absolute, "Windows allows no such name");
    return absolute;
}

WindowsHandle WindowsDriveFiles::OpenToRead(const std::string& absolute, std::uint64_t& size)
{
    TellOpening(absolute);
    const std::wstring native = names_.Native(absolute);
    WindowsHandle file = OpenWindowsFile(native);
    const DWORD error = file.IsOpen() ? SizeOf(file, size) : ::GetLastError();
    if (error != 0 && LookForFolder(native) == 0)
        Refuse("read", absolute, kNoPlainFile);
    if (error != 0)
        RefuseWith("read", absolute, static_cast<int>(error));
    return file;
}

std::string WindowsDriveFiles::ReadFile(std::string_view path)
{
    const std::string absolute = PossibleFile(path, "read");
    std::uint64_t size = 0;
    const WindowsHandle file = OpenToRead(absolute, size);
    const auto refuse = [&](DWORD error) {
        if (error != 0)
            RefuseWith("read", absolute, static_cast<int>(error));
    };
    std::string bytes;
    const auto read = [&](std::size_t count) {
        refuse(ReadBytes(file, 0, count, bytes));
        return bytes.size();
    };
    ReadWhole(absolute, size, read, [&] {
        refuse(SizeOf(file, size));
        return size;
    });
    TellRead(absolute, bytes);
    return bytes;
}

std::string WindowsDriveFiles::ReadPart(std::string_view path, std::uint64_t offset,
                                        std::size_t count)
{
    const std::string absolute = PossibleFile(path, "read");
    std::uint64_t size = 0;
    const WindowsHandle file = OpenToRead(absolute, size);
    std::string bytes;
    if (offset >= size)
        return bytes;
    const auto there = static_cast<std::size_t>(std::min<std::uint64_t>(count, size - offset));
    if (const DWORD error = ReadBytes(file, offset, there, bytes))
        RefuseWith("read", absolute, static_cast<int>(error));
    return bytes;
}

} // namespace kiv
