// What the rows of the table of findings call.
#pragma once

namespace kiv {

class FindingSink;
struct SiteView;

// build_findings.cpp
void FindBuildError(const SiteView& site, FindingSink& sink);
void FindBuildWarnings(const SiteView& site, FindingSink& sink);

// link_findings.cpp
void FindDeadLinks(const SiteView& site, FindingSink& sink);
void FindDeadAnchors(const SiteView& site, FindingSink& sink);
void FindDeadPictures(const SiteView& site, FindingSink& sink);
void FindDeadStyles(const SiteView& site, FindingSink& sink);
void FindDeadScripts(const SiteView& site, FindingSink& sink);
void FindDeadFrames(const SiteView& site, FindingSink& sink);
void FindDeadForms(const SiteView& site, FindingSink& sink);
void FindLetterCase(const SiteView& site, FindingSink& sink);
void FindDrivePaths(const SiteView& site, FindingSink& sink);
void FindBackslashes(const SiteView& site, FindingSink& sink);

// picture_findings.cpp
void FindPictureSizes(const SiteView& site, FindingSink& sink);

// page_findings.cpp
void FindUnreadPages(const SiteView& site, FindingSink& sink);
void FindIdsTwice(const SiteView& site, FindingSink& sink);
void FindLeftOvers(const SiteView& site, FindingSink& sink);

// visited_findings.cpp
void FindStalePages(const SiteView& site, FindingSink& sink);
void FindLinksToStalePages(const SiteView& site, FindingSink& sink);
void FindUnlinkedPages(const SiteView& site, FindingSink& sink);
void FindUnusedPictures(const SiteView& site, FindingSink& sink);

} // namespace kiv
