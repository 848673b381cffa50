#include "utilities/picture_records.h"

#include "tests/utilities/utility_desk.h"

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

AltTable ReadAlts(UtilityDesk& desk, const std::string& bytes)
{
    desk.Put("site/_alt.txt", bytes);
    AltTable alts;
    alts.Read(desk.machine.files, bytes);
    return alts;
}

TEST(AltTable, EntriesApplyToPictureAndThumbnail)
{
    UtilityDesk desk;
    const AltTable alts = ReadAlts(desk, ";comment|x\r\n\r\ncat.jpg|A \"cat\"|by me|a note|more\n"
                                         "dog.b.gif|Dog");
    for (const char* name : {"cat.jpg", "cat_t.jpg"}) {
        EXPECT_EQ(alts.Find(name).alt, "A &quot;cat&quot;");
        EXPECT_EQ(alts.Find(name).credit, "by me");
        EXPECT_EQ(alts.Find(name).caption, "a note");
    }
    EXPECT_EQ(alts.Find("dog_t.b.gif").alt, "Dog"); // before the first "."
    EXPECT_EQ(alts.Find("dog_t.b.gif").credit, "");
    for (const char* name : {"Cat.jpg", "cat", "dog.b_t.gif", ";comment", ""})
        EXPECT_EQ(alts.Find(name).file, "") << name;
}

TEST(AltTable, NothingIsTrimmedAndEntitiesStay)
{
    UtilityDesk desk;
    const AltTable alts = ReadAlts(desk, " a.jpg | b &quot; | \"c\" | d\n");
    EXPECT_EQ(alts.Find(" a.jpg ").alt, " b &quot; ");
    EXPECT_EQ(alts.Find(" a.jpg ").credit, " \"c\" ");
    EXPECT_EQ(alts.Find(" a.jpg ").caption, " d");
}

TEST(AltTable, TheLowestRowCounts)
{
    UtilityDesk desk;
    const AltTable alts = ReadAlts(desk, "cat.jpg|first\ncat_t.jpg|second\ncat.jpg|third\n");
    EXPECT_EQ(alts.Find("cat.jpg").alt, "first");
    EXPECT_EQ(alts.Find("cat_t.jpg").alt, "first");
    EXPECT_EQ(alts.Find("cat_t_t.jpg").alt, "second");
}

TEST(AltTable, LinesThatAreFatal)
{
    const std::pair<const char*, const char*> kRows[] = {
        {"cat.jpg", "subscript"},          {"cat.jpg|a|b", "subscript"}, {" ", "subscript"},
        {"cat|a", "invalid-argument"},     {"|", "invalid-argument"},    {"cat|a|b", "subscript"},
        {"cat|a|b|c", "invalid-argument"},
    };
    for (const auto& [line, kind] : kRows) {
        UtilityDesk desk;
        const std::string bytes = std::string("ok.jpg|ok\r\n") + line;
        EXPECT_EQ(KindOf([&] { ReadAlts(desk, bytes); }), kind) << line;
    }
}

TEST(AltTable, AnErrorNamesItsLine)
{
    UtilityDesk desk;
    try {
        ReadAlts(desk, ";\r\n\r\ncat.jpg\r\n");
        FAIL();
    } catch (const RunError& error) {
        EXPECT_EQ(error.where.Text(), "C:\\site\\_alt.txt, line 3");
    }
}

TEST(AltTable, HoldsThreeThousandEntries)
{
    std::string bytes;
    for (int n = 0; n < 3000; ++n)
        bytes += "p" + std::to_string(n) + ".jpg|a\r\n\r\n;\r\n";
    UtilityDesk desk;
    const AltTable alts = ReadAlts(desk, bytes);
    EXPECT_EQ(alts.Find("p2999.jpg").alt, "a");
    EXPECT_EQ(alts.Find("none.jpg").alt, ""); // the row behind the last is read, not written
    EXPECT_EQ(KindOf([&] { ReadAlts(desk, bytes + "more.jpg|a"); }), "subscript");
}

TEST(Pictures, Thumbnails)
{
    for (const char* name : {"bridge_t.jpg", "Bridge_t.jpg", "_t.gif", "x_t.old.jpg", "a.b_t.jpg",
                             "BRIDGE_T.JPG", "X_T.\xC4.GIF"})
        EXPECT_TRUE(IsThumbnail(name)) << name;
    for (const char* name : {"bridge.jpg", "Bridge_T.jpg", "BRIDGE_T.jpg", "bridge_T.JPG",
                             "X_T.\xE4.GIF", "bridge_tx.jpg", "t.jpg", "_tjpg"})
        EXPECT_FALSE(IsThumbnail(name)) << name;
}

TEST(Pictures, FilesAreSortedIgnoringCase)
{
    UtilityDesk desk;
    for (const char* name : {"b.JPG", "A.gif", "a.jpg", "cats.jpg", "cat_t.jpg", "cat-2.jpg",
                             "cat.jpg", "C.Gif", "x.jpeg", "x.gif.txt", "_alt.txt"})
        desk.Put(std::string("site/") + name, "");
    desk.PutFolder("site/folder.jpg");
    // By the codes of the upper-cased names: "-" and "." come before letters, "_" behind them.
    EXPECT_THAT(PictureFiles(desk.machine),
                ElementsAre("A.gif", "a.jpg", "b.JPG", "C.Gif", "cat-2.jpg", "cat.jpg", "cats.jpg",
                            "cat_t.jpg"));
}

TEST(Pictures, NoFiles)
{
    UtilityDesk desk;
    EXPECT_THAT(PictureFiles(desk.machine), IsEmpty());
}

TEST(Pictures, Descriptions)
{
    UtilityDesk desk;
    const AltTable alts =
        ReadAlts(desk, "cat.jpg|cat\ndog.jpg|Dog|c|d\npig.jpg|pig_t\nhen.jpg||c|d\n"
                       "cow_t.jpg|cow\nox_t.jpg|ox_t\n");
    struct Row {
        std::string file, alt, own_alt, base, main_base;
    };
    const Row kRows[] = {
        {"none.jpg", "none", "", "none", "none"},
        {"none_t.jpg", "none", "", "none_t", "none"}, // named like its main picture
        {"none_t_t.jpg", "none_t", "", "none_t_t", "none_t"},
        {"none_T.jpg", "none_T", "", "none_T", "none_T"},
        {"cat.jpg", "cat", "", "cat", "cat"}, // says no more than the base
        {"cat_t.jpg", "cat", "cat", "cat_t", "cat"},
        {"dog.jpg", "Dog", "Dog", "dog", "dog"},
        {"dog_t.jpg", "Dog", "Dog", "dog_t", "dog"},
        {"pig.jpg", "pig", "pig_t", "pig", "pig"}, // "_t" is cut from any text
        {"hen.jpg", "hen", "", "hen", "hen"},
        {"cow_t.jpg", "cow", "cow", "cow_t", "cow"},
        {"ox_t.jpg", "ox", "", "ox_t", "ox"},
        {".jpg", "", "", "", ""},
        {"_t.jpg", "", "", "_t", ""},
        {"a.b_t.jpg", "a", "", "a", "a"},
        {"x_t.old.jpg", "x", "", "x_t", "x"},
    };
    for (const Row& row : kRows) {
        PictureRecord record;
        DescribePicture(record, row.file, alts);
        EXPECT_EQ(record.file, row.file);
        EXPECT_EQ(record.alt, row.alt) << row.file;
        EXPECT_EQ(record.own_alt, row.own_alt) << row.file;
        EXPECT_EQ(record.base, row.base) << row.file;
        EXPECT_EQ(record.main_base, row.main_base) << row.file;
        const bool noted = row.base == "dog" || row.base == "dog_t" || row.base == "hen";
        EXPECT_EQ(record.credit, noted ? "c" : "") << row.file;
        EXPECT_EQ(record.caption, noted ? "d" : "") << row.file;
    }
}

} // namespace
} // namespace kiv
