// What the machine asks for the output files alone: a plain C loop that creates each file and
// writes it by one call.
//
//   kiv-bench-floor --list LIST SOURCE_DIR   notes size and name of each output file of a built
//   site kiv-bench-floor LIST TARGET_DIR          writes files of these names and sizes; this is
//   what is timed
//
// It uses the C library alone, so that starting it costs as little as starting a program can.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

[[noreturn]] void Fail(const char* what)
{
    std::perror(what);
    std::exit(1);
}

int IsOutput(const dirent* entry)
{
    return entry->d_name[0] != '.' && std::strcmp(entry->d_name, "_html.txt") != 0 &&
           std::strcmp(entry->d_name, "_template.txt") != 0;
}

// One line a file: the size, a blank, the name.
void MakeList(const char* list, const char* source_dir)
{
    dirent** entries = nullptr;
    const int count = scandir(source_dir, &entries, IsOutput, alphasort);
    const int dir = open(source_dir, O_RDONLY | O_DIRECTORY);
    if (count < 0 || dir < 0)
        Fail(source_dir);
    std::FILE* out = std::fopen(list, "w");
    if (out == nullptr)
        Fail(list);
    for (int i = 0; i < count; ++i) {
        struct stat status {};
        if (fstatat(dir, entries[i]->d_name, &status, 0) != 0)
            Fail(entries[i]->d_name);
        if (S_ISREG(status.st_mode))
            std::fprintf(out, "%lld %s\n", static_cast<long long>(status.st_size),
                         entries[i]->d_name);
        std::free(entries[i]);
    }
    std::free(entries);
    if (std::fclose(out) != 0)
        Fail(list);
    close(dir);
}

// The whole file, ended by a NUL.
char* ReadWhole(const char* path)
{
    const int file = open(path, O_RDONLY);
    struct stat status {};
    if (file < 0 || fstat(file, &status) != 0)
        Fail(path);
    const auto size = static_cast<std::size_t>(status.st_size);
    char* text = static_cast<char*>(std::malloc(size + 1));
    if (text == nullptr || read(file, text, size) != static_cast<ssize_t>(size))
        Fail(path);
    text[size] = '\0';
    close(file);
    return text;
}

std::size_t LargestSize(const char* list)
{
    std::size_t largest = 1;
    while (*list != '\0') {
        const std::size_t size = std::strtoull(list, nullptr, 10);
        largest = size > largest ? size : largest;
        list = std::strchr(list, '\n');
        if (list == nullptr)
            break;
        ++list;
    }
    return largest;
}

void WriteFiles(char* list, const char* target_dir)
{
    const std::size_t largest = LargestSize(list);
    char* bytes = static_cast<char*>(std::malloc(largest));
    const int dir = open(target_dir, O_RDONLY | O_DIRECTORY);
    if (bytes == nullptr || dir < 0)
        Fail(target_dir);
    std::memset(bytes, 'x', largest);
    char* end = nullptr;
    for (char* line = list; (end = std::strchr(line, '\n')) != nullptr; line = end + 1) {
        *end = '\0';
        char* name = nullptr;
        const std::size_t size = std::strtoull(line, &name, 10);
        if (*name++ != ' ')
            Fail(line);
        const int file = openat(dir, name, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
        if (file < 0 || write(file, bytes, size) != static_cast<ssize_t>(size) || close(file) != 0)
            Fail(name);
    }
    std::free(bytes);
    close(dir);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 4 && std::strcmp(argv[1], "--list") == 0) {
        MakeList(argv[2], argv[3]);
        return 0;
    }
    if (argc != 3) {
        std::fputs("usage: kiv-bench-floor --list LIST SOURCE_DIR\n"
                   "       kiv-bench-floor LIST TARGET_DIR\n",
                   stderr);
        return 2;
    }
    char* list = ReadWhole(argv[1]);
    WriteFiles(list, argv[2]);
    std::free(list);
    return 0;
}
