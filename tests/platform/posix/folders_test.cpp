// What is known of the disks that folders lie on.
#include "platform/posix/folders.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace kiv {
namespace {

/// Where a file system of some type is mounted, by the system's own list; "" where it is nowhere.
std::string MountedAt(const std::string& type)
{
    std::ifstream mounts("/proc/mounts");
    std::string device;
    std::string place;
    std::string its_type;
    std::string rest;
    while (mounts >> device >> place >> its_type && std::getline(mounts, rest))
        if (its_type == type)
            return place;
    return {};
}

TEST(TellsAtClosing, DisksOfTheMachineThatAreKnownTellAtOnce)
{
    for (const std::string type : {"btrfs", "ext4", "tmpfs", "xfs"}) {
        const std::string place = MountedAt(type);
        EXPECT_TRUE(place.empty() || !TellsAtClosing(place)) << type << " at " << place;
    }
}

TEST(TellsAtClosing, WhatIsNotKnownMay)
{
    EXPECT_TRUE(TellsAtClosing("/proc"));
    EXPECT_TRUE(TellsAtClosing("/no/such/folder"));
}

} // namespace
} // namespace kiv
