// kiv-bench-site SIZE DIR: writes the sources of a site of that size into DIR.
#include "bench/site_generator.h"

#include <cstdio>
#include <exception>

int main(int argc, char** argv)
{
    const kiv::SiteSize* size = argc == 3 ? kiv::FindSiteSize(argv[1]) : nullptr;
    if (size == nullptr) {
        std::fputs("usage: kiv-bench-site S|M|L|X DIR\n", stderr);
        return 2;
    }
    try {
        std::filesystem::create_directories(argv[2]);
        kiv::WriteSite(*size, argv[2]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "kiv-bench-site: %s: %s\n", argv[2], error.what());
        return 1;
    }
    return 0;
}
