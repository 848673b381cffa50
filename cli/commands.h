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

// preview_command.cpp
void RunPreview(CallDesk& desk, const GivenValues& given);
/// What is wrong with a port, as a sentence; "" when nothing is.
std::string PortFault(const std::string& port);

// watch_command.cpp
void RunWatch(CallDesk& desk, const GivenValues& given);

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

// adopt_command.cpp
void RunAdopt(CallDesk& desk, const GivenValues& given);

// init_command.cpp
void RunInit(CallDesk& desk, const GivenValues& given);
/// What is wrong with the name of a section (UTF-8); "" when it is well.
std::string SectionFault(const std::string& name);

// encode_commands.cpp
void RunEncode(CallDesk& desk, const GivenValues& given);
void RunUndoEncode(CallDesk& desk, const GivenValues& given);
/// The values of "--to".
Choices EncodingWords();

// publish_commands.cpp
void RunThumbs(CallDesk& desk, const GivenValues& given);
void RunUpload(CallDesk& desk, const GivenValues& given);
void RunFeed(CallDesk& desk, const GivenValues& given);
void RunSiteMapXml(CallDesk& desk, const GivenValues& given);
/// What is wrong with the address of a site; "" when it is well.
std::string AddressFault(const std::string& address);
/// What is wrong with the size or the quality of a thumbnail; "" when nothing is.
std::string SizeFault(const std::string& size);
std::string QualityFault(const std::string& quality);

// news_command.cpp
void RunNews(CallDesk& desk, const GivenValues& given);

} // namespace kiv
