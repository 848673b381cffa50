// Locks on folders of Windows.
#pragma once

#include "platform/files.h"

#include <memory>
#include <string>

namespace kiv {

/// Waits for the lock on a native folder; null when somebody else holds it all the time. It holds
/// off all programs of this machine, whatever path leads them to the folder, and is given back by
/// the thread that got it. Where Windows gives no lock it holds nothing.
std::unique_ptr<FolderLock> LockWindowsFolder(const std::wstring& folder);

} // namespace kiv
