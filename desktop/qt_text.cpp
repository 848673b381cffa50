#include "desktop/qt_text.h"

#include "text/windows1252.h"

#include <QPlainTextEdit>
#include <QTextDocument>

namespace kiv {

QString ToQt(std::string_view text)
{
    return ToQtNative(ToUtf8(text));
}

std::string FromQt(const QString& text)
{
    return FromUtf8(FromQtNative(text));
}

QString ToQtNative(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

std::string FromQtNative(const QString& path)
{
    return path.toStdString();
}

QString ShownCaption(std::string_view caption)
{
    return ToQt(caption).replace(QStringLiteral("&&"), QStringLiteral("&"));
}

QString ToTip(std::string_view text)
{
    // What looks like HTML would be shown as such.
    const QString tip = ToQt(text);
    return Qt::mightBeRichText(tip) ? QStringLiteral("<span>%1</span>").arg(tip.toHtmlEscaped())
                                    : tip;
}

std::string FieldText(const QPlainTextEdit& field)
{
    // The plain text would have blanks for no-break spaces.
    QString text = field.document()->toRawText();
    text.replace(QChar::ParagraphSeparator, QStringLiteral("\r\n"));
    text.replace(QChar::LineSeparator, QStringLiteral("\r\n"));
    return FromQt(text);
}

void SetFieldText(QPlainTextEdit& field, std::string_view text)
{
    field.setPlainText(ToQt(text));
}

} // namespace kiv
