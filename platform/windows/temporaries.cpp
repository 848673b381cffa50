#include "platform/windows/temporaries.h"

#include "platform/temporary_names.h"
#include "platform/windows/api.h"
#include "platform/windows/folders.h"
#include "platform/windows/handle.h"
#include "platform/windows/paths.h"
#include "platform/windows/wide_text.h"

#include <vector>

namespace kiv {

namespace {

/// A draft is open, and so safe from others, but for the moment between its closing and its move;
/// the process is what tells then. A process that has ended may still be known to Windows.
bool IsGone(int number)
{
    const WindowsHandle process(::OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(number)));
    if (!process.IsOpen())
        return ::GetLastError() == ERROR_INVALID_PARAMETER;
    return ::WaitForSingleObject(process.Get(), 0) == WAIT_OBJECT_0;
}

} // namespace

std::wstring TemporaryName(const std::wstring& native)
{
    const auto process = static_cast<int>(::GetCurrentProcessId());
    return InNativeFolder(NativeFolderOf(native), WideText(NewTemporaryName(process)));
}

void DeleteLeftTemporaries(const std::wstring& folder)
{
    std::vector<std::wstring> left;
    // What cannot be listed stays for another run.
    ForEachName(folder, [&](const WindowsName& name) {
        const std::string text = FromWide(name.native);
        const int process = name.is_folder ? 0 : ProcessOfTemporary(text);
        // Swaps are for another system's program, on a disk that both use, to look at.
        if (process != 0 && !ReadSwapName(text) && IsGone(process))
            left.push_back(InNativeFolder(folder, name.native));
        return true;
    });
    for (const std::wstring& native : left)
        ::DeleteFileW(native.c_str());
}

} // namespace kiv
