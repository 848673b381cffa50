// The story of a line as a text to read, one paragraph for each step, what it changed marked.
#pragma once

#include "shell/story_parts.h"

#include <QPlainTextEdit>

#include <functional>
#include <string>
#include <vector>

class QTextCursor;

namespace kiv {

class StoryView : public QPlainTextEdit {
    Q_OBJECT

  public:
    explicit StoryView(QWidget* parent);

    /// Shows a story from its beginning; none: the view tells how to get one.
    void Show(std::vector<StoryPart> parts);

    /// Called with the file (a drive path) and the line (1-based) of a part that is double-clicked,
    /// or in which Enter is pressed.
    std::function<void(const std::string& file, int line)> on_open;

  protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void Add(QTextCursor& cursor, const StoryPart& part) const;
    /// Opens the source of the part at a cursor. False when it has none.
    bool OpenAt(const QTextCursor& cursor);

    std::vector<StoryPart> parts_; // a paragraph each
};

} // namespace kiv
