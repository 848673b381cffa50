// What the rows of the table of calls run.
#pragma once

#include "cli/call_table.h"

#include <string>
#include <vector>

namespace kiv {

// site_commands.cpp
void RunBuild(CallDesk& desk, const GivenValues& given);
void RunGroup(CallDesk& desk, const GivenValues& given);
void RunSiteMap(CallDesk& desk, const GivenValues& given);
void RunGrab(CallDesk& desk, const GivenValues& given);
void RunPictures(CallDesk& desk, const GivenValues& given);

// why_command.cpp
void RunWhy(CallDesk& desk, const GivenValues& given);

// check_command.cpp
void RunCheck(CallDesk& desk, const GivenValues& given);
/// What is wrong with a list of findings' names such as "dead-link,id-twice"; "" when nothing is.
std::string FindingNamesFault(const std::string& list);
/// Every finding with what it means.
std::vector<HelpEntry> FindingHelp();
/// The values of "--fail-on".
Choices FailureSeverities();

// text_commands.cpp
void RunConvert(CallDesk& desk, const GivenValues& given);
void RunDimensions(CallDesk& desk, const GivenValues& given);
void RunReference(CallDesk& desk, const GivenValues& given);
/// The values of "--mode".
Choices ConvertModes();
/// The numbers of the sections of the quick reference.
Choices ReferenceSections();

// name_commands.cpp
void RunFixNames(CallDesk& desk, const GivenValues& given);
void RunThumbNames(CallDesk& desk, const GivenValues& given);
void RunRename(CallDesk& desk, const GivenValues& given);
void RunUndoRenames(CallDesk& desk, const GivenValues& given);

// news_command.cpp
void RunNews(CallDesk& desk, const GivenValues& given);

} // namespace kiv
