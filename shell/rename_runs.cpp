#include "shell/rename_runs.h"

#include "platform/drive_path.h"
#include "platform/exact_names.h"
#include "platform/temporary_names.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <utility>

namespace kiv {

namespace {

/// Notes a rename among those done, and does it. Noted afterwards, it would be lost where memory is
/// short; what is noted and was not done, undoing passes over.
void NoteAndDo(Renames& done, const Rename& rename, const std::function<NameChange()>& work)
{
    done.push_back(rename);
    try {
        NameChange change = work();
        done.back() = {std::move(change.from), std::move(change.to)};
    } catch (const RunError&) {
        done.pop_back();
        throw;
    }
}

std::set<std::string> NamesOfFiles(Files& files)
{
    std::set<std::string> names;
    for (FileName& name : files.List(".", "*.*").files)
        names.insert(std::move(name.exact));
    return names;
}

/// The current directory, and the renames of a run, some of which are done.
class RenamedFolder {
  public:
    RenamedFolder(Files& files, const Renames& renames, BothNames both)
        : files_(files), folder_(WithSeparator(files.CurrentDirectory())),
          progress_(NamesOfFiles(files), renames)
    {
        if (both == BothNames::are_a_half_rename)
            for (const Rename& rename : renames)
                FinishHalf(rename);
    }

    const RunProgress& Progress() const { return progress_; }

    /// As a renamer does it: the new name must be free, case aside.
    void GiveName(const Rename& rename, Renames& done)
    {
        Do(rename, done,
           [&] { return files_.RenameFile(PathOf(rename.from), PathOf(TextOfName(rename.to))); });
    }
    /// The name was the file's own: it need only be free itself.
    void PutNameBack(const Rename& rename, Renames& done)
    {
        Do(rename, done,
           [&] { return files_.RenameExactly(PathOf(rename.from), PathOf(rename.to)); });
    }

  private:
    std::string PathOf(std::string_view exact) const { return folder_ + std::string(exact); }

    void Do(const Rename& rename, Renames& done, const std::function<NameChange()>& work)
    {
        const std::string_view fault = FaultOfName(files_, {TextOfName(rename.to), rename.to});
        if (!fault.empty())
            RefuseRename(PathOf(rename.from), PathOf(rename.to), fault);
        NoteAndDo(done, rename, work);
        progress_.Note(done.back());
    }

    void FinishHalf(const Rename& rename)
    {
        if (progress_.IsThere(rename.from) && progress_.IsThere(rename.to) &&
            files_.FinishRename(PathOf(rename.from), PathOf(rename.to)))
            progress_.Drop(rename.from);
    }

    Files& files_;
    std::string folder_;
    RunProgress progress_;
};

/// Said behind why the first of the files that are left could not get its old name back.
std::string WhatToDo(std::size_t more)
{
    std::string text = ". ";
    if (more == 1)
        text += "1 more file keeps its new name, too. ";
    else if (more > 1)
        Append(text, {std::to_string(more), " more files keep their new names, too. "});
    return text + "All others have their old names. Move away what is in the way, or bring back "
                  "what is gone, and start undo-renames again";
}

} // namespace

bool AreAmong(const Renames& some, const Renames& all)
{
    std::set<std::pair<std::string_view, std::string_view>> pairs;
    for (const Rename& rename : all)
        pairs.emplace(rename.from, rename.to);
    return std::all_of(some.begin(), some.end(), [&](const Rename& rename) {
        return pairs.contains({rename.from, rename.to});
    });
}

Renames Reversed(const Renames& renames)
{
    Renames reversed;
    reversed.reserve(renames.size());
    std::for_each(renames.rbegin(), renames.rend(), [&](const Rename& rename) {
        reversed.push_back({rename.to, rename.from});
    });
    return reversed;
}

void RefuseRename(const std::string& from, const std::string& to, std::string_view reason,
                  std::string_view hint)
{
    throw RunError(ErrorKind::file, Joined({"cannot rename ", from, " to ", to, ": ", reason}),
                   {from}, std::string(hint));
}

std::string_view FaultOfForm(std::string_view exact)
{
    if (exact == "." || exact == ".." || exact.find_first_of("\\/") != npos)
        return "a name has no folders";
    if (IsOwnName(LowerCase(exact)))
        return "kiv has such names for its own files, which come and go";
    return {};
}

std::string_view FaultOfName(Files& files, const FileName& name)
{
    if (name.text.empty())
        return "the name is empty";
    if (const std::string_view fault = FaultOfForm(name.exact); !fault.empty())
        return fault;
    if (files.NameIsTooLong(name.exact))
        return "the name is too long";
    return {};
}

RunProgress::RunProgress(std::set<std::string> names, const Renames& renames)
    : names_(std::move(names))
{
    for (const Rename& rename : renames)
        first_of_.try_emplace(rename.from, &rename);
}

bool RunProgress::IsToDo(const Rename& rename) const
{
    return IsThere(rename.from) && (!IsThere(rename.to) || WaitsForAnother(rename));
}

void RunProgress::Note(const Rename& done)
{
    names_.erase(done.from);
    names_.insert(done.to);
}

/// The new name is still that of a file which an earlier rename of the run calls otherwise.
bool RunProgress::WaitsForAnother(const Rename& rename) const
{
    const auto first = first_of_.find(rename.to);
    return first != first_of_.end() && first->second < &rename;
}

void DoRenames(Files& files, const Renames& renames, Renames& done)
{
    const std::string folder = WithSeparator(files.CurrentDirectory());
    for (const Rename& rename : renames) {
        NoteAndDo(done, rename, [&] {
            return files.RenameFile(folder + rename.from, folder + TextOfName(rename.to));
        });
    }
}

void FinishRun(Files& files, const Renames& renames, Renames& done)
{
    RenamedFolder folder(files, renames, BothNames::are_a_half_rename);
    for (const Rename& rename : renames)
        if (folder.Progress().IsToDo(rename) &&
            TextOfName(rename.from) != TextOfName(rename.to)) // else no renamer's doing
            folder.GiveName(rename, done);
}

void RefuseForms(const Renames& renames)
{
    for (const Rename& rename : renames)
        for (const std::string& name : {rename.from, rename.to})
            if (const std::string_view fault = FaultOfForm(name); !fault.empty())
                throw RunError(ErrorKind::file, Joined({"cannot rename ", name, ": ", fault}));
}

LeftRenames PutBackEach(const Renames& renames, const RunProgress& progress,
                        const std::function<void(const Rename& back)>& put_back)
{
    LeftRenames left;
    std::set<std::string_view> missing; // old names whose files are left
    const auto leave = [&](const Rename& rename) {
        left.renames.push_back(rename);
        missing.insert(rename.from);
    };
    std::for_each(renames.rbegin(), renames.rend(), [&](const Rename& rename) {
        if (rename.from == rename.to || progress.IsToDo(rename))
            return;
        if (missing.contains(rename.to)) { // what bears the name now is another file
            leave(rename);
            return;
        }
        try {
            put_back({rename.to, rename.from});
        } catch (const RunError& error) {
            if (error.kind != ErrorKind::file)
                throw;
            if (!left.fault)
                left.fault = error;
            leave(rename);
        }
    });
    std::reverse(left.renames.begin(), left.renames.end());
    if (left.fault) {
        left.fault->text += WhatToDo(left.renames.size() - 1);
        left.fault->hint.clear(); // that of one file would be in its way
    }
    return left;
}

LeftRenames UndoRenames(Files& files, const Renames& renames, BothNames both, Renames& done)
{
    RenamedFolder folder(files, renames, both);
    return PutBackEach(renames, folder.Progress(),
                       [&](const Rename& back) { folder.PutNameBack(back, done); });
}

bool NothingIsDone(Files& files, const Renames& renames)
{
    const std::set<std::string> names = NamesOfFiles(files);
    return std::all_of(renames.begin(), renames.end(),
                       [&](const Rename& rename) { return names.contains(rename.from); });
}

} // namespace kiv
