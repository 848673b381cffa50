// Any arguments, over a drive that has something for every command.
#include "tests/fuzz/fail.h"
#include "tests/fuzz/scene.h"
#include "tests/fuzz/targets.h"

namespace {

using namespace kiv::fuzz;

void Furnish(Desk& desk)
{
    desk.drives.Put("site/_html.txt", "@FILE = index\n@TITLE = Start\nWelcome.\n");
    desk.drives.Put("site/_template.txt", "<!--BODY HERE-->\n");
    desk.drives.Put("site/_group.txt", "images\n");
    desk.drives.Put("site/images/My Boat.gif", std::string_view("GIF89a\1\0\2\0", 10));
    desk.drives.Put("temp/_html.txt", ";inserthere1\r\n;inserthere2\r\n");
    desk.drives.Put("article.txt", "An article.\n");
    desk.drives.Put("names.json", R"({"renamed": [["a.txt", "b.txt"]]})");
    desk.input = "a\tb\r\nc\td\r\n";
}

} // namespace

void kiv::fuzz::FuzzArguments(const std::uint8_t* data, std::size_t size)
{
    Desk desk;
    Furnish(desk);
    const Desk::Printed printed = desk.CallBare(Parts(TextOf(data, size), kBetweenParts));
    if (printed.out.starts_with("{\n"))
        ReadReport(printed.out, printed.code);
    else
        Expect(printed.code == 0 || !printed.err.empty() || !printed.out.empty(),
               "a call fails without a word");
    Expect(printed.code != 2 || printed.out.empty(), "a wrong call has a result");
}
