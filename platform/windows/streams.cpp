#include "platform/windows/streams.h"

#include "platform/windows/api.h"
#include "platform/windows/handle.h"

#include <cstdint>
#include <vector>

namespace kiv {

namespace {

/// The names of the further contents, ":name:$DATA". File systems that have none say so by an
/// error.
std::vector<std::wstring> StreamsOf(const std::wstring& native)
{
    std::vector<std::wstring> names;
    WIN32_FIND_STREAM_DATA entry{};
    const HANDLE search = ::FindFirstStreamW(native.c_str(), FindStreamInfoStandard, &entry, 0);
    if (search == INVALID_HANDLE_VALUE)
        return names;
    const std::wstring content = L"::$DATA"; // the file's own
    do
        if (content != &entry.cStreamName[0])
            names.emplace_back(&entry.cStreamName[0]);
    while (::FindNextStreamW(search, &entry) != 0);
    ::FindClose(search);
    return names;
}

bool CopyContent(const std::wstring& from, const std::wstring& to)
{
    constexpr std::size_t kStep = 1024 * std::size_t{1024};
    const WindowsHandle source = OpenWindowsFile(from);
    WindowsHandle target(::CreateFileW(to.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                       FILE_ATTRIBUTE_NORMAL, nullptr));
    std::string bytes;
    std::uint64_t offset = 0;
    bool is_good = source.IsOpen() && target.IsOpen();
    do {
        is_good = is_good && ReadBytes(source, offset, kStep, bytes) == 0 &&
                  WriteBytes(target, bytes) == 0;
        offset += bytes.size();
    } while (is_good && !bytes.empty());
    return target.Close() == 0 && is_good;
}

} // namespace

bool CopyStreams(const std::wstring& from, const std::wstring& to)
{
    bool has_all = true;
    for (const std::wstring& name : StreamsOf(from))
        has_all = CopyContent(from + name, to + name) && has_all;
    return has_all;
}

} // namespace kiv
