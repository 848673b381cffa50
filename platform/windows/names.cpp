#include "platform/windows/names.h"

#include "platform/drive_path.h"
#include "platform/windows/api.h"
#include "platform/windows/paths.h"
#include "platform/windows/wide_text.h"
#include "text/text.h"
#include "text/windows1252.h"

namespace kiv {

namespace {

/// The name of a folder that a text with references stands for; the text itself when there is none.
std::wstring FindByReference(const std::wstring& folder, std::string_view text)
{
    std::wstring found = WideText(text);
    if (IsThere(folder + L"\\" + found))
        return found;
    const std::string wanted = UpperCase(text);
    ForEachName(folder, [&](const WindowsName& name) {
        if (UpperCase(FromWide(name.native)) != wanted)
            return true;
        found = name.native;
        return false;
    });
    return found;
}

} // namespace

unsigned long ForEachName(const std::wstring& folder,
                          const std::function<bool(const WindowsName&)>& take)
{
    WIN32_FIND_DATAW entry{};
    const std::wstring all = folder + (folder.back() == L'\\' ? L"*" : L"\\*");
    const HANDLE search =
        ::FindFirstFileExW(all.c_str(), FindExInfoBasic, &entry, FindExSearchNameMatch, nullptr, 0);
    if (search == INVALID_HANDLE_VALUE) {
        const DWORD error = ::GetLastError();
        return error == ERROR_FILE_NOT_FOUND ? 0 : error; // an empty root has not even "."
    }
    DWORD error = 0;
    while (error == 0) {
        const std::wstring_view name(&entry.cFileName[0]);
        const bool is_folder = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if (name != L"." && name != L".." && !take({std::wstring(name), is_folder}))
            break;
        if (::FindNextFileW(search, &entry) == 0)
            error = ::GetLastError();
    }
    ::FindClose(search);
    return error == ERROR_NO_MORE_FILES ? 0 : error;
}

WindowsNames::WindowsNames(const DriveMap& drives)
{
    for (const auto& [letter, folder] : drives) {
        const std::wstring full = WithoutSeparator(ProcessPath(WideFromUtf8(folder)));
        Mapped drive{LongForm(full), AbsolutePath(FromWide(full + L"\\"), {})};
        mapped_.insert_or_assign(ToUpper(letter), std::move(drive));
    }
}

std::wstring WindowsNames::Root(char letter) const
{
    const auto mapped = mapped_.find(letter);
    if (mapped != mapped_.end())
        return mapped->second.native;
    return LongForm(WideText(std::string_view(&letter, 1)) + L":");
}

std::wstring WindowsNames::Native(std::string_view absolute) const
{
    std::wstring native = Root(absolute[0]);
    const std::string_view below = FromChar(absolute, 4);
    if (below.empty())
        return native.back() == L':' ? native + L"\\" : native;
    if (!Contains(below, "&#"))
        return native + L"\\" + WideText(below);
    for (const std::string_view part : Split(below, '\\')) {
        const std::wstring name =
            Contains(part, "&#") ? FindByReference(native, part) : WideText(part);
        native += L"\\" + name;
    }
    return native;
}

std::wstring WindowsNames::NativeOfNew(std::string_view absolute) const
{
    const std::wstring folder = Native(FolderOf(absolute));
    return folder + (folder.back() == L'\\' ? L"" : L"\\") + WideText(NameOf(absolute));
}

std::wstring WindowsNames::Plain(std::string_view absolute) const
{
    return PlainForm(Native(absolute));
}

std::string WindowsNames::ThroughMapped(const std::string& absolute) const
{
    const std::string upper = UpperCase(absolute);
    std::string through;
    std::size_t longest = 0;
    for (const auto& [letter, drive] : mapped_) {
        const std::string folder = UpperCase(WithSeparator(drive.text));
        const bool holds = (upper + "\\").substr(0, folder.size()) == folder;
        if (drive.text.empty() || !holds || folder.size() <= longest)
            continue;
        longest = folder.size();
        const std::string root = std::string(1, letter) + ":\\";
        through = AbsolutePath(root + std::string(FromChar(absolute, longest + 1)), root);
    }
    return through;
}

std::string WindowsNames::FromNative(std::string_view utf8, std::string_view current) const
{
    const std::string text = FromUtf8(utf8);
    const bool has_drive = HasDrive(text);
    const bool from_root = text.size() > 2 && IsSeparator(text[2]);
    if (has_drive && (from_root || mapped_.contains(ToUpper(text[0])))) {
        std::string absolute = AbsolutePath(text, current);
        std::string through = ThroughMapped(absolute);
        return through.empty() ? absolute : through;
    }
    // The process has a directory of its own on each drive.
    const std::wstring start = has_drive ? WideText(FirstChars(text, 2)) + L"." : L".";
    const std::string here = AbsolutePath(FromWide(ProcessPath(start)), {});
    const std::string absolute = AbsolutePath(FromChar(text, has_drive ? 3 : 1), here);
    std::string through = ThroughMapped(absolute);
    // A letter that stands for a folder no longer leads to the place meant.
    const bool leads_there = !absolute.empty() && !mapped_.contains(absolute[0]);
    return through.empty() && leads_there ? absolute : through;
}

std::string WindowsNames::Letters() const
{
    const DWORD drives = ::GetLogicalDrives();
    std::string letters;
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        if ((drives >> (letter - 'A') & 1U) != 0 || mapped_.contains(letter))
            letters.push_back(letter);
    return letters;
}

} // namespace kiv
