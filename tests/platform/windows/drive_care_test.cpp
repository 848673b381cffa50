// What happens to files that other programs, other users or killed runs have a hand in.
#include "platform/windows/folders.h"
#include "tests/platform/windows/drive_windows_test.h"

#include <atomic>
#include <gmock/gmock.h>
#include <sddl.h>
#include <thread>
#include <vector>

namespace kiv {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

using DriveWindowsCare = DriveWindows;

TEST_F(DriveWindowsCare, AReadOnlyFileIsKept)
{
    Put("a.htm", "old");
    ::SetFileAttributesW(Native("a.htm").c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_THAT(ErrorOf([&] { files->WriteFile("a.htm", "new"); }),
                AllOf(HasSubstr("C:\\a.htm"), HasSubstr("read-only")));
    EXPECT_THAT(ErrorOf([&] { files->ReplaceSource("a.htm", "old", "new"); }),
                HasSubstr("read-only"));
    EXPECT_EQ(ErrorOf([&] { files->WriteFile("a.htm", "old"); }), ""); // nothing to write
    EXPECT_EQ(Content("a.htm"), "old");
    EXPECT_EQ(NamesIn(), Names{"a.htm"});
    ::SetFileAttributesW(Native("a.htm").c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(DriveWindowsCare, AFileThatAnotherProgramHasOpenIsKept)
{
    Put("a.htm", "old");
    {
        const WindowsHandle held = Hold("a.htm", FILE_SHARE_READ);
        ASSERT_TRUE(held.IsOpen());
        EXPECT_THAT(ErrorOf([&] { files->WriteFile("a.htm", "new"); }),
                    AllOf(HasSubstr("C:\\a.htm"), HasSubstr("another program has the file open")));
        EXPECT_THAT(ErrorOf([&] { files->ReplaceSource("a.htm", "old", "new"); }),
                    HasSubstr("another program has the file open"));
        EXPECT_THAT(ErrorOf([&] { files->DeleteFile("a.htm"); }), StartsWith("file: "));
        EXPECT_EQ(files->ReadFile("a.htm"), "old"); // others may look
    }
    EXPECT_EQ(Content("a.htm"), "old");
    EXPECT_EQ(NamesIn(), Names{"a.htm"});
    files->WriteFile("a.htm", "new");
    EXPECT_EQ(Content("a.htm"), "new");
}

TEST_F(DriveWindowsCare, AFileThatNobodyMayLookIntoIsKept)
{
    Put("a.htm", "old");
    {
        const WindowsHandle held = Hold("a.htm", 0);
        ASSERT_TRUE(held.IsOpen());
        EXPECT_TRUE(files->FileExists("a.htm"));
        for (const char* bytes : {"new", "old"})
            EXPECT_THAT(ErrorOf([&] { files->WriteFile("a.htm", bytes); }),
                        HasSubstr("another program has the file open"));
        EXPECT_THAT(ErrorOf([&] { files->ReadFile("a.htm"); }),
                    HasSubstr("another program has the file open"));
    }
    EXPECT_EQ(Content("a.htm"), "old");
    EXPECT_EQ(NamesIn(), Names{"a.htm"});
}

TEST_F(DriveWindowsCare, AReplacedFileKeepsItsAttributes)
{
    Put("a.htm", "old");
    constexpr DWORD kHidden = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    ::SetFileAttributesW(Native("a.htm").c_str(), kHidden);
    ASSERT_EQ(Attributes("a.htm") & kHidden, kHidden);
    files->WriteFile("a.htm", "new");
    EXPECT_EQ(Attributes("a.htm") & kHidden, kHidden);
    EXPECT_EQ(Content("a.htm"), "new");
}

TEST_F(DriveWindowsCare, ALockMeansTheFolderByWhateverPath)
{
    PutFolder("Sub");
    std::unique_ptr<FolderLock> lock = files->LockFolder("C:\\SUB");
    std::atomic<bool> is_free = false;
    std::thread waiting([&] {
        const auto second = machine->LockFolder(MachineRoot() + "\\sub\\");
        EXPECT_TRUE(is_free);
    });
    const auto other_folder = machine->LockFolder(MachineRoot()); // does not wait
    ::Sleep(100);
    is_free = true;
    lock.reset();
    waiting.join();
}

TEST_F(DriveWindowsCare, ALockThatNobodyGaveBackIsFree)
{
    // A thread that ends leaves its lock as a process does.
    FolderLock* kept = nullptr;
    std::thread([&] { kept = files->LockFolder("C:\\").release(); }).join();
    EXPECT_EQ(ErrorOf([&] { files->LockFolder("C:\\"); }), "");
    delete kept;
}

/// The name of a temporary file that this process of Windows has, or had.
std::string TemporaryOf(DWORD process)
{
    return ".kiv-" + std::to_string(process) + "-7.tmp";
}

TEST_F(DriveWindowsCare, WhatAKilledRunLeftIsTakenAwayByTheNextThatWritesThere)
{
    PutFolder("other");
    const std::string living = TemporaryOf(::GetCurrentProcessId());
    const std::string dead = TemporaryOf(0x7FFFFFF0);
    for (const std::string& name :
         {living, dead, "other/" + dead, std::string(".kiv-x-7.tmp"), std::string("kiv-1-7.tmp")})
        Put(name);
    EXPECT_THAT(files->ListFiles(".", "*.*"), ElementsAre(".kiv-x-7.tmp", "kiv-1-7.tmp"));
    files->WriteFile("a.htm", "1");
    EXPECT_EQ(NamesIn(), (Names{".kiv-x-7.tmp", living, "a.htm", "kiv-1-7.tmp", "other"}));
    EXPECT_EQ(NamesIn("other"), Names{dead});
    Put(dead);
    files->WriteFile("a.htm", "2");
    EXPECT_TRUE(NamesIn().contains(dead)); // a folder is looked through once
    files->Refresh();
    files->WriteFile("a.htm", "3");
    EXPECT_FALSE(NamesIn().contains(dead));
}

TEST_F(DriveWindowsCare, AProgramThatMayWriteIntoASourceKeepsItFromBeingReplaced)
{
    Put("list.txt", "old");
    {
        const WindowsHandle editor(
            ::CreateFileW(Native("list.txt").c_str(), GENERIC_WRITE,
                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                          OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        ASSERT_TRUE(editor.IsOpen());
        EXPECT_THAT(ErrorOf([&] { files->ReplaceSource("list.txt", "old", "new"); }),
                    HasSubstr("another program has the file open"));
    }
    EXPECT_EQ(Content("list.txt"), "old");
    EXPECT_EQ(NamesIn(), Names{"list.txt"});
    files->ReplaceSource("list.txt", "old", "new");
    EXPECT_EQ(Content("list.txt"), "new");
}

/// The access list of a file as text.
std::wstring AccessListOf(const std::filesystem::path& native)
{
    std::vector<std::uint64_t> rights(1024);
    DWORD size = 0;
    wchar_t* text = nullptr;
    if (::GetFileSecurityW(native.c_str(), DACL_SECURITY_INFORMATION, rights.data(), 8192, &size) ==
            0 ||
        ::ConvertSecurityDescriptorToStringSecurityDescriptorW(
            rights.data(), SDDL_REVISION_1, DACL_SECURITY_INFORMATION, &text, nullptr) == 0)
        return {};
    std::wstring list(text);
    ::LocalFree(text);
    return list;
}

TEST_F(DriveWindowsCare, AReplacedFileKeepsItsAccessList)
{
    Put("open.htm", "old");
    Put("closed.htm", "old");
    void* rights = nullptr;
    ASSERT_NE(::ConvertStringSecurityDescriptorToSecurityDescriptorW(
                  L"D:(A;;FA;;;BA)", SDDL_REVISION_1, &rights, nullptr),
              0);
    ASSERT_NE(::SetFileSecurityW(Native("closed.htm").c_str(), DACL_SECURITY_INFORMATION, rights),
              0);
    ::LocalFree(rights);
    const std::wstring open = AccessListOf(Native("open.htm"));
    const std::wstring closed = AccessListOf(Native("closed.htm"));
    ASSERT_NE(open, closed);
    files->WriteFile("open.htm", "new");
    files->ReplaceSource("closed.htm", "old", "new");
    EXPECT_EQ(AccessListOf(Native("open.htm")), open);
    EXPECT_EQ(AccessListOf(Native("closed.htm")), closed);
    EXPECT_THAT(files->Losses(), testing::IsEmpty());
}

TEST_F(DriveWindowsCare, OnlyWhatIsNotThereCountsAsAbsent)
{
    for (const long error :
         {ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND, ERROR_DIRECTORY, ERROR_INVALID_NAME,
          ERROR_BAD_PATHNAME, ERROR_FILENAME_EXCED_RANGE, ERROR_INVALID_DRIVE})
        EXPECT_TRUE(IsAbsent(static_cast<DWORD>(error))) << error;
    for (const long error : {0L, ERROR_ACCESS_DENIED, ERROR_NOT_READY, ERROR_CRC, ERROR_GEN_FAILURE,
                             ERROR_IO_DEVICE, ERROR_SHARING_VIOLATION, ERROR_BAD_NETPATH,
                             ERROR_NETNAME_DELETED, ERROR_CANT_RESOLVE_FILENAME})
        EXPECT_FALSE(IsAbsent(static_cast<DWORD>(error))) << error;
}

} // namespace
} // namespace kiv
