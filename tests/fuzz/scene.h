// How an input of the targets is cut.
#pragma once

#include "tests/fuzz/desk.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::fuzz {

/// Stands between the parts of an input: a control character that no text file has, so that the
/// parts may hold every other byte.
inline constexpr char kBetweenParts = '\x1E';

/// A file of a scene.
struct SceneFile {
    std::string name; // relative to C:\site, or with a drive
    std::string bytes;
};

/// An input of most targets: a line of words, which says what is called, and files. In the bytes
/// the line comes first, then for each file kBetweenParts, its name, LF and its content.
struct Scene {
    std::string line;
    std::vector<SceneFile> files;
};

Scene ReadScene(const std::uint8_t* data, std::size_t size);
std::string SceneText(const Scene& scene);

/// Lays the files of a scene down.
void LayOut(Desk& desk, const Scene& scene);

/// The parts of a text between separators, empty ones too; one at least.
std::vector<std::string> Parts(std::string_view text, char separator);

/// The bytes of an input.
std::string_view TextOf(const std::uint8_t* data, std::size_t size);

} // namespace kiv::fuzz
