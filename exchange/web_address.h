#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// What is wrong with the address of a site ("https://host.example/museum/"), as a sentence; ""
/// when it is well.
std::string BaseFault(std::string_view base);

/// The address of a file: that of the site, with or without its final "/", and the file's path in
/// it (UTF-8, "/" or "\" between its parts), with percent codes for what an address cannot hold.
std::string WebAddress(std::string_view base, std::string_view path);

} // namespace kiv
