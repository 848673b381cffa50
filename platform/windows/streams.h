// The further contents of a file on Windows, each behind a name of its own: where it was downloaded
// from, what a server keeps of it.
#pragma once

#include <string>

namespace kiv {

/// Gives a file the further contents of another. Returns whether it has them all.
bool CopyStreams(const std::wstring& from, const std::wstring& to);

} // namespace kiv
