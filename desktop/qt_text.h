// Between the system's Windows-1252 text and Qt's. Nothing else in the windows converts text.
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

/// A caption as Qt wants it: "&&" and "&" as the tables have them show as "&" and stay no mnemonic.
/// `mnemonic` is the position (0-based) of the character of the caption as shown that Alt reaches;
/// -1: none.
QString ToCaption(std::string_view caption, int mnemonic = -1);

/// The text of a field of several lines, every line end as CR LF; each blank is the one that was
/// typed.
std::string FieldText(const QPlainTextEdit& field);
void SetFieldText(QPlainTextEdit& field, std::string_view text);

} // namespace kiv
