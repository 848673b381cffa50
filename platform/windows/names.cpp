#include "platform/windows/names.h"

#include "platform/drive_path.h"
#include "platform/file_errors.h"
#include "platform/windows/api.h"
#include "platform/windows/folders.h"
#include "platform/windows/paths.h"
#include "platform/windows/wide_text.h"
#include "text/text.h"
#include "text/windows1252.h"

namespace kiv {

namespace {

/// Finds the name in a folder that a text with references stands for. 0 or an error number.
DWORD FindByReference(const std::wstring& folder, std::string_view text, std::wstring& found)
{
    WindowsState state;
    const DWORD error = StateOfName(InNativeFolder(folder, found), state);
    if (!IsAbsent(error))
        return error;
    const std::string wanted = UpperCase(text);
    bool is_there = false;
    const DWORD fault = ForEachName(folder, [&](const WindowsName& name) {
        is_there = UpperCase(FromWide(name.native)) == wanted;
        if (is_there)
            found = name.native;
        return !is_there;
    });
    return fault == 0 && !is_there ? ERROR_FILE_NOT_FOUND : fault;
}

} // namespace

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

bool WindowsNames::IsTooLong(std::string_view absolute) const
{
    constexpr std::size_t kLongest = 32766; // units of UTF-16, with what stands for the drive
    if (!HasDrive(absolute))
        return false;
    const std::size_t root = Root(absolute[0]).size();
    const std::string_view below = FromChar(absolute, 3);
    // References are longer than what they stand for.
    return root + below.size() > kLongest && root + WideFromExact(below).size() > kLongest;
}

std::wstring WindowsNames::Native(std::string_view absolute) const
{
    std::wstring native = Root(absolute[0]);
    const std::string_view below = FromChar(absolute, 4);
    if (below.empty())
        return native.back() == L':' ? native + L"\\" : native;
    if (!Contains(below, "&#"))
        return native + L"\\" + WideText(below);
    DWORD error = 0;
    for (const std::string_view part : Split(below, '\\')) {
        std::wstring name = WideText(part);
        if (error == 0 && Contains(part, "&#")) // there is nothing below a name that is not there
            error = FindByReference(native, part, name);
        native += L"\\" + name;
    }
    if (error != 0 && !IsAbsent(error))
        RefuseWith("look at", absolute, static_cast<int>(error));
    return native;
}

std::wstring WindowsNames::NativeOfNew(std::string_view absolute) const
{
    return InNativeFolder(Native(FolderOf(absolute)), WideText(NameOf(absolute)));
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
