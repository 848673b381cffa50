// What the last encoding run of a folder has changed, so that it can be taken back.
#pragma once

#include "exchange/encoded_text.h"
#include "platform/files.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// A source that was changed.
struct EncodedFile {
    std::string path;      // absolute drive path
    std::string key;       // of the bytes that it got (TextKey)
    std::string old_bytes; // all that it held before
};

struct EncodingRun {
    Encoding to = Encoding::utf8;
    std::vector<EncodedFile> files;

    /// The file of this path, case aside; null where there is none.
    const EncodedFile* Find(std::string_view path) const;
};

/// The record of a folder. It lies in the folder of the program's own records.
class EncodingRecord {
  public:
    /// `records_folder` may be empty: then nothing is kept.
    EncodingRecord(Files& files, std::string_view records_folder, const std::string& folder);

    bool IsKept() const { return !path_.empty(); }
    /// The last run; nothing when there is none. Throws RunError of kind `file` when it cannot be
    /// read, or is no record.
    std::optional<EncodingRun> Last();
    /// Has the disk keep a run. Throws RunError of kind `file`.
    void Keep(const EncodingRun& run);
    void Forget();

  private:
    Files& files_;
    std::string records_folder_;
    std::string path_;
};

} // namespace kiv
