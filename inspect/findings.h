// What the rows of the table of findings call.
#pragma once

namespace kiv {

class FindingSink;
struct SiteView;

// build_findings.cpp
void FindBuildError(const SiteView& site, FindingSink& sink);
void FindBuildWarnings(const SiteView& site, FindingSink& sink);

// directive_findings.cpp
void FindMisspelledDirectives(const SiteView& site, FindingSink& sink);
void FindPagesTwice(const SiteView& site, FindingSink& sink);

// variable_findings.cpp
void FindMisspelledVariables(const SiteView& site, FindingSink& sink);
void FindMisspelledMacros(const SiteView& site, FindingSink& sink);

// number_findings.cpp
void FindUndefinedNumbers(const SiteView& site, FindingSink& sink);
void FindUnusedNumbers(const SiteView& site, FindingSink& sink);
void FindRedefinedNumbers(const SiteView& site, FindingSink& sink);

// reference_findings.cpp
void FindUnknownReferences(const SiteView& site, FindingSink& sink);
void FindUnclosedBrackets(const SiteView& site, FindingSink& sink);

// tag_findings.cpp
void FindMisspelledTags(const SiteView& site, FindingSink& sink);

} // namespace kiv
