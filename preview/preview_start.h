// Begins to show a site once it was built.
#pragma once

#include "platform/files.h"
#include "platform/machine.h"
#include "preview/preview_session.h"

#include <memory>
#include <optional>
#include <span>
#include <string>

namespace kiv {

/// What is to be shown. Folders are absolute drive paths.
struct PreviewWish {
    std::string directory;                // of the page list
    std::string records_folder = {};      // as Workspace::RecordsFolder
    std::optional<std::string> root = {}; // none: the folder that the site's addresses stay within
    std::optional<int> port = {};         // none: kPreviewPort, or a free one when that is taken
};

struct StartedPreview {
    std::unique_ptr<PreviewSession> session;
    std::string root;        // native
    std::string start;       // as that of the site that is shown
    bool is_above = false;   // the root is another folder than the site's
    bool is_settled = false; // a build has ended well and told root and start
};

/// What a build has made.
struct MadeSite {
    std::span<const WrittenFile> written;
    bool is_whole = true; // it has not failed
};

/// After each build. Begins to show the site; when the build wrote no page, the pages that lie in
/// its folder tell the root. After the first build that ended well it begins again, at the same
/// port if that can be had, where the pages need another root or start than was told by one that
/// failed. True: it has an address that is new. What `machine` refers to outlives the session;
/// `post` runs tasks where it is worked with. Throws RunError when the root or the port cannot be
/// had.
bool ShowBuilt(StartedPreview& preview, const PreviewWish& wish, const Machine& machine,
               const MadeSite& made, const PostTask& post);

} // namespace kiv
