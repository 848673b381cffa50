// What was sent to a server, kept for the next upload.
#pragma once

#include "platform/files.h"

#include <map>
#include <string>
#include <string_view>

namespace kiv {

/// The record of a folder's uploads. It lies in the folder of the program's own records, not among
/// the site's files.
class SentFiles {
  public:
    /// `records_folder` may be empty: then nothing is remembered. Another command than that of the
    /// last upload may lead to another server, so nothing counts as sent there. A record that
    /// cannot be read, or is none, counts as none.
    SentFiles(Files& files, std::string_view records_folder, const std::string& folder,
              std::string_view command);

    /// Whether the file was sent with these very bytes. `name` is as the upload calls it.
    bool Holds(const std::string& name, const std::string& key) const;
    /// Names of what was sent, with the keys of their bytes (TextKey).
    const std::map<std::string, std::string>& All() const { return sent_; }
    void Note(const std::string& name, const std::string& key) { sent_[name] = key; }
    void Forget(const std::string& name) { sent_.erase(name); }

    /// Puts the record on the disk. Throws RunError of kind `file`. Nothing happens without a
    /// folder for it.
    void Keep();

  private:
    void Read();

    Files& files_;
    std::string records_folder_;
    std::string path_; // empty: nothing is remembered
    std::string head_; // the lines that begin the record
    std::map<std::string, std::string> sent_;
};

} // namespace kiv
