// The window "Rename files".
#include "desktop/rename_window.h"
#include "tests/desktop/side_window_desk.h"
#include "tests/desktop/window_test.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>

namespace kiv {

using namespace Qt::StringLiterals;

class RenameWindowTest : public QObject {
    Q_OBJECT

    static QString Sample(const RenameWindow& window)
    {
        return Find<QLabel>(window, u"sample"_s).text();
    }
    static void Fill(const RenameWindow& window, const QString& find, const QString& replacement)
    {
        Find<QLineEdit>(window, u"find"_s).setText(find);
        Find<QLineEdit>(window, u"replacement"_s).setText(replacement);
    }

  private slots:
    void Controls()
    {
        SideWindowDesk desk;
        RenameWindow window(desk, nullptr);
        window.BringUp();
        QCOMPARE(window.windowTitle(), u"Rename files"_s);
        QCOMPARE(Seen(Find<QPushButton>(window, u"rename"_s).text()), u"Rename"_s);
        QStringList labels;
        for (const QLabel* const label : window.findChildren<QLabel*>())
            if (label->buddy() != nullptr)
                labels << Seen(label->text()) << label->buddy()->objectName();
        QCOMPARE(labels, (QStringList{u"Find"_s, u"find"_s, u"Replace with"_s, u"replacement"_s}));
        QCOMPARE(Faults(window), QString());
        QVERIFY(!window.isModal());
    }

    void TabReachesEverything()
    {
        SideWindowDesk desk;
        RenameWindow window(desk, nullptr);
        window.BringUp();
        QCOMPARE(TabOrder(window, u"find"_s),
                 (QStringList{u"find"_s, u"replacement"_s, u"pairs"_s, u"rename"_s}));
    }

    void ShowsTheFirstFile()
    {
        SideWindowDesk desk;
        RenameWindow window(desk, nullptr);
        window.BringUp();
        QCOMPARE(Sample(window), QString()); // none there
        QCOMPARE(Find<QLabel>(window, u"folder"_s).text(), u"C:\\site\\"_s);
        window.hide();
        desk.Put("site/b.txt");
        desk.Put("site/caf\xc3\xa9.txt");
        desk.Put("site/A & b.txt");
        window.BringUp();
        QCOMPARE(Sample(window), u"A & b.txt"_s);
    }

    void RenamesEveryFileAndStaysOpen()
    {
        SideWindowDesk desk;
        desk.Put("site/IMG_1.JPG", "1");
        desk.Put("site/IMG_2_IMG.JPG", "2");
        desk.Put("site/img_3.jpg", "3"); // case matters
        RenameWindow window(desk, nullptr);
        window.BringUp();
        QCOMPARE(Sample(window), u"IMG_1.JPG"_s);
        Fill(window, u"IMG"_s, u"h\u00e9"_s);
        Press(window, u"rename"_s);
        QCOMPARE(desk.Tree("site"), (test::FileTree{{"h\xc3\xa9_1.JPG", "1"},
                                                    {"h\xc3\xa9_2_h\xc3\xa9.JPG", "2"},
                                                    {"img_3.jpg", "3"}}));
        QVERIFY(window.isVisible());
        QCOMPARE(Sample(window), u"h\u00e9_1.JPG"_s);
        QCOMPARE(desk.workspace().Renamed.size(),
                 std::size_t{2}); // the look for it forgets nothing
        QCOMPARE(desk.error, std::string());
    }

    void RenamesAreSeenAsTheTextsAreTyped()
    {
        SideWindowDesk desk;
        desk.Put("site/a1.txt");
        desk.Put("site/a2.txt");
        desk.Put("site/a3.txt");
        desk.Put("site/b2.txt");
        RenameWindow window(desk, nullptr);
        window.BringUp();
        const QAbstractItemModel& pairs = *Find<QTreeView>(window, u"pairs"_s).model();
        const auto& summary = Find<QLabel>(window, u"summary"_s);
        const auto& warning = Find<QLabel>(window, u"warning"_s);
        QCOMPARE(summary.text(), u"Give the text to look for."_s);
        Fill(window, u"a"_s, u"c"_s);
        QCOMPARE(pairs.rowCount(), 3);
        QCOMPARE(pairs.index(2, 0).data().toString(), u"a3.txt"_s);
        QCOMPARE(pairs.index(2, 1).data().toString(), u"c3.txt"_s);
        QCOMPARE(summary.text(), u"3 files will be renamed."_s);
        QVERIFY(!warning.isVisible());
        Fill(window, u"a"_s, u"b"_s); // the second name is taken
        QCOMPARE(pairs.rowCount(), 2);
        QVERIFY(pairs.index(0, 0).data(Qt::DecorationRole).isNull());
        QVERIFY(!pairs.index(1, 0).data(Qt::DecorationRole).isNull());
        QCOMPARE(summary.text(), u"1 file will be renamed, then the run stops."_s);
        QVERIFY(warning.text().startsWith(u"cannot rename C:\\site\\a2.txt to "_s));
        Fill(window, u"q"_s, u"b"_s);
        QCOMPARE(pairs.rowCount(), 0);
        QCOMPARE(summary.text(), u"No file name here has the text \"q\" in it."_s);
        QCOMPARE(desk.NamesIn("site"), (Texts{"a1.txt", "a2.txt", "a3.txt", "b2.txt"}));
    }

    void WhatWasNotSeenIsNotRenamed()
    {
        SideWindowDesk desk;
        desk.Put("site/a1.txt");
        RenameWindow window(desk, nullptr);
        window.BringUp();
        Fill(window, u"a"_s, u"c"_s);
        desk.Put("site/a2.txt"); // by another program
        Press(window, u"rename"_s);
        QCOMPARE(desk.NamesIn("site"), (Texts{"a1.txt", "a2.txt"}));
        QCOMPARE(Find<QTreeView>(window, u"pairs"_s).model()->rowCount(), 2);
        QVERIFY(Find<QLabel>(window, u"summary"_s).text().contains(u"have changed"_s));
        Press(window, u"rename"_s);
        QCOMPARE(desk.NamesIn("site"), (Texts{"c1.txt", "c2.txt"}));
    }

    void ItIsSaidHowManyWereRenamed()
    {
        SideWindowDesk desk;
        desk.Put("site/a1.txt");
        desk.Put("site/a2.txt");
        RenameWindow window(desk, nullptr);
        window.BringUp();
        Fill(window, u"a"_s, u"c"_s);
        Press(window, u"rename"_s);
        QCOMPARE(desk.words.status, std::string("2 files renamed"));
    }

    void EmptyFindFieldRenamesNothing()
    {
        SideWindowDesk desk;
        desk.Put("site/a.txt");
        RenameWindow window(desk, nullptr);
        window.BringUp();
        Fill(window, u""_s, u"b"_s);
        Press(window, u"rename"_s);
        QCOMPARE(desk.words.shown, Texts{"Fill in find field, please"});
        QCOMPARE(desk.Tree("site"), (test::FileTree{{"a.txt", ""}}));
    }

    void TakenNameIsAFatalErrorAndNothingIsLost()
    {
        SideWindowDesk desk;
        desk.Put("site/a1.txt", "first");
        desk.Put("site/a2.txt", "second");
        desk.Put("site/b2.txt", "taken");
        RenameWindow window(desk, nullptr);
        window.BringUp();
        Fill(window, u"a"_s, u"b"_s);
        QTest::keyClick(&Find<QLineEdit>(window, u"find"_s), Qt::Key_Return); // the button
        QCOMPARE(desk.error, std::string("file"));
        QCOMPARE(desk.Tree("site"),
                 (test::FileTree{{"a2.txt", "second"}, {"b1.txt", "first"}, {"b2.txt", "taken"}}));
        QCOMPARE(Sample(window), u"a2.txt"_s);
    }

    void FollowsTheWorkingDirectory()
    {
        SideWindowDesk desk;
        desk.Put("site/a.txt");
        desk.Put("other/z.txt");
        RenameWindow window(desk, nullptr);
        window.BringUp();
        desk.Run([&] { desk.workspace().switchto("C:\\other\\"); });
        window.Refresh();
        QCOMPARE(Sample(window), u"z.txt"_s);
        QCOMPARE(Find<QLabel>(window, u"folder"_s).text(), u"C:\\other\\"_s);
    }

    void EscapeCloses()
    {
        SideWindowDesk desk;
        RenameWindow window(desk, nullptr);
        window.BringUp();
        QTest::keyClick(&window, Qt::Key_Escape);
        QVERIFY(!window.isVisible());
    }
};

const WindowTestOf<RenameWindowTest> rename_window("rename");

} // namespace kiv

#include "rename_window_test.moc"
