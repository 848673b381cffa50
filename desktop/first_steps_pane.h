// The ways on from a start without a site, where its pages and messages would stand.
#pragma once

#include "desktop/command_desk.h"

#include <QSet>
#include <QWidget>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

class QCommandLinkButton;

namespace kiv {

struct ControlWords;

class FirstStepsPane : public QWidget {
    Q_OBJECT

  public:
    /// `taken` are letters for Alt, in lower case, that other controls of the window have.
    FirstStepsPane(CommandDesk& desk, QSet<QChar> taken, QWidget* parent);

    /// Whether there are first steps to show, and which.
    void Refresh();
    /// Begins a site in a folder that the user picks.
    void BeginSite();

    /// Asks for a folder (a drive path); nothing when the user wants none.
    std::function<std::optional<std::string>(const QString& title)> pick_folder;
    /// Called when an editor is to be chosen.
    std::function<void()> on_editor;
    /// Called when the pane is wanted, and when it is so no more: there is a folder to work in.
    std::function<void(bool is_open)> on_shown;

  private:
    QCommandLinkButton* AddWay(const ControlWords& words);
    void GiveLetters(QSet<QChar>& taken);
    /// Runs a command with a folder that the user picks.
    void RunIn(const QString& title, void (*command)(Workspace&, std::string_view folder));
    std::optional<std::string> AskForFolder(const QString& title);

    CommandDesk& desk_;
    QCommandLinkButton* open_start_;
    QCommandLinkButton* example_;
    QWidget* editor_;
    bool is_open_ = false;
};

} // namespace kiv
