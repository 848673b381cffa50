#include "builder/output_path.h"

#include "platform/drive_path.h"
#include "text/joined_text.h"
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
    return std::ranges::any_of(kOutputExtensions, [&](std::string_view extension) {
        return EqualsNoCase(LastChars(name, extension.size()), extension);
    });
}

} // namespace

std::string OutputPath(std::string_view name, const BuildState& state, const PassState& pass)
{
    if (HasKnownExtension(name))
        return pass.AspPass ? state.AspOutputDir + LowerCase(name)
                            : Joined({state.OutputDir1, name});
    if (pass.AspPass)
        return Joined({state.AspOutputDir, WithoutFolders(name), ".asp"});
    if (pass.HtmPass)
        return Joined({state.HtmOutputDir, WithoutFolders(name), ".htm"});
    return Joined({state.OutputDir1, name, ".htm"});
}

std::string_view WithoutFolders(std::string_view path)
{
    std::size_t begin = path.size();
    while (begin > 0 && !IsSeparator(path[begin - 1]))
        --begin;
    return path.substr(begin);
}

void ShowPath(Reporter& reporter, std::string_view path)
{
    if (path.size() <= 35)
        reporter.Status(path);
    else
        reporter.Status(Joined({FirstChars(path, 13), "...", LastChars(path, 20)}));
}

} // namespace kiv
