// What the rows of the table of findings call.
#pragma once

namespace kiv {

class FindingSink;
struct SiteView;

// build_findings.cpp
void FindBuildError(const SiteView& site, FindingSink& sink);
void FindBuildWarnings(const SiteView& site, FindingSink& sink);
void FindMissingIncludes(const SiteView& site, FindingSink& sink);
void FindNoOutputFolder(const SiteView& site, FindingSink& sink);
void FindPagesOverSources(const SiteView& site, FindingSink& sink);

// directive_findings.cpp
void FindMisspelledDirectives(const SiteView& site, FindingSink& sink);
void FindPagesTwice(const SiteView& site, FindingSink& sink);

// misplaced_findings.cpp
void FindMisplacedDirectives(const SiteView& site, FindingSink& sink);

// page_start_findings.cpp
void FindNoPages(const SiteView& site, FindingSink& sink);
void FindMissingTitles(const SiteView& site, FindingSink& sink);

// address_findings.cpp
void FindEatenAddresses(const SiteView& site, FindingSink& sink);

// variable_findings.cpp
void FindMisspelledVariables(const SiteView& site, FindingSink& sink);
void FindMisspelledMacros(const SiteView& site, FindingSink& sink);

// number_findings.cpp
void FindUndefinedNumbers(const SiteView& site, FindingSink& sink);
void FindUnusedNumbers(const SiteView& site, FindingSink& sink);
void FindRedefinedNumbers(const SiteView& site, FindingSink& sink);

// reference_findings.cpp
void FindUnknownReferences(const SiteView& site, FindingSink& sink);
void FindMissingFields(const SiteView& site, FindingSink& sink);
void FindIdsOfTwoPages(const SiteView& site, FindingSink& sink);
void FindUnclosedBrackets(const SiteView& site, FindingSink& sink);

// tag_findings.cpp
void FindMisspelledTags(const SiteView& site, FindingSink& sink);

// open_block_findings.cpp
void FindUnclosedTags(const SiteView& site, FindingSink& sink);

// list_findings.cpp
void FindMissingLists(const SiteView& site, FindingSink& sink);

// template_findings.cpp
void FindNoBodyMark(const SiteView& site, FindingSink& sink);
void FindBodyMarkNotAlone(const SiteView& site, FindingSink& sink);
void FindBodyMarkTwice(const SiteView& site, FindingSink& sink);

// left_open_findings.cpp
void FindOpenYearEnd(const SiteView& site, FindingSink& sink);
void FindOpenStop(const SiteView& site, FindingSink& sink);

// table_findings.cpp
void FindRowsWithoutTab(const SiteView& site, FindingSink& sink);

// quiz_findings.cpp
void FindDoubledQuizMarks(const SiteView& site, FindingSink& sink);

// file_form_findings.cpp
void FindByteOrderMarks(const SiteView& site, FindingSink& sink);
void FindUtf16(const SiteView& site, FindingSink& sink);
void FindLoneCarriageReturns(const SiteView& site, FindingSink& sink);

// charset_findings.cpp
void FindWrongCharset(const SiteView& site, FindingSink& sink);
void FindOutsideCharset(const SiteView& site, FindingSink& sink);

// news_findings.cpp
void FindMissingNewsMarks(const SiteView& site, FindingSink& sink);
void FindNewsMarkLineEnds(const SiteView& site, FindingSink& sink);

// bound_findings.cpp
void FindNearBounds(const SiteView& site, FindingSink& sink);

// check_list_findings.cpp
void FindCheckListFaults(const SiteView& site, FindingSink& sink);

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
void FindBrokenPictures(const SiteView& site, FindingSink& sink);
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
