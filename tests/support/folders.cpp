#include "tests/support/folders.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>
#include <system_error>
#include <utility>

namespace kiv::test {

namespace fs = std::filesystem;

namespace {

/// Where new folders are made: in the one that ctest names, which is in memory, when it has room.
fs::path PlaceOfFolders()
{
    constexpr std::uintmax_t kRoom = std::uintmax_t{1} << 30U;
    const char* const named = std::getenv("KIV_TEST_FOLDERS"); // NOLINT(concurrency-mt-unsafe)
    std::error_code error;
    if (named != nullptr && fs::space(named, error).available >= kRoom && !error)
        return named;
    return fs::temp_directory_path();
}

} // namespace

TemporaryFolder::TemporaryFolder()
{
    const fs::path place = PlaceOfFolders();
    std::random_device random;
    do {
        path_ = place / ("kiv-test-" + std::to_string(random()));
    } while (!fs::create_directory(path_));
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

DriveFolder::DriveFolder()
{
    PutFolder("site");
    PutFolder("utils");
}

fs::path DriveFolder::Native(const std::string& below) const
{
    return Root() / PathOf(below);
}

void DriveFolder::Put(const std::string& below, const std::string& bytes) const
{
    WriteBytes(Native(below), bytes);
}

void DriveFolder::PutFolder(const std::string& below) const
{
    fs::create_directories(Native(below));
}

std::string DriveFolder::Content(const std::string& below) const
{
    return ReadBytes(Native(below));
}

bool DriveFolder::Exists(const std::string& below) const
{
    return fs::exists(Native(below));
}

std::vector<std::string> DriveFolder::NamesIn(const std::string& below) const
{
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(Native(below)))
        names.push_back(TextOf(entry.path().filename()));
    std::sort(names.begin(), names.end());
    return names;
}

fs::path PathOf(std::string_view utf8)
{
    return {std::u8string(utf8.begin(), utf8.end())};
}

std::string TextOf(const fs::path& path)
{
    const std::u8string utf8 = path.generic_u8string();
    return {utf8.begin(), utf8.end()};
}

std::string NativeTextOf(fs::path path)
{
    const std::u8string utf8 = path.make_preferred().u8string();
    return {utf8.begin(), utf8.end()};
}

std::string ReadBytes(const fs::path& path)
{
    std::ostringstream bytes; // a character at a time is slow where sanitizers look
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return std::move(bytes).str();
}

void WriteBytes(const fs::path& path, const std::string& bytes)
{
    std::ofstream stream(path, std::ios::binary);
    if (!stream.is_open()) {
        fs::create_directories(path.parent_path());
        stream.open(path, std::ios::binary);
    }
    stream << bytes;
}

FileTree ReadTree(const fs::path& root)
{
    FileTree files;
    if (!fs::exists(root))
        return files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root))
        if (entry.is_regular_file())
            files[TextOf(entry.path().lexically_relative(root))] = ReadBytes(entry.path());
    return files;
}

std::string Shown(const std::string& bytes)
{
    std::ostringstream shown;
    for (const char c : bytes) {
        const auto code = static_cast<unsigned char>(c);
        if (c == '\n')
            shown << "\\n\n";
        else if (c == '\r')
            shown << "\\r";
        else if (code < 0x20 || code >= 0x7F)
            shown << "\\x" << std::hex << static_cast<int>(code) << std::dec;
        else
            shown << c;
    }
    return shown.str();
}

std::string Differences(const FileTree& expected, const FileTree& actual)
{
    std::ostringstream differences;
    for (const auto& [name, bytes] : expected) {
        const auto file = actual.find(name);
        if (file == actual.end())
            differences << "missing file: " << name << "\n";
        else if (file->second != bytes)
            differences << name << ": expected\n"
                        << Shown(bytes) << "\nbut got\n"
                        << Shown(file->second) << "\n";
    }
    for (const auto& [name, bytes] : actual)
        if (!expected.contains(name))
            differences << "unexpected file: " << name << "\n" << Shown(bytes) << "\n";
    return differences.str();
}

} // namespace kiv::test
