#include "shell/rename_runs.h"

#include "platform/drive_path.h"
#include "platform/exact_names.h"
#include "platform/run_error.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>
#include <functional>
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
    RenamedFolder(Files& files, const Renames& renames)
        : files_(files), folder_(WithSeparator(files.CurrentDirectory())),
          progress_(NamesOfFiles(files), renames)
    {
        for (const Rename& rename : renames)
            FinishHalf(rename);
    }

    bool IsToDo(const Rename& rename) const { return progress_.IsToDo(rename); }

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

} // namespace

Renames Reversed(const Renames& renames)
{
    Renames reversed;
    reversed.reserve(renames.size());
    std::for_each(renames.rbegin(), renames.rend(), [&](const Rename& rename) {
        reversed.push_back({rename.to, rename.from});
    });
    return reversed;
}

void RefuseRename(const std::string& from, const std::string& to, std::string_view reason)
{
    throw RunError(ErrorKind::file, Joined({"cannot rename ", from, " to ", to, ": ", reason}));
}

std::string_view FaultOfName(Files& files, const FileName& name)
{
    if (name.text.empty())
        return "the name is empty";
    if (name.text == "." || name.text == ".." || name.text.find_first_of("\\/") != npos)
        return "a name has no folders";
    if (files.NameIsTooLong(name.exact))
        return "the name is too long";
    return {};
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
    for (const Rename& earlier : renames_) {
        if (&earlier == &rename)
            return false;
        if (earlier.from == rename.to)
            return true;
    }
    return false;
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

void FinishRun(Files& files, const UnfinishedRun& run, Renames& done)
{
    RenamedFolder folder(files, run.renames);
    for (const Rename& rename : run.renames) {
        if (!folder.IsToDo(rename))
            continue;
        if (run.is_undoing)
            folder.PutNameBack(rename, done);
        else if (TextOfName(rename.from) != TextOfName(rename.to)) // else no renamer's doing
            folder.GiveName(rename, done);
    }
}

void RefuseFolders(const Renames& renames)
{
    for (const Rename& rename : renames)
        for (const std::string& name : {rename.from, rename.to})
            if (name.find_first_of("\\/") != npos)
                throw RunError(ErrorKind::file,
                               "cannot rename " + name + ": a name has no folders");
}

void UndoRenames(Files& files, const Renames& renames, Renames& done)
{
    RenamedFolder folder(files, renames);
    std::for_each(renames.rbegin(), renames.rend(), [&](const Rename& rename) {
        if (rename.from != rename.to && !folder.IsToDo(rename))
            folder.PutNameBack({rename.to, rename.from}, done);
    });
}

bool NothingIsDone(Files& files, const Renames& renames)
{
    const std::set<std::string> names = NamesOfFiles(files);
    return std::all_of(renames.begin(), renames.end(),
                       [&](const Rename& rename) { return names.contains(rename.from); });
}

} // namespace kiv
