#include "desktop/qt_clipboard.h"

#include "desktop/qt_text.h"

#include <QClipboard>
#include <QGuiApplication>

namespace kiv {

std::string QtClipboard::Text()
{
    return FromQt(QGuiApplication::clipboard()->text());
}

void QtClipboard::SetText(std::string_view text)
{
    QGuiApplication::clipboard()->setText(ToQt(text));
}

} // namespace kiv
