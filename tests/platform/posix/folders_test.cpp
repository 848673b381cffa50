// What is known of the disks that folders lie on.
#include "platform/posix/folders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

namespace kiv {
namespace {

/// Where file systems of some type are mounted, by the system's own list.
std::vector<std::string> MountedAt(const std::string& type)
{
    std::vector<std::string> places;
    std::ifstream mounts("/proc/mounts");
    std::string device;
    std::string place;
    std::string its_type;
    std::string rest;
    while (mounts >> device >> place >> its_type && std::getline(mounts, rest))
        if (its_type == type)
            places.push_back(place);
    return places;
}

TEST(TellsAtClosing, DisksOfTheMachineThatAreKnownTellAtOnce)
{
    for (const std::string type : {"btrfs", "ext4", "tmpfs", "xfs"}) {
        // Some of the places may be out of reach, or have another mounted above them.
        const std::vector<std::string> places = MountedAt(type);
        EXPECT_TRUE(places.empty() || !std::ranges::all_of(places, TellsAtClosing)) << type;
    }
}

TEST(TellsAtClosing, WhatIsNotKnownMay)
{
    EXPECT_TRUE(TellsAtClosing("/proc"));
    EXPECT_TRUE(TellsAtClosing("/no/such/folder"));
}

} // namespace
} // namespace kiv
