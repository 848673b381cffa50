// The real drives of the machine.
#pragma once

#include "platform/files.h"
#include "platform/look_log.h"
#include "platform/native_paths.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string>

namespace kiv {

/// Native folders (UTF-8, absolute) by drive letter. On Windows the machine's own drives stand for
/// all other letters.
using DriveMap = std::map<char, std::string>;

/// The machine's drives: the files on them, and what they are called outside.
class Drives : public Files, public NativePaths {
  public:
    /// From now on tells `log` of what is looked at; null: nobody. It outlives that.
    virtual void TellLooksTo(LookLog* log) = 0;
    /// How a place is now. Tells no log of it, and throws nothing but for lack of memory. A name
    /// that differs in case is found by what is remembered of its folder.
    virtual PlaceState StateNow(const std::string& absolute) = 0;
    /// Forgets what is remembered of folders, and nothing else that Refresh does.
    virtual void ForgetNames() {}
    /// What looking at a place in this state throws, which is `refused`.
    [[noreturn]] static void RefuseLook(const std::string& absolute, const PlaceState& state);
};

/// `threads`: how many may write files that are handed over, the caller's own among them. 0: as the
/// environment says (KIV_THREADS), or the machine.
std::unique_ptr<Drives> MakeDriveFiles(const DriveMap& drives, std::size_t threads = 0);

} // namespace kiv
