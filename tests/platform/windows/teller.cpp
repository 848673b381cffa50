// Writes its folder and its arguments, in UTF-8, to the file that KIV_TOLD names.
#include "platform/windows/api.h"
#include "platform/windows/wide_text.h"

#include <filesystem>
#include <fstream>
#include <shellapi.h>

int main()
{
    const std::filesystem::path told = _wgetenv(L"KIV_TOLD");
    std::filesystem::path part = told;
    part += ".part";
    {
        std::ofstream file(part, std::ios::binary);
        file << kiv::Utf8FromWide(std::filesystem::current_path().wstring()) << '\n';
        int count = 0;
        wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
        for (int i = 1; i < count; ++i)
            file << '[' << kiv::Utf8FromWide(words[i]) << "]\n";
        LocalFree(words);
    }
    std::filesystem::rename(part, told);
}
