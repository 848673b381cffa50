// What another program hinders for a moment: virus scanners and indexers look into every new file,
// and hold it.
#pragma once

#include "platform/windows/api.h"

namespace kiv {

/// Another program has the file, or it is on its way out, for a moment or for longer.
inline bool IsInUse(DWORD error)
{
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
           error == ERROR_ACCESS_DENIED;
}

/// Does what gives 0 or an error number; again, for a fifth of a second, while a file is in use.
template <typename Action>
DWORD Patiently(const Action& action)
{
    constexpr int kTries = 10;
    constexpr DWORD kPause = 20; // milliseconds
    DWORD error = action();
    for (int i = 1; i < kTries && IsInUse(error); ++i) {
        ::Sleep(kPause);
        error = action();
    }
    return error;
}

} // namespace kiv
