#include "desktop/controls.h"

#include "desktop/mnemonics.h"
#include "desktop/qt_text.h"

#include <QAbstractButton>
#include <QFormLayout>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSet>

namespace kiv {

namespace {

using namespace Qt::StringLiterals;

QString TextOf(const QWidget& control)
{
    if (const auto* const button = qobject_cast<const QAbstractButton*>(&control))
        return button->text();
    const auto* const label = qobject_cast<const QLabel*>(&control);
    return label != nullptr && label->buddy() != nullptr ? label->text() : QString();
}

void SetText(QWidget& control, const QString& text)
{
    if (auto* const button = qobject_cast<QAbstractButton*>(&control))
        button->setText(text);
    else if (auto* const label = qobject_cast<QLabel*>(&control))
        label->setText(text);
}

/// The letter for Alt in a text; null: none.
QChar MnemonicOf(const QString& text)
{
    const QString sequence = QKeySequence::mnemonic(text).toString(QKeySequence::PortableText);
    return sequence.isEmpty() ? QChar() : sequence.back().toLower();
}

} // namespace

QString ArrayName(std::string_view name, std::size_t index)
{
    return ToQt(name) + u'(' + QString::number(index) + u')';
}

QString AsShown(std::string_view text)
{
    return ToQt(text).replace(u"&"_s, u"&&"_s);
}

void Describe(QWidget& control, const ControlWords& words)
{
    control.setObjectName(ToQt(words.name));
    control.setToolTip(ToTip(words.tip));
    control.setAccessibleDescription(ToQt(words.tip));
}

QPushButton* MakeButton(const ControlWords& words, QWidget* parent)
{
    auto* const button = new QPushButton(AsShown(words.caption), parent);
    Describe(*button, words);
    return button;
}

QLabel* MakeLabel(std::string_view caption, QWidget& field)
{
    auto* const label = new QLabel(AsShown(caption), field.parentWidget());
    label->setBuddy(&field);
    field.setAccessibleName(ToQt(caption));
    return label;
}

QLabel* MakeReadout(std::string_view name, std::string_view spoken_name, QWidget* parent)
{
    auto* const readout = new QLabel(parent);
    readout->setObjectName(ToQt(name));
    readout->setAccessibleDescription(ToQt(spoken_name));
    readout->setTextFormat(Qt::PlainText);
    readout->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    readout->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    readout->setMinimumHeight(readout->fontMetrics().lineSpacing()); // an empty one keeps its line
    return readout;
}

void SetReadout(QLabel& readout, std::string_view text)
{
    readout.setText(ToQt(text));
    readout.setToolTip(ToTip(text));
}

QLabel* MakeTrouble(const QString& name, QWidget* parent)
{
    auto* const label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    label->hide();
    return label;
}

QLineEdit* AddField(QFormLayout& form, const ControlWords& words)
{
    auto* const field = new QLineEdit(form.parentWidget());
    Describe(*field, words);
    form.addRow(MakeLabel(words.caption, *field), field);
    return field;
}

std::string LineText(const QLineEdit& field)
{
    static const QRegularExpression line_end(u"\\r\\n|[\\r\\n\\x{2028}\\x{2029}]"_s);
    return FromQt(field.text().replace(line_end, u" "_s));
}

void SetLineText(QLineEdit& field, std::string_view text)
{
    field.setText(ToQt(text));
    field.setCursorPosition(0);
}

void GiveMnemonics(QWidget& window)
{
    const QList<QWidget*> controls = window.findChildren<QWidget*>();
    QSet<QChar> taken;
    for (const QWidget* const control : controls)
        taken.insert(MnemonicOf(TextOf(*control)));
    for (QWidget* const control : controls) {
        QString text = TextOf(*control);
        if (!control->isVisibleTo(&window) || !MnemonicOf(text).isNull())
            continue;
        const qsizetype place = FreeLetter(text, taken);
        if (place < 0)
            continue;
        taken.insert(text[place].toLower());
        SetText(*control, text.insert(place, u'&'));
    }
}

} // namespace kiv
