#include "shell/sent_files.h"

#include "platform/drive_path.h"
#include "platform/folder_work.h"
#include "platform/run_error.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/text_key.h"

namespace kiv {

namespace {

constexpr std::string_view kSentHead = "kiv sent 1\n";
constexpr std::size_t kSentKeySize = 16;

} // namespace

SentFiles::SentFiles(Files& files, std::string_view records_folder, const std::string& folder,
                     std::string_view command)
    : files_(files), records_folder_(records_folder)
{
    if (records_folder.empty())
        return;
    const std::string real = files.RealFolder(folder);
    path_ = Joined({WithSeparator(records_folder), TextKey(real), ".sent"});
    head_ = Joined({kSentHead, TextKey(real), " ", TextKey(command), "\n"});
    Read();
}

void SentFiles::Read()
{
    std::string bytes;
    try {
        if (!files_.FileExists(path_))
            return;
        bytes = files_.ReadFile(path_);
    } catch (const RunError&) {
        return; // everything is sent anew then
    }
    std::string_view rest = bytes;
    if (!rest.starts_with(head_))
        return;
    rest.remove_prefix(head_.size());
    while (!rest.empty()) {
        const std::string_view line = TakeLine(rest);
        if (line.size() > kSentKeySize + 1)
            sent_[std::string(line.substr(kSentKeySize + 1))] = line.substr(0, kSentKeySize);
    }
}

bool SentFiles::Holds(const std::string& name, const std::string& key) const
{
    const auto found = sent_.find(name);
    return found != sent_.end() && found->second == key;
}

void SentFiles::Keep()
{
    if (path_.empty())
        return;
    std::string text = head_;
    for (const auto& [name, key] : sent_)
        Append(text, {key, " ", name, "\n"});
    MakeFolders(files_, records_folder_);
    files_.WriteRecord(path_, text);
}

} // namespace kiv
