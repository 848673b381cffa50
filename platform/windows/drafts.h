// Files written as a whole on Windows: a draft is filled, then put in its place by one call. Every
// function gives 0 or an error number of Windows.
#pragma once

#include "platform/files.h"
#include "platform/windows/folders.h"
#include "platform/windows/keeping.h"

#include <string>
#include <string_view>

namespace kiv {

/// What is to be put where.
struct Draft {
    const std::wstring& native;
    std::string_view bytes;
    bool is_source = false; // the disk keeps it, and its name, before the call ends
    Expectation expected = {};
};

/// Makes a new file; ERROR_ALREADY_EXISTS when the name is taken. The name appears with the whole
/// content.
unsigned long PlaceNew(const Draft& draft);

/// Puts the draft in the place of a file of state `old`, from which it takes over what it may. A
/// file that is read-only, or that another program has open, keeps its old content.
/// kChangedMeanwhile when the file does not hold what is expected.
unsigned long PlaceOver(const Draft& draft, const WindowsState& old, Lost& lost);

/// A draft that has its content and is not in its place. Nothing of it is left when it goes.
struct FilledDraft {
    FilledDraft() = default;
    FilledDraft(const FilledDraft&) = delete;
    FilledDraft& operator=(const FilledDraft&) = delete;
    ~FilledDraft();

    std::wstring temporary; // its native name; "": there is no draft
};

// PlaceNew and PlaceOver in two steps, for drafts that are no sources and replace whatever is
// there. The first may be taken by any thread; the second is a single call, which gives the same
// errors.
unsigned long FillNew(const Draft& draft, FilledDraft& filled);
unsigned long PutNew(const std::wstring& native, FilledDraft& filled);
unsigned long FillOver(const Draft& draft, const WindowsState& old, Lost& lost,
                       FilledDraft& filled);
unsigned long PutOver(const std::wstring& native, FilledDraft& filled);

} // namespace kiv
