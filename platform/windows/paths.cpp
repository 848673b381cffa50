#include "platform/windows/paths.h"

#include "platform/windows/api.h"

#include <string_view>

namespace kiv {

namespace {

// Paths in these forms may be long, and names in them are taken as written.
constexpr std::wstring_view kLongPath = LR"(\\?\)";
constexpr std::wstring_view kLongShare = LR"(\\?\UNC)";

} // namespace

std::wstring NativeFolderOf(std::wstring_view native)
{
    return std::wstring(native.substr(0, native.rfind(L'\\')));
}

std::wstring NativeNameOf(std::wstring_view native)
{
    return std::wstring(native.substr(native.rfind(L'\\') + 1));
}

std::wstring InNativeFolder(std::wstring folder, std::wstring_view name)
{
    if (!folder.ends_with(L'\\'))
        folder += L'\\';
    return folder.append(name);
}

std::wstring UpperCaseOf(const std::wstring& native)
{
    const int size = static_cast<int>(native.size());
    std::wstring upper = native;
    ::LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_UPPERCASE, native.data(), size, upper.data(), size,
                    nullptr, nullptr, 0);
    return upper;
}

std::wstring ProcessPath(const std::wstring& path)
{
    const DWORD size = ::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    std::wstring full(size, L'\0');
    full.resize(::GetFullPathNameW(path.c_str(), size, full.data(), nullptr));
    return full;
}

std::wstring WithoutSeparator(std::wstring path)
{
    while (!path.empty() && path.back() == L'\\')
        path.pop_back();
    return path;
}

std::wstring LongForm(const std::wstring& full)
{
    const bool share = full.substr(0, 2) == LR"(\\)";
    return share ? std::wstring(kLongShare) + full.substr(1) : std::wstring(kLongPath) + full;
}

std::wstring PlainForm(const std::wstring& native)
{
    if (native.substr(0, kLongShare.size()) == kLongShare)
        return L"\\" + native.substr(kLongShare.size());
    return native.substr(kLongPath.size());
}

} // namespace kiv
