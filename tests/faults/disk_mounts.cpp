#include "faults/disk_mounts.h"

#include "faults/launch.h"
#include "faults/system.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <linux/loop.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace kiv::faults {

namespace {

constexpr std::uint64_t kMebi = std::uint64_t{1024} * 1024;

/// The smallest that their tools make.
constexpr std::array kFileSystems = std::to_array<FileSystem>({
    {"ext4", "/usr/sbin/mkfs.ext4", "-q", 32 * kMebi},
    {"xfs", "/usr/sbin/mkfs.xfs", "-q", 320 * kMebi},
    {"btrfs", "/usr/sbin/mkfs.btrfs", "-q", 128 * kMebi},
});

/// Puts a free loop device on the image; it lets go by itself when it is no longer used. Gives an
/// open file of the device and its path.
int AttachLoop(const std::string& image, std::string& device)
{
    const int file = ::open(image.c_str(), O_RDWR | O_CLOEXEC);
    const int control = ::open("/dev/loop-control", O_RDWR | O_CLOEXEC);
    loop_config config{};
    config.fd = static_cast<std::uint32_t>(file);
    config.info.lo_flags = LO_FLAGS_AUTOCLEAR;
    int loop = -1;
    do { // another process may take the same one
        if (loop >= 0)
            ::close(loop);
        device = "/dev/loop" + std::to_string(::ioctl(control, LOOP_CTL_GET_FREE));
        loop = ::open(device.c_str(), O_RDWR | O_CLOEXEC);
    } while (loop >= 0 && ::ioctl(loop, LOOP_CONFIGURE, &config) != 0 && errno == EBUSY);
    ::close(control);
    ::close(file);
    if (loop < 0)
        Fail("no loop device for " + image);
    return loop;
}

} // namespace

std::span<const FileSystem> FileSystems()
{
    return kFileSystems;
}

bool MakeImage(const FileSystem& system, const std::string& image)
{
    if (::access(std::string(system.tool).c_str(), X_OK) != 0)
        return false;
    WriteWholeFile(image, "");
    if (::truncate(image.c_str(), static_cast<off_t>(system.size)) != 0)
        Fail("cannot make " + image);
    Launch launch;
    launch.program = system.tool;
    launch.arguments = {std::string(system.options), image};
    launch.variables = {"PATH=/usr/sbin:/usr/bin:/sbin:/bin"};
    return RunOnce(launch).exit_code == 0;
}

Mounted::Mounted(const FileSystem& system, const std::string& image, std::string folder)
    : folder_(std::move(folder))
{
    std::string device;
    const int loop = AttachLoop(image, device);
    const std::string type(system.name);
    const int result = ::mount(device.c_str(), folder_.c_str(), type.c_str(), 0, nullptr);
    const int error = errno;
    ::close(loop);
    errno = error;
    if (result != 0)
        Fail("cannot mount " + type);
}

Mounted::~Mounted()
{
    // What was killed a moment ago may not have let go yet.
    constexpr int kMostWaits = 200;
    for (int i = 0; ::umount2(folder_.c_str(), 0) != 0 && errno == EBUSY && i < kMostWaits; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
}

} // namespace kiv::faults
