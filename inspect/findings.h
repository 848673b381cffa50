// What the rows of the table of findings call.
#pragma once

namespace kiv {

class FindingSink;
struct SiteView;

// build_findings.cpp
void FindBuildError(const SiteView& site, FindingSink& sink);
void FindBuildWarnings(const SiteView& site, FindingSink& sink);

} // namespace kiv
