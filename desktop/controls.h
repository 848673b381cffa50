// Controls with all that belongs to them: object name, caption, tooltip, name for screen readers.
#pragma once

#include <QString>

#include <cstddef>
#include <string>
#include <string_view>

class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QWidget;

namespace kiv {

/// The words of a control. A field's caption is its label's.
struct ControlWords {
    std::string_view name; // the object name
    std::string_view caption;
    std::string_view tip;
};

/// The object name of a control of an array, "Option1(3)"; `index` counts from 0.
QString ArrayName(std::string_view name, std::size_t index);

/// A text for a button or label that shows every "&" as it is.
QString AsShown(std::string_view text);

/// Gives a control its object name, tooltip and description.
void Describe(QWidget& control, const ControlWords& words);

QPushButton* MakeButton(const ControlWords& words, QWidget* parent);

/// A label with a field as its buddy, which names the field to a screen reader too.
QLabel* MakeLabel(std::string_view caption, QWidget& field);

/// A text to be read: it can be selected and copied, and never widens its window.
QLabel* MakeReadout(std::string_view name, std::string_view spoken_name, QWidget* parent);
void SetReadout(QLabel& readout, std::string_view text);

/// A text that wraps, hidden as long as there is none, for what went wrong.
QLabel* MakeTrouble(const QString& name, QWidget* parent);

/// A field of one line in a new row of `form`.
QLineEdit* AddField(QFormLayout& form, const ControlWords& words);

/// What a field of one line shows: a line end that was pasted into it is a blank.
std::string LineText(const QLineEdit& field);
void SetLineText(QLineEdit& field, std::string_view text);

/// Gives every button and label of a window that has none yet, and is not hidden, a letter for Alt.
/// No two are alike; when no letter is left, a control has none.
void GiveMnemonics(QWidget& window);

} // namespace kiv
