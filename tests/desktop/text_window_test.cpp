// Text on its way between this program and Qt.
#include "desktop/mnemonics.h"
#include "desktop/qt_text.h"
#include "tests/desktop/window_test.h"

#include <QPlainTextEdit>

namespace kiv {

using namespace Qt::StringLiterals;

class TextTest : public QObject {
    Q_OBJECT

  private slots:
    void EveryByteComesBack()
    {
        for (int i = 0; i < 256; ++i) {
            const std::string byte(1, static_cast<char>(i));
            QCOMPARE(ToQt(byte).size(), 1);
            QCOMPARE(FromQt(ToQt(byte)), byte);
        }
    }

    void CodePageIsWindows1252() { QCOMPARE(ToQt("\x80\x93\xe9"), u"\u20ac\u201c\u00e9"_s); }

    void WhatTheCodePageLacksIsAReference()
    {
        QCOMPARE(FromQt(u"\u4e2d\u00e9"_s), std::string("&#20013;\xe9"));
        QCOMPARE(FromQt(QString::fromUcs4(U"\U0001f600")), std::string("&#128512;"));
    }

    void CaptionShowsItsAmpersand()
    {
        QCOMPARE(ShownCaption("Grab && redirect"), u"Grab & redirect"_s);
    }

    void EachCaptionHasALetterOfItsOwn()
    {
        QSet<QChar> taken = {u'f'};
        const QStringList captions = {u"Fix"_s, u"Find it"_s, u"R & D"_s, u"<if>"_s, u"ifd"_s};
        QCOMPARE(WithMnemonics(captions, taken),
                 QStringList({u"F&ix"_s, u"Fi&nd it"_s, u"&R && D"_s, u"<if>"_s, u"if&d"_s}));
        QCOMPARE(taken, QSet<QChar>({u'f', u'i', u'n', u'r', u'd'}));
    }

    void TipShowsTags()
    {
        QCOMPARE(ToTip("a & b"), u"a & b"_s);
        QCOMPARE(ToTip("a <p> & b"), u"<span>a &lt;p&gt; &amp; b</span>"_s);
    }

    void FieldKeepsNoBreakSpacesAndEndsLinesWithCrLf()
    {
        QPlainTextEdit field;
        SetFieldText(field, "a\xa0"
                            "b\r\nc\n");
        QCOMPARE(FieldText(field), std::string("a\xa0"
                                               "b\r\nc\r\n"));
    }
};

const WindowTestOf<TextTest> text_window("text");

} // namespace kiv

#include "text_window_test.moc"
