// What a build says that lacks its page list or its template.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

struct Build;
class Files;

/// A hint for a source that is not found although something bears its name: a folder, a pipe, a
/// link to nothing. "" when nothing does.
std::string WhatIsNoFile(Files& files, std::string_view path);

/// Whether page list and template are there. If not, that is told by the format's own message,
/// which names both; its place and its hint say which of them is missing and what is there instead.
bool HasSources(Build& build);

} // namespace kiv
