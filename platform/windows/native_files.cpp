#include "platform/native_files.h"

#include "platform/windows/api.h"
#include "platform/windows/folders.h"
#include "platform/windows/handle.h"
#include "platform/windows/wide_text.h"

#include <algorithm>
#include <utility>

namespace kiv {

namespace {

class WindowsFile : public NativeFile {
  public:
    WindowsFile(WindowsHandle handle, std::uint64_t size) : handle_(std::move(handle)), size_(size)
    {
    }

    std::uint64_t Size() const override { return size_; }

    std::string Read(std::uint64_t offset, std::size_t count) override
    {
        std::string bytes;
        ReadBytes(handle_, offset, count, bytes);
        return bytes;
    }

  private:
    WindowsHandle handle_;
    std::uint64_t size_;
};

NativeFault FaultOf(unsigned long error)
{
    if (error == ERROR_TOO_MANY_OPEN_FILES || error == ERROR_NO_SYSTEM_RESOURCES)
        return NativeFault::too_many;
    const bool is_absent = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
    return is_absent ? NativeFault::absent : NativeFault::refused;
}

/// Not open when no plain file is there.
WindowsHandle OpenPlain(const std::string& path, NativeFault& fault)
{
    const std::wstring native = WideFromUtf8(path);
    WindowsState state;
    const unsigned long error = StateOf(native, state);
    fault = error != 0        ? FaultOf(error)
            : state.is_folder ? NativeFault::no_file
                              : NativeFault::none;
    if (fault != NativeFault::none)
        return WindowsHandle(nullptr);
    WindowsHandle handle = OpenWindowsFile(native);
    if (!handle.IsOpen())
        fault = FaultOf(::GetLastError());
    return handle;
}

FileStamp StampOf(const std::string& path, bool is_folder)
{
    WindowsState state;
    if (StateOf(WideFromUtf8(path), state) != 0 || state.is_folder != is_folder)
        return {};
    return {state.size, state.written, true};
}

std::unique_ptr<NativeFile> FileOf(WindowsHandle handle)
{
    std::uint64_t size = 0;
    if (!handle.IsOpen() || SizeOf(handle, size) != 0)
        return nullptr;
    return std::make_unique<WindowsFile>(std::move(handle), size);
}

} // namespace

std::optional<std::vector<NativeEntry>> NativeEntries(const std::string& folder, NativeFault* fault)
{
    std::vector<NativeEntry> names;
    const unsigned long error = ForEachName(WideFromUtf8(folder), [&](const WindowsName& entry) {
        names.push_back({Utf8FromWide(entry.native), entry.is_folder});
        return true;
    });
    if (fault != nullptr)
        *fault = error == 0 ? NativeFault::none : FaultOf(error);
    if (error != 0)
        return std::nullopt;
    std::ranges::sort(names, {}, &NativeEntry::name);
    return names;
}

std::string RealNativePath(const std::string& path)
{
    std::wstring native = WideFromUtf8(path);
    return FindFinalPath(native) == 0 ? Utf8FromWide(native) : "";
}

FileStamp NativeStamp(const std::string& path)
{
    return StampOf(path, false);
}

FileStamp NativeFolderStamp(const std::string& path)
{
    return StampOf(path, true);
}

std::int64_t NativeFileTime(const std::string& path)
{
    constexpr std::int64_t kTicksTo1970 = 116'444'736'000'000'000; // from 1601, of 100 ns
    constexpr std::int64_t kTicksInSecond = 10'000'000;
    const FileStamp stamp = NativeStamp(path);
    return stamp.exists ? (stamp.changed - kTicksTo1970) / kTicksInSecond : 0;
}

std::unique_ptr<NativeFile> OpenNativeFile(const std::string& path)
{
    NativeFault fault = NativeFault::none;
    return FileOf(OpenPlain(path, fault));
}

std::unique_ptr<NativeFile> OpenNativeFileIn(const std::string& path, const std::string& folder,
                                             NativeFault& fault)
{
    WindowsHandle handle = OpenPlain(path, fault);
    if (!handle.IsOpen())
        return nullptr;
    std::wstring real;
    if (FinalPathOf(handle, real) != 0 || !LiesIn(Utf8FromWide(real), folder)) {
        fault = NativeFault::absent;
        return nullptr;
    }
    std::unique_ptr<NativeFile> file = FileOf(std::move(handle));
    fault = file ? NativeFault::none : NativeFault::refused;
    return file;
}

} // namespace kiv
