// What a build says that lacks its page list or its template.
#pragma once

namespace kiv {

struct Build;

/// Whether page list and template are there. If not, that is told by the system's own message,
/// which names both; its place and its hint say which of them is missing and what is there instead.
bool HasSources(Build& build);

} // namespace kiv
