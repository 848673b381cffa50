#include "tests/support/memory_tree.h"

#include "text/windows1252.h"

#include <optional>
#include <tuple>

namespace kiv::test {

std::string NativeNameIn(const MemoryNode& folder, std::string_view name)
{
    std::string as_written = ToUtf8(name);
    if (folder.nodes.contains(as_written))
        return as_written;
    const std::string upper = UpperCase(name);
    std::optional<std::tuple<bool, std::string, std::string>> best;
    for (const auto& [native, node] : folder.nodes) {
        std::string text = FromUtf8(native);
        if (UpperCase(text) != upper)
            continue;
        std::tuple<bool, std::string, std::string> found(text != name, std::move(text), native);
        if (!best || found < *best)
            best = std::move(found);
    }
    return best ? std::get<2>(*best) : as_written;
}

MemoryNode* NodeIn(const MemoryNode& folder, std::string_view native)
{
    const auto found = folder.nodes.find(native);
    return found == folder.nodes.end() ? nullptr : found->second.get();
}

MemoryNode* FolderIn(MemoryNode& folder, std::string_view native)
{
    std::unique_ptr<MemoryNode>& node = folder.nodes[std::string(native)];
    if (!node) {
        node = std::make_unique<MemoryNode>();
        node->is_folder = true;
    }
    return node->is_folder ? node.get() : nullptr;
}

} // namespace kiv::test
