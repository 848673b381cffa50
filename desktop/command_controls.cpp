#include "desktop/command_controls.h"

#include "desktop/controls.h"
#include "desktop/mnemonics.h"
#include "desktop/qt_text.h"

#include <QAction>
#include <QGridLayout>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QShortcut>

#include <algorithm>
#include <array>
#include <map>

namespace kiv {

namespace {

/// Where a button stands. Those of one place are never shown together.
struct ButtonPlace {
    std::string_view object_name;
    int row;
    int column;
    int columns;
};
constexpr int kCommandColumns = 6;
constexpr int kMarginColumns = 3; // characters beside a caption
constexpr auto kPlaces = std::to_array<ButtonPlace>({
    {"Command1", 0, 0, 6},
    {"Command10", 0, 0, 3},
    {"Command11", 0, 3, 3},
    {"Command2", 1, 0, 2},
    {"Command5", 1, 2, 2},
    {"Command6", 1, 4, 2},
    {"Command8", 1, 4, 1},
    {"Command9", 1, 5, 1},
    {"Command7", 2, 0, 2},
    {"Command4", 2, 2, 2},
    {"Command3", 2, 4, 2},
    {"Command12", 3, 0, 6},
});

QKeySequence KeyOf(std::string_view name)
{
    static const std::map<std::string_view, QKeySequence> kKeys = {
        {"build", Qt::CTRL | Qt::Key_B},
        {"build-one", Qt::CTRL | Qt::Key_B},
        {"choose-directory", QKeySequence::Open},
        {"quit", Qt::CTRL | Qt::Key_Q},
        {"reference", QKeySequence::HelpContents},
        {"manual", Qt::CTRL | Qt::Key_F1},
        {"read-again", Qt::Key_F5},
        {"preview", Qt::Key_F6},
        {"show-page", Qt::SHIFT | Qt::Key_F6},
        {"check", Qt::Key_F7},
        {"why", Qt::Key_F8},
    };
    const auto key = kKeys.find(name);
    return key == kKeys.end() ? QKeySequence() : key->second;
}

/// With its key, which a button does not show.
QString TipOf(const Command& command)
{
    const QString key = KeyOf(command.name).toString(QKeySequence::NativeText);
    return ToTip(command.tip) + (key.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(key));
}

/// A menu with one command that has its name is no menu: the command stands in the menu bar.
bool IsCommand(const MenuTitle& title)
{
    const Command* const command = FindCommand(title.object_name);
    return command != nullptr && command->menu == title.menu;
}

} // namespace

CommandControls::CommandControls(QMenuBar& menu_bar, QWidget* parent)
    : QWidget(parent), menu_bar_(menu_bar)
{
    MakeMenus();
    MakeButtons();
    // The last menu takes a letter that the buttons leave, so that theirs stay what they were.
    menus_.back()->setTitle(WithMnemonics({menus_.back()->title()}, letters_).front());
}

void CommandControls::MakeMenus()
{
    QStringList titles;
    for (const MenuTitle& title : MenuTitles())
        titles.push_back(ShownCaption(title.caption));
    titles = WithMnemonics(titles.first(titles.size() - 1), letters_) << titles.last();
    for (std::size_t i = 0; i < MenuTitles().size(); ++i) {
        const MenuTitle& title = MenuTitles()[i];
        QMenu* menu = nullptr;
        if (!IsCommand(title)) {
            menu = menu_bar_.addMenu(titles[static_cast<qsizetype>(i)]);
            menu->setObjectName(ToQt(title.object_name));
            menu->setToolTipsVisible(true);
            menus_.push_back(menu);
        }
        for (const Command& command : Commands())
            if (command.menu == title.menu)
                AddEntries(command, menu, titles[static_cast<qsizetype>(i)]);
    }
}

/// `title` is that of the menu; without one the entry has it.
void CommandControls::AddEntries(const Command& command, QMenu* menu, const QString& title)
{
    QMenu* const entries = command.has_menu ? AddMenuOf(command, *menu) : menu;
    for (std::size_t index = 0; index < command.entries; ++index) {
        QAction* const action = AddEntry(command, index, entries);
        if (menu == nullptr)
            action->setText(title);
    }
}

/// A menu in a menu; its own entry there is one past those of the array.
QMenu* CommandControls::AddMenuOf(const Command& command, QMenu& parent)
{
    auto* const menu = new QMenu(&parent);
    menu->setObjectName(ToQt(command.object_name));
    menu->setToolTipsVisible(true);
    menu->menuAction()->setObjectName(ToQt(command.object_name));
    parent.addMenu(menu);
    menus_.insert(menus_.begin(), menu); // the last one stays the last of the menu bar
    entries_.push_back({&command, command.entries, menu->menuAction(), &parent});
    return menu;
}

QAction* CommandControls::AddEntry(const Command& command, std::size_t index, QMenu* menu)
{
    auto* const action = new QAction(&menu_bar_);
    action->setObjectName(command.entries > 1 ? ArrayName(command.object_name, index)
                                              : ToQt(command.object_name));
    action->setSeparator(command.IsSeparator());
    action->setText(ShownCaption(command.caption)); // of an entry that is hidden, too
    action->setToolTip(ToTip(command.tip));
    action->setShortcut(KeyOf(command.name));
    action->setCheckable(command.is_on != nullptr);
    (menu != nullptr ? static_cast<QWidget*>(menu) : &menu_bar_)->addAction(action);
    connect(action, &QAction::triggered, this,
            [this, &command, index] { on_chosen(command, index); });
    entries_.push_back({&command, index, action, menu});
    return action;
}

void CommandControls::MakeButtons()
{
    for (const Command& command : Commands()) {
        if (command.menu != Menu::button)
            continue;
        auto* const button = new QPushButton(this);
        button->setObjectName(ToQt(command.object_name));
        const QString tip = TipOf(command);
        button->setToolTip(tip);
        button->setAccessibleDescription(tip);
        if (const QKeySequence key = KeyOf(command.name); !key.isEmpty())
            new QShortcut(key, button, [button] { button->click(); }); // while it is shown
        button->setAutoDefault(true); // Enter presses the one that has the focus
        connect(button, &QPushButton::clicked, this, [this, &command] { on_chosen(command, 0); });
        buttons_.push_back({&command, button});
    }
    QStringList captions;
    for (const Button& row : buttons_)
        captions.push_back(ShownCaption(row.command->caption));
    captions = WithMnemonics(captions, letters_);
    for (std::size_t i = 0; i < buttons_.size(); ++i)
        buttons_[i].button->setText(captions[static_cast<qsizetype>(i)]);
    PlaceButtons();
}

void CommandControls::PlaceButtons()
{
    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    const int margin = fontMetrics().averageCharWidth() * kMarginColumns;
    int column_width = 0;
    for (const ButtonPlace& place : kPlaces) {
        auto* const button = findChild<QPushButton*>(ToQt(place.object_name));
        // All columns are alike, so that nothing moves when buttons come and go.
        button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        const int text = fontMetrics().horizontalAdvance(button->text());
        column_width = std::max(column_width, (text + margin) / place.columns);
        grid->addWidget(button, place.row, place.column, 1, place.columns);
    }
    for (int column = 0; column < kCommandColumns; ++column) {
        grid->setColumnMinimumWidth(column, column_width);
        grid->setColumnStretch(column, 1);
    }
}

void CommandControls::Refresh(const Workspace& workspace)
{
    for (const Button& row : buttons_) {
        row.button->setVisible(IsVisible(*row.command, workspace));
        row.button->setEnabled(IsAvailable(*row.command, workspace));
    }
    for (const Entry& entry : entries_) {
        const bool is_menu = entry.index == entry.command->entries;
        entry.action->setVisible(is_menu || IsVisible(*entry.command, workspace, entry.index));
        entry.action->setEnabled(IsAvailable(*entry.command, workspace));
        entry.action->setToolTip(ToTip(TipOf(*entry.command, workspace)));
        entry.action->setChecked(entry.command->is_on != nullptr &&
                                 entry.command->is_on(workspace));
    }
    SetCaptions(workspace);
}

void CommandControls::SetCaptions(const Workspace& workspace)
{
    for (const QMenu* const menu : menus_) {
        std::vector<QAction*> actions;
        QStringList captions;
        for (const Entry& entry : entries_) {
            if (entry.menu != menu || entry.action->isSeparator() || !entry.action->isVisible())
                continue;
            actions.push_back(entry.action);
            captions.push_back(ShownCaption(CaptionOf(*entry.command, workspace, entry.index)));
        }
        QSet<QChar> letters;
        captions = WithMnemonics(captions, letters);
        for (std::size_t i = 0; i < actions.size(); ++i)
            actions[i]->setText(captions[static_cast<qsizetype>(i)]);
    }
}

void CommandControls::toggler(bool on)
{
    setEnabled(on);
    menu_bar_.setEnabled(on);
}

QPushButton* CommandControls::BuildButton() const
{
    const auto shown = std::find_if(buttons_.begin(), buttons_.end(), [](const Button& row) {
        return row.command->disables_buttons && !row.button->isHidden();
    });
    return shown != buttons_.end() ? shown->button : nullptr;
}

} // namespace kiv
