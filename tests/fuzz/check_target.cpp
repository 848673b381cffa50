// What "check" finds in made-up sections: it ends, changes nothing, and its findings are as they
// should be.
#include "inspect/finding_table.h"
#include "tests/fuzz/fail.h"
#include "tests/fuzz/scene.h"
#include "tests/fuzz/targets.h"

#include <algorithm>
#include <string>

namespace {

using namespace kiv::fuzz;

void CheckNames(const Report& report)
{
    const auto known = kiv::FindingNames();
    for (const std::string& name : report.findings)
        Expect(std::find(known.begin(), known.end(), name) != known.end(),
               "a finding has a name that the table lacks");
}

} // namespace

void kiv::fuzz::FuzzCheck(const std::uint8_t* data, std::size_t size)
{
    const Scene scene = ReadScene(data, size);
    Desk desk;
    LayOut(desk, scene);
    const auto tree = desk.drives.Tree();
    const Report report = desk.Call({"check", {{"DIR", "C:\\site"}, {"--external", ""}}});
    Expect(desk.drives.Tree() == tree, "checking has changed the drive");
    CheckNames(report);
    const Report again = desk.Call({"check", {{"DIR", "C:\\site"}, {"--external", ""}}});
    Expect(again.findings == report.findings, "a second check finds something else");
    desk.CallBare({"check", "C:\\site"});
}
