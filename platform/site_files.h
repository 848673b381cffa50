// The names of the files that the format knows.
#pragma once

#include <string_view>

namespace kiv {

// In the folder of a site section.
inline constexpr std::string_view kPageListFile = "_html.txt";
inline constexpr std::string_view kTemplateFile = "_template.txt";
inline constexpr std::string_view kGroupFile = "_group.txt";
inline constexpr std::string_view kTocFile = "_toc.txt";
inline constexpr std::string_view kSiteMapFile = "_sitemap.txt";
inline constexpr std::string_view kMasterSiteMapFile = "_sitemap-master.txt";
inline constexpr std::string_view kSinglePageFile = "_singlehtml.txt";
inline constexpr std::string_view kGrabbedTitlesFile = "grabtitles.txt";
inline constexpr std::string_view kCheckFile = "_check.txt"; // findings that are switched off

// In a folder of pictures.
inline constexpr std::string_view kAltFile = "_alt.txt";
inline constexpr std::string_view kOldAltFile = "_alt.old.txt"; // lines that went out of it
inline constexpr std::string_view kPictureListFile = "_piclist.txt";
inline constexpr std::string_view kBangListFile = "_banglist.txt";
inline constexpr std::string_view kBangTableFile2 = "_banglist2.txt"; // two pictures a row
inline constexpr std::string_view kBangTableFile3 = "_banglist3.txt";
inline constexpr std::string_view kBangTableFile4 = "_banglist4.txt";
inline constexpr std::string_view kPicturePagesFile = "_pichtml.txt";

// The user's settings and lists.
inline constexpr std::string_view kSettingsFile = "C:\\utils\\kiv.ini";
inline constexpr std::string_view kLocalSettingsFile = "kiv.ini"; // beside the program's start
inline constexpr std::string_view kEditorFile = "c:\\utils\\kiv_editpad.txt";
inline constexpr std::string_view kJumpListFile = "c:\\utils\\kivjump.ini";
inline constexpr std::string_view kUploadListFile = "c:\\utils\\ftplist.txt";
inline constexpr std::string_view kAddressFile = "c:\\utils\\kivaddr.ini";
inline constexpr std::string_view kNewsSettingsFile = "c:\\utils\\kivnews.ini";
inline constexpr std::string_view kQuizScriptFile = "c:\\utils\\quiz.txt";

// In a folder whose files are being renamed, as long as that takes; no listing has it.
inline constexpr std::string_view kRenameJournalFile = ".kiv-renames";

/// What the program goes by itself: nothing that a site should write.
inline constexpr std::string_view kOwnSettings[] = {
    kSettingsFile, kEditorFile, kJumpListFile, kUploadListFile, kAddressFile, kNewsSettingsFile,
};

// What the program leaves elsewhere.
inline constexpr std::string_view kUploadBatchFile = "c:\\guestout2.bat";
inline constexpr std::string_view kScratchFile = "c:\\$$$x.txt";

/// All of them; the manual tells of each.
inline constexpr std::string_view kSiteFiles[] = {
    kPageListFile,      kTemplateFile,   kGroupFile,         kTocFile,        kSiteMapFile,
    kMasterSiteMapFile, kSinglePageFile, kGrabbedTitlesFile, kAltFile,        kPictureListFile,
    kBangListFile,      kBangTableFile2, kBangTableFile3,    kBangTableFile4, kPicturePagesFile,
    kSettingsFile,      kEditorFile,     kJumpListFile,      kUploadListFile, kAddressFile,
    kNewsSettingsFile,  kQuizScriptFile, kUploadBatchFile,   kScratchFile,    kRenameJournalFile,
    kCheckFile,         kOldAltFile,
};

} // namespace kiv
