// Letters for Alt.
#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

namespace kiv {

/// The place of a letter or digit that is still free, from 0; -1 when there is none. The first
/// letters of words come before others.
qsizetype FreeLetter(const QString& text, const QSet<QChar>& taken);

/// Captions as Qt wants them: every "&" shows as it is, and each caption has a letter that neither
/// another one nor `taken` (lower case) has, as long as letters last. Adds the letters to `taken`.
QStringList WithMnemonics(const QStringList& captions, QSet<QChar>& taken);

} // namespace kiv
