// Between the program's Windows-1252 text and Qt's. Nothing else in the windows converts text.
#pragma once

#include <QString>

#include <string>
#include <string_view>

class QPlainTextEdit;

namespace kiv {

QString ToQt(std::string_view text);

/// Characters that the code page lacks become decimal references ("&#20013;").
std::string FromQt(const QString& text);

/// A native path (UTF-8 below the faces) as Qt has it, and back.
QString ToQtNative(std::string_view utf8);
std::string FromQtNative(const QString& path);

/// A caption of the tables as it shows: "&&" is "&".
QString ShownCaption(std::string_view caption);

/// A text for a tooltip, which shows every character as it is.
QString ToTip(std::string_view text);

/// The text of a field of several lines, every line end as CR LF. A no-break space stays one.
std::string FieldText(const QPlainTextEdit& field);
void SetFieldText(QPlainTextEdit& field, std::string_view text);

} // namespace kiv
