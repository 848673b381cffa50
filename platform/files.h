// Files as this program sees them: drive paths, "\" and "/", names that ignore case, a current
// directory of its own. Every path and name is Windows-1252 text and may be relative to the current
// directory.
#pragma once

#include "platform/file_reader.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

struct RunError;

/// A file that is to be written: its place was looked up and found fit. Nothing is on the disk
/// before Commit.
struct OutputFile {
    std::string path;   // absolute drive path, spelled as the program wrote it
    std::string native; // where it really lies; links are followed, case as on disk
    bool exists = false;
};

/// A file that was written.
struct WrittenFile {
    std::string path;    // absolute drive path, spelled as the program wrote it
    std::size_t place;   // the same for one file, whatever it is called; for comparing in a list
    bool changed;        // it holds other bytes than before the run, or was not there
    bool is_new = false; // it was not there
};

/// Tells one state of a file from another.
struct FileStamp {
    std::uint64_t size = 0;
    std::int64_t changed = 0; // nanoseconds, or 100 ns ticks
    bool exists = false;
    bool operator==(const FileStamp&) const = default;
};

/// The name of a file.
struct FileName {
    std::string text;  // as paths have it
    std::string exact; // see exact_names.h
    bool operator==(const FileName&) const = default;
};

struct FolderListing {
    std::vector<FileName> files;
    std::vector<std::string> left_out; // what no path can name, for a "\" is in it
};

/// A name before and after a renaming, both in exact form.
struct NameChange {
    std::string from;
    std::string to;
};

/// What must be at a place for a source to be put there.
struct Expectation {
    enum class Kind { anything, nothing, content };
    Kind kind = Kind::anything;
    std::string_view content = {}; // for `content`: every byte of it
    bool is_record =
        false; // the program's own record, or what is only kept: not counted as written
};

/// While it lives, no other run of this program works on the folder. It ends with the process.
class FolderLock {
  public:
    FolderLock() = default;
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;
    virtual ~FolderLock() = default;
};

/// All of these throw RunError as FileReader's do, unless said otherwise.
class Files : public FileReader {
  public:
    /// The current directory: an absolute drive path without final "\" but at a root.
    virtual const std::string& CurrentDirectory() const = 0;
    /// Makes an existing folder the current directory. Its spelling is kept as given.
    virtual void ChangeDirectory(std::string_view path) = 0;

    /// A folder is there.
    virtual bool FolderExists(std::string_view path) = 0;
    /// The native path of a folder in exact form, the same whatever path leads there: links are
    /// followed, case is as on the disk.
    virtual std::string RealFolder(std::string_view path) = 0;
    /// Something bears this name, if only a link to nothing.
    virtual bool NameIsTaken(std::string_view path)
    {
        return FileExists(path) || FolderExists(path);
    }
    /// A link bears this name, wherever it leads.
    virtual bool IsLink([[maybe_unused]] std::string_view path) { return false; }
    /// Throws what writing a new file of this path would throw where its folder may not be written
    /// into. Looks only; what a system does not tell beforehand goes through.
    virtual void RefuseUnwritable([[maybe_unused]] std::string_view path) {}
    /// The state of a file; `exists` is false where there is none.
    virtual FileStamp Stamp(std::string_view path) = 0;

    /// Finds the place of a file that is to be written: its folder must exist and the name must be
    /// no folder.
    virtual OutputFile Open(std::string_view path) = 0;
    /// What tells the place of a file from every other, case aside: two paths have the same just
    /// when they lead to one place, by whatever drive, link or spelling. For comparing alone. Empty
    /// when its folder cannot be looked at. Never throws.
    virtual std::string PlaceOf(const OutputFile& file) = 0;
    /// Replaces the file whole: it holds its old content or `bytes`, never anything between. A file
    /// that holds these bytes already is left alone, time stamp and all. Either way it counts as
    /// written.
    virtual void Commit(const OutputFile& file, std::string_view bytes) = 0;
    /// So many files are about to be handed over, as far as is known. Spares finding out by and by
    /// whether they are many.
    virtual void ExpectHandOvers([[maybe_unused]] std::size_t count) {}
    /// Tells a failure what was known when the file was handed over.
    using AtFailure = std::function<void(RunError& error)>;
    /// Commit for a run of files of which none is needed at once. Each gets its place behind those
    /// handed over before, and all have theirs before any other call looks at the disk. So the
    /// error of a file may come from a later call, whatever that is about, and comes from all that
    /// follow until EndHandOvers: of the files behind it, none is written. `at_failure` is told of
    /// it before it is thrown. Takes the bytes away; what it leaves in `bytes` is nobody's business
    /// but for its memory, which can be used again.
    virtual void HandOver(const OutputFile& file, std::string& bytes,
                          [[maybe_unused]] AtFailure&& at_failure)
    {
        Commit(file, bytes);
    }
    /// Every file that was handed over has its place when this returns. Throws the error of one
    /// that has not.
    virtual void Settle() {}
    /// The same at the end of the run of files, in success and in failure. From then on the error
    /// does not come again.
    virtual void EndHandOvers() {}
    /// Open and Commit.
    void WriteFile(std::string_view path, std::string_view bytes) { Commit(Open(path), bytes); }
    /// Adds `bytes` at the end of a file, which is made when missing: other programs may add to it,
    /// too. Counts as written.
    virtual void AppendToFile(std::string_view path, std::string_view bytes) = 0;

    /// Replaces a source, a file that nobody can make again, as Commit does. When this returns, the
    /// disk keeps it even if the power fails. Throws when the place does not hold what is expected:
    /// another program has been there.
    virtual void CommitSource(const OutputFile& file, std::string_view bytes,
                              const Expectation& expected) = 0;
    /// Whatever is there now.
    void WriteSource(std::string_view path, std::string_view bytes)
    {
        CommitSource(Open(path), bytes, {});
    }
    /// A source that must be new.
    void WriteNewSource(std::string_view path, std::string_view bytes)
    {
        CommitSource(Open(path), bytes, {Expectation::Kind::nothing});
    }
    /// A source that was read as `old`.
    void ReplaceSource(std::string_view path, std::string_view old, std::string_view bytes)
    {
        CommitSource(Open(path), bytes, {Expectation::Kind::content, old});
    }
    /// A source that was read as `content` and stays so: a run that was cut short may have left it
    /// to the disk's good will. Does not count as written.
    void KeepSource(std::string_view path, std::string_view content)
    {
        CommitSource(Open(path), content, {Expectation::Kind::content, content, true});
    }
    /// A record of the program's own, whatever is there now.
    void WriteRecord(std::string_view path, std::string_view bytes)
    {
        CommitSource(Open(path), bytes, {.is_record = true});
    }
    /// Has the disk keep all that was written since the last Refresh.
    virtual void FlushWritten() = 0;
    /// What the files replaced since the last Refresh have lost, as sentences: "C:\a.txt has lost
    /// its owner". Their content is never among it. And what of other programs was found aside.
    virtual const std::vector<std::string>& Losses() const = 0;

    /// Waits until no other run of this program holds the folder, some ten seconds at most. A run
    /// that holds it already, by whatever path, shares it. A file system that knows no locks gives
    /// one that holds nothing.
    virtual std::unique_ptr<FolderLock> LockFolder(std::string_view folder) = 0;

    /// Makes one folder; false when its parent is missing or the name is taken.
    virtual bool MakeFolder(std::string_view path) = 0;
    /// False when there is no such file.
    virtual bool DeleteFile(std::string_view path) = 0;
    /// Renames a file, whose name in `from` may be in exact form. A name that is taken is never
    /// overwritten: "target exists". Only the case of a name may change. Characters that the code
    /// page lacks stay what they are.
    virtual NameChange RenameFile(std::string_view from, std::string_view to) = 0;
    /// The same where the name in `to` is in exact form, too, and was one of the file's own: it
    /// must be free, and no other that the system itself takes for it. A "A" keeps no "a" from
    /// coming back where both have room.
    virtual NameChange RenameExactly(std::string_view from, std::string_view to) = 0;

    /// Whether a name, in exact form, is longer than one in the current directory can be.
    virtual bool NameIsTooLong(std::string_view exact) = 0;

    /// Whether a rename was cut short between the two steps that some file systems need for it: one
    /// file bears both names, in exact form.
    virtual bool IsHalfRenamed(std::string_view from, std::string_view to) = 0;
    /// Takes `from` away when it was. Returns whether it did.
    virtual bool FinishRename(std::string_view from, std::string_view to) = 0;

    /// The plain files of a folder that fit a pattern, in the order of their upper-cased names.
    virtual FolderListing List(std::string_view folder, std::string_view pattern) = 0;
    /// The text of their names, without those that no path can name.
    std::vector<std::string> ListFiles(std::string_view folder, std::string_view pattern);
    /// The folders of a folder in the same order, "." and ".." left out.
    virtual std::vector<std::string> ListFolders(std::string_view folder) = 0;
    /// Every file written since the last Refresh, as absolute drive paths, in the order of their
    /// closing.
    virtual const std::vector<std::string>& Written() const = 0;
    /// The same, and what became of each: of a file that was written several times each entry tells
    /// the end. Throws nothing: a file that cannot be read back counts as changed.
    virtual std::vector<WrittenFile> WrittenFiles() = 0;
    /// A new command begins: forgets what was looked up and written before.
    virtual void Refresh() = 0;
};

} // namespace kiv
