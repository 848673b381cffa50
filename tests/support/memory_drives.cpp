#include "tests/support/memory_drives.h"

#include "platform/drive_path.h"
#include "platform/exact_names.h"
#include "platform/file_errors.h"
#include "platform/site_files.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <cerrno>
#include <functional>
#include <utility>

namespace kiv::test {

namespace {

constexpr std::size_t kLongestPath = 4095; // in native bytes
constexpr std::size_t kLongestName = 255;

bool CanBeName(std::string_view native)
{
    return !native.empty() && native != "." && native != ".." && native.size() <= kLongestName &&
           native.find('\0') == npos;
}

using Trees = std::map<std::string, std::string>;

void AddFiles(const MemoryNode& folder, const std::string& prefix, Trees& files)
{
    for (const auto& [name, node] : folder.nodes) {
        if (node->is_folder)
            AddFiles(*node, prefix + name + "/", files);
        else
            files.emplace(prefix + name, node->bytes);
    }
}

class CommittedDraft : public PageDraft {
  public:
    using PageDraft::PageDraft;
    bool Put() override { return false; }

  protected:
    PreparedPage Make() override { return {}; }
};

} // namespace

std::unique_ptr<PageDraft> MemoryDrives::MakeDraft(const OutputFile& file, std::string_view bytes,
                                                   bool is_former_known)
{
    return std::make_unique<CommittedDraft>(file, bytes, is_former_known);
}

MemoryDrives::MemoryDrives()
{
    for (const char letter : {'C', 'Z'})
        roots_[letter].is_folder = true;
    SetCurrent("C:\\");
}

MemoryNode* MemoryDrives::MadeFolder(std::string_view below)
{
    MemoryNode* folder = &roots_.at('C');
    if (below.empty())
        return folder;
    for (const std::string_view part : Split(below, '/')) {
        folder = CanBeName(part) ? FolderIn(*folder, part) : nullptr;
        if (folder == nullptr)
            break;
    }
    return folder;
}

void MemoryDrives::Put(std::string_view below, std::string_view bytes)
{
    const std::size_t slash = below.rfind('/');
    const std::string_view name = slash == npos ? below : below.substr(slash + 1);
    MemoryNode* const folder = MadeFolder(slash == npos ? "" : below.substr(0, slash));
    if (folder == nullptr || !CanBeName(name))
        return;
    std::unique_ptr<MemoryNode>& file = folder->nodes[std::string(name)];
    if (!file)
        file = std::make_unique<MemoryNode>();
    if (file->is_folder)
        return;
    file->bytes = bytes;
    file->changed = ++changes_;
}

void MemoryDrives::PutFolder(std::string_view below)
{
    MadeFolder(below);
}

Trees MemoryDrives::Tree(std::string_view below) const
{
    const MemoryNode* folder = &roots_.at('C');
    if (!below.empty())
        for (const std::string_view part : Split(below, '/'))
            folder = folder == nullptr ? nullptr : NodeIn(*folder, part);
    Trees files;
    if (folder != nullptr)
        AddFiles(*folder, "", files);
    return files;
}

MemoryDrives::Place MemoryDrives::PlaceOf(std::string_view absolute)
{
    Place place;
    const auto root = HasDrive(absolute) ? roots_.find(absolute[0]) : roots_.end();
    if (root == roots_.end())
        return place;
    place.folder = place.node = &root->second;
    const std::string_view parts = FromChar(absolute, 4); // behind "C:\"
    if (parts.empty())
        return place;
    for (const std::string_view part : Split(parts, '\\')) {
        place.folder = place.node != nullptr && place.node->is_folder ? place.node : nullptr;
        if (place.folder == nullptr)
            return {};
        place.name = NativeNameIn(*place.folder, part);
        place.node = NodeIn(*place.folder, place.name);
    }
    return place;
}

MemoryNode* MemoryDrives::FolderAt(std::string_view absolute)
{
    MemoryNode* const node = PlaceOf(absolute).node;
    return node != nullptr && node->is_folder ? node : nullptr;
}

MemoryNode* MemoryDrives::FileAt(const std::string& absolute)
{
    if (absolute.empty())
        return nullptr;
    sought_.insert(UpperCase(absolute));
    MemoryNode* const node = PlaceOf(absolute).node;
    return node == nullptr || node->is_folder ? nullptr : node;
}

bool MemoryDrives::FolderExists(std::string_view path)
{
    const std::string absolute = Absolute(path);
    TellLook(absolute);
    return !absolute.empty() && FolderAt(absolute) != nullptr;
}

std::string MemoryDrives::RealFolder(std::string_view path)
{
    const std::string absolute = Absolute(path);
    const Place place = absolute.empty() ? Place{} : PlaceOf(absolute);
    if (place.node == nullptr || !place.node->is_folder)
        Refuse("look at", path, kNoSuchFolder);
    if (NameOf(absolute).empty())
        return absolute;
    return WithSeparator(RealFolder(FolderOf(absolute))).append(ExactName(place.name));
}

bool MemoryDrives::NameIsTaken(std::string_view path)
{
    const std::string absolute = Absolute(path);
    return !absolute.empty() && PlaceOf(absolute).node != nullptr;
}

FileStamp MemoryDrives::Stamp(std::string_view path)
{
    const std::string absolute = AbsoluteFile(path);
    TellLook(absolute);
    const MemoryNode* const file = FileAt(absolute);
    return file == nullptr ? FileStamp{} : FileStamp{file->bytes.size(), file->changed, true};
}

PlaceState MemoryDrives::StateNow(const std::string& absolute)
{
    const MemoryNode* const node = PlaceOf(absolute).node;
    if (node == nullptr)
        return {};
    if (node->is_folder)
        return {.kind = PlaceState::Kind::folder};
    return {.kind = PlaceState::Kind::file, .size = node->bytes.size(), .changed = node->changed};
}

MemoryNode& MemoryDrives::FileToRead(std::string_view path)
{
    const std::string absolute = FileToUse(path, "read");
    TellOpening(absolute);
    if (PlaceOf(absolute).node == nullptr)
        RefuseWith("read", absolute, ENOENT);
    MemoryNode* const file = FileAt(absolute);
    if (file == nullptr)
        Refuse("read", absolute, kNoPlainFile);
    return *file;
}

std::string MemoryDrives::ReadFile(std::string_view path)
{
    const std::string& bytes = FileToRead(path).bytes;
    TellRead(path, bytes);
    return bytes;
}

std::string MemoryDrives::ReadPart(std::string_view path, std::uint64_t offset, std::size_t count)
{
    const std::string& bytes = FileToRead(path).bytes;
    return bytes.substr(std::min<std::uint64_t>(offset, bytes.size()), count);
}

OutputFile MemoryDrives::Open(std::string_view path)
{
    OutputFile file;
    file.path = FileToUse(path, "write");
    const Place place = PlaceOf(file.path);
    if (place.folder == nullptr)
        Refuse("write", file.path, kNoSuchFolder);
    if (place.node != nullptr && place.node->is_folder)
        Refuse("write", file.path, kFolderInTheWay);
    if (place.name.size() > kLongestName)
        RefuseWith("write", file.path, ENAMETOOLONG);
    file.native = ToNative(file.path);
    file.exists = place.node != nullptr;
    return file;
}

std::string MemoryDrives::PlaceOf(const OutputFile& file)
{
    return UpperCase(file.path);
}

void MemoryDrives::Commit(const OutputFile& file, std::string_view bytes)
{
    CommitSource(file, bytes, {});
}

void MemoryDrives::AppendToFile(std::string_view path, std::string_view bytes)
{
    const std::string old = FileExists(path) ? ReadFile(path) : std::string();
    CommitSource(Open(path), old + std::string(bytes), {});
}

void MemoryDrives::CommitSource(const OutputFile& file, std::string_view bytes,
                                const Expectation& expected)
{
    const OutputFile found = Open(file.path);
    RefuseUnexpected(found, expected);
    const Place place = PlaceOf(file.path);
    std::unique_ptr<MemoryNode>& node = place.folder->nodes[place.name];
    if (!node || node->bytes != bytes)
        KeepFormer(found, node ? FormerFile::Holding(node->bytes) : FormerFile::Absent());
    if (!node)
        node = std::make_unique<MemoryNode>();
    if (expected.kind == Expectation::Kind::content && node->bytes != expected.content)
        RefuseChanged(file.path);
    if (!found.exists || node->bytes != bytes)
        node->changed = ++changes_;
    node->bytes = bytes;
    if (!expected.is_record)
        CountWritten(found, bytes);
}

std::unique_ptr<FolderLock> MemoryDrives::LockFolder(std::string_view folder)
{
    const std::string absolute = Absolute(folder);
    const MemoryNode* const node = absolute.empty() ? nullptr : FolderAt(absolute);
    if (node == nullptr)
        Refuse("work in", folder, kNoSuchFolder);
    return std::make_unique<FolderLock>(); // there is no other run
}

bool MemoryDrives::MakeFolder(std::string_view path)
{
    const std::string absolute = Absolute(path);
    const Place place = absolute.empty() ? Place{} : PlaceOf(absolute);
    return place.folder != nullptr && place.node == nullptr && place.name.size() <= kLongestName &&
           FolderIn(*place.folder, place.name) != nullptr;
}

bool MemoryDrives::DeleteFile(std::string_view path)
{
    const std::string absolute = FileToUse(path, "delete");
    const Place place = PlaceOf(absolute);
    if (place.node == nullptr)
        return false;
    if (place.node->is_folder)
        RefuseWith("delete", absolute, EISDIR);
    KeepFormer(Open(absolute), FormerFile::Holding(place.node->bytes));
    place.folder->nodes.erase(place.name);
    return true;
}

std::string MemoryDrives::FromNative(std::string_view utf8)
{
    if (HasDrive(utf8) || utf8.starts_with('\\'))
        return Absolute(FromUtf8(utf8));
    constexpr std::string_view kDriveC = "Z:\\c";
    // "//" at the beginning would be a server.
    const std::size_t name = std::min(utf8.find_first_not_of('/'), utf8.size());
    const std::string text = FromUtf8(utf8.substr(name));
    const std::string absolute = AbsolutePath(text, name > 0 ? "Z:\\" : "C:\\");
    const std::string_view rest = FromChar(absolute, kDriveC.size() + 1);
    if (!absolute.starts_with(kDriveC) || !(rest.empty() || rest.starts_with('\\')))
        return absolute;
    return AbsolutePath(rest, "C:\\");
}

std::string MemoryDrives::ToNative(std::string_view path)
{
    const std::string absolute = Absolute(path);
    if (absolute.empty() || !roots_.contains(absolute[0]))
        return {};
    std::string native = absolute[0] == 'C' ? "/c" : "";
    MemoryNode* folder = &roots_.at(absolute[0]);
    for (const std::string_view part : Split(FromChar(absolute, 4), '\\')) {
        const std::string name = folder != nullptr ? NativeNameIn(*folder, part) : ToUtf8(part);
        native += "/" + name;
        folder = folder != nullptr ? NodeIn(*folder, name) : nullptr;
        if (folder != nullptr && !folder->is_folder)
            folder = nullptr;
    }
    return native;
}

bool MemoryDrives::IsTooLong(const std::string& absolute) const
{
    if (absolute.size() < kLongestPath / 3) // a character takes three bytes at most
        return false;
    const std::string native = ToUtf8(absolute);
    return native.size() > kLongestPath && NativeName(native).size() > kLongestPath;
}

std::vector<FileName> MemoryDrives::Names(const std::string& folder, bool folders)
{
    const MemoryNode* const node = FolderAt(folder);
    if (node == nullptr)
        Refuse("list", folder, kNoSuchFolder);
    std::vector<FileName> names;
    for (const auto& [native, entry] : node->nodes)
        if (entry->is_folder == folders && native != kRenameJournalFile)
            names.push_back({FromUtf8(native), ExactName(native)});
    return names;
}

std::string MemoryDrives::ExactNameOf(const std::string& absolute)
{
    const std::string exact = NativeName(NameOf(absolute));
    Place place = PlaceOf(absolute);
    if (place.folder != nullptr && NodeIn(*place.folder, exact) != nullptr) {
        place.name = exact;
        place.node = NodeIn(*place.folder, exact);
    }
    if (place.node == nullptr)
        RefuseWith("rename", absolute, ENOENT);
    if (place.node->is_folder)
        Refuse("rename", absolute, kNoPlainFile);
    return ExactName(place.name);
}

bool MemoryDrives::NameIsTooLong(std::string_view exact)
{
    return NativeName(exact).size() > kLongestName;
}

bool MemoryDrives::IsTakenByOthers(const MemoryNode& folder, std::string_view text,
                                   const MemoryNode& own)
{
    const std::string upper = UpperCase(text);
    return std::any_of(folder.nodes.begin(), folder.nodes.end(), [&](const auto& entry) {
        return entry.second.get() != &own && UpperCase(FromUtf8(entry.first)) == upper;
    });
}

void MemoryDrives::Rename(const std::string& source, const std::string& target,
                          const NameChange& change, Alike alike)
{
    MemoryNode* const old_folder = FolderAt(FolderOf(source));
    MemoryNode* const folder = FolderAt(FolderOf(target));
    if (old_folder == nullptr || folder == nullptr)
        Refuse("rename to", target, kNoSuchFolder);
    const std::string old_name = NativeName(change.from);
    const std::string new_name = NativeName(change.to);
    if (folder == old_folder && new_name == old_name)
        return;
    const std::string action = "rename " + source + " to";
    const auto file = old_folder->nodes.find(old_name);
    if ((alike == Alike::text && IsTakenByOthers(*folder, TextOfName(change.to), *file->second)) ||
        NodeIn(*folder, new_name) != nullptr)
        Refuse(action, target, kTargetExists);
    if (!CanBeName(new_name))
        RefuseWith(action, target, ENAMETOOLONG);
    std::unique_ptr<MemoryNode> node = std::move(file->second);
    old_folder->nodes.erase(file);
    folder->nodes.emplace(new_name, std::move(node));
}

} // namespace kiv::test
