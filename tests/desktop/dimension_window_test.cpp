// The window "Convert dimensions".
#include "desktop/dimension_window.h"
#include "tests/desktop/side_window_desk.h"
#include "tests/desktop/window_test.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace kiv {

using namespace Qt::StringLiterals;

class DimensionWindowTest : public QObject {
    Q_OBJECT

    static const inline QStringList kFields = {u"start_width"_s, u"start_height"_s, u"new_width"_s,
                                               u"new_height"_s};

    /// Puts four texts into the fields.
    static void Fill(const DimensionWindow& window, const QStringList& texts)
    {
        for (qsizetype i = 0; i < kFields.size(); ++i)
            Find<QLineEdit>(window, kFields[i]).setText(texts[i]);
    }
    static QStringList Fields(const DimensionWindow& window)
    {
        QStringList texts;
        for (const QString& name : kFields)
            texts << Find<QLineEdit>(window, name).text();
        return texts;
    }

  private slots:
    void Controls()
    {
        SideWindowDesk desk;
        DimensionWindow window(desk, nullptr);
        window.BringUp();
        QCOMPARE(window.windowTitle(), u"Convert dimensions"_s);
        QCOMPARE(Seen(Find<QPushButton>(window, u"calculate"_s).text()), u"Calculate"_s);
        QCOMPARE(Seen(Find<QPushButton>(window, u"done"_s).text()), u"Done"_s);
        QCOMPARE(Seen(Find<QPushButton>(window, u"clear"_s).text()), u"Clear"_s);
        QStringList labels;
        for (const QLabel* const label : window.findChildren<QLabel*>())
            labels << Seen(label->text());
        QCOMPARE(labels, (QStringList{u"Starting width"_s, u"Starting height"_s, u"New width"_s,
                                      u"New height"_s}));
        QCOMPARE(Faults(window), QString());
        QVERIFY(!window.isModal());
    }

    void TabReachesEverything()
    {
        SideWindowDesk desk;
        DimensionWindow window(desk, nullptr);
        window.BringUp();
        QCOMPARE(TabOrder(window, u"start_width"_s),
                 kFields + (QStringList{u"calculate"_s, u"done"_s, u"clear"_s}));
    }

    void Calculates_data()
    {
        QTest::addColumn<QStringList>("before");
        QTest::addColumn<QStringList>("after");
        const auto row = [](const char* name, const QStringList& before, const QStringList& after) {
            QTest::newRow(name) << before << after;
        };
        row("height", {u"800"_s, u"600"_s, u"400"_s, u""_s},
            {u"800"_s, u"600"_s, u"400"_s, u"300"_s});
        row("width", {u"800"_s, u"600"_s, u""_s, u"200"_s},
            {u"800"_s, u"600"_s, u"266.666666666667"_s, u"200"_s});
        row("the width wins", {u"800"_s, u"600"_s, u"400"_s, u"7"_s},
            {u"800"_s, u"600"_s, u"400"_s, u"300"_s});
        row("leading number", {u"640px"_s, u"480"_s, u"320"_s, u""_s},
            {u"640px"_s, u"480"_s, u"320"_s, u"240"_s});
    }
    void Calculates()
    {
        QFETCH(QStringList, before);
        QFETCH(QStringList, after);
        SideWindowDesk desk;
        DimensionWindow window(desk, nullptr);
        window.BringUp();
        Fill(window, before);
        Press(window, u"calculate"_s);
        QCOMPARE(Fields(window), after);
        QVERIFY(desk.words.shown.empty());
    }

    void RefusesWithABox()
    {
        SideWindowDesk desk;
        DimensionWindow window(desk, nullptr);
        window.BringUp();
        const QStringList no_height = {u"800"_s, u"0"_s, u""_s, u"200"_s};
        Fill(window, no_height);
        Press(window, u"calculate"_s);
        QCOMPARE(desk.words.shown, Texts{"Division by zero"});
        QCOMPARE(Fields(window), no_height);

        const QStringList too_great = {u"1e300"_s, u"1"_s, u""_s, u"1e300"_s};
        Fill(window, too_great);
        Press(window, u"calculate"_s);
        QCOMPARE(desk.words.shown, (Texts{"Division by zero", "Overflow"}));
        QCOMPARE(Fields(window), too_great);
    }

    void DoneKeepsTheFieldsAndClearEmptiesThem()
    {
        SideWindowDesk desk;
        DimensionWindow window(desk, nullptr);
        window.BringUp();
        const QStringList texts = {u"1"_s, u"2"_s, u"3"_s, u"4"_s};
        Fill(window, texts);
        Press(window, u"done"_s);
        QVERIFY(!window.isVisible());
        window.BringUp();
        QCOMPARE(Fields(window), texts);
        Press(window, u"clear"_s);
        QCOMPARE(Fields(window), (QStringList{u""_s, u""_s, u""_s, u""_s}));
    }

    void EnterCalculatesAndEscapeCloses()
    {
        SideWindowDesk desk;
        DimensionWindow window(desk, nullptr);
        window.BringUp();
        Fill(window, {u"800"_s, u"600"_s, u"400"_s, u""_s});
        QTest::keyClick(&Find<QLineEdit>(window, u"new_width"_s), Qt::Key_Return);
        QCOMPARE(Fields(window).last(), u"300"_s);
        QTest::keyClick(&window, Qt::Key_Escape);
        QVERIFY(!window.isVisible());
    }
};

const WindowTestOf<DimensionWindowTest> dimension_window("dimension");

} // namespace kiv

#include "dimension_window_test.moc"
