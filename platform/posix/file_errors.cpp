#include "platform/file_errors.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

namespace kiv {

namespace {

struct ErrorHint {
    int error;
    std::string_view hint;
};

constexpr auto kHints = std::to_array<ErrorHint>({
    {EACCES, kNoRightHint},
    {EPERM, kNoRightHint},
    {ENOENT, kNothingThereHint},
    {ENOTDIR, "A part of the path is a file where a folder should be: look at its spelling."},
    {EISDIR, kFolderInTheWay.hint},
    {ENOSPC, kFullDiskHint},
    {EDQUOT, kFullDiskHint},
    {EROFS, kReadOnlyDiskHint},
    {ENAMETOOLONG, "Take a shorter name."},
    {ELOOP, "The links of this path lead in a circle: mend them."},
    {EBUSY, kInUseHint},
    {ETXTBSY, kInUseHint},
    {EIO, kFailingDiskHint},
    {EMFILE, kManyFilesHint},
    {ENFILE, kManyFilesHint},
});

} // namespace

std::string_view SystemHint(int error)
{
    const auto* const known = std::ranges::find(kHints, error, &ErrorHint::error);
    return known == kHints.end() ? std::string_view() : known->hint;
}

/// Folders that another machine lends have these of Windows' ways.
bool SystemMayPass(int error)
{
    return error == EBUSY || error == ETXTBSY;
}

std::string SystemWords(int error)
{
    return std::system_category().message(error);
}

} // namespace kiv
