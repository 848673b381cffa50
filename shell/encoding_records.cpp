#include "shell/encoding_records.h"

#include "platform/drive_path.h"
#include "platform/folder_work.h"
#include "platform/run_error.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/text_key.h"
#include "text/windows1252.h"

#include <charconv>

namespace kiv {

namespace {

// The first line says what the run made of the files. Each file has a line with the key of its new
// bytes, the size of its old ones and its path; behind it stand the old bytes and a line end.
constexpr std::string_view kEncodedHead = "kiv encoded 1 ";
constexpr std::string_view kUtf8Word = "utf-8";
constexpr std::string_view kWindowsWord = "1252";
constexpr std::size_t kKeySize = 16;

std::string RecordText(const EncodingRun& run)
{
    std::string text =
        Joined({kEncodedHead, run.to == Encoding::utf8 ? kUtf8Word : kWindowsWord, "\n"});
    for (const EncodedFile& file : run.files)
        Append(text, {file.key, " ", std::to_string(file.old_bytes.size()), " ", file.path, "\n",
                      file.old_bytes, "\n"});
    return text;
}

/// Takes the next file off `rest`; false when it is none.
bool TakeFile(std::string_view& rest, EncodedFile& file)
{
    const std::string_view line = TakeLine(rest);
    if (line.size() < kKeySize + 1)
        return false;
    file.key = line.substr(0, kKeySize);
    const std::string_view numbers = line.substr(kKeySize + 1);
    std::size_t size = 0;
    const auto [end, error] =
        std::from_chars(numbers.data(), numbers.data() + numbers.size(), size);
    const auto digits = static_cast<std::size_t>(end - numbers.data());
    if (error != std::errc() || digits + 1 >= numbers.size() || size >= rest.size())
        return false;
    file.path = numbers.substr(digits + 1);
    file.old_bytes = rest.substr(0, size);
    rest.remove_prefix(size + 1);
    return true;
}

std::optional<EncodingRun> ParseRecord(std::string_view bytes)
{
    if (!bytes.starts_with(kEncodedHead))
        return std::nullopt;
    const std::string_view word = TakeLine(bytes).substr(kEncodedHead.size());
    if (word != kUtf8Word && word != kWindowsWord)
        return std::nullopt;
    EncodingRun run{word == kUtf8Word ? Encoding::utf8 : Encoding::windows1252, {}};
    while (!bytes.empty()) {
        EncodedFile file;
        if (!TakeFile(bytes, file))
            return std::nullopt;
        run.files.push_back(std::move(file));
    }
    return run;
}

} // namespace

const EncodedFile* EncodingRun::Find(std::string_view path) const
{
    for (const EncodedFile& file : files)
        if (UpperCase(file.path) == UpperCase(path))
            return &file;
    return nullptr;
}

EncodingRecord::EncodingRecord(Files& files, std::string_view records_folder,
                               const std::string& folder)
    : files_(files), records_folder_(records_folder)
{
    if (!records_folder.empty())
        path_ =
            Joined({WithSeparator(records_folder), TextKey(files.RealFolder(folder)), ".encoded"});
}

std::optional<EncodingRun> EncodingRecord::Last()
{
    if (path_.empty() || !files_.FileExists(path_))
        return std::nullopt;
    std::optional<EncodingRun> run = ParseRecord(files_.ReadFile(path_));
    if (!run)
        throw RunError(ErrorKind::file,
                       Joined({"cannot read ", path_, ": it is no record of an encoding run"}),
                       {path_}, "Move it away; what it was about cannot be taken back by it.");
    return run;
}

void EncodingRecord::Keep(const EncodingRun& run)
{
    if (path_.empty())
        return;
    MakeFolders(files_, records_folder_);
    files_.WriteRecord(path_, RecordText(run));
}

void EncodingRecord::Forget()
{
    if (!path_.empty())
        files_.DeleteFile(path_);
}

} // namespace kiv
