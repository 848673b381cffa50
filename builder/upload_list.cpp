#include "builder/upload_list.h"

#include "platform/site_files.h"
#include "text/text.h"

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
    const std::string old = seen_.exists ? files_.ReadFile(kUploadBatchFile) : std::string();
    files_.WriteFile(kUploadBatchFile, old + line + "\r\n");
    lines_.insert(std::move(line));
    seen_ = files_.Stamp(kUploadBatchFile);
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
