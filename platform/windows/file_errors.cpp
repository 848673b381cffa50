#include "platform/file_errors.h"

#include "platform/windows/api.h"
#include "platform/windows/wide_text.h"

#include <array>

namespace kiv {

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
