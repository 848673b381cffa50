#include "platform/posix/page_draft.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace kiv {

FormerFile OldPage::Former() const
{
    std::string bytes;
    if (!held.IsOpen() || Size() > kLargestFormer || ReadBytes(held.Get(), 0, Size(), bytes) != 0)
        return FormerFile::Unknown();
    return FormerFile::Holding(bytes);
}

int LookAtOldPage(const std::string& native, std::string_view bytes, OldPage& old)
{
    old.held.Reset(::open(native.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW));
    if (!old.held.IsOpen() && errno == ELOOP)
        return EEXIST; // has become a link
    // A file that may not be read may still be replaced.
    const bool known = old.held.IsOpen() ? ::fstat(old.held.Get(), &old.state) == 0
                                         : ::stat(native.c_str(), &old.state) == 0;
    if (!known)
        return errno;
    if (!S_ISREG(old.state.st_mode))
        return EEXIST;
    old.holds_bytes =
        old.held.IsOpen() && old.Size() == bytes.size() && HoldsBytes(old.held.Get(), bytes);
    return 0;
}

int MayWrite(const std::string& native)
{
    return ::faccessat(AT_FDCWD, native.c_str(), W_OK, AT_EACCESS) == 0 ? 0 : errno;
}

PreparedPage PosixPageDraft::Make()
{
    if (File().exists)
        return MakeOver();
    const Draft draft{
        .native = File().native, .bytes = Bytes(), .tells_at_closing = tells_at_closing_};
    if (FillNew(draft, filled_) != 0)
        return {};
    return {PreparedPage::Outcome::drafted, FormerFile::Absent()};
}

PreparedPage PosixPageDraft::MakeOver()
{
    const std::string& native = File().native;
    OldPage old;
    if (LookAtOldPage(native, Bytes(), old) != 0)
        return {};
    if (old.holds_bytes)
        return {PreparedPage::Outcome::held};
    if (MayWrite(native) != 0)
        return {};
    PreparedPage page{PreparedPage::Outcome::drafted};
    if (!IsFormerKnown())
        page.former = old.Former();
    const Draft draft{.native = native, .bytes = Bytes(), .tells_at_closing = tells_at_closing_};
    if (FillOver(draft, old.state, page.lost, filled_) != 0)
        return {};
    return page;
}

bool PosixPageDraft::Put()
{
    const std::string& native = File().native;
    return (File().exists ? PutOver(native, filled_) : PutNew(native, filled_)) == 0;
}

} // namespace kiv
