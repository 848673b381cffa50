#include "builder/missing_sources.h"

#include "builder/build_state.h"
#include "platform/drive_path.h"
#include "platform/run_error.h"
#include "platform/site_files.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <string>
#include <string_view>
#include <vector>

namespace kiv {

namespace {

std::vector<std::string> FilesHere(Files& files)
{
    try {
        return files.ListFiles(".", "*.*");
    } catch (const RunError&) {
        return {}; // the folder may be one that cannot be listed
    }
}

/// Whether a file was most likely meant to be called `wanted`, such as "_html.txt": "_html.txt.txt"
/// of an editor or file manager that shows no extensions, "_html.htm", "_html", "html.txt".
bool LooksLike(std::string_view name, std::string_view wanted)
{
    const std::string lower = LowerCase(name);
    const std::string_view stem = Before(wanted, '.');
    return lower == wanted.substr(1) || lower == stem ||
           (lower.starts_with(stem) && lower[stem.size()] == '.');
}

/// The file that was most likely meant; "" when there is none.
std::string LookAlike(Files& files, std::string_view wanted)
{
    for (std::string& name : FilesHere(files))
        if (LooksLike(name, wanted))
            return std::move(name);
    return {};
}

/// What is there in the place of a missing source, and what to do about it; "" when nothing is.
std::string Instead(Files& files, std::string_view missing)
{
    if (std::string hint = WhatIsNoFile(files, missing); !hint.empty())
        return hint;
    const std::string name = LookAlike(files, missing);
    return name.empty() ? name : Joined({"Is it \"", name, "\"? Then give that file this name."});
}

std::string NotThere(Files& files, std::string_view missing, const std::string& instead,
                     std::string_view how_to_begin)
{
    return Joined({"There is no ", missing, " in ", files.CurrentDirectory(), ". ",
                   instead.empty() ? how_to_begin : instead});
}

/// Which of the two is missing, and what to do.
std::string Hint(Files& files, bool has_list, bool has_template)
{
    const std::string list = has_list ? "" : Instead(files, kPageListFile);
    const std::string frame = has_template ? "" : Instead(files, kTemplateFile);
    if (!has_list && !has_template && list.empty() && frame.empty())
        return Joined({"There is neither _html.txt nor _template.txt in ", files.CurrentDirectory(),
                       ". Is this the folder of the site?"});
    std::string hint;
    if (!has_list)
        hint = NotThere(files, kPageListFile, list,
                        "Write one: each page begins with \"@FILE =\" and \"@TITLE =\".");
    if (!has_list && !has_template)
        hint += ' ';
    if (!has_template)
        hint += NotThere(files, kTemplateFile, frame,
                         "Write one: a single \";\" will do for pages without a frame.");
    return hint;
}

} // namespace

std::string WhatIsNoFile(Files& files, std::string_view path)
{
    if (path.empty()) // is the folder itself
        return {};
    if (files.FolderExists(path))
        return "A folder has this name: give the folder another one.";
    if (files.NameIsTaken(path))
        return "Something has this name that is no plain file: a pipe, a device or a link to "
               "nothing. Put a file in its place.";
    return {};
}

bool HasSources(Build& build)
{
    Files& files = build.machine.files;
    const bool has_template = files.FileExists(kTemplateFile);
    const bool has_list = files.FileExists(kPageListFile);
    if (has_template && has_list)
        return true;
    const std::string_view missing = has_list ? kTemplateFile : kPageListFile;
    const std::string path = AbsolutePath(missing, files.CurrentDirectory());
    build.state.place = {path, 0, {}};
    build.messages.reportmsg("OOPS! Missing _html.txt, _template.txt",
                             Hint(files, has_list, has_template));
    build.state.place = {};
    return false;
}

} // namespace kiv
