// A field for the path of a folder: shows where one is, and takes what is typed or pasted, with
// completion. Enter goes there, Escape takes back what was typed.
#pragma once

#include "desktop/controls.h"

#include <QLineEdit>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

class QStringListModel;

namespace kiv {

class PathField : public QLineEdit {
    Q_OBJECT

  public:
    /// `parent` gets the field; what is dropped on it goes to the window.
    PathField(const ControlWords& words, QWidget* parent);

    /// `shown` stands there until the field has the keys, then `whole` does. A copy of the whole
    /// is `native` (UTF-8). What is being typed stays as long as the path is the same.
    void ShowPath(std::string_view shown, std::string_view whole, std::string_view native);

    /// Puts the native path into the clipboard.
    void CopyNative();

    /// Called with what was typed (UTF-8) when Enter is pressed.
    std::function<void(const std::string& typed)> on_go;
    /// Gives what a typed beginning (UTF-8) can become.
    std::function<std::vector<std::string>(const std::string& typed)> complete;

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    void ShowAtRest();
    void ShowWhole();
    bool IsUntouched() const;
    /// Whether the selection is the path that is shown, as it was not touched.
    bool IsWholeSelected() const;
    void Complete(const QString& typed);

    QStringListModel* completions_;
    QString shown_;
    QString whole_;
    QString native_;
};

} // namespace kiv
