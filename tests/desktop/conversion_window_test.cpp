// The window "Convert to html", from the real clipboard to the real clipboard.
#include "desktop/conversion_window.h"
#include "tests/desktop/side_window_desk.h"
#include "tests/desktop/window_test.h"

#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace kiv {

using namespace Qt::StringLiterals;

class ConversionWindowTest : public QObject {
    Q_OBJECT

    static const inline QStringList kBoxes = {u"links_list"_s, u"single_spaced"_s, u"poetry_p"_s,
                                              u"keep_smart_quotes"_s, u"poetry_br"_s};

    static QString Label(const ConversionDialog& window)
    {
        return Find<QLabel>(window, u"label"_s).text();
    }
    /// The boxes that are set.
    static QStringList Set(const ConversionDialog& window)
    {
        QStringList set;
        for (const QString& name : kBoxes)
            if (Find<QCheckBox>(window, name).isChecked())
                set << name;
        return set;
    }
    static void Check(const ConversionDialog& window, const QStringList& names)
    {
        for (const QString& name : names)
            Find<QCheckBox>(window, name).setChecked(true);
    }
    static void Copy(const QString& text) { QGuiApplication::clipboard()->setText(text); }
    static QString Pasted() { return QGuiApplication::clipboard()->text(); }

  private slots:
    void Controls()
    {
        SideWindowDesk desk;
        ConversionDialog window(desk, nullptr);
        window.OpenIn("");
        const QStringList captions = {u"No <p> (links list)"_s, u"Single spaced"_s,
                                      u"Poetry (br &&& p)"_s, u"keep smart qutoes"_s,
                                      u"Poetry (br &&& br-br)"_s};
        for (qsizetype i = 0; i < kBoxes.size(); ++i)
            QCOMPARE(Seen(Find<QCheckBox>(window, kBoxes[i]).text()), captions[i]);
        QCOMPARE(Seen(Find<QPushButton>(window, u"do_it"_s).text()),
                 u"Text in Clipboard. Do It!"_s);
        QCOMPARE(Seen(Find<QPushButton>(window, u"exit"_s).text()), u"Exit"_s);
        QCOMPARE(Find<QLineEdit>(window, u"text_field"_s).text(), QString());
        QCOMPARE(Faults(window), QString());
        QVERIFY(!window.isModal());
    }

    void TabReachesEverything()
    {
        SideWindowDesk desk;
        ConversionDialog window(desk, nullptr);
        window.OpenIn("");
        QCOMPARE(TabOrder(window, kBoxes.front()),
                 kBoxes + (QStringList{u"text_field"_s, u"do_it"_s, u"exit"_s}));
    }

    void ModeSetsTitlesAndClearsBoxes_data()
    {
        QTest::addColumn<QString>("mode");
        QTest::addColumn<QString>("title");
        const auto row = [](const char* mode, const char* title) {
            QTest::newRow(title) << QString::fromLatin1(mode) << QString::fromLatin1(title);
        };
        row("", "Convert to html");
        row("rs", "Write to rs");
        row("js", "Write to js");
        row("getnames", "Extract Name fields");
        row("cleanquotes", "Clean Quotes, etc.");
        row("newsgrabber", "News Grabber");
        row("tabtopipe", "Tabs to Pipes");
    }
    void ModeSetsTitlesAndClearsBoxes()
    {
        QFETCH(QString, mode);
        QFETCH(QString, title);
        SideWindowDesk desk;
        ConversionDialog window(desk, nullptr);
        window.OpenIn("");
        Check(window, kBoxes);
        window.OpenIn(mode.toStdString());
        QVERIFY(window.isVisible());
        QCOMPARE(window.windowTitle(), title);
        QCOMPARE(Label(window), title);
        QCOMPARE(Set(window), QStringList());
        for (const QString& name : kBoxes)
            QVERIFY(Find<QCheckBox>(window, name).isEnabled());
        QVERIFY(Find<QLineEdit>(window, u"text_field"_s).isEnabled());
    }

    void Converts_data()
    {
        QTest::addColumn<QString>("mode");
        QTest::addColumn<QStringList>("boxes");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("result");
        const auto row = [](const char* name, const QString& mode, const QStringList& boxes,
                            const QString& text, const QString& result) {
            QTest::newRow(name) << mode << boxes << text << result;
        };
        row("prose", u""_s, {}, u"One\r\ntwo\r\n\r\n\r\nthree \u00e9"_s,
            u"<p> One two</P>\r\n<P>three &eacute;</p>\r\n"_s);
        row("links list", u""_s, {u"links_list"_s}, u"One\r\ntwo"_s, u"One two\r\n"_s);
        row("single spaced", u""_s, {u"single_spaced"_s}, u"a\r\n\r\nb"_s,
            u"<p><p>a</p>\r\n<p>b</p>\r\n</p>\r\n"_s);
        row("poetry p", u""_s, {u"poetry_p"_s}, u"a\r\nb\r\n\r\nc\r\nd"_s,
            u"<p>a<br>b</p>\r\n<p>c<br>d</p>\r\n"_s);
        row("poetry br", u""_s, {u"poetry_br"_s}, u"a\r\nb\r\n\r\nc"_s,
            u"<p>a<br>b<br><br>c</p>\r\n"_s);
        row("rs", u"rs"_s, {}, u"a\tb"_s, u"a=rs(\"a\")\r\n\tb=rs(\"b\")\r\n"_s);
        row("js", u"js"_s, {}, u"it's\r\n\r\nhere"_s,
            u"<script src=\"_player.js\"></script>\r\n\r\n"
            "<!---- write the following to _player.js ----->\r\n"
            "document.write('it\\'s');\r\ndocument.write('here');\r\n"_s);
        row("getnames", u"getnames"_s, {}, u"<input NAME=\"a\"><input name=\"b\"> name=\"a\""_s,
            u"@FORMREAD:a|b\r\n<%if imempty=\"yes\" then%>\r\n"
            "<h3>Oops! The form was empty. Use your back button.</h3>\r\n<% else %>\r\n"
            "@SENDEMAIL:Subject|email|me@here.example|messageout\r\n<% end if %>"_s);
        row("cleanquotes", u"cleanquotes"_s, {}, u"\u201ca\u201d  \u2019"_s, u"\"a\" '\r\n"_s);
        row("smart quotes", u"cleanquotes"_s, {u"keep_smart_quotes"_s}, u"\u201ca\u201d"_s,
            u"&ldquo;a&rdquo;\r\n"_s);
        row("newsgrabber", u"newsgrabber"_s, {}, u"!!1[May 1|pr0501|Boats|x]\r\nmore"_s,
            u"@file = pr0501\r\n@title = Boats\r\n!!2[May 1|pr0501|Boats|x]\r\n"
            "++txt\\pr0501.txt\r\n\r\n@@EOY\r\n\r\n"_s);
        row("tabtopipe", u"tabtopipe"_s, {}, u"a\tb\r\nc\t d"_s,
            u"<table width=\"100%\">\r\nrow&[a|b]\r\nrow&[c|d]\r\n</table>"_s);
        row("nothing", u""_s, {}, u""_s, u"<p></p>\r\n"_s);
    }
    void Converts()
    {
        QFETCH(QString, mode);
        QFETCH(QStringList, boxes);
        QFETCH(QString, text);
        QFETCH(QString, result);
        SideWindowDesk desk;
        desk.Put("utils/kivaddr.ini", "recipient|me@here.example\r\n");
        ConversionDialog window(desk, nullptr);
        window.OpenIn(mode.toStdString());
        Check(window, boxes);
        Find<QLineEdit>(window, u"text_field"_s).setText(u"row&"_s);
        Copy(text);
        Press(window, u"do_it"_s);
        QCOMPARE(Pasted(), result);
        QCOMPARE(desk.error, std::string());
        QVERIFY(desk.words.shown.empty());
    }

    void ResetsAfterARun()
    {
        SideWindowDesk desk;
        ConversionDialog window(desk, nullptr);
        window.OpenIn("tabtopipe");
        Check(window, kBoxes);
        Find<QLineEdit>(window, u"text_field"_s).setText(u"kept"_s);
        Copy(u"a"_s);
        Press(window, u"do_it"_s);
        QCOMPARE(window.windowTitle(), u"Prepare for Web Use"_s);
        QCOMPARE(Label(window), QString());
        QCOMPARE(Set(window), (QStringList{u"poetry_p"_s, u"keep_smart_quotes"_s, u"poetry_br"_s}));
        QCOMPARE(Find<QLineEdit>(window, u"text_field"_s).text(), u"kept"_s);
        QVERIFY(window.isVisible());
        Press(window, u"do_it"_s); // the mode is still that one
        QVERIFY(Pasted().startsWith(u"<table"_s));
    }

    void RefusedNewsLineStaysInTheClipboard()
    {
        SideWindowDesk desk;
        ConversionDialog window(desk, nullptr);
        window.OpenIn("newsgrabber");
        Copy(u"no news"_s);
        Press(window, u"do_it"_s);
        QCOMPARE(desk.words.shown, Texts{"First line doesn't start '!!'"});
        QCOMPARE(Pasted(), u"no news"_s);
        QCOMPARE(window.windowTitle(), u"Prepare for Web Use"_s);
    }

    void FatalConversionLeavesClipboardAndWindow()
    {
        SideWindowDesk desk;
        ConversionDialog window(desk, nullptr);
        window.OpenIn("getnames");
        Check(window, {u"single_spaced"_s});
        Copy(u"NAME=\"open"_s);
        Press(window, u"do_it"_s);
        QCOMPARE(desk.error, std::string("invalid-argument"));
        QCOMPARE(Pasted(), u"NAME=\"open"_s);
        QCOMPARE(window.windowTitle(), u"Extract Name fields"_s);
        QCOMPARE(Label(window), u"Extract Name fields"_s);
        QCOMPARE(Set(window), QStringList{u"single_spaced"_s});
    }

    void CharactersOutsideTheCodePage()
    {
        SideWindowDesk desk;
        ConversionDialog window(desk, nullptr);
        window.OpenIn("rs");
        Copy(u"\u4e2d"_s);
        Press(window, u"do_it"_s);
        QCOMPARE(Pasted(), u"&#20013;=rs(\"&#20013;\")\r\n"_s);
    }

    void EnterConvertsExitAndEscapeClose()
    {
        SideWindowDesk desk;
        ConversionDialog window(desk, nullptr);
        window.OpenIn("rs");
        Copy(u"a"_s);
        QTest::keyClick(&Find<QLineEdit>(window, u"text_field"_s), Qt::Key_Return);
        QCOMPARE(Pasted(), u"a=rs(\"a\")\r\n"_s);
        Press(window, u"exit"_s);
        QVERIFY(!window.isVisible());
        window.OpenIn("rs");
        QTest::keyClick(&window, Qt::Key_Escape);
        QVERIFY(!window.isVisible());
    }
};

const WindowTestOf<ConversionWindowTest> conversion_window("conversion");

} // namespace kiv

#include "conversion_window_test.moc"
