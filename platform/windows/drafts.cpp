#include "platform/windows/drafts.h"

#include "platform/windows/api.h"
#include "platform/windows/handle.h"
#include "platform/windows/moving.h"
#include "platform/windows/temporaries.h"

namespace kiv {

namespace {

Durable DurabilityOf(const Draft& draft)
{
    return draft.is_source ? Durable::kAtOnce : Durable::kLater;
}

/// What a draft begins with; of a new file, what its folder gives.
struct DraftBeginning {
    Rights rights;
    DWORD attributes = FILE_ATTRIBUTE_NORMAL;
};

WindowsHandle CreateNew(const std::wstring& native, DraftBeginning& beginning)
{
    SECURITY_ATTRIBUTES rights{sizeof(SECURITY_ATTRIBUTES), beginning.rights.data(), FALSE};
    return WindowsHandle(::CreateFileW(native.c_str(), GENERIC_WRITE, 0,
                                       beginning.rights.empty() ? nullptr : &rights, CREATE_NEW,
                                       beginning.attributes, nullptr));
}

/// Writes a file of a name of its own beside the place.
DWORD Write(const Draft& draft, DraftBeginning beginning, FilledDraft& filled)
{
    DWORD error = ERROR_FILE_EXISTS;
    while (error == ERROR_FILE_EXISTS) {
        std::wstring temporary = TemporaryName(draft.native);
        WindowsHandle file = CreateNew(temporary, beginning);
        error = file.IsOpen() ? WriteBytes(file, draft.bytes) : ::GetLastError();
        if (!file.IsOpen())
            continue;
        if (error == 0 && draft.is_source)
            error = FlushFile(file);
        if (const DWORD fault = file.Close(); error == 0)
            error = fault;
        filled.temporary = std::move(temporary);
    }
    return error;
}

/// What is in its place by a move, which ended with `error`, is no draft any more.
DWORD Put(FilledDraft& filled, DWORD error)
{
    if (error == 0)
        filled.temporary.clear();
    return error;
}

/// The error that keeps a file from being replaced; 0 when nothing does.
DWORD WhyNotReplaced(const std::wstring& native, const WindowsState& old)
{
    if ((old.attributes & FILE_ATTRIBUTE_READONLY) != 0)
        return ERROR_FILE_READ_ONLY;
    // The move would only say "access denied" of a file that another program holds.
    const WindowsHandle file(::CreateFileW(native.c_str(), GENERIC_WRITE | DELETE,
                                           FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                           nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    return file.IsOpen() ? 0 : ::GetLastError();
}

/// How a draft begins for the place of a file: nobody else may read it who could not before.
DWORD BeginLike(const std::wstring& native, const WindowsState& old, DraftBeginning& beginning)
{
    if ((old.attributes & FILE_ATTRIBUTE_ENCRYPTED) != 0)
        beginning.attributes = FILE_ATTRIBUTE_ENCRYPTED;
    return ReadFirstRights(native, beginning.rights);
}

DWORD MoveOverOld(const std::wstring& temporary, const Draft& draft)
{
    return draft.expected.kind == Expectation::Kind::content
               ? MoveOverContent(temporary, draft.native, draft.expected.content)
               : MoveOver(temporary, draft.native, DurabilityOf(draft));
}

} // namespace

unsigned long PlaceNew(const Draft& draft)
{
    FilledDraft filled;
    DWORD error = FillNew(draft, filled);
    if (error == 0)
        error = Put(filled, MoveToFree(filled.temporary, draft.native, DurabilityOf(draft)));
    return error;
}

unsigned long PlaceOver(const Draft& draft, const WindowsState& old, Lost& lost)
{
    FilledDraft filled;
    DWORD error = FillOver(draft, old, lost, filled);
    if (error == 0)
        error = Put(filled, MoveOverOld(filled.temporary, draft));
    return error;
}

FilledDraft::~FilledDraft()
{
    if (!temporary.empty())
        ::DeleteFileW(temporary.c_str());
}

unsigned long FillNew(const Draft& draft, FilledDraft& filled)
{
    return Write(draft, {}, filled);
}

unsigned long FillOver(const Draft& draft, const WindowsState& old, Lost& lost, FilledDraft& filled)
{
    DraftBeginning beginning;
    DWORD error = WhyNotReplaced(draft.native, old);
    if (error == 0)
        error = BeginLike(draft.native, old, beginning);
    if (error == 0)
        error = Write(draft, std::move(beginning), filled);
    if (error == 0)
        TakeOver(filled.temporary, draft.native, old, lost);
    return error;
}

unsigned long PutNew(const std::wstring& native, FilledDraft& filled)
{
    return Put(filled, MoveToFree(filled.temporary, native, Durable::kLater));
}

unsigned long PutOver(const std::wstring& native, FilledDraft& filled)
{
    return Put(filled, MoveOver(filled.temporary, native, Durable::kLater));
}

} // namespace kiv
