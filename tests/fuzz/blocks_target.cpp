// The lines of a page, mostly block tags, with a file to include and one of quiz scripts.
#include "tests/fuzz/scene.h"
#include "tests/fuzz/targets.h"

void kiv::fuzz::FuzzBlocks(const std::uint8_t* data, std::size_t size)
{
    using namespace kiv::fuzz;
    const std::vector<std::string> parts = Parts(TextOf(data, size), kBetweenParts);
    Desk desk;
    desk.drives.Put("site/_html.txt", "@FILE = a\n@TITLE = A page\n" + parts[0] +
                                          "\n@FILE = b\n@TITLE = Its next\nThe end.\n");
    desk.drives.Put("site/_template.txt", "<!--BODY HERE-->\n=2=<a href=\"@PREV\">Back</a>\n");
    if (parts.size() > 1)
        desk.drives.Put("site/a.txt", parts[1]);
    if (parts.size() > 2)
        desk.drives.Put("utils/quiz.txt", parts[2]);
    desk.Call({"build", {{"DIR", "C:\\site"}}});
}
