#include "platform/drive_files_common.h"
#include "platform/programs.h"
#include "platform/run_error.h"
#include "platform/windows_system.h"
#include "platform/windows_text.h"
#include "text/text.h"

namespace kiv {

void SystemPrograms::Start(const std::string& command_line, bool minimised)
{
    // The system itself tries the readings of an unquoted program path, and may write into the text
    // it is given.
    std::wstring line = WideText(command_line);
    const std::wstring folder = WideFromUtf8(files_.ToNative(files_.CurrentDirectory()));
    STARTUPINFOW start{};
    start.cb = sizeof start;
    if (minimised) {
        start.dwFlags = STARTF_USESHOWWINDOW;
        start.wShowWindow = SW_SHOWMINNOACTIVE;
    }
    PROCESS_INFORMATION process{};
    if (::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, folder.c_str(),
                         &start, &process) == 0) {
        const std::string reason = SystemReason(static_cast<int>(::GetLastError()));
        std::string text("cannot start ");
        text.append(Trim(command_line)).append(": ").append(reason);
        throw RunError(ErrorKind::file, std::move(text));
    }
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
}

} // namespace kiv
