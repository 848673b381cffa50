#include "builder/upload_list.h"

#include "platform/run_error.h"
#include "platform/site_files.h"
#include "text/text.h"

#include <cstdint>
#include <utility>

namespace kiv {

void UploadList::RecordUpload(std::string_view file)
{
    if (!Contains(command_, "@@"))
        return;
    std::string line(command_);
    ReplaceEach(line, "@@", file);
    // A page may be written to the batch file itself, so its state is asked for each time; it is
    // read when it changed.
    if (files_.Stamp(kUploadBatchFile) != seen_)
        ReadAnew();
    if (lines_.contains(line))
        return;
    files_.AppendToFile(kUploadBatchFile, line + "\r\n");
    const std::uint64_t size = seen_.size + line.size() + 2;
    seen_ = files_.Stamp(kUploadBatchFile);
    added_.insert(line);
    lines_.insert(std::move(line));
    if (seen_.size != size) {
        is_shared_ = true;
        ReadAnew();
    }
}

void UploadList::RemoveDoubles()
{
    if (added_.empty() || (!is_shared_ && files_.Stamp(kUploadBatchFile) == seen_) ||
        !files_.FileExists(kUploadBatchFile))
        return;
    const std::string bytes = files_.ReadFile(kUploadBatchFile);
    std::string single;
    std::unordered_set<std::string> met;
    for (std::string_view rest = bytes; !rest.empty();) {
        const std::string_view before = rest;
        std::string line(TakeLine(rest));
        if (!added_.contains(line) || met.insert(std::move(line)).second)
            single.append(before.substr(0, before.size() - rest.size()));
    }
    if (single.size() == bytes.size())
        return;
    try {
        files_.ReplaceSource(kUploadBatchFile, bytes, single);
    } catch (const RunError&) {
        // The other build is still adding lines. One that stands there twice does no harm.
    }
}

void UploadList::ReadAnew()
{
    lines_.clear();
    seen_ = files_.Stamp(kUploadBatchFile);
    if (!seen_.exists)
        return;
    const std::string bytes = files_.ReadFile(kUploadBatchFile);
    for (std::string_view rest = bytes; !rest.empty();)
        lines_.emplace(TakeLine(rest));
}

} // namespace kiv
