#include "builder/output_path.h"

#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <array>

namespace kiv {

namespace {

/// Known whatever their case. The list differs from the one that page records go by.
constexpr std::array<std::string_view, 7> kOutputExtensions = {".asp", ".html", ".htm", ".ram",
                                                               ".xml", ".txt",  ".asx"};

bool HasKnownExtension(std::string_view name)
{
    const std::string lower = LowerCase(name);
    return std::any_of(kOutputExtensions.begin(), kOutputExtensions.end(),
                       [&](std::string_view extension) { return lower.ends_with(extension); });
}

std::string WithoutFolders(std::string_view name)
{
    const std::size_t separator = name.find_last_of("/\\");
    return std::string(separator == npos ? name : name.substr(separator + 1));
}

} // namespace

std::string OutputPath(std::string_view name, const BuildState& state, const PassState& pass)
{
    const std::string full(name);
    if (HasKnownExtension(name))
        return pass.AspPass ? state.AspOutputDir + LowerCase(name) : state.OutputDir1 + full;
    if (pass.AspPass)
        return state.AspOutputDir + WithoutFolders(name) + ".asp";
    if (pass.HtmPass)
        return state.HtmOutputDir + WithoutFolders(name) + ".htm";
    return state.OutputDir1 + full + ".htm";
}

std::string ShortenedPath(std::string_view path)
{
    if (path.size() <= 35)
        return std::string(path);
    return std::string(FirstChars(path, 13)) + "..." + std::string(LastChars(path, 20));
}

} // namespace kiv
