#include "tests/fuzz/scene.h"

#include "text/text.h"

namespace kiv::fuzz {

std::string_view TextOf(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}

std::vector<std::string> Parts(std::string_view text, char separator)
{
    std::vector<std::string> parts;
    for (const std::string_view part : Split(text, separator))
        parts.emplace_back(part);
    if (parts.empty())
        parts.emplace_back();
    return parts;
}

Scene ReadScene(const std::uint8_t* data, std::size_t size)
{
    const std::vector<std::string> parts = Parts(TextOf(data, size), kBetweenParts);
    Scene scene;
    scene.line = parts.front();
    for (std::size_t i = 1; i < parts.size(); ++i) {
        const std::size_t end = parts[i].find('\n');
        const std::string name = parts[i].substr(0, end);
        scene.files.push_back({name, end == npos ? "" : parts[i].substr(end + 1)});
    }
    return scene;
}

std::string SceneText(const Scene& scene)
{
    std::string text = scene.line;
    for (const SceneFile& file : scene.files)
        text += kBetweenParts + file.name + '\n' + file.bytes;
    return text;
}

void LayOut(Desk& desk, const Scene& scene)
{
    for (const SceneFile& file : scene.files)
        desk.drives.Put(NativeBelow(file.name), file.bytes);
}

} // namespace kiv::fuzz
