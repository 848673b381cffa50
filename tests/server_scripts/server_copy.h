// The example site's pages for a server.
#pragma once

#include "tests/support/folders.h"

namespace kiv::test {

/// Builds the example site and gives the pages of its server copy, "guestbook.asp" and so on. A
/// message of the build, or a fatal error, fails the test.
FileTree ServerCopy();

} // namespace kiv::test
