#include "tests/desktop/side_window_desk.h"

#include "shell/outside_programs.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QComboBox>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QTest>
#include <QTreeView>

namespace kiv {

using namespace Qt::StringLiterals;

namespace {

bool IsControl(const QWidget& widget)
{
    // A combo box and a scroll area have parts of their own, without names.
    const bool part = widget.objectName().startsWith(u"qt_"_s);
    return !part && (qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
                     qobject_cast<const QLineEdit*>(&widget) != nullptr ||
                     qobject_cast<const QPlainTextEdit*>(&widget) != nullptr ||
                     qobject_cast<const QComboBox*>(&widget) != nullptr ||
                     qobject_cast<const QListWidget*>(&widget) != nullptr ||
                     qobject_cast<const QTreeView*>(&widget) != nullptr);
}

QString TextWithLetter(const QWidget& widget)
{
    if (const auto* const button = qobject_cast<const QAbstractButton*>(&widget))
        return button->text();
    const auto* const label = qobject_cast<const QLabel*>(&widget);
    return label != nullptr && label->buddy() != nullptr ? label->text() : QString();
}

QString FaultsOf(QWidget& control)
{
    QString faults;
    const QString name = control.objectName();
    if (name.isEmpty())
        faults += u"a control without name; "_s;
    if (control.accessibleDescription().isEmpty())
        faults += name + u" is not explained; "_s;
    // A text to be read would be covered by its tooltip.
    const auto* const text = qobject_cast<QPlainTextEdit*>(&control);
    if (control.toolTip().isEmpty() && (text == nullptr || !text->isReadOnly()))
        faults += name + u" has no tooltip; "_s;
    QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(&control);
    if (spoken == nullptr || spoken->text(QAccessible::Name).isEmpty())
        faults += name + u" has no spoken name; "_s;
    if ((control.focusPolicy() & Qt::TabFocus) == 0)
        faults += name + u" is not reached by Tab; "_s;
    return faults;
}

} // namespace

SideWindowDesk::SideWindowDesk()
{
    workspace_.LookAt("C:\\site");
}

bool SideWindowDesk::Run(const std::function<void()>& operation)
{
    const std::optional<RunError> failure = workspace_.Run(operation);
    error = failure ? std::string(KindName(failure->kind)) : "";
    return !failure;
}

void SideWindowDesk::OpenInEditor(const std::string& file, int line)
{
    Run([&] { EditAt(workspace_, file, line); });
}

void Press(const QWidget& window, const QString& name)
{
    QTest::mouseClick(&Find<QAbstractButton>(window, name), Qt::LeftButton);
}

QString Seen(const QString& text)
{
    QString seen;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'&' && i + 1 < text.size())
            ++i;
        seen += text[i];
    }
    return seen;
}

QStringList TabOrder(const QWidget& window, const QString& first)
{
    QStringList order;
    const QWidget* const start = &Find<QWidget>(window, first);
    const QWidget* at = start;
    do {
        const bool inside = at != &window && at->isVisibleTo(&window);
        if (inside && (at->focusPolicy() & Qt::TabFocus) != 0)
            order << at->objectName();
        at = at->nextInFocusChain();
    } while (at != start);
    return order;
}

QString Faults(const QWidget& window)
{
    QString faults;
    QString letters;
    for (QWidget* const widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisibleTo(&window))
            continue;
        if (IsControl(*widget))
            faults += FaultsOf(*widget);
        const QString letter = QKeySequence::mnemonic(TextWithLetter(*widget)).toString();
        if (!letter.isEmpty() && letters.contains(letter))
            faults += letter + u" is taken twice; "_s;
        letters += letter + u' ';
    }
    return faults;
}

} // namespace kiv
