// The real drives of the machine.
#pragma once

#include "platform/files.h"
#include "platform/native_paths.h"

#include <map>
#include <memory>
#include <string>

namespace kiv {

/// Native folders (UTF-8, absolute) by drive letter. On Windows the machine's own drives stand for
/// all other letters.
using DriveMap = std::map<char, std::string>;

/// The machine's drives: the files on them, and what they are called outside.
class Drives : public Files, public NativePaths {};

std::unique_ptr<Drives> MakeDriveFiles(const DriveMap& drives);

} // namespace kiv
