#include "desktop/window_clipboard.h"

#include "desktop/qt_text.h"

#include <QClipboard>
#include <QGuiApplication>

namespace kiv {

std::string WindowClipboard::Text()
{
    QString text = QGuiApplication::clipboard()->text();
    line_feeds_alone_ = text.contains(u'\n') && !text.contains(u'\r');
    if (line_feeds_alone_)
        text.replace(QStringLiteral("\n"), QStringLiteral("\r\n"));
    return FromQt(text);
}

void WindowClipboard::SetText(std::string_view text)
{
    QString given = ToQt(text);
    if (line_feeds_alone_)
        given.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    QGuiApplication::clipboard()->setText(given);
}

} // namespace kiv
