#include "faults/cuttable_disk.h"

#include "faults/system.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <linux/fuse.h>
#include <random>
#include <string_view>
#include <sys/mman.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>
#include <utility>

namespace kiv::faults {

namespace {

constexpr std::uint64_t kDiskNode = FUSE_ROOT_ID + 1;
constexpr std::uint32_t kMostBytes = 128 * 1024; // in one write
constexpr std::string_view kDiskName = "disk";

int MemoryImage()
{
    const int fd = ::memfd_create("disk", MFD_CLOEXEC);
    if (fd < 0)
        Fail("no memory for a disk");
    return fd;
}

template <typename T>
T Body(const char* request)
{
    T body;
    std::memcpy(&body, request + sizeof(fuse_in_header), sizeof body);
    return body;
}

fuse_in_header HeaderOf(const char* request)
{
    fuse_in_header header;
    std::memcpy(&header, request, sizeof header);
    return header;
}

fuse_attr AttributesOf(std::uint64_t node, std::uint64_t size)
{
    fuse_attr attributes{};
    attributes.ino = node;
    attributes.nlink = 1;
    attributes.blksize = 4096;
    const bool disk = node == kDiskNode;
    attributes.mode = disk ? S_IFREG | 0600U : S_IFDIR | 0700U;
    attributes.size = disk ? size : 0;
    attributes.blocks = attributes.size / 512;
    return attributes;
}

void WriteAt(int fd, std::uint64_t offset, std::string_view bytes)
{
    const ssize_t put = ::pwrite(fd, bytes.data(), bytes.size(), static_cast<off_t>(offset));
    if (put != static_cast<ssize_t>(bytes.size()))
        Fail("cannot write to an image");
}

void CopyPart(int from, int to, off_t begin, off_t end)
{
    std::string part(64 * std::size_t{1024}, '\0');
    while (begin < end) {
        const auto size = std::min<std::size_t>(part.size(), static_cast<std::size_t>(end - begin));
        const ssize_t got = ::pread(from, part.data(), size, begin);
        if (got <= 0)
            Fail("cannot read an image");
        const std::string_view bytes(part.data(), static_cast<std::size_t>(got));
        if (bytes.find_first_not_of('\0') != std::string_view::npos)
            WriteAt(to, static_cast<std::uint64_t>(begin), bytes);
        begin += got;
    }
}

} // namespace

void CopyImage(int from, int to)
{
    struct stat state {};
    if (::fstat(from, &state) != 0 || ::ftruncate(to, 0) != 0 ||
        ::ftruncate(to, state.st_size) != 0)
        Fail("cannot copy an image");
    off_t begin = ::lseek(from, 0, SEEK_DATA);
    while (begin >= 0 && begin < state.st_size) {
        const off_t end = ::lseek(from, begin, SEEK_HOLE);
        CopyPart(from, to, begin, end);
        begin = ::lseek(from, end, SEEK_DATA);
    }
}

CuttableDisk::CuttableDisk(std::string folder, const std::string& image)
    : folder_(std::move(folder)), device_(::open("/dev/fuse", O_RDWR | O_CLOEXEC)),
      current_(MemoryImage()), flushed_(MemoryImage())
{
    const int file = ::open(image.c_str(), O_RDONLY | O_CLOEXEC);
    if (device_ < 0 || file < 0)
        Fail("no disk from " + image);
    CopyImage(file, current_);
    CopyImage(file, flushed_);
    size_ = static_cast<std::uint64_t>(::lseek(file, 0, SEEK_END));
    ::close(file);
    ::mkdir(folder_.c_str(), 0700);
    const std::string options =
        "fd=" + std::to_string(device_) + ",rootmode=40000,user_id=0,group_id=0,allow_other";
    if (::mount("kiv-faults", folder_.c_str(), "fuse", 0, options.c_str()) != 0)
        Fail("cannot mount " + folder_);
    // The ticks that end another thread's waiting are not for this one.
    sigset_t ticks;
    sigset_t old;
    sigemptyset(&ticks);
    sigaddset(&ticks, SIGALRM);
    ::pthread_sigmask(SIG_BLOCK, &ticks, &old);
    server_ = std::thread([this] { Serve(); });
    ::pthread_sigmask(SIG_SETMASK, &old, nullptr);
}

CuttableDisk::~CuttableDisk()
{
    ::umount2(folder_.c_str(), MNT_DETACH);
    server_.join();
    for (const int fd : {device_, current_, flushed_})
        ::close(fd);
}

void CuttableDisk::Serve()
{
    std::vector<char> request(kMostBytes + 2 * std::size_t{FUSE_MIN_READ_BUFFER});
    for (;;) {
        const ssize_t got = ::read(device_, request.data(), request.size());
        if (got < 0 && (errno == EINTR || errno == ENOENT || errno == EAGAIN))
            continue;
        if (got < 0 || !Answer(request.data(), static_cast<std::size_t>(got)))
            return;
    }
}

void CuttableDisk::Reply(std::uint64_t request, int error, const void* bytes,
                         std::size_t size) const
{
    fuse_out_header header{};
    header.unique = request;
    header.error = -error;
    header.len = static_cast<std::uint32_t>(sizeof header + size);
    const std::array<iovec, 2> parts = {
        {{&header, sizeof header}, {const_cast<void*>(bytes), size}}};
    [[maybe_unused]] const ssize_t put = ::writev(device_, parts.data(), size > 0 ? 2 : 1);
}

/// Requests about names and states; AnswerDisk has those for bytes.
bool CuttableDisk::Answer(const char* request, std::size_t size)
{
    const fuse_in_header header = HeaderOf(request);
    const auto answer = [&](const auto& body) {
        Reply(header.unique, 0, &body, sizeof body);
        return true;
    };
    switch (header.opcode) {
    case FUSE_INIT: {
        fuse_init_out out{};
        out.major = FUSE_KERNEL_VERSION;
        out.minor = FUSE_KERNEL_MINOR_VERSION;
        out.flags = FUSE_BIG_WRITES;
        out.max_write = kMostBytes;
        return answer(out);
    }
    case FUSE_LOOKUP: {
        const std::string_view name(request + sizeof header, size - sizeof header - 1);
        fuse_entry_out out{};
        out.nodeid = kDiskNode;
        out.attr = AttributesOf(kDiskNode, size_);
        if (name == kDiskName)
            return answer(out);
        Reply(header.unique, ENOENT, nullptr, 0);
        return true;
    }
    case FUSE_GETATTR:
    case FUSE_SETATTR: {
        fuse_attr_out out{};
        out.attr = AttributesOf(header.nodeid, size_);
        return answer(out);
    }
    case FUSE_OPEN:
    case FUSE_OPENDIR:
        return answer(fuse_open_out{});
    case FUSE_FORGET:
    case FUSE_BATCH_FORGET:
    case FUSE_INTERRUPT:
        return true;
    default:
        AnswerDisk(request);
        return header.opcode != FUSE_DESTROY;
    }
}

void CuttableDisk::AnswerDisk(const char* request)
{
    const fuse_in_header header = HeaderOf(request);
    if (header.opcode == FUSE_READ) {
        const auto in = Body<fuse_read_in>(request);
        std::string bytes(in.size, '\0');
        const ssize_t got =
            ::pread(current_, bytes.data(), bytes.size(), static_cast<off_t>(in.offset));
        Reply(header.unique, got < 0 ? EIO : 0, bytes.data(),
              static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
    } else if (header.opcode == FUSE_WRITE) {
        const auto in = Body<fuse_write_in>(request);
        Take(in.offset, std::string(request + sizeof header + sizeof in, in.size));
        fuse_write_out out{};
        out.size = in.size;
        Reply(header.unique, 0, &out, sizeof out);
    } else if (header.opcode == FUSE_FSYNC) {
        Flush();
        Reply(header.unique, 0, nullptr, 0);
    } else {
        constexpr std::array kNothingToDo = {FUSE_FLUSH, FUSE_RELEASE, FUSE_RELEASEDIR,
                                             FUSE_DESTROY};
        const bool done = std::find(kNothingToDo.begin(), kNothingToDo.end(),
                                    static_cast<int>(header.opcode)) != kNothingToDo.end();
        Reply(header.unique, done ? 0 : ENOSYS, nullptr, 0);
    }
}

void CuttableDisk::Take(std::uint64_t offset, std::string bytes)
{
    const std::lock_guard lock(mutex_);
    WriteAt(current_, offset, bytes);
    waiting_.push_back({offset, std::move(bytes)});
}

void CuttableDisk::Flush()
{
    const std::lock_guard lock(mutex_);
    for (const Write& write : waiting_)
        WriteAt(flushed_, write.offset, write.bytes);
    waiting_.clear();
}

void CuttableDisk::Cut(Survivors survivors, unsigned seed, const std::string& image)
{
    const std::lock_guard lock(mutex_);
    const int file = ::open(image.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file < 0)
        Fail("cannot make " + image);
    CopyImage(flushed_, file);
    std::mt19937 chance(seed);
    for (const Write& write : waiting_)
        if (survivors == Survivors::all || (survivors == Survivors::some && chance() % 2 == 0))
            WriteAt(file, write.offset, write.bytes);
    ::close(file);
}

} // namespace kiv::faults
