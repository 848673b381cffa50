// Message boxes: one button "OK", text that can be selected and copied. The title of a message is
// "kiv", that of an error says what has failed.
#pragma once

#include "platform/run_error.h"

#include <string_view>

class QString;
class QWidget;

namespace kiv {

/// Shows a text and waits for the user. The box stands over the active window; when none is active,
/// over `parent`. `about` stands below the text in a line of its own: the place that it is about.
void ShowBox(QWidget* parent, std::string_view text, std::string_view about = {});

/// The same for a fatal error, with an icon. The title says what has failed: the command with the
/// caption `work`, when it is empty that of the active window. Place and what can be done stand
/// below.
void ShowErrorBox(QWidget* parent, const QString& work, const RunError& error);

/// The text of a fatal error and, each in a line of its own, its place and what can be done.
std::string ErrorText(const RunError& error);

} // namespace kiv
