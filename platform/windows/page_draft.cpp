#include "platform/windows/page_draft.h"

#include "platform/windows/api.h"
#include "platform/windows/handle.h"
#include "platform/windows/wide_text.h"

#include <cstddef>
#include <utility>

namespace kiv {

unsigned long LookAtOldPage(const std::wstring& native, std::string_view bytes, OldPage& old)
{
    if (const DWORD error = StateOf(native, old.state))
        return error;
    if (old.state.is_folder)
        return ERROR_ALREADY_EXISTS;
    if (old.state.size == bytes.size()) {
        const WindowsHandle held = OpenWindowsFile(native);
        old.holds_bytes = held.IsOpen() && HoldsBytes(held, bytes);
    }
    return 0;
}

FormerFile FormerOf(const std::wstring& native, const OldPage& old)
{
    if (old.state.size > kLargestFormer)
        return FormerFile::Unknown();
    std::string bytes;
    const WindowsHandle held = OpenWindowsFile(native);
    const auto size = static_cast<std::size_t>(old.state.size);
    if (!held.IsOpen() || ReadBytes(held, 0, size, bytes) != 0)
        return FormerFile::Unknown();
    return FormerFile::Holding(bytes);
}

PreparedPage WindowsPageDraft::Make()
{
    const std::wstring native = WideFromUtf8(File().native);
    if (File().exists)
        return MakeOver(native);
    if (FillNew({native, Bytes()}, filled_) != 0)
        return {};
    return {PreparedPage::Outcome::drafted, FormerFile::Absent()};
}

PreparedPage WindowsPageDraft::MakeOver(const std::wstring& native)
{
    OldPage old;
    if (LookAtOldPage(native, Bytes(), old) != 0)
        return {};
    if (old.holds_bytes)
        return {PreparedPage::Outcome::held};
    PreparedPage page{PreparedPage::Outcome::drafted};
    if (!IsFormerKnown())
        page.former = FormerOf(native, old);
    if (FillOver({native, Bytes()}, old.state, page.lost, filled_) != 0)
        return {};
    return page;
}

bool WindowsPageDraft::Put()
{
    const std::wstring native = WideFromUtf8(File().native);
    return (File().exists ? PutOver(native, filled_) : PutNew(native, filled_)) == 0;
}

} // namespace kiv
