#include "desktop/story_view.h"

#include "desktop/controls.h"
#include "desktop/qt_text.h"

#include <QFontDatabase>
#include <QMouseEvent>
#include <QTextBlock>
#include <QTextCursor>

#include <utility>

namespace kiv {

namespace {

using namespace Qt::StringLiterals;

constexpr int kMarkStrength = 90; // of 255: text on it stays readable, in the dark, too

QTextCharFormat Titled()
{
    QTextCharFormat format;
    format.setFontWeight(QFont::Bold);
    return format;
}

QTextCharFormat Quoted()
{
    QTextCharFormat format;
    format.setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    return format;
}

QTextCharFormat Marked(const QPalette& palette)
{
    QTextCharFormat format = Quoted();
    QColor background = palette.color(QPalette::Highlight);
    background.setAlpha(kMarkStrength);
    format.setBackground(background);
    format.setFontWeight(QFont::Bold);
    return format;
}

QTextCharFormat StruckOut()
{
    QTextCharFormat format = Quoted();
    format.setFontStrikeOut(true);
    return format;
}

/// A text within one paragraph: its lines are parted as lines of the paragraph are.
QString InParagraph(std::string_view text)
{
    QString shown = ToQt(text);
    shown.remove(u'\r');
    return shown.replace(u'\n', QChar::LineSeparator);
}

QString Heading(const StoryPart& part)
{
    switch (part.kind) {
    case StoryPart::Kind::source:
        return part.title.empty() ? u"Source"_s : u"Source, "_s + ToQt(part.title);
    case StoryPart::Kind::result:
        return u"Result, "_s + ToQt(part.title);
    default:
        return ToQt(part.title);
    }
}

} // namespace

StoryView::StoryView(QWidget* parent) : QPlainTextEdit(parent)
{
    Describe(*this, {"story", "",
                     "What made the line, from its source to the page; Enter opens the line "
                     "of a source or a definition in the editor"});
    setToolTip({}); // it would cover the text
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setTabChangesFocus(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setPlaceholderText(u"Choose a line to read its story."_s);
}

void StoryView::Show(std::vector<StoryPart> parts)
{
    parts_ = std::move(parts);
    clear();
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    for (const StoryPart& part : parts_) {
        if (&part != &parts_.front())
            cursor.insertBlock();
        Add(cursor, part);
    }
    cursor.endEditBlock();
    moveCursor(QTextCursor::Start);
}

void StoryView::Add(QTextCursor& cursor, const StoryPart& part) const
{
    const QString new_line(QChar::LineSeparator);
    cursor.insertText(Heading(part), Titled());
    if (!part.words.empty()) {
        const QString colon = part.title.ends_with(':') ? u" "_s : u": "_s; // "DIR1:" has its own
        cursor.insertText(colon + InParagraph(part.words), QTextCharFormat());
    }
    if (!part.text.empty()) {
        const std::string_view text = part.text;
        const ChangedPart& change = part.change;
        cursor.insertText(new_line + InParagraph(text.substr(0, change.from)), Quoted());
        cursor.insertText(InParagraph(text.substr(change.from, change.put)), Marked(palette()));
        cursor.insertText(InParagraph(text.substr(change.from + change.put)), Quoted());
    }
    if (!part.taken.empty()) {
        cursor.insertText(new_line + u"taken out: "_s, QTextCharFormat());
        cursor.insertText(InParagraph(part.taken), StruckOut());
    }
    if (part.kind != StoryPart::Kind::result)
        cursor.insertText(new_line, QTextCharFormat()); // room below it
}

bool StoryView::OpenAt(const QTextCursor& cursor)
{
    const auto number = static_cast<std::size_t>(cursor.blockNumber());
    if (number >= parts_.size() || !parts_[number].place || !on_open)
        return false;
    const ToldPlace place = *parts_[number].place; // what opening does may change the story
    on_open(place.file, place.first);
    return true;
}

void StoryView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (!OpenAt(cursorForPosition(event->position().toPoint())))
        QPlainTextEdit::mouseDoubleClickEvent(event);
}

void StoryView::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter || !OpenAt(textCursor()))
        QPlainTextEdit::keyPressEvent(event);
}

} // namespace kiv
