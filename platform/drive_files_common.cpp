#include "platform/drive_files_common.h"

#include "platform/drive_path.h"
#include "platform/exact_names.h"
#include "platform/file_errors.h"
#include "platform/run_error.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <new>
#include <tuple>
#include <utility>

namespace kiv {

namespace {

constexpr std::size_t kShownOfLongPath = 100;

} // namespace

void Drives::RefuseLook(const std::string& absolute, const PlaceState& state)
{
    RefuseWith("look at", absolute, state.error);
}

void DriveFiles::ChangeDirectory(std::string_view path)
{
    std::string absolute = Absolute(path);
    if (!FolderExists(path))
        RefuseFolder(path, absolute);
    current_ = std::move(absolute);
}

/// A slip in a folder's name is told by how far the path leads, and a file by where it lies.
void DriveFiles::RefuseFolder(std::string_view path, std::string_view absolute)
{
    std::string hint(kNoSuchFolder.hint);
    if (FileExists(absolute)) {
        hint = Joined(
            {"It is a file: give the folder that it lies in, \"", FolderOf(absolute), "\"."});
    } else if (!absolute.empty()) {
        std::string_view missing = absolute;
        while (!NameOf(FolderOf(missing)).empty() && !FolderExists(FolderOf(missing)))
            missing = FolderOf(missing);
        if (FolderExists(FolderOf(missing)))
            hint = Joined({"Look at the spelling: \"", FolderOf(missing),
                           "\" is there, but has no folder \"", NameOf(missing), "\"."});
    }
    Refuse("change to", path, {"no such folder", hint});
}

FolderListing DriveFiles::List(std::string_view folder, std::string_view pattern)
{
    return Listing(folder, pattern, false);
}

std::vector<std::string> DriveFiles::ListFolders(std::string_view folder)
{
    std::vector<std::string> names;
    for (FileName& name : Listing(folder, "*.*", true).files)
        names.push_back(std::move(name.text));
    return names;
}

FolderListing DriveFiles::Listing(std::string_view folder, std::string_view pattern, bool folders)
{
    const std::string absolute = Absolute(folder);
    if (absolute.empty())
        Refuse("list", folder, kNoSuchFolder);
    struct Row {
        std::string upper;
        FileName name;
    };
    std::vector<Row> rows;
    for (FileName& name : Names(absolute, folders))
        if (FitsPattern(name.text, pattern))
            rows.push_back({UpperCase(name.text), std::move(name)});
    std::sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) {
        return std::tie(a.upper, a.name.text, a.name.exact) <
               std::tie(b.upper, b.name.text, b.name.exact);
    });
    FolderListing listing;
    for (Row& row : rows) {
        if (Contains(row.name.text, "\\"))
            listing.left_out.push_back(std::move(row.name.text));
        else
            listing.files.push_back(std::move(row.name));
    }
    return listing;
}

NameChange DriveFiles::RenameFile(std::string_view from, std::string_view to)
{
    const std::string source = FileToUse(from, "rename");
    const std::string target = FileToUse(to, "rename to");
    NameChange change{ExactNameOf(source), {}};
    change.to = ExactNewName(NameOf(target), change.from);
    Rename(source, target, change, Alike::text);
    return change;
}

NameChange DriveFiles::RenameExactly(std::string_view from, std::string_view to)
{
    const std::string source = FileToUse(from, "rename");
    const std::string target = FileToUse(to, "rename to");
    NameChange change{ExactNameOf(source), std::string(NameOf(target))};
    Rename(source, target, change, Alike::exact);
    return change;
}

std::string DriveFiles::Absolute(std::string_view path) const
{
    if (path.find('\0') != npos)
        return {};
    std::string absolute = AbsolutePath(path, current_);
    if (IsTooLong(absolute))
        Refuse("look at", Joined({FirstChars(absolute, kShownOfLongPath), "..."}),
               {"the path is too long",
                "Take shorter names, or move the site to a folder that is not so deep."});
    return absolute;
}

std::string DriveFiles::AbsoluteFile(std::string_view path) const
{
    return path.empty() || IsSeparator(path.back()) ? std::string() : Absolute(path);
}

std::string DriveFiles::FileToUse(std::string_view path, std::string_view action) const
{
    std::string absolute = AbsoluteFile(path);
    if (absolute.empty() || NameOf(absolute).empty())
        Refuse(action, path, kNoSuchFile);
    return absolute;
}

void DriveFiles::Refresh()
{
    written_.clear();
    places_of_written_.clear();
    known_.clear();
    losses_.clear();
}

void DriveFiles::CountLost(const std::string& absolute, const std::vector<std::string_view>& lost)
{
    std::string list;
    for (std::size_t i = 0; i < lost.size(); ++i)
        Append(list, {i == 0 ? "" : i + 1 < lost.size() ? ", " : " and ", lost[i]});
    if (!list.empty())
        losses_.push_back(Joined({absolute, " was replaced and has lost ", list}));
}

void DriveFiles::CountSaved(const std::string& saved)
{
    losses_.push_back(
        Joined({saved, " is what another program had saved in the moment in which a run "
                       "of kiv was stopped; please compare it with the file without "
                       ".saved"}));
}

void DriveFiles::RefuseUnexpected(const OutputFile& file, const Expectation& expected)
{
    if (expected.kind == Expectation::Kind::nothing && file.exists)
        Refuse("write", file.path,
               {"there is a file of this name already",
                "Another program has just made it: look at it, move it away, and start again."});
    if (expected.kind == Expectation::Kind::content && !file.exists)
        RefuseChanged(file.path);
}

void DriveFiles::RefuseChanged(std::string_view path)
{
    Refuse("write", path,
           "another program has changed it in the meantime. It is as that program left it; please "
           "run this again");
}

void DriveFiles::RefuseTooLarge(std::string_view path, std::uint64_t size)
{
    constexpr std::uint64_t kLargest = std::uint64_t{1} << 30U;
    if (size > kLargest)
        Refuse("read", path, {"it is larger than 1 GiB", "Split it into smaller files."});
}

void DriveFiles::ReadWhole(std::string_view path, std::uint64_t size, const ReadFirst& read,
                           const TellSize& size_now)
{
    constexpr int kTries = 3;
    for (int i = 0; i < kTries; ++i) {
        RefuseTooLarge(path, size);
        try {
            if (read(static_cast<std::size_t>(size)) == size)
                return;
        } catch (const std::bad_alloc&) {
            RunError error(ErrorKind::memory, Joined({"there is not enough memory to read ", path}),
                           {}, "Close other programs, or split the file into smaller ones.");
            error.file = path;
            throw RunError(std::move(error));
        }
        size = size_now();
    }
    Refuse("read", path,
           {"it ends before its size says so. Another program is changing it, or the disk fails",
            "Start again when the other program is done."});
}

bool DriveFiles::IsFormerKnown(const OutputFile& file)
{
    const auto known = known_.find(IdentityOf(file));
    return known != known_.end() && known->second.former;
}

void DriveFiles::KeepFormerAt(std::string_view path)
{
    try {
        const OutputFile file = Open(path);
        if (IsFormerKnown(file))
            return;
        if (!file.exists)
            KeepFormer(file, FormerFile::Absent());
        else if (Stamp(path).size > kLargestFormer)
            KeepFormer(file, FormerFile::Unknown());
        else
            KeepFormer(file, FormerFile::Holding(ReadFile(path)));
    } catch (const RunError&) {
        // It cannot be looked at, and what is wrong with it is for those to tell who use it.
    }
}

std::unique_ptr<PageDraft> DriveFiles::BeginPage(const OutputFile& file, std::string_view bytes)
{
    TidyFolderOf(file);
    return MakeDraft(file, bytes, !file.exists || IsFormerKnown(file));
}

void DriveFiles::CountPage(const PageDraft& page)
{
    const PreparedPage& prepared = page.Prepared();
    KnownPlace& place = KnownAt(page.File());
    if (prepared.former)
        place.Keep(*prepared.former);
    CountLost(page.File().path, prepared.lost);
    NoteWritten(page.File(), !page.File().exists);
    CountWritten(page.File(), place, page.Bytes());
}

void DriveFiles::CountWritten(const OutputFile& file, std::string_view bytes)
{
    CountWritten(file, KnownAt(file), bytes);
}

void DriveFiles::CountWritten(const OutputFile& file, KnownPlace& place, std::string_view bytes)
{
    CountClosed(file, place, place.IsChange(bytes) ? State::changed : State::as_before);
    TellWritten(file, &bytes);
}

void DriveFiles::CountAppended(const OutputFile& file)
{
    CountClosed(file, KnownAt(file), State::unread);
    TellWritten(file);
}

void DriveFiles::CountClosed(const OutputFile& file, KnownPlace& place, State state)
{
    place.state = state;
    places_of_written_.push_back(&place); // the first of the two: none of those written lacks it
    written_.push_back(file.path);
    ++writes_;
}

DriveFiles::State DriveFiles::StateOfContent(const std::string& path, const KnownPlace& known)
{
    try {
        const bool is_same =
            Stamp(path).size <= kLargestFormer && known.former && !known.IsChange(ReadFile(path));
        return is_same ? State::as_before : State::changed;
    } catch (const RunError&) {
        return State::changed;
    }
}

std::vector<WrittenFile> DriveFiles::WrittenFiles()
{
    std::vector<WrittenFile> files;
    files.reserve(written_.size());
    for (std::size_t i = 0; i < written_.size(); ++i) {
        KnownPlace& known = *places_of_written_[i];
        if (known.state == State::unread)
            known.state = StateOfContent(written_[i], known);
        files.push_back({written_[i], known.number, known.state == State::changed,
                         known.former && known.former->WasAbsent()});
    }
    return files;
}

} // namespace kiv
