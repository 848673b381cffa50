// Files written as a whole on a POSIX file system: a draft is filled, then put in its place by one
// call.
#pragma once

#include "platform/files.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/keeping.h"

#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>

namespace kiv {

/// Another program has changed the file since it was read; an answer beside the error numbers.
constexpr int kChangedMeanwhile = -1;

/// What is to be put where.
struct Draft {
    const std::string& native;
    std::string_view bytes;
    bool is_source = false; // the disk keeps it, and its name, before the call ends
    Expectation expected = {};
    bool tells_at_closing = true; // see TellsAtClosing
};

/// Makes a new file; EEXIST when the name is taken. The name appears with the whole content. 0 or
/// an error number.
int PlaceNew(const Draft& draft);

/// Puts the draft in the place of a file of state `old`, from which it takes over what it may. 0,
/// an error number, or kChangedMeanwhile, with the other program's file in its place.
int PlaceOver(const Draft& draft, const struct stat& old, Lost& lost);

/// A draft that has its content and is not in its place. Nothing of it is left when it goes.
struct FilledDraft {
    FilledDraft() = default;
    FilledDraft(const FilledDraft&) = delete;
    FilledDraft& operator=(const FilledDraft&) = delete;
    ~FilledDraft();

    std::optional<Descriptor> unnamed; // until it is put in its place; else it bears
    std::string temporary;             // this native name; "": it has none, or there is no draft
};

// PlaceNew and PlaceOver in two steps, for drafts that are no sources and replace whatever is
// there. The first may be taken by any thread; the second is one call, or two where an unnamed
// draft gets a name first, and gives the same errors. What a disk has against the content is told
// by the first. A process that is ended between the two leaves nothing where drafts need no name.
int FillNew(const Draft& draft, FilledDraft& filled);
int PutNew(const std::string& native, FilledDraft& filled);
int FillOver(const Draft& draft, const struct stat& old, Lost& lost, FilledDraft& filled);
int PutOver(const std::string& native, FilledDraft& filled);

} // namespace kiv
