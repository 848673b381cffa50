#include "desktop/mnemonics.h"

namespace kiv {

namespace {

bool IsLetterOrDigit(QChar c)
{
    const char16_t unit = c.toLower().unicode();
    return (unit >= u'a' && unit <= u'z') || (unit >= u'0' && unit <= u'9');
}

} // namespace

qsizetype FreeLetter(const QString& text, const QSet<QChar>& taken)
{
    qsizetype inner = -1;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!IsLetterOrDigit(text[i]) || taken.contains(text[i].toLower()))
            continue;
        if (i == 0 || !text[i - 1].isLetterOrNumber())
            return i;
        if (inner < 0)
            inner = i;
    }
    return inner;
}

QStringList WithMnemonics(const QStringList& captions, QSet<QChar>& taken)
{
    QStringList marked;
    for (const QString& caption : captions) {
        const qsizetype place = FreeLetter(caption, taken);
        QString text = caption;
        text.replace(u'&', QStringLiteral("&&"));
        if (place >= 0) {
            taken.insert(caption[place].toLower());
            text.insert(place + caption.left(place).count(u'&'), u'&');
        }
        marked.push_back(text);
    }
    return marked;
}

} // namespace kiv
