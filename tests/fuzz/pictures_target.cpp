// A folder of pictures with its captions, listed three times.
#include "tests/fuzz/fail.h"
#include "tests/fuzz/scene.h"
#include "tests/fuzz/targets.h"

void kiv::fuzz::FuzzPictures(const std::uint8_t* data, std::size_t size)
{
    using namespace kiv::fuzz;
    const Command pictures{"pictures", {{"DIR", "C:\\site"}}};
    Desk desk;
    LayOut(desk, ReadScene(data, size));
    // The first run drops captions of pictures that are not there, and those of thumbnails; from
    // then on nothing changes.
    for (int run = 0; run < 2; ++run)
        if (!desk.Call(pictures).error.empty())
            return;
    const auto tree = desk.drives.Tree();
    Expect(desk.Call(pictures).error.empty(), "the third run ends in an error");
    Expect(desk.drives.Tree() == tree, "the third run writes other bytes");
}
