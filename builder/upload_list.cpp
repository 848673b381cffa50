#include "builder/upload_list.h"

#include "text/text.h"

namespace kiv {

namespace {

constexpr std::string_view kBatchFile = "c:\\guestout2.bat";

} // namespace

void UploadList::RecordUpload(std::string_view file)
{
    if (!Contains(command_, "@@"))
        return;
    std::string line(command_);
    ReplaceEach(line, "@@", file);
    // A page may be written to the batch file itself, so its state is asked for each time; it is
    // read when it changed.
    if (files_.Stamp(kBatchFile) != seen_)
        ReadAnew();
    if (lines_.contains(line))
        return;
    files_.AppendToFile(kBatchFile, line + "\r\n");
    lines_.insert(std::move(line));
    seen_ = files_.Stamp(kBatchFile);
}

void UploadList::ReadAnew()
{
    lines_.clear();
    seen_ = files_.Stamp(kBatchFile);
    if (!seen_.exists)
        return;
    const std::string bytes = files_.ReadFile(kBatchFile);
    for (std::string_view rest = bytes; !rest.empty();)
        lines_.emplace(TakeLine(rest));
}

} // namespace kiv
