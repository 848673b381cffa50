// Begins a target by the name in KIV_FUZZ_TARGET: one program for all of them is compiled and
// linked once.
#include "tests/fuzz/targets.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

using namespace kiv::fuzz;

struct Target {
    std::string_view name;
    void (*run)(const std::uint8_t* data, std::size_t size);
};

constexpr auto kTargets = std::to_array<Target>({
    {"arguments", FuzzArguments},
    {"blocks", FuzzBlocks},
    {"check", FuzzCheck},
    {"names", FuzzNames},
    {"news", FuzzNews},
    {"pictures", FuzzPictures},
    {"settings", FuzzSettings},
    {"site", FuzzSite},
    {"texts", FuzzTexts},
    {"why", FuzzWhy},
});

const Target* wanted = nullptr;

} // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/)
{
    const char* name = std::getenv("KIV_FUZZ_TARGET");
    const auto* found = std::ranges::find(
        kTargets, name == nullptr ? std::string_view() : std::string_view(name), &Target::name);
    if (found == kTargets.end()) {
        std::fputs("Let KIV_FUZZ_TARGET name one of these:", stderr);
        for (const Target& target : kTargets)
            std::fprintf(stderr, " %s", target.name.data());
        std::fputs("\n", stderr);
        std::exit(2);
    }
    wanted = found;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    wanted->run(data, size);
    return 0;
}
