#include "bench/outputs.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <stdexcept>
#include <system_error>

#include <sys/stat.h>

namespace kiv {

std::vector<Output> FindOutputs(const std::filesystem::path& dir)
{
    std::vector<Output> outputs;
    for (const auto& entry : std::filesystem::directory_iterator(dir)) {
        const std::string name = entry.path().filename().string();
        if (name == "_html.txt" || name == "_template.txt" || !entry.is_regular_file())
            continue;
        struct stat status {};
        if (stat(entry.path().c_str(), &status) != 0)
            throw std::system_error(errno, std::generic_category(), entry.path().string());
        outputs.push_back({name, static_cast<std::uintmax_t>(status.st_size), status.st_ino,
                           status.st_mtim.tv_sec * 1'000'000'000 + status.st_mtim.tv_nsec});
    }
    std::ranges::sort(outputs, {}, &Output::name);
    return outputs;
}

std::vector<Output> ReadOutputList(const std::filesystem::path& list)
{
    std::ifstream in(list);
    std::vector<Output> outputs;
    Output output;
    while (in >> output.size && in.get() == ' ' && std::getline(in, output.name))
        outputs.push_back(output);
    if (outputs.empty())
        throw std::runtime_error("no files in list " + list.string());
    return outputs;
}

void RemoveOutputs(const std::filesystem::path& dir, const std::vector<Output>& outputs)
{
    for (const Output& output : outputs)
        std::filesystem::remove(dir / output.name);
}

void SpoilOutputs(const std::filesystem::path& dir, const std::vector<Output>& outputs)
{
    for (const Output& output : outputs) {
        std::fstream file;
        file.exceptions(std::ios::failbit | std::ios::badbit);
        file.open(dir / output.name, std::ios::in | std::ios::out | std::ios::binary);
        file.put('\x01'); // no page begins so
    }
}

std::uintmax_t BytesWritten(const std::vector<Output>& before, const std::vector<Output>& after)
{
    std::uintmax_t bytes = 0;
    for (const Output& output : after) {
        const auto old = std::ranges::lower_bound(before, output.name, {}, &Output::name);
        if (old == before.end() || *old != output)
            bytes += output.size;
    }
    return bytes;
}

} // namespace kiv
