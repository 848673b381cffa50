// What is left to do by hand when a site was begun beside files that were there.
#pragma once

#include "shell/new_site.h"

namespace kiv {

class Files;
struct NewSitePlan;

/// Finds the lines that files which were there lack (`missing_lines`), and the news in the
/// composer's list (`news_site`). Throws as ReadNewsSettings does.
void FindMissingLines(Files& files, const NewSitePlan& plan, BegunSite& site);

/// Finds the sections of the group that have no site map yet, where the page list shows one
/// (`build_first`): a build of the group would stop there.
void FindUnmappedSections(Files& files, const NewSitePlan& plan, BegunSite& site);

} // namespace kiv
