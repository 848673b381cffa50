#include "platform/file_errors.h"

#include "platform/windows/api.h"
#include "platform/windows/patience.h"
#include "platform/windows/wide_text.h"

#include <algorithm>
#include <array>

namespace kiv {

namespace {

struct ErrorHint {
    int error;
    std::string_view hint;
};

constexpr auto kHints = std::to_array<ErrorHint>({
    {ERROR_ACCESS_DENIED, kNoRightHint},
    {ERROR_FILE_READ_ONLY, "Take the read-only mark off the file."},
    {ERROR_FILE_NOT_FOUND, kNothingThereHint},
    {ERROR_PATH_NOT_FOUND, kNothingThereHint},
    {ERROR_DISK_FULL, kFullDiskHint},
    {ERROR_HANDLE_DISK_FULL, kFullDiskHint},
    {ERROR_WRITE_PROTECT, kReadOnlyDiskHint},
    {ERROR_SHARING_VIOLATION, kInUseHint},
    {ERROR_LOCK_VIOLATION, kInUseHint},
    {ERROR_CRC, kFailingDiskHint},
    {ERROR_IO_DEVICE, kFailingDiskHint},
    {ERROR_TOO_MANY_OPEN_FILES, kManyFilesHint},
});

} // namespace

std::string_view SystemHint(int error)
{
    const auto known = std::ranges::find(kHints, error, &ErrorHint::error);
    return known == kHints.end() ? std::string_view() : known->hint;
}

bool SystemMayPass(int error)
{
    return IsInUse(static_cast<DWORD>(error));
}

std::string SystemWords(int error)
{
    if (error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION)
        return "another program has the file open";
    if (error == ERROR_FILE_READ_ONLY)
        return "the file is read-only";
    std::array<wchar_t, 512> words{};
    const DWORD size = ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                        nullptr, static_cast<DWORD>(error), 0, words.data(),
                                        static_cast<DWORD>(words.size()), nullptr);
    return size > 0 ? FromWide({words.data(), size}) : "error " + std::to_string(error);
}

} // namespace kiv
