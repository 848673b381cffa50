// File systems on images: made by the system's tools, mounted over loop devices.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace kiv::faults {

struct FileSystem {
    std::string_view name;
    std::string_view tool; // the program that makes one
    std::string_view options;
    std::uint64_t size;
};

std::span<const FileSystem> FileSystems();

/// Makes an image with an empty file system. False when the tool is missing or fails.
bool MakeImage(const FileSystem& system, const std::string& image);

/// While it lives, an image is mounted at a folder.
class Mounted {
  public:
    /// Throws std::runtime_error when the system refuses.
    Mounted(const FileSystem& system, const std::string& image, std::string folder);
    Mounted(const Mounted&) = delete;
    Mounted& operator=(const Mounted&) = delete;
    ~Mounted();

  private:
    std::string folder_;
};

} // namespace kiv::faults
