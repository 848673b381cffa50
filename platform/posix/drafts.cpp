#include "platform/posix/drafts.h"

#include "platform/posix/descriptor.h"
#include "platform/posix/moving.h"
#include "platform/posix/paths.h"
#include "platform/posix/temporaries.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace kiv {

namespace {

constexpr mode_t kNewMode = 0666; // less the process's mask
constexpr mode_t kPrivateMode = 0600;

/// The file whose place the draft takes; none for a new one.
struct Old {
    const struct stat* state = nullptr;
    Lost* lost = nullptr;

    mode_t DraftMode() const { return state == nullptr ? kNewMode : kPrivateMode; }
};

/// Content, owner, mode and whatever else there is to keep.
int Fill(int fd, const Draft& draft, const Old& old)
{
    int error = WriteBytes(fd, draft.bytes);
    if (error == 0 && old.state != nullptr) {
        old.lost->clear();
        error = TakeOver(fd, draft.native, *old.state, *old.lost);
    }
    return error == 0 && draft.is_source ? FlushFile(fd) : error;
}

bool HoldsContent(const std::string& native, std::string_view content)
{
    const Descriptor file(::open(native.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW));
    struct stat state {};
    return file.IsOpen() && ::fstat(file.Get(), &state) == 0 && S_ISREG(state.st_mode) &&
           static_cast<std::size_t>(state.st_size) == content.size() &&
           HoldsBytes(file.Get(), content);
}

/// Gives back its place to what somebody else has put there while the draft was on its way.
void GiveBack(const std::string& temporary, const std::string& native, const struct stat& draft)
{
    const int error = Exchange(temporary, native);
    // When not the draft has come back but something newer still, then that is the one to stay.
    const bool is_given_back =
        IsSameFile(temporary, draft) || (error == 0 && Exchange(temporary, native) == 0);
    if (is_given_back) {
        ::unlink(temporary.c_str());
        return;
    }
    const int moved = error != 0 && IsSameFile(native, draft) ? MoveOver(temporary, native)
                                                              : RenameToFree(temporary, native);
    if (moved != 0)
        SaveBeside(temporary, native);
}

/// Renames a draft to what tells, should this process end now, whose the file of that name is.
int NameForSwap(std::string& temporary, const Draft& draft)
{
    int error = EEXIST;
    while (error == EEXIST) {
        std::string swap = TemporarySwapName(draft.native, draft.expected.content, draft.bytes);
        error = RenameToFree(temporary, swap);
        if (error == 0)
            temporary = std::move(swap);
    }
    return error;
}

/// Puts a draft over a file that must still hold what it held when it was read. First the two
/// change places; then what has come out of there is looked at, where nobody reaches it any more.
int MoveOverExpected(std::string temporary, const Draft& draft)
{
    struct stat state {};
    int error = ::lstat(temporary.c_str(), &state) == 0 ? NameForSwap(temporary, draft) : errno;
    if (error != 0) {
        ::unlink(temporary.c_str());
        return error;
    }
    error = Exchange(temporary, draft.native);
    if (error == 0) {
        if (HoldsContent(temporary, draft.expected.content))
            return ::unlink(temporary.c_str()) == 0 ? 0 : errno;
        GiveBack(temporary, draft.native, state);
        return kChangedMeanwhile;
    }
    if (error == ENOSYS) // a look before is all that is left then
        error = HoldsContent(draft.native, draft.expected.content)
                    ? MoveOver(temporary, draft.native)
                    : kChangedMeanwhile;
    if (error != 0 && IsSameFile(temporary, state))
        ::unlink(temporary.c_str());
    return error == ENOENT ? kChangedMeanwhile : error;
}

/// Puts a draft that bears a temporary name in its place, or takes it away.
int MoveIntoPlace(const std::string& temporary, const Draft& draft, const Old& old)
{
    if (old.state != nullptr && draft.expected.kind == Expectation::Kind::content)
        return MoveOverExpected(temporary, draft);
    const int error = old.state == nullptr ? RenameToFree(temporary, draft.native)
                                           : MoveOver(temporary, draft.native);
    if (error != 0)
        ::unlink(temporary.c_str());
    return error;
}

/// Writes under a temporary name, which stays empty when that fails.
int FillNamed(const Draft& draft, const Old& old, std::string& temporary)
{
    std::string name;
    int fd = -1;
    do {
        name = TemporaryName(draft.native);
        fd = ::open(name.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, old.DraftMode());
    } while (fd < 0 && errno == EEXIST);
    if (fd < 0)
        return errno;
    Descriptor opened(fd);
    int error = Fill(opened.Get(), draft, old);
    if (const int close_error = opened.Close(); error == 0)
        error = close_error;
    if (error == 0)
        temporary = std::move(name);
    else
        ::unlink(name.c_str());
    return error;
}

/// For file systems that want a name for every file.
int PlaceNamed(const Draft& draft, const Old& old)
{
    std::string temporary;
    const int error = FillNamed(draft, old, temporary);
    return error == 0 ? MoveIntoPlace(temporary, draft, old) : error;
}

#ifdef O_TMPFILE

/// Gives the open file, which has no name yet, a name that is free.
int TryToGiveName(int fd, const std::string& native)
{
    if (::linkat(fd, "", AT_FDCWD, native.c_str(), AT_EMPTY_PATH) == 0)
        return 0;
    if (errno != ENOENT)
        return errno;
    // Older kernels allow that to root alone, and say "no such file" to everybody else.
    const std::string self = "/proc/self/fd/" + std::to_string(fd);
    const int result =
        ::linkat(AT_FDCWD, self.c_str(), AT_FDCWD, native.c_str(), AT_SYMLINK_FOLLOW);
    return result == 0 ? 0 : errno;
}

/// The same, where it was done in spite of an error.
int GiveName(int fd, const std::string& native)
{
    const int error = TryToGiveName(fd, native);
    struct stat state {};
    const bool is_done = MayBeDone(error) && ::fstat(fd, &state) == 0 && IsSameFile(native, state);
    return is_done ? 0 : error;
}

int GiveTemporaryName(int fd, const std::string& native, std::string& temporary)
{
    int error = EEXIST;
    while (error == EEXIST) {
        temporary = TemporaryName(native);
        error = GiveName(fd, temporary);
    }
    return error;
}

int OpenUnnamed(const Draft& draft, const Old& old)
{
    const std::string folder(NativeFolderOf(draft.native));
    return ::open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, old.DraftMode());
}

bool SaysNoUnnamed(int error)
{
    return error == EOPNOTSUPP || error == EISDIR || error == EINVAL;
}

/// The draft has no name before it is whole, so nothing is left behind when the process is killed.
int PlaceAny(const Draft& draft, const Old& old)
{
    Descriptor opened(OpenUnnamed(draft, old));
    if (!opened.IsOpen())
        return SaysNoUnnamed(errno) ? PlaceNamed(draft, old) : errno;
    if (const int error = Fill(opened.Get(), draft, old))
        return error;
    // A free place is taken at once, another by way of a temporary name.
    const bool is_new = old.state == nullptr;
    std::string temporary;
    const int error = is_new ? GiveName(opened.Get(), draft.native)
                             : GiveTemporaryName(opened.Get(), draft.native, temporary);
    if (error == 0) {
        const int close_error = opened.Close();
        if (is_new)
            return close_error;
        if (close_error == 0)
            return MoveIntoPlace(temporary, draft, old);
        ::unlink(temporary.c_str());
        return close_error;
    }
    // Where a draft cannot get a name, for want of /proc or by a ban on links, it begins with one.
    return error == EEXIST ? error : PlaceNamed(draft, old);
}

/// What a file system only tells at closing is told while the file stays open: nothing that is
/// wrong with the content may come to light when it has its place.
int FlushByClosing(int fd)
{
    const int copy = ::fcntl(fd, F_DUPFD_CLOEXEC, 0);
    return copy >= 0 && ::close(copy) == 0 ? 0 : errno;
}

int FillApart(const Draft& draft, const Old& old, FilledDraft& filled)
{
    Descriptor opened(OpenUnnamed(draft, old));
    if (!opened.IsOpen())
        return SaysNoUnnamed(errno) ? FillNamed(draft, old, filled.temporary) : errno;
    if (const int error = Fill(opened.Get(), draft, old))
        return error;
    const int error = draft.tells_at_closing ? FlushByClosing(opened.Get()) : 0;
    filled.unnamed.emplace(std::move(opened));
    return error;
}

int GiveName(const FilledDraft& filled, const std::string& native)
{
    return GiveName(filled.unnamed->Get(), native);
}

/// Right before the draft is put in its place: a process that is ended in between leaves this one.
int GiveTemporaryName(FilledDraft& filled, const std::string& native)
{
    std::string temporary;
    const int error = GiveTemporaryName(filled.unnamed->Get(), native, temporary);
    if (error == 0)
        filled.temporary = std::move(temporary);
    return error;
}

#else

int PlaceAny(const Draft& draft, const Old& old)
{
    return PlaceNamed(draft, old);
}

int FillApart(const Draft& draft, const Old& old, FilledDraft& filled)
{
    return FillNamed(draft, old, filled.temporary);
}

int GiveName(const FilledDraft&, const std::string&)
{
    return ENOSYS;
}

int GiveTemporaryName(FilledDraft&, const std::string&)
{
    return ENOSYS;
}

#endif

int PutInPlace(const Draft& draft, const Old& old)
{
    const int error = PlaceAny(draft, old);
    return error == 0 && draft.is_source ? FlushFolder(std::string(NativeFolderOf(draft.native)))
                                         : error;
}

} // namespace

int PlaceNew(const Draft& draft)
{
    return PutInPlace(draft, {});
}

int PlaceOver(const Draft& draft, const struct stat& old, Lost& lost)
{
    return PutInPlace(draft, {&old, &lost});
}

FilledDraft::~FilledDraft()
{
    if (!temporary.empty())
        ::unlink(temporary.c_str());
}

int FillNew(const Draft& draft, FilledDraft& filled)
{
    return FillApart(draft, {}, filled);
}

int FillOver(const Draft& draft, const struct stat& old, Lost& lost, FilledDraft& filled)
{
    return FillApart(draft, {&old, &lost}, filled);
}

int PutNew(const std::string& native, FilledDraft& filled)
{
    if (filled.unnamed)
        return GiveName(filled, native);
    const int error = RenameToFree(filled.temporary, native);
    if (error == 0)
        filled.temporary.clear();
    return error;
}

int PutOver(const std::string& native, FilledDraft& filled)
{
    if (filled.unnamed)
        if (const int error = GiveTemporaryName(filled, native))
            return error;
    const int error = MoveOver(filled.temporary, native);
    if (error == 0)
        filled.temporary.clear();
    return error;
}

} // namespace kiv
