#include "utilities/picture_lists.h"

#include "tests/utilities/utility_desk.h"
#include "text/text.h"

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr const char* kEditor = "edit.exe ";

/// A picture in the current directory's folder "site".
void PutPicture(UtilityDesk& desk, const std::string& name, int width, int height,
                const std::string& folder = "site")
{
    desk.Put(folder + "/" + name, "");
    desk.pictures.sizes[name] = {width, height};
}

void Size(UtilityDesk& desk, std::string_view folder = "")
{
    run_picture_sizer(desk.machine, folder, kEditor);
    EXPECT_THAT(desk.reporter.shown, IsEmpty());
}

TEST(PictureLists, FullSizePictureAlone)
{
    UtilityDesk desk;
    PutPicture(desk, "cat.jpg", 640, 480);
    Size(desk);
    EXPECT_EQ(desk.Content("site/_alt.txt"), "cat.jpg|||\r\n\r\n");
    EXPECT_EQ(desk.Content("site/_piclist.txt"),
              "\r\n<img src=\"site/cat.jpg\" width=\"640\" height=\"480\" border=\"0\" "
              "alt=\"cat\">\r\n"
              "\r\n<div class=\"picr\" style=\"width:640px;\"><img src=\"site/cat.jpg\" "
              "width=\"640\" height=\"480\" border=\"0\" alt=\"cat\"></div>\r\n"
              "\r\n!!1[cat.jpg|640|480|cat|cat||]\r\n"
              "@file = cat\r\n@title = cat\r\n@TIGHTPRINT\r\n@@4\r\n"
              "<img src=\"site/cat.jpg\" width=\"640\" height=\"480\" border=\"0\" alt=\"cat\">"
              "\r\n@@5\r\n\r\n\r\n");
    EXPECT_EQ(desk.Content("site/_pichtml.txt"),
              "@file = cat\r\n@title = cat\r\n"
              "<img src=\"site/cat.jpg\" width=\"640\" height=\"480\" border=\"0\" alt=\"cat\">"
              "\r\n\r\n");
    EXPECT_THAT(
        desk.machine.files.Written(),
        ElementsAre("C:\\site\\_alt.txt", "C:\\site\\_piclist.txt", "C:\\site\\_pichtml.txt"));
    EXPECT_THAT(desk.reporter.statuses, ElementsAre("cat.jpg", "sizer done. piclist.txt created."));
    EXPECT_THAT(desk.programs.started, ElementsAre("edit.exe _alt.txt", "edit.exe _piclist.txt"));
    EXPECT_THAT(desk.programs.files, ElementsAre("_alt.txt", "_piclist.txt"));
}

TEST(PictureLists, ThumbnailWithoutPartner)
{
    UtilityDesk desk;
    PutPicture(desk, "cat_t.jpg", 64, 48);
    desk.Put("site/_banglist.txt", "old");
    desk.Put("site/_pichtml.txt", "old");
    Size(desk);
    EXPECT_EQ(desk.Content("site/_alt.txt"), "\r\n");
    EXPECT_EQ(desk.Content("site/_piclist.txt"),
              "\r\n<img src=\"site/cat_t.jpg\" width=\"64\" height=\"48\" border=\"0\" "
              "alt=\"cat\">\r\n"
              "\r\n<div class=\"picr\" style=\"width:64px;\"><img src=\"site/cat_t.jpg\" "
              "width=\"64\" height=\"48\" border=\"0\" alt=\"cat\"></div>\r\n"
              "\r\n!!1[cat_t.jpg|64|48|cat|cat_t||]\r\n\r\n");
    EXPECT_EQ(desk.Content("site/_banglist.txt"), "old");
    EXPECT_EQ(desk.Content("site/_pichtml.txt"), "old");
    EXPECT_FALSE(desk.Exists("site/_banglist4.txt"));
}

// One thumbnail, one picture, with captions: every section.
TEST(PictureLists, EverySectionOfAPair)
{
    UtilityDesk desk;
    PutPicture(desk, "cat.jpg", 640, 480);
    PutPicture(desk, "cat_t.jpg", 64, 48);
    desk.Put("site/_alt.txt", ";mine\r\ncat.jpg|A \"cat\"|By Me|Purring");
    Size(desk);
    EXPECT_EQ(desk.Content("site/_alt.txt"), "cat.jpg|A &quot;cat&quot;|By Me|Purring\r\n\r\n");
    const std::string alt = "A &quot;cat&quot;";
    const std::string full = "<img src=\"site/cat.jpg\" width=\"640\" height=\"480\" "
                             "border=\"0\" alt=\"A &quot;cat&quot;\">";
    const std::string thumb = "<img src=\"site/cat_t.jpg\" width=\"64\" height=\"48\" "
                              "border=\"0\" alt=\"A &quot;cat&quot;\">";
    const std::string linked = thumb + "</a>";
    const std::string note = "<div class=\"credit\">By Me</div>Purring";
    const std::string small_box = "<div class=\"picr\" style=\"width:64px;\">";
    const std::string pair = "!!1[cat_t.jpg|64|48|A &quot;cat&quot;|cat_t|cat|cat.jpg|640|480|"
                             "680|520|540]";
    EXPECT_EQ(desk.Content("site/_piclist.txt"),
              "\r\n" + full + "\r\n" +                                       // full tag
                  "\r\n" + thumb + "\r\n" +                                  // thumbnail tag
                  "\r\n!!pop[pcat|site/cat.jpg|680|520]" + linked + "\r\n" + // popup
                  "\r\n" + small_box + "!!pop[pcat|site/cat.jpg|680|520]" + linked + // its box
                  note + "</div>\r\n" +                                              //
                  "\r\n" + small_box + "!!pop[pcat|site/cat.htm|680|540]" + linked + // page popup
                  note + "</div>\r\n" +                                              //
                  "\r\n<div class=\"picr\" style=\"width:640px;\">" + full + note +  // full box
                  "</div>\r\n" +                                                     //
                  "\r\n" + small_box + thumb + note + "</div>\r\n" +                 // its box
                  pair + "\r\n\r\n" +                                                // pair
                  "\r\n!!1[cat.jpg|640|480|" + alt + "|cat|By Me|Purring]\r\n" +     // bangs
                  "\r\n!!1[cat_t.jpg|64|48|" + alt + "|cat_t|By Me|Purring]\r\n\r\n" +
                  "@file = cat\r\n@title = " + alt + "\r\n@TIGHTPRINT\r\n@@4\r\n" + full +
                  "\r\n@@5\r\n\r\n\r\n");
    EXPECT_EQ(desk.Content("site/_pichtml.txt"),
              "@file = cat\r\n@title = " + alt + "\r\n" + full + "\r\n\r\n");
    EXPECT_EQ(desk.Content("site/_banglist.txt"),
              "\r\n;!!1 = <a href=\"!6.htm\"><img src=\"images/!1\" width=!2 height=!3 "
              "alt=\"!4\"></a>\r\n" +
                  pair + "\r\n\r\n");
    const std::string definition =
        "!!1 = <td>!!pop[p!6|images/!7|!10|!11]<img src=\"images/!1\" width=\"!2\" "
        "height=\"!3\" alt=\"!4\" border=\"0\"></a><br>!4</td>\r\n";
    const std::string table = "<tr>\r\n" + pair + "\r\n</tr>\r\n";
    EXPECT_EQ(desk.Content("site/_banglist4.txt"), "\r\n" + definition + table);
    EXPECT_EQ(desk.Content("site/_banglist2.txt"), "\r\n;" + definition + table);
    EXPECT_EQ(desk.Content("site/_banglist3.txt"), "\r\n;" + definition + table);
    EXPECT_THAT(desk.machine.files.Written(),
                ElementsAre("C:\\site\\_alt.old.txt", "C:\\site\\_alt.txt",
                            "C:\\site\\_piclist.txt", "C:\\site\\_banglist.txt",
                            "C:\\site\\_banglist4.txt", "C:\\site\\_banglist2.txt",
                            "C:\\site\\_banglist3.txt", "C:\\site\\_pichtml.txt"));
    EXPECT_THAT(desk.pictures.measured, ElementsAre("cat.jpg", "cat_t.jpg")); // once each
    EXPECT_THAT(desk.reporter.steps, ElementsAre(Pair(1, 2), Pair(2, 2)));
}

/// The note that a picture with these fields gets in its box.
std::string NoteOf(const std::string& credit, const std::string& caption)
{
    UtilityDesk desk;
    PutPicture(desk, "a.jpg", 1, 1);
    desk.Put("site/_alt.txt", "a.jpg|a|" + credit + "|" + caption);
    Size(desk);
    const std::string list = desk.Content("site/_piclist.txt");
    const std::size_t box = list.find("<div class=\"picr\"");
    const std::size_t begin = list.find("alt=\"a\">", box) + 8;
    return list.substr(begin, list.find("</div>\r\n", begin) - begin);
}

TEST(PictureLists, NoteUnderABox)
{
    EXPECT_EQ(NoteOf("", ""), "");
    EXPECT_EQ(NoteOf("C", ""), "<div class=\"credit\">C</div>");
    EXPECT_EQ(NoteOf("", "T"), "<br>T");
    EXPECT_EQ(NoteOf("C", "T"), "<div class=\"credit\">C</div>T");
    EXPECT_EQ(NoteOf("\"C\"", "<i>"), "<div class=\"credit\">\"C\"</div><i>"); // not escaped
}

/// The pairs that the pictures of these names make: "thumbnail>picture".
std::vector<std::string> PairsOf(const std::vector<std::string>& names)
{
    UtilityDesk desk;
    for (const std::string& name : names)
        PutPicture(desk, name, 10, 20);
    Size(desk);
    std::vector<std::string> pairs;
    const std::string list = desk.Content("site/_banglist.txt");
    for (std::size_t at = list.find("\n!!1["); at != std::string::npos;
         at = list.find("\n!!1[", at + 1)) {
        std::vector<std::string> fields(1);
        for (std::size_t i = at + 5; list[i] != ']'; ++i)
            if (list[i] == '|')
                fields.emplace_back();
            else
                fields.back() += list[i];
        EXPECT_EQ(fields.size(), 12U);
        pairs.push_back(fields.at(0) + ">" + fields.at(6));
    }
    return pairs;
}

TEST(PictureLists, PairingGoesByBaseName)
{
    EXPECT_THAT(PairsOf({"cat.jpg", "dog.jpg"}), IsEmpty());
    EXPECT_THAT(PairsOf({"bridge_t.jpg", "bridge.jpg", "bridge.gif"}),
                ElementsAre("bridge_t.jpg>bridge.gif", "bridge_t.jpg>bridge.jpg"));
    EXPECT_THAT(PairsOf({"b.jpg", "b_t.jpg", "a.jpg", "a_t.jpg"}),
                ElementsAre("a_t.jpg>a.jpg", "b_t.jpg>b.jpg"));
    EXPECT_THAT(PairsOf({"Bridge.jpg", "bridge_t.jpg"}), IsEmpty()); // case counts
    EXPECT_THAT(PairsOf({"BRIDGE.JPG", "BRIDGE_T.JPG"}), IsEmpty()); // "_T" is not "_t"
    EXPECT_THAT(PairsOf({"x_t.gif", "x_t_t.gif"}), ElementsAre("x_t_t.gif>x_t.gif"));
    EXPECT_THAT(PairsOf({"a.jpg", "a.b_t.jpg"}), IsEmpty()); // a thumbnail with the base "a"
    EXPECT_THAT(PairsOf({"x.jpg", "x_t.old.jpg"}), ElementsAre("x_t.old.jpg>x.jpg"));
    EXPECT_THAT(PairsOf({"x.old.jpg", "x_t.jpg"}), ElementsAre("x_t.jpg>x.old.jpg"));
    EXPECT_THAT(PairsOf({".jpg", "_t.jpg"}), ElementsAre("_t.jpg>.jpg"));
}

/// What follows the definition in a bang list of five pairs p1 to p5, each pair as its name.
std::string TableOfFive(const std::string& file)
{
    UtilityDesk desk;
    for (const char* name : {"p1", "p2", "p3", "p4", "p5"}) {
        PutPicture(desk, std::string(name) + ".jpg", 10, 20);
        PutPicture(desk, std::string(name) + "_t.jpg", 1, 2);
    }
    Size(desk);
    std::string table = desk.Content("site/" + file);
    table.erase(0, table.find("<tr>"));
    for (const std::string name : {"p1", "p2", "p3", "p4", "p5"}) {
        std::string call = "!!1[N_t.jpg|1|2|N|N_t|N|N.jpg|10|20|50|60|80]";
        ReplaceEach(call, "N", name);
        const std::size_t at = table.find(call);
        EXPECT_NE(at, std::string::npos) << table;
        if (at != std::string::npos)
            table.replace(at, call.size(), name);
    }
    return table;
}

TEST(PictureLists, TablesOfFivePairs)
{
    EXPECT_EQ(TableOfFive("_banglist4.txt"),
              "<tr>\r\np1\r\np2\r\np3\r\np4\r\n</tr><tr>\r\np5\r\n</tr>\r\n");
    EXPECT_EQ(TableOfFive("_banglist3.txt"),
              "<tr>\r\np1\r\np2\r\np3\r\n</tr><tr>\r\np4\r\np5\r\n</tr>\r\n");
    EXPECT_EQ(TableOfFive("_banglist2.txt"),
              "<tr>\r\np1\r\np2\r\n</tr><tr>\r\np3\r\np4\r\n</tr><tr>\r\np5\r\n</tr>\r\n");
}

TEST(PictureLists, NewAltFile)
{
    UtilityDesk desk;
    for (const char* name : {"cat.jpg", "cat_t.jpg", "dog.gif", "Bridge_T.jpg", "pig.jpg"})
        PutPicture(desk, name, 1, 1);
    desk.Put("site/_alt.txt", "gone.jpg|Gone|c|d\r\ndog.gif|dog|c|d\r\npig.jpg|Pig\r\n"
                              "cat_t.jpg|A thumbnail\r\n");
    Size(desk);
    // Thumbnails and pictures that are gone have no line; a text that repeats the base is empty.
    EXPECT_EQ(desk.Content("site/_alt.txt"),
              "Bridge_T.jpg|||\r\ncat.jpg|||\r\ndog.gif||c|d\r\npig.jpg|Pig||\r\n\r\n");
    desk.machine.files.Refresh();
    const std::string list = desk.Content("site/_piclist.txt");
    Size(desk); // a second run reads what the first has written
    EXPECT_EQ(desk.Content("site/_alt.txt"),
              "Bridge_T.jpg|||\r\ncat.jpg|||\r\ndog.gif||c|d\r\npig.jpg|Pig||\r\n\r\n");
    EXPECT_NE(list.find("!!1[cat_t.jpg|1|1|A thumbnail|cat_t||]"), std::string::npos);
    EXPECT_EQ(desk.Content("site/_piclist.txt").find("A thumbnail"), std::string::npos);
}

TEST(PictureLists, NoPicturesAtAll)
{
    UtilityDesk desk;
    desk.Put("site/_alt.txt", "cat.jpg|lost");
    desk.Put("site/_piclist.txt", "old");
    desk.Put("site/_pichtml.txt", "old");
    Size(desk);
    EXPECT_EQ(desk.Content("site/_alt.txt"), "\r\n");
    EXPECT_EQ(desk.Content("site/_piclist.txt"), "");
    EXPECT_EQ(desk.Content("site/_pichtml.txt"), "old");
    EXPECT_THAT(desk.reporter.statuses, ElementsAre("sizer done. piclist.txt created."));
    EXPECT_EQ(desk.programs.started.size(), 2U);
}

TEST(PictureLists, Subfolder)
{
    UtilityDesk desk;
    PutPicture(desk, "cat.jpg", 1, 2, "site/Images");
    PutPicture(desk, "outside.jpg", 1, 2);
    Size(desk, "images");
    // Paths are spelled as the folder was called.
    EXPECT_EQ(desk.Content("site/Images/_pichtml.txt"),
              "@file = cat\r\n@title = cat\r\n<img src=\"images/cat.jpg\" width=\"1\" "
              "height=\"2\" border=\"0\" alt=\"cat\">\r\n\r\n");
    EXPECT_EQ(desk.machine.files.Written()[0], "C:\\site\\images\\_alt.txt");
    EXPECT_FALSE(desk.Exists("site/_alt.txt"));
    EXPECT_EQ(desk.machine.files.CurrentDirectory(), "C:\\site");
    EXPECT_THAT(desk.programs.started, ElementsAre("edit.exe _alt.txt", "edit.exe _piclist.txt"));
}

#ifndef _WIN32 // where no name holds a backslash
TEST(PictureLists, APictureThatNoPathCanNameIsPassedOver)
{
    UtilityDesk desk;
    PutPicture(desk, "cat.jpg", 1, 2);
    desk.Put("site/a\\b.gif");
    run_picture_sizer(desk.machine, "", kEditor);
    EXPECT_THAT(desk.pictures.measured, ElementsAre("cat.jpg"));
    EXPECT_THAT(desk.reporter.shown,
                ElementsAre("Left out because of the backslash in its name: a\\b.gif"));
}
#endif

TEST(PictureLists, ProgramsStartInThePicturesFolder)
{
    class DirectoryNote : public Programs {
      public:
        explicit DirectoryNote(Files& files) : files_(files) {}
        void Start(const Launch& launch) override
        {
            EXPECT_FALSE(launch.minimised);
            directories.push_back(files_.CurrentDirectory());
        }
        int Run(const Launch&, std::string_view, const WhileRunning&) override { return 0; }
        bool Finds(std::string_view) override { return false; }
        std::vector<std::string> directories;

      private:
        Files& files_;
    };
    UtilityDesk desk;
    desk.PutFolder("site/images");
    DirectoryNote programs(desk.machine.files);
    Machine machine{
        desk.machine.files, desk.machine.native_paths, desk.machine.clock,   desk.machine.clipboard,
        programs,           desk.machine.reporter,     desk.machine.pictures};
    run_picture_sizer(machine, "images", kEditor);
    EXPECT_THAT(programs.directories, ElementsAre("C:\\site\\images", "C:\\site\\images"));
}

TEST(PictureLists, FolderAtARootHasNoName)
{
    UtilityDesk desk;
    PutPicture(desk, "cat.jpg", 1, 2, ".");
    desk.machine.files.ChangeDirectory("C:\\");
    Size(desk);
    EXPECT_EQ(desk.Content("_pichtml.txt"), "@file = cat\r\n@title = cat\r\n<img src=\"/cat.jpg\" "
                                            "width=\"1\" height=\"2\" border=\"0\" alt=\"cat\">"
                                            "\r\n\r\n");
}

TEST(PictureLists, MissingFolder)
{
    UtilityDesk desk;
    PutPicture(desk, "cat.jpg", 1, 2);
    desk.Put("site/file", "");
    for (const char* folder : {"images", "file"}) {
        desk.reporter.shown.clear();
        run_picture_sizer(desk.machine, folder, kEditor);
        EXPECT_THAT(desk.reporter.shown, ElementsAre("There is no Images subdirectory. Aborting"));
    }
    EXPECT_THAT(desk.machine.files.Written(), IsEmpty());
    EXPECT_THAT(desk.reporter.statuses, IsEmpty());
    EXPECT_THAT(desk.programs.started, IsEmpty());
    EXPECT_THAT(desk.pictures.measured, IsEmpty());
}

TEST(PictureLists, UnreadablePictureIsFatal)
{
    UtilityDesk desk;
    PutPicture(desk, "a.jpg", 1, 2, "site/images");
    desk.Put("site/images/b.jpg", "no picture");
    PutPicture(desk, "c.jpg", 1, 2, "site/images");
    desk.Put("site/images/_alt.txt", "a.jpg|mine");
    EXPECT_EQ(KindOf([&] { Size(desk, "images"); }), "picture");
    EXPECT_THAT(desk.reporter.statuses, ElementsAre("a.jpg", "b.jpg"));
    EXPECT_EQ(desk.Content("site/images/_alt.txt"), "a.jpg|mine");
    EXPECT_THAT(desk.machine.files.Written(), IsEmpty());
    EXPECT_EQ(desk.machine.files.CurrentDirectory(), "C:\\site");
}

TEST(PictureLists, BadAltFileFailsBeforeAnyPictureIsMeasured)
{
    UtilityDesk desk;
    PutPicture(desk, "a.jpg", 1, 2);
    desk.Put("site/_alt.txt", "a.jpg");
    EXPECT_EQ(KindOf([&] { Size(desk); }), "subscript");
    EXPECT_THAT(desk.pictures.measured, IsEmpty());
    EXPECT_THAT(desk.reporter.statuses, IsEmpty());
    EXPECT_EQ(desk.Content("site/_alt.txt"), "a.jpg");
}

TEST(PictureLists, MeasuresRealPictures)
{
    UtilityDesk desk;
    desk.Put("site/a.jpg", std::string("GIF89a\x2C\x01\x05\0\0\0\0", 13)); // content decides
    HeaderPictureLoader loader(desk.machine.files);
    Machine machine{desk.machine.files,
                    desk.machine.native_paths,
                    desk.machine.clock,
                    desk.machine.clipboard,
                    desk.machine.programs,
                    desk.machine.reporter,
                    loader};
    run_picture_sizer(machine, "", kEditor);
    EXPECT_EQ(desk.Content("site/_pichtml.txt"),
              "@file = a\r\n@title = a\r\n<img src=\"site/a.jpg\" "
              "width=\"300\" height=\"5\" border=\"0\" "
              "alt=\"a\">\r\n\r\n");
}

TEST(PictureLists, ThreeThousandPicturesAndNoMore)
{
    UtilityDesk desk;
    std::string alts;
    for (int n = 0; n < 1500; ++n) {
        const std::string base = "p" + std::to_string(n);
        PutPicture(desk, base + ".jpg", 800, 600);
        PutPicture(desk, base + "_t.jpg", 80, 60);
        alts += base + ".jpg|Picture " + std::to_string(n) + "|c|d\r\n";
    }
    desk.Put("site/_alt.txt", alts);
    Size(desk);
    EXPECT_EQ(desk.pictures.measured.size(), 3000U);

    const std::string list = desk.Content("site/_piclist.txt");
    PutPicture(desk, "zz.gif", 1, 1);
    EXPECT_EQ(KindOf([&] { Size(desk); }), "subscript");
    EXPECT_EQ(desk.reporter.statuses.back(), "zz.gif");
    EXPECT_EQ(desk.Content("site/_piclist.txt"), list);
}

} // namespace
} // namespace kiv
